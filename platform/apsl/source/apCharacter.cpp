#include <apsl/apCharacter.h>
#include <unicode/uchar.h>

namespace {

UChar32 character_of(wchar_t unit) { return static_cast<UChar32>(unit); }

bool has(wchar_t unit, UProperty property) {
    return u_hasBinaryProperty(character_of(unit), property) != 0;
}

bool is_no_break_space(wchar_t unit) { return unit == 0x00A0 || unit == 0x2007 || unit == 0x202F; }

}  // namespace

bool ap_is_alpha(wchar_t character) noexcept { return has(character, UCHAR_ALPHABETIC); }

bool ap_is_digit(wchar_t character) noexcept { return u_isdigit(character_of(character)) != 0; }

bool ap_is_alnum(wchar_t character) noexcept {
    return ap_is_alpha(character) || ap_is_digit(character);
}

bool ap_is_xdigit(wchar_t character) noexcept { return has(character, UCHAR_POSIX_XDIGIT); }

bool ap_is_lower(wchar_t character) noexcept { return has(character, UCHAR_LOWERCASE); }

bool ap_is_upper(wchar_t character) noexcept { return has(character, UCHAR_UPPERCASE); }

bool ap_is_space(wchar_t character) noexcept {
    return has(character, UCHAR_WHITE_SPACE) && !is_no_break_space(character);
}

bool ap_is_blank(wchar_t character) noexcept {
    return has(character, UCHAR_POSIX_BLANK) && !is_no_break_space(character);
}

bool ap_is_cntrl(wchar_t character) noexcept {
    return u_charType(character_of(character)) == U_CONTROL_CHAR;
}

bool ap_is_graph(wchar_t character) noexcept { return has(character, UCHAR_POSIX_GRAPH); }

bool ap_is_print(wchar_t character) noexcept { return has(character, UCHAR_POSIX_PRINT); }

bool ap_is_punct(wchar_t character) noexcept {
    constexpr unsigned punctuation_and_symbols = U_GC_P_MASK | U_GC_S_MASK;
    const unsigned category = U_MASK(u_charType(character_of(character)));
    return (category & punctuation_and_symbols) != 0 && !ap_is_alpha(character);
}

wchar_t ap_to_lower(wchar_t character) noexcept {
    return static_cast<wchar_t>(u_tolower(character_of(character)));
}

wchar_t ap_to_upper(wchar_t character) noexcept {
    return static_cast<wchar_t>(u_toupper(character_of(character)));
}

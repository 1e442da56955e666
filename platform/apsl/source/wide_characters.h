// wide_characters.h: characters out of UTF-16 code units, and the substitutes.
#pragma once

#include <cstdint>
#include <string_view>

namespace nmk_apsl {

constexpr char32_t replacement_character = 0xFFFD;
constexpr char32_t last_character = 0x10FFFF;
constexpr char32_t first_beyond_one_unit = 0x10000;

/// The code unit as an unsigned number, whether wchar_t is signed or not.
constexpr char32_t code_unit(wchar_t unit) { return static_cast<char32_t>(unit); }

constexpr bool is_surrogate(char32_t unit) { return (unit & 0xFFFFF800U) == 0xD800U; }
constexpr bool is_leading_surrogate(char32_t unit) { return (unit & 0xFFFFFC00U) == 0xD800U; }
constexpr bool is_trailing_surrogate(char32_t unit) { return (unit & 0xFFFFFC00U) == 0xDC00U; }

constexpr char32_t character_of_pair(char32_t leading, char32_t trailing) {
    return first_beyond_one_unit + ((leading - 0xD800U) << 10U) + (trailing - 0xDC00U);
}

constexpr wchar_t leading_surrogate(char32_t character) {
    return static_cast<wchar_t>(0xD7C0U + (character >> 10U));
}
constexpr wchar_t trailing_surrogate(char32_t character) {
    return static_cast<wchar_t>(0xDC00U + (character & 0x3FFU));
}

/// The character at `at`, which moves behind it. A surrogate on its own and a number that is not a
/// character give U+FFFD, and `exact` is set to false.
inline char32_t next_character(const wchar_t*& at, const wchar_t* end, bool& exact) {
    const char32_t unit = code_unit(*at++);
    if (!is_surrogate(unit) && unit <= last_character) return unit;
    if (is_leading_surrogate(unit) && at != end && is_trailing_surrogate(code_unit(*at))) {
        return character_of_pair(unit, code_unit(*at++));
    }
    exact = false;
    return replacement_character;
}

}  // namespace nmk_apsl

#include "western_code_page.h"

#include <unicode/ucnv.h>
#include <utils/utAssert.h>

#include <algorithm>
#include <array>
#include <cstdint>

#include "wide_characters.h"

namespace nmk_apsl {
namespace {

/// The code page as two tables: the character of each byte, and the bytes by their characters.
struct WesternTables {
    std::array<char16_t, 256> character{};

    struct Entry {
        char16_t character;
        std::uint8_t byte;
    };
    std::array<Entry, 128> upper_half{};  // ascending in the character

    WesternTables() {
        for (unsigned byte = 0; byte < 256; ++byte) {
            character[byte] = static_cast<char16_t>(byte);
        }
        ask_icu();
        for (unsigned i = 0; i < 128; ++i) {
            upper_half[i] = {character[128 + i], static_cast<std::uint8_t>(128 + i)};
        }
        std::sort(upper_half.begin(), upper_half.end(), [](const Entry& left, const Entry& right) {
            return left.character < right.character;
        });
    }

  private:
    void ask_icu() {
        UErrorCode error = U_ZERO_ERROR;
        UConverter* const converter = ucnv_open("windows-1252", &error);
        std::array<char, 256> bytes{};
        for (unsigned byte = 0; byte < 256; ++byte) bytes[byte] = static_cast<char>(byte);
        std::array<char16_t, 256> answer{};
        const int count = ucnv_toUChars(converter, answer.data(), 256, bytes.data(), 256, &error);
        ucnv_close(converter);
        const bool complete = U_SUCCESS(error) && count == 256;
        UT_ASSERT(complete, "the table of code page 1252 is missing");
        if (complete) character = answer;
    }
};

const WesternTables& tables() {
    static const WesternTables made_once;
    return made_once;
}

/// The byte of a character, -1 if there is none.
int byte_of(char32_t character) {
    if (character < 0x80U) return static_cast<int>(character);
    const auto& entries = tables().upper_half;
    const auto found = std::lower_bound(entries.begin(), entries.end(), character,
                                        [](const WesternTables::Entry& entry, char32_t wanted) {
                                            return entry.character < wanted;
                                        });
    return found != entries.end() && found->character == character ? found->byte : -1;
}

}  // namespace

std::wstring western_to_wide(std::string_view bytes) {
    std::wstring wide(bytes.size(), L'\0');
    const auto& character = tables().character;
    std::transform(bytes.begin(), bytes.end(), wide.begin(), [&character](char byte) {
        return static_cast<wchar_t>(character[static_cast<unsigned char>(byte)]);
    });
    return wide;
}

std::string wide_to_western(std::wstring_view text, bool& exact) {
    std::string bytes;
    bytes.reserve(text.size());
    const wchar_t* at = text.data();
    const wchar_t* const end = at + text.size();
    while (at != end) {
        const int byte = byte_of(next_character(at, end, exact));
        if (byte < 0) exact = false;
        bytes.push_back(byte < 0 ? '?' : static_cast<char>(byte));
    }
    return bytes;
}

}  // namespace nmk_apsl

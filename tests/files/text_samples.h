// text_samples.h: texts that find out what a function does with more than ASCII.
#pragma once

#include "scoped_code_page.h"

#include <utils/utString.h>

#include <random>
#include <string>
#include <string_view>
#include <vector>

// Characters by the number of their bytes and code units.
constexpr std::string_view a_umlaut = "\xC3\xA4";               // 2 bytes, 1 unit
constexpr std::string_view capital_a_umlaut = "\xC3\x84";       // 2 bytes, 1 unit
constexpr std::string_view euro = "\xE2\x82\xAC";               // 3 bytes, 1 unit
constexpr std::string_view ideograph = "\xE6\x97\xA5";          // 3 bytes, 1 unit
constexpr std::string_view smiley = "\xF0\x9F\x98\x80";         // 4 bytes, 2 units
constexpr std::string_view replacement = "\xEF\xBF\xBD";        // U+FFFD
constexpr std::string_view ideographic_space = "\xE3\x80\x80";  // U+3000
constexpr std::string_view no_break_space = "\xC2\xA0";         // U+00A0

/// Any bytes, often those that begin or continue characters of several bytes.
inline std::string random_bytes(std::mt19937_64& draw, std::size_t most) {
    static constexpr char characters[] =
        " a'\",.\\/%Z0\n\0\x80\xBF\xC0\xC2\xC3\xE0\xA0\x9F\xED\xEF\xF0\x90\x8F\xF4\xF5\xFF";
    static constexpr std::string_view telling(characters, sizeof characters - 1);
    std::string bytes(draw() % (most + 1), '\0');
    for (char& byte : bytes) {
        byte = draw() % 4 == 0 ? static_cast<char>(draw()) : telling[draw() % telling.size()];
    }
    return bytes;
}

/// Well-formed text of a few characters out of one to four bytes, so that patterns repeat.
inline std::string random_text(std::mt19937_64& draw, std::size_t most) {
    const std::string_view characters[] = {"a", "b", " ", "'", "\"", a_umlaut, euro, smiley};
    std::string text;
    for (std::size_t count = draw() % (most + 1); count > 0; --count) {
        text += characters[draw() % std::size(characters)];
    }
    return text;
}

/// A long text with every character that some function treats specially.
inline std::string everything() {
    std::string text = "  'quoted stretch' \"another\" C:\\dir.d/name.ext %41%zz%";
    for (const std::string_view part :
         {a_umlaut, capital_a_umlaut, euro, ideograph, smiley, ideographic_space, no_break_space}) {
        text += part;
        text += part;
        text += ' ';
    }
    text += "\xFF\xC3 \xE2\x82 \xF0\x9F\x98 \xED\xA0\x80 \xC0\x80 &<>\"'\n";
    text += std::string("nul\0nul", 7);
    text += " file:///x 1.500,000 \t\r\n";
    return text;
}

// apUtf8Length.h: how many bytes a character of UTF-8 takes.
//
// The Unicode Standard 15.0, table 3-7, "Well-Formed UTF-8 Byte Sequences". It is in a header
// because walks along a text ask for each of its characters.
#pragma once

#include <cstddef>
#include <string_view>

/// What must follow a lead byte: so many trail bytes, the first of them within these limits, the
/// others from 0x80 to 0xBF.
struct apUtf8Trails {
    std::size_t count;
    unsigned char lowest = 0x80;
    unsigned char highest = 0xBF;
};

/// None for ASCII and for a byte that begins no character.
constexpr apUtf8Trails ap_utf8_trails(unsigned char lead) noexcept {
    if (lead < 0xC2) return {0};
    if (lead < 0xE0) return {1};
    if (lead == 0xE0) return {2, 0xA0, 0xBF};
    if (lead == 0xED) return {2, 0x80, 0x9F};
    if (lead < 0xF0) return {2};
    if (lead == 0xF0) return {3, 0x90, 0xBF};
    if (lead < 0xF4) return {3};
    if (lead == 0xF4) return {3, 0x80, 0x8F};
    return {0};
}

/// Bytes of the character that `bytes`, which must not be empty, begins with; or of the ill-formed
/// part for which ap_decode puts one U+FFFD, and then `is_character` is false.
constexpr std::size_t ap_utf8_length(std::string_view bytes, bool& is_character) noexcept {
    const auto lead = static_cast<unsigned char>(bytes[0]);
    const apUtf8Trails trails = ap_utf8_trails(lead);
    unsigned char lowest = trails.lowest;
    unsigned char highest = trails.highest;
    std::size_t length = 1;
    for (; length <= trails.count && length < bytes.size(); ++length) {
        const auto trail = static_cast<unsigned char>(bytes[length]);
        if (trail < lowest || trail > highest) break;
        lowest = 0x80;
        highest = 0xBF;
    }
    is_character = lead < 0x80 || (trails.count > 0 && length == trails.count + 1);
    return length;
}

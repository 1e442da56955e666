#include "utf8.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "wide_characters.h"

namespace {

using Byte = unsigned char;

constexpr std::size_t block_units = 1024;  // wide characters put together at a time
constexpr std::size_t block_bytes = 4096;
constexpr std::size_t longest_character = 4;

bool is_trail(Byte byte) { return (byte & 0xC0U) == 0x80U; }

/// What must follow a lead byte: so many trail bytes, the first of them within these limits.
/// The Unicode Standard 15.0, table 3-7, "Well-Formed UTF-8 Byte Sequences".
struct Trails {
    int count;
    Byte lowest = 0x80;
    Byte highest = 0xBF;
};

Trails trails_of(Byte lead) {
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

/// The character that begins with the byte at `at`, not ASCII; `at` moves behind it, or behind the
/// part of it that is well-formed so far.
char32_t checked_character(const Byte*& at, const Byte* end, bool& exact) {
    const Byte lead = *at++;
    const Trails trails = trails_of(lead);
    char32_t character = lead & (0x3FU >> trails.count);
    Byte lowest = trails.lowest;
    Byte highest = trails.highest;
    for (int i = 0; i < trails.count; ++i) {
        if (at == end || *at < lowest || *at > highest) {
            exact = false;
            return replacement_character;
        }
        character = (character << 6U) | (*at++ & 0x3FU);
        lowest = 0x80;
        highest = 0xBF;
    }
    if (trails.count == 0) {
        exact = false;
        return replacement_character;
    }
    return character;
}

/// The same, quick for the well-formed characters of two and three bytes.
char32_t character_at(const Byte*& at, const Byte* end, bool& exact) {
    const Byte lead = *at;
    if (lead >= 0xC2 && lead < 0xE0 && end - at >= 2 && is_trail(at[1])) {
        const char32_t character = ((lead & 0x1FU) << 6U) | (at[1] & 0x3FU);
        at += 2;
        return character;
    }
    if (lead > 0xE0 && lead < 0xF0 && lead != 0xED && end - at >= 3 && is_trail(at[1]) &&
        is_trail(at[2])) {
        const char32_t character =
            ((lead & 0x0FU) << 12U) | ((at[1] & 0x3FU) << 6U) | (at[2] & 0x3FU);
        at += 3;
        return character;
    }
    return checked_character(at, end, exact);
}

wchar_t* put_units(char32_t character, wchar_t* out) {
    if (character < first_beyond_one_unit) {
        *out++ = static_cast<wchar_t>(character);
    } else {
        *out++ = leading_surrogate(character);
        *out++ = trailing_surrogate(character);
    }
    return out;
}

/// Copies ASCII, eight characters at a time, while there is room; stops at the first other byte
/// or a few characters before the limits.
wchar_t* widen_ascii(const Byte*& at, const Byte* end, wchar_t* out, const wchar_t* limit) {
    while (end - at >= 8 && limit - out >= 8) {
        std::uint64_t eight = 0;
        std::memcpy(&eight, at, 8);
        if ((eight & 0x8080808080808080U) != 0) break;
        for (int i = 0; i < 8; ++i) out[i] = static_cast<wchar_t>(at[i]);
        at += 8;
        out += 8;
    }
    return out;
}

char* put_bytes(char32_t character, char* out) {
    const auto put = [&out](char32_t byte) { *out++ = static_cast<char>(byte); };
    if (character < 0x80U) {
        put(character);
    } else if (character < 0x800U) {
        put(0xC0U | (character >> 6U));
        put(0x80U | (character & 0x3FU));
    } else if (character < first_beyond_one_unit) {
        put(0xE0U | (character >> 12U));
        put(0x80U | ((character >> 6U) & 0x3FU));
        put(0x80U | (character & 0x3FU));
    } else {
        put(0xF0U | (character >> 18U));
        put(0x80U | ((character >> 12U) & 0x3FU));
        put(0x80U | ((character >> 6U) & 0x3FU));
        put(0x80U | (character & 0x3FU));
    }
    return out;
}

/// The counterpart of widen_ascii.
char* narrow_ascii(const wchar_t*& at, const wchar_t* end, char* out, const char* limit) {
    while (end - at >= 8 && limit - out >= 8) {
        char32_t all = 0;
        for (int i = 0; i < 8; ++i) all |= code_unit(at[i]);
        if (all >= 0x80U) break;
        for (int i = 0; i < 8; ++i) out[i] = static_cast<char>(at[i]);
        at += 8;
        out += 8;
    }
    return out;
}

}  // namespace

std::wstring utf8_to_wide(std::string_view bytes, bool& exact) {
    std::wstring wide;
    wide.reserve(bytes.size());
    const auto* at = reinterpret_cast<const Byte*>(bytes.data());
    const Byte* const end = at + bytes.size();
    wchar_t block[block_units];
    wchar_t* const limit = block + block_units - 1;  // room for a pair at any time
    while (at != end) {
        wchar_t* out = block;
        while (at != end && out < limit) {
            if (*at < 0x80) {
                out = widen_ascii(at, end, out, limit);
                if (at != end && out < limit && *at < 0x80) *out++ = static_cast<wchar_t>(*at++);
            } else {
                out = put_units(character_at(at, end, exact), out);
            }
        }
        wide.append(block, static_cast<std::size_t>(out - block));
    }
    return wide;
}

std::string wide_to_utf8(std::wstring_view text, bool& exact) {
    std::string bytes;
    bytes.reserve(text.size());
    const wchar_t* at = text.data();
    const wchar_t* const end = at + text.size();
    char block[block_bytes];
    char* const limit = block + block_bytes - longest_character;
    while (at != end) {
        char* out = block;
        while (at != end && out <= limit) {
            if (code_unit(*at) < 0x80U) {
                out = narrow_ascii(at, end, out, limit);
                if (at == end || out > limit) break;
            }
            out = put_bytes(next_character(at, end, exact), out);
        }
        bytes.append(block, static_cast<std::size_t>(out - block));
    }
    return bytes;
}

#include "utf8.h"

#include <apsl/apUtf8Length.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "wide_characters.h"

namespace nmk_apsl {
namespace {

using Byte = unsigned char;

constexpr std::size_t block_units = 1024;  // wide characters put together at a time
constexpr std::size_t block_bytes = 4096;
constexpr std::ptrdiff_t longest_character = 4;

/// The character that begins with the byte at `at`, not ASCII; `at` moves behind it, or behind the
/// part of it that is well-formed so far.
char32_t checked_character(const Byte*& at, const Byte* end, bool& exact) {
    bool is_character = false;
    const std::string_view rest(reinterpret_cast<const char*>(at),
                                static_cast<std::size_t>(end - at));
    const std::size_t length = ap_utf8_length(rest, is_character);
    char32_t character = *at & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) character = (character << 6U) | (at[i] & 0x3FU);
    at += length;
    if (is_character) return character;
    exact = false;
    return replacement_character;
}

/// The low six bits of a trail byte; any other byte gives more than 0x3F.
constexpr char32_t trail_bits(Byte byte) { return static_cast<char32_t>(byte) ^ 0x80U; }

wchar_t* put_units(char32_t character, wchar_t* out) {
    if (character < first_beyond_one_unit) {
        *out++ = static_cast<wchar_t>(character);
    } else {
        *out++ = leading_surrogate(character);
        *out++ = trailing_surrogate(character);
    }
    return out;
}

/// How far a conversion has come: what it reads next, and where it writes next.
template <class Read, class Write>
struct Progress {
    const Read* at;
    Write* out;
};

/// Copies ASCII, eight characters at a time, while there is room; stops at the first eight that
/// are not all ASCII, or short of the limits.
Progress<Byte, wchar_t> widen_ascii(Progress<Byte, wchar_t> now, const Byte* end,
                                    const wchar_t* limit) {
    while (end - now.at >= 8 && limit - now.out >= 8) {
        std::uint64_t eight = 0;
        std::memcpy(&eight, now.at, 8);
        if ((eight & 0x8080808080808080U) != 0) break;
        for (int i = 0; i < 8; ++i) now.out[i] = static_cast<wchar_t>(now.at[i]);
        now.at += 8;
        now.out += 8;
    }
    return now;
}

/// Decodes well-formed characters of two bytes, and the single ASCII characters (blanks, mostly)
/// between them, while there is room; stops at any other byte.
Progress<Byte, wchar_t> decode_twos(Progress<Byte, wchar_t> now, const Byte* end,
                                    const wchar_t* limit) {
    const std::ptrdiff_t most = std::min((end - now.at) / 2, limit - now.out);
    for (const wchar_t* const stop = now.out + most; now.out != stop;) {
        const char32_t lead = now.at[0];
        const char32_t second = trail_bits(now.at[1]);
        if (lead - 0xC2U < 0x1EU && second < 0x40U) {
            *now.out++ = static_cast<wchar_t>(((lead & 0x1FU) << 6U) | second);
            now.at += 2;
        } else if (lead < 0x80U && now.at[1] >= 0x80U) {
            *now.out++ = static_cast<wchar_t>(lead);
            now.at += 1;
        } else {
            break;
        }
    }
    return now;
}

/// The same for characters of three bytes.
Progress<Byte, wchar_t> decode_threes(Progress<Byte, wchar_t> now, const Byte* end,
                                      const wchar_t* limit) {
    const std::ptrdiff_t most = std::min((end - now.at) / 3, limit - now.out);
    for (const wchar_t* const stop = now.out + most; now.out != stop; now.at += 3) {
        const char32_t lead = now.at[0] - 0xE0U;
        const char32_t second = trail_bits(now.at[1]);
        const char32_t third = trail_bits(now.at[2]);
        const char32_t character = (lead << 12U) | (second << 6U) | third;
        if (lead > 0x0FU || (second | third) > 0x3FU) break;
        if (character < 0x800U || is_surrogate(character)) break;
        *now.out++ = static_cast<wchar_t>(character);
    }
    return now;
}

/// The same for characters of four bytes.
Progress<Byte, wchar_t> decode_fours(Progress<Byte, wchar_t> now, const Byte* end,
                                     const wchar_t* limit) {
    while (end - now.at >= 4 && limit - now.out >= 2) {
        const char32_t lead = now.at[0] - 0xF0U;
        const char32_t second = trail_bits(now.at[1]);
        const char32_t third = trail_bits(now.at[2]);
        const char32_t fourth = trail_bits(now.at[3]);
        const char32_t character = (lead << 18U) | (second << 12U) | (third << 6U) | fourth;
        if (lead > 4U || (second | third | fourth) > 0x3FU) break;
        if (character < first_beyond_one_unit || character > last_character) break;
        *now.out++ = leading_surrogate(character);
        *now.out++ = trailing_surrogate(character);
        now.at += 4;
    }
    return now;
}

/// Decodes until the input ends or there is no room for a further character before `limit`: in runs
/// of characters of one length, and one by one, checked, where a run does not get on.
Progress<Byte, wchar_t> decode_block(Progress<Byte, wchar_t> now, const Byte* end,
                                     const wchar_t* limit, bool& exact) {
    while (now.at != end && limit - now.out >= 2) {
        const Byte* const before = now.at;
        if (*before < 0x80U) {
            *now.out++ = static_cast<wchar_t>(*now.at++);
            now = widen_ascii(now, end, limit);
        } else if (*before < 0xE0U) {
            now = decode_twos(now, end, limit);
        } else if (*before < 0xF0U) {
            now = decode_threes(now, end, limit);
        } else {
            now = decode_fours(now, end, limit);
        }
        if (now.at == before) now.out = put_units(checked_character(now.at, end, exact), now.out);
    }
    return now;
}

char* put_four_bytes(char32_t character, char* out) {
    out[0] = static_cast<char>(0xF0U | (character >> 18U));
    out[1] = static_cast<char>(0x80U | ((character >> 12U) & 0x3FU));
    out[2] = static_cast<char>(0x80U | ((character >> 6U) & 0x3FU));
    out[3] = static_cast<char>(0x80U | (character & 0x3FU));
    return out + 4;
}

char* put_three_bytes(char32_t character, char* out) {
    out[0] = static_cast<char>(0xE0U | (character >> 12U));
    out[1] = static_cast<char>(0x80U | ((character >> 6U) & 0x3FU));
    out[2] = static_cast<char>(0x80U | (character & 0x3FU));
    return out + 3;
}

char* put_two_bytes(char32_t character, char* out) {
    out[0] = static_cast<char>(0xC0U | (character >> 6U));
    out[1] = static_cast<char>(0x80U | (character & 0x3FU));
    return out + 2;
}

/// The counterpart of widen_ascii.
Progress<wchar_t, char> narrow_ascii(Progress<wchar_t, char> now, const wchar_t* end,
                                     const char* limit) {
    while (end - now.at >= 8 && limit - now.out >= 8) {
        char32_t all = 0;
        for (int i = 0; i < 8; ++i) all |= code_unit(now.at[i]);
        if (all >= 0x80U) break;
        for (int i = 0; i < 8; ++i) now.out[i] = static_cast<char>(now.at[i]);
        now.at += 8;
        now.out += 8;
    }
    return now;
}

/// Encodes until the input ends or there is no room for a further character before `limit`.
Progress<wchar_t, char> encode_block(Progress<wchar_t, char> now, const wchar_t* end,
                                     const char* limit, bool& exact) {
    const wchar_t* at = now.at;
    char* out = now.out;
    while (at != end && limit - out >= longest_character) {
        const char32_t unit = code_unit(*at);
        if (unit < 0x80U) {
            *out++ = static_cast<char>(unit);
            if (++at != end && code_unit(*at) < 0x80U) {
                const auto ahead = narrow_ascii({at, out}, end, limit);
                at = ahead.at;
                out = ahead.out;
            }
        } else if (unit < 0x800U) {
            out = put_two_bytes(unit, out);
            ++at;
        } else if (unit < first_beyond_one_unit && !is_surrogate(unit)) {
            out = put_three_bytes(unit, out);
            ++at;
        } else {
            const wchar_t* from = at;
            const char32_t character = next_character(from, end, exact);
            const bool substituted = character < first_beyond_one_unit;
            out = substituted ? put_three_bytes(character, out) : put_four_bytes(character, out);
            at = from;
        }
    }
    return {at, out};
}

/// Makes room for the whole result, once it is known what the first of it took: as much for each
/// element of the input, and one eighth more.
template <class Text>
void make_room(Text& result, std::size_t input_done, std::size_t input_size) {
    if (input_done == input_size) return;
    const std::size_t for_each = result.size() * 64 / input_done + 1;
    result.reserve((input_size / 64 + 1) * (for_each + for_each / 8));
}

}  // namespace

std::wstring utf8_to_wide(std::string_view bytes, bool& exact) {
    std::wstring wide;
    const auto* const begin = reinterpret_cast<const Byte*>(bytes.data());
    const Byte* const end = begin + bytes.size();
    wchar_t block[block_units];
    for (const Byte* at = begin; at != end;) {
        const bool first = at == begin;
        const auto done = decode_block({at, block}, end, block + block_units, exact);
        wide.append(block, static_cast<std::size_t>(done.out - block));
        at = done.at;
        if (first) make_room(wide, static_cast<std::size_t>(at - begin), bytes.size());
    }
    return wide;
}

std::string wide_to_utf8(std::wstring_view text, bool& exact) {
    std::string bytes;
    const wchar_t* const begin = text.data();
    const wchar_t* const end = begin + text.size();
    char block[block_bytes];
    for (const wchar_t* at = begin; at != end;) {
        const bool first = at == begin;
        const auto done = encode_block({at, block}, end, block + block_bytes, exact);
        bytes.append(block, static_cast<std::size_t>(done.out - block));
        at = done.at;
        if (first) make_room(bytes, static_cast<std::size_t>(at - begin), text.size());
    }
    return bytes;
}

}  // namespace nmk_apsl

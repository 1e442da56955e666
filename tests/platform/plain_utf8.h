// plain_utf8: UTF-8 by the table of well-formed sequences, row by row.
//
// The plain way that the quick conversions are compared with. Written from The Unicode Standard
// 15.0, section 3.9, table 3-7, and "U+FFFD Substitution of Maximal Subparts".
#pragma once

#include <string>
#include <string_view>

namespace plain_utf8 {

struct ByteRange {
    unsigned lowest;
    unsigned highest;
};

/// A row of the table: what each byte of a well-formed sequence may be.
struct Row {
    std::size_t size;
    ByteRange bytes[4];
};

constexpr Row well_formed_rows[] = {
    {1, {{0x00, 0x7F}}},
    {2, {{0xC2, 0xDF}, {0x80, 0xBF}}},
    {3, {{0xE0, 0xE0}, {0xA0, 0xBF}, {0x80, 0xBF}}},
    {3, {{0xE1, 0xEC}, {0x80, 0xBF}, {0x80, 0xBF}}},
    {3, {{0xED, 0xED}, {0x80, 0x9F}, {0x80, 0xBF}}},
    {3, {{0xEE, 0xEF}, {0x80, 0xBF}, {0x80, 0xBF}}},
    {4, {{0xF0, 0xF0}, {0x90, 0xBF}, {0x80, 0xBF}, {0x80, 0xBF}}},
    {4, {{0xF1, 0xF3}, {0x80, 0xBF}, {0x80, 0xBF}, {0x80, 0xBF}}},
    {4, {{0xF4, 0xF4}, {0x80, 0x8F}, {0x80, 0xBF}, {0x80, 0xBF}}},
};

/// How many bytes at the front of `bytes` follow the row.
inline std::size_t matched(const Row& row, std::string_view bytes) {
    const std::size_t limit = bytes.size() < row.size ? bytes.size() : row.size;
    std::size_t count = 0;
    while (count < limit) {
        const unsigned byte = static_cast<unsigned char>(bytes[count]);
        if (byte < row.bytes[count].lowest || byte > row.bytes[count].highest) break;
        ++count;
    }
    return count;
}

inline char32_t value_of(std::string_view sequence) {
    const unsigned lead = static_cast<unsigned char>(sequence[0]);
    if (sequence.size() == 1) return lead;
    const unsigned lead_bits[] = {0, 0, 0x1F, 0x0F, 0x07};
    char32_t value = lead & lead_bits[sequence.size()];
    for (const char trail : sequence.substr(1)) {
        value = value * 64 + (static_cast<unsigned char>(trail) - 0x80U);
    }
    return value;
}

inline void append_units(std::wstring& wide, char32_t character) {
    if (character > 0xFFFF) {
        const char32_t offset = character - 0x10000;
        wide += static_cast<wchar_t>(0xD800 + offset / 0x400);
        wide += static_cast<wchar_t>(0xDC00 + offset % 0x400);
    } else {
        wide += static_cast<wchar_t>(character);
    }
}

/// Bytes of the first character, or of the first ill-formed part, of a text that is not empty.
inline std::size_t first_length(std::string_view bytes, bool& complete) {
    std::size_t longest = 0;
    complete = false;
    for (const Row& row : well_formed_rows) {
        const std::size_t count = matched(row, bytes);
        if (count > longest) longest = count;
        if (count == row.size) complete = true;
    }
    return longest > 0 ? longest : 1;
}

/// `status` as ap_decode answers it.
inline std::wstring decode(std::string_view bytes, int& status) {
    std::wstring wide;
    status = 1;
    while (!bytes.empty()) {
        bool complete = false;
        const std::size_t length = first_length(bytes, complete);
        if (complete) {
            append_units(wide, value_of(bytes.substr(0, length)));
        } else {
            wide += static_cast<wchar_t>(0xFFFD);
            status = 0;
        }
        bytes.remove_prefix(length);
    }
    return wide;
}

/// The bytes of one character, which must not be a surrogate.
inline std::string contents_of(char32_t character) {
    if (character < 0x80) return {static_cast<char>(character)};
    std::string trails;
    char32_t rest = character;
    const std::size_t trail_count = character < 0x800 ? 1 : character < 0x10000 ? 2 : 3;
    for (std::size_t i = 0; i < trail_count; ++i, rest /= 64) {
        trails.insert(trails.begin(), static_cast<char>(0x80 + rest % 64));
    }
    const char32_t marks[] = {0, 0xC0, 0xE0, 0xF0};
    return static_cast<char>(marks[trail_count] + rest) + trails;
}

}  // namespace plain_utf8

// zip_samples.h: zip files made byte by byte, so that each field can say what a writer never would.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zip_samples {

/// An entry whose data is stored as it is; the optional fields lie where they are set.
struct Entry {
    std::string name;
    std::string data;
    std::uint16_t method = 0;
    std::uint16_t flags = 0;
    std::optional<std::uint32_t> size = {};
    std::optional<std::uint32_t> packed_size = {};
    std::optional<std::uint32_t> check_sum = {};
    std::uint32_t attributes = 0100644U << 16;     // a file, for Unix
    std::optional<std::size_t> same_data_as = {};  // overlaps that entry
};

inline std::string number(std::uint64_t value, int bytes) {
    std::string result;
    for (int i = 0; i < bytes; ++i) result += static_cast<char>(value >> (8 * i) & 0xFF);
    return result;
}

/// The check sum of zip: ISO 3309, bit by bit.
inline std::uint32_t check_sum(std::string_view bytes) {
    std::uint32_t sum = 0xFFFFFFFF;
    for (const char c : bytes) {
        sum ^= static_cast<unsigned char>(c);
        for (int bit = 0; bit < 8; ++bit) sum = (sum >> 1) ^ ((sum & 1) != 0 ? 0xEDB88320 : 0);
    }
    return ~sum;
}

/// The fields that both records of an entry share.
inline std::string common(const Entry& entry) {
    const auto bytes = static_cast<std::uint32_t>(entry.data.size());
    return number(20, 2) + number(entry.flags, 2) + number(entry.method, 2) + number(0x210000, 4) +
           number(entry.check_sum.value_or(check_sum(entry.data)), 4) +
           number(entry.packed_size.value_or(bytes), 4) + number(entry.size.value_or(bytes), 4) +
           number(entry.name.size(), 2) + number(0, 2);
}

/// The record that ends a zip of so many entries.
inline std::string end_record(std::size_t entries, std::size_t size, std::size_t offset) {
    return "PK\5\6" + number(0, 4) + number(entries, 2) + number(entries, 2) + number(size, 4) +
           number(offset, 4) + number(0, 2);
}

inline std::string zip_of(const std::vector<Entry>& entries) {
    std::string file, directory;
    std::vector<std::size_t> offsets;
    for (const Entry& entry : entries) {
        offsets.push_back(entry.same_data_as ? offsets[*entry.same_data_as] : file.size());
        if (!entry.same_data_as) file += "PK\3\4" + common(entry) + entry.name + entry.data;
        directory += "PK\1\2" + number(3 << 8 | 20, 2) + common(entry) + number(0, 6) +
                     number(entry.attributes, 4) + number(offsets.back(), 4) + entry.name;
    }
    const std::size_t offset = file.size();
    return file + directory + end_record(entries.size(), directory.size(), offset);
}

/// Bytes that deflate cannot pack well, always the same.
inline std::string noise(std::size_t count, std::uint32_t seed = 1) {
    std::string result;
    for (std::size_t i = 0; i < count; ++i) {
        seed = seed * 1664525U + 1013904223U;
        result += static_cast<char>(seed >> 24);
    }
    return result;
}

}  // namespace zip_samples

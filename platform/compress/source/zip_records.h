// zip_records.h: the records of a zip file, as bytes.
//
// PKWARE, APPNOTE.TXT 6.3.10, sections 4.3 to 4.5. All numbers are little-endian. A number that
// does not fit its field has all bits set there and is in a record of zip64.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace nmk_compress {

/// What the records say of an entry.
struct ZipEntry {
    std::string name;
    std::string comment;
    std::uint16_t method = 0;    // 0 stored, 8 deflated
    std::uint32_t dos_date = 0;  // time in the lower 16 bits
    std::uint32_t check_sum = 0;
    std::uint64_t size = 0;
    std::uint64_t packed_size = 0;
    std::uint64_t offset = 0;  // of its local header

    /// Whether the sizes need 64 bits.
    bool has_large_sizes() const;
};

/// Date and time as DOS keeps them: to 2 seconds, from 1980 to 2107; outside, the nearest of them.
///
///   date  the 6 numbers of ut_date.h; null gives the first day of 1980
std::uint32_t dos_date(const int* date);

/// The header before the data. With `room`, it has 20 bytes for large sizes, which are padding
/// where they are not needed, so that the header can be written again when the sizes are known.
std::string local_header(const ZipEntry& entry, bool room);

/// The record of the entry in the directory at the end of the file.
std::string directory_record(const ZipEntry& entry);

/// What follows the directory: `entries` of them in `size` bytes from `offset` on.
std::string end_records(std::uint64_t entries, std::uint64_t size, std::uint64_t offset);

}  // namespace nmk_compress

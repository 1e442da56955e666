#include "zip_records.h"

#include <apsl/apUtf8Length.h>
#include <sys/stat.h>

#include <algorithm>

namespace nmk_compress {

namespace {

constexpr std::uint32_t local_signature = 0x04034B50;
constexpr std::uint32_t directory_signature = 0x02014B50;
constexpr std::uint32_t end_signature = 0x06054B50;
constexpr std::uint32_t large_end_signature = 0x06064B50;
constexpr std::uint32_t large_locator_signature = 0x07064B50;

constexpr std::uint16_t plain_version = 20;  // of the format: deflate
constexpr std::uint16_t large_version = 45;  // zip64
constexpr std::uint16_t made_by_unix = 3 << 8;
constexpr std::uint16_t name_is_utf8 = 1 << 11;
constexpr std::uint32_t mode_of_a_file = S_IFREG | S_IRUSR | S_IWUSR | S_IRGRP | S_IROTH;

constexpr std::uint16_t large_field = 0x0001;
constexpr std::uint16_t padding_field = 0xD935;  // of no meaning: readers skip it
constexpr std::uint16_t room_for_sizes = 16;

constexpr std::uint64_t max_32 = 0xFFFFFFFF;
constexpr std::uint64_t max_16 = 0xFFFF;

/// A record while it is put together.
class Record {
  public:
    template <class Integer>
    Record& put(Integer value) {
        for (std::size_t i = 0; i < sizeof value; ++i) {
            m_bytes += static_cast<char>(static_cast<std::uint64_t>(value) >> (8 * i) & 0xFF);
        }
        return *this;
    }
    /// The value, or all bits set where it is too large.
    Record& put_32(std::uint64_t value) {
        return put(static_cast<std::uint32_t>(std::min(value, max_32)));
    }
    Record& put_16(std::uint64_t value) {
        return put(static_cast<std::uint16_t>(std::min(value, max_16)));
    }
    Record& put(const std::string& bytes) {
        m_bytes += bytes;
        return *this;
    }
    const std::string& bytes() const { return m_bytes; }

  private:
    std::string m_bytes;
};

bool is_ascii(std::string_view text) {
    return std::all_of(text.begin(), text.end(),
                       [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

bool is_utf8(std::string_view text) {
    bool is_character = true;
    while (!text.empty() && is_character) text.remove_prefix(ap_utf8_length(text, is_character));
    return is_character;
}

/// The flag says that both texts are UTF-8; without it each reader has a guess of its own.
std::uint16_t flags_of(const ZipEntry& entry) {
    const bool needs_flag = !is_ascii(entry.name) || !is_ascii(entry.comment);
    return needs_flag && is_utf8(entry.name) && is_utf8(entry.comment) ? name_is_utf8 : 0;
}

/// The fields that both records of an entry have, from the version on.
void put_common(Record& record, const ZipEntry& entry, std::uint16_t version, bool large_sizes) {
    record.put(version).put(flags_of(entry)).put(entry.method).put(entry.dos_date);
    record.put(entry.check_sum);
    record.put_32(large_sizes ? max_32 : entry.packed_size);
    record.put_32(large_sizes ? max_32 : entry.size);
    record.put_16(entry.name.size());
}

/// Room for both sizes, which a local header has to have together.
std::string room_field(const ZipEntry& entry) {
    Record field;
    const bool is_large = entry.has_large_sizes();
    field.put(is_large ? large_field : padding_field).put(room_for_sizes);
    field.put(is_large ? entry.size : 0).put(is_large ? entry.packed_size : 0);
    return field.bytes();
}

/// The numbers that do not fit the directory's record, in this order.
std::string large_numbers(const ZipEntry& entry) {
    Record numbers;
    if (entry.has_large_sizes()) numbers.put(entry.size).put(entry.packed_size);
    if (entry.offset >= max_32) numbers.put(entry.offset);
    return numbers.bytes();
}

std::string large_field_of(const std::string& numbers) {
    return numbers.empty() ? std::string()
                           : Record().put(large_field).put_16(numbers.size()).put(numbers).bytes();
}

void put_large_end(Record& record, std::uint64_t entries, std::uint64_t size,
                   std::uint64_t offset) {
    constexpr std::uint64_t bytes_that_follow = 44;
    constexpr std::uint16_t version_made = made_by_unix | large_version;
    record.put(large_end_signature).put(bytes_that_follow).put(version_made).put(large_version);
    record.put(std::uint32_t{0}).put(std::uint32_t{0});  // numbers of disks
    record.put(entries).put(entries).put(size).put(offset);
    record.put(large_locator_signature).put(std::uint32_t{0}).put(offset + size);
    record.put(std::uint32_t{1});  // disks
}

}  // namespace

bool ZipEntry::has_large_sizes() const { return size >= max_32 || packed_size >= max_32; }

std::uint32_t dos_date(const int* date) {
    constexpr std::uint32_t first_day = 1U << 21 | 1U << 16;
    constexpr std::uint32_t last_second =
        127U << 25 | 12U << 21 | 31U << 16 | 23U << 11 | 59U << 5 | 29U;
    if (date == nullptr || date[0] < 1980) return first_day;
    if (date[0] > 2107) return last_second;
    const auto field = [date](int i, int least, int most) {
        return static_cast<std::uint32_t>(std::clamp(date[i], least, most));
    };
    return static_cast<std::uint32_t>(date[0] - 1980) << 25 | field(1, 1, 12) << 21 |
           field(2, 1, 31) << 16 | field(3, 0, 23) << 11 | field(4, 0, 59) << 5 |
           field(5, 0, 59) / 2;
}

std::string local_header(const ZipEntry& entry, bool room) {
    const bool is_large = entry.has_large_sizes();
    const std::string extra = room ? room_field(entry) : std::string();
    Record record;
    record.put(local_signature);
    put_common(record, entry, is_large ? large_version : plain_version, is_large);
    return record.put_16(extra.size()).put(entry.name).put(extra).bytes();
}

std::string directory_record(const ZipEntry& entry) {
    const std::string extra = large_field_of(large_numbers(entry));
    const std::uint16_t version = extra.empty() ? plain_version : large_version;
    Record record;
    record.put(directory_signature).put(static_cast<std::uint16_t>(made_by_unix | version));
    put_common(record, entry, version, entry.has_large_sizes());
    record.put_16(extra.size()).put_16(entry.comment.size());
    record.put(std::uint16_t{0}).put(std::uint16_t{0});  // number of the disk, kind of data
    record.put(mode_of_a_file << 16).put_32(entry.offset);
    return record.put(entry.name).put(extra).put(entry.comment).bytes();
}

std::string end_records(std::uint64_t entries, std::uint64_t size, std::uint64_t offset) {
    Record record;
    if (entries >= max_16 || size >= max_32 || offset >= max_32) {
        put_large_end(record, entries, size, offset);
    }
    record.put(end_signature).put(std::uint16_t{0}).put(std::uint16_t{0});
    record.put_16(entries).put_16(entries).put_32(size).put_32(offset);
    return record.put(std::uint16_t{0}).bytes();  // no comment
}

}  // namespace nmk_compress

#include "zip_writer.h"

#include <zlib.h>

#include <utility>

namespace nmk_compress {

namespace {

constexpr std::uint16_t stored = 0;
constexpr std::size_t max_kept = 1 << 16;

}  // namespace

int ZipWriter::start_entry(ZipEntry entry, int level) {
    if (entry.method != stored) {
        if (const int error_number = m_deflate.start(level); error_number != 0) return error_number;
    }
    m_entry = std::move(entry);
    m_entry.offset = m_output.position();
    m_has_entry = true;
    m_has_header = false;
    m_kept.clear();
    return 0;
}

void ZipWriter::append(std::string_view bytes) {
    m_entry.size += bytes.size();
    m_entry.check_sum = static_cast<std::uint32_t>(
        ::crc32_z(m_entry.check_sum, reinterpret_cast<const Bytef*>(bytes.data()), bytes.size()));
    if (m_entry.method == stored) {
        put_packed(bytes);
    } else {
        m_deflate.put(bytes, false, [this](std::string_view packed) { put_packed(packed); });
    }
}

void ZipWriter::put_packed(std::string_view bytes) {
    m_entry.packed_size += bytes.size();
    if (!m_has_header && m_kept.size() + bytes.size() <= max_kept) {
        m_kept += bytes;
        return;
    }
    if (!m_has_header) start_data();
    m_output.append(bytes);
}

void ZipWriter::start_data() {
    m_output.append(local_header(m_entry, true));
    m_output.append(m_kept);
    m_has_header = true;
}

void ZipWriter::end_entry() {
    if (m_entry.method != stored) {
        m_deflate.put({}, true, [this](std::string_view packed) { put_packed(packed); });
    }
    if (m_has_header) {
        m_output.rewrite(m_entry.offset, local_header(m_entry, true));
    } else {
        m_output.append(local_header(m_entry, false));
        m_output.append(m_kept);
    }
    m_directory += directory_record(m_entry);
    ++m_count;
    m_has_entry = false;
}

int ZipWriter::finish() {
    const std::uint64_t offset = m_output.position();
    m_output.append(m_directory);
    m_output.append(end_records(m_count, m_directory.size(), offset));
    return m_output.commit();
}

}  // namespace nmk_compress

#include <compress/cmZip.h>

#include <algorithm>
#include <cerrno>
#include <istream>
#include <utility>
#include <vector>

#include "zip_writer.h"

namespace {

constexpr int max_text = 0xFFFF;  // bytes of a name or comment
constexpr int max_block = 1 << 20;
constexpr std::uint16_t method_stored = 0;
constexpr std::uint16_t method_deflated = 8;

bool is_good_entry(const utString& name, cmZipMethod method, int level, const utString& comment) {
    return !name.is_empty() && name.length() <= max_text && comment.length() <= max_text &&
           level >= -1 && level <= 9 &&
           (method == cmZipMethodStored || method == cmZipMethodDeflate);
}

}  // namespace

cmZip::cmZip() = default;
cmZip::~cmZip() = default;

void cmZip::set_watch(Watch watch) { m_watch = std::move(watch); }

int cmZip::open(const char* name) {
    if (name == nullptr || *name == '\0' || m_writer != nullptr) return EINVAL;
    auto writer = std::make_unique<nmk_compress::ZipWriter>();
    const int error_number = writer->open(name);
    if (error_number == 0) m_writer = std::move(writer);
    return error_number;
}

bool cmZip::is_own_file(const char* name) const {
    return m_writer != nullptr && name != nullptr && m_writer->is_own_file(name);
}

int cmZip::close() {
    if (m_writer == nullptr) return EINVAL;
    if (m_writer->has_entry()) m_writer->end_entry();
    const int error_number = m_writer->finish();
    m_writer.reset();
    return error_number;
}

int cmZip::open_new_file_in_zip(const utString& name, cmZipMethod method, int level,
                                int* const date, const utString& comment) {
    if (m_writer == nullptr || !is_good_entry(name, method, level, comment)) return EINVAL;
    if (m_writer->has_entry()) m_writer->end_entry();
    nmk_compress::ZipEntry entry;
    entry.name = name.view();
    entry.comment = comment.view();
    entry.method = method == cmZipMethodDeflate ? method_deflated : method_stored;
    entry.dos_date = nmk_compress::dos_date(date);
    const int error_number = m_writer->start_entry(std::move(entry), level);
    return error_number != 0 ? error_number : m_writer->failure();
}

int cmZip::write_in_file_in_zip(const char* bytes, int count) {
    if (m_writer == nullptr || !m_writer->has_entry()) return EINVAL;
    if (count < 0 || (bytes == nullptr && count > 0)) return EINVAL;
    if (count > 0) m_writer->append({bytes, static_cast<std::size_t>(count)});
    if (m_watch && !m_watch(count)) m_writer->set_failure(ECANCELED);
    return m_writer->failure();
}

int cmZip::zip_current_file(std::istream& stream, int block_size) {
    if (m_writer == nullptr || !m_writer->has_entry() || block_size <= 0) return EINVAL;
    std::vector<char> block(static_cast<std::size_t>(std::min(block_size, max_block)));
    int error_number = 0;
    while (error_number == 0 && stream) {
        stream.read(block.data(), static_cast<std::streamsize>(block.size()));
        error_number = write_in_file_in_zip(block.data(), static_cast<int>(stream.gcount()));
    }
    if (error_number == 0 && !stream.eof()) {
        m_writer->drop_entry();
        return EIO;
    }
    return error_number;
}

int cmZip::close_file_in_zip() {
    if (m_writer == nullptr || !m_writer->has_entry()) return EINVAL;
    m_writer->end_entry();
    return m_writer->failure();
}

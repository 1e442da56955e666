#include "entry_file.h"

#include <algorithm>
#include <limits>

namespace nmk_pers {

namespace {

constexpr std::size_t max_block = std::size_t{1} << 20U;

}  // namespace

void OutputEntry::Write(const void* bytes, std::size_t count) {
    const auto* from = static_cast<const char*>(bytes);
    while (count > 0) {
        const std::size_t block = std::min(count, max_block);
        const int error = m_zip.write_in_file_in_zip(from, static_cast<int>(block));
        if (error != 0) throw CFileException::from_os_error(error);
        from += block;
        count -= block;
        m_position += block;
    }
}

std::size_t InputEntry::Read(void* bytes, std::size_t count) {
    auto* const to = static_cast<char*>(bytes);
    const std::size_t again = std::min(count, m_back);
    std::copy_n(m_last.end() - static_cast<std::ptrdiff_t>(m_back), again, to);
    m_back -= again;
    const std::size_t read = again < count ? read_entry(to + again, count - again) : 0;
    if (read > 0) keep_last(to, again + read);
    m_position += again + read;
    return again + read;
}

std::size_t InputEntry::read_entry(char* bytes, std::size_t count) {
    std::size_t total = 0;
    while (total < count) {
        const std::size_t block = std::min(count - total, max_block);
        const int got = m_zip.read_current_file(bytes + total, static_cast<int>(block));
        if (got < 0) throw CFileException::from_os_error(m_zip.failure());
        if (got == 0) break;
        total += static_cast<std::size_t>(got);
    }
    return total;
}

void InputEntry::keep_last(const char* bytes, std::size_t count) {
    const std::size_t kept = std::min(count, max_block);
    m_last.assign(bytes + (count - kept), kept);
}

std::uint64_t InputEntry::Seek(std::int64_t offset, SeekPosition from) {
    const bool is_back = from == current && offset <= 0 &&
                         offset > std::numeric_limits<std::int64_t>::min() &&
                         static_cast<std::uint64_t>(-offset) <= m_last.size() - m_back;
    if (!is_back) throw CFileException(CFileException::badSeek);
    m_back += static_cast<std::size_t>(-offset);
    m_position -= static_cast<std::uint64_t>(-offset);
    return m_position;
}

}  // namespace nmk_pers

// CArchive: life, buffer and bytes.
#include <mfc/CArchive.h>
#include <mfc/CFile.h>

CArchive::CArchive(CFile* file, unsigned int mode, int buffer_size)
    : m_file(file),
      m_mode(mode == load ? load : store),
      m_buffer(static_cast<std::size_t>(std::max(buffer_size, 1))),
      m_position(m_buffer.data()),
      m_end(m_mode == load ? m_position : m_position + m_buffer.size()),
      m_exceptions_at_start(std::uncaught_exceptions()) {}

CArchive::~CArchive() noexcept(false) {
    if (std::uncaught_exceptions() > m_exceptions_at_start) {
        Abort();
    } else {
        Close();
    }
}

void CArchive::Flush() {
    if (m_file == nullptr) return;
    if (m_mode == store) {
        empty_buffer();
        m_file->Flush();
    } else if (room() > 0) {
        m_file->Seek(-static_cast<std::int64_t>(room()), CFile::current);
        m_position = m_end;
    }
}

void CArchive::Close() {
    try {
        Flush();
    } catch (...) {
        Abort();
        throw;
    }
    Abort();
}

void CArchive::Abort() noexcept {
    m_file = nullptr;
    m_end = m_position;
}

std::size_t CArchive::Read(void* bytes, std::size_t count) {
    require(load);
    auto* to = static_cast<unsigned char*>(bytes);
    std::size_t left = count;
    while (left > 0) {
        if (room() == 0 && left >= m_buffer.size()) return count - left + m_file->Read(to, left);
        if (room() == 0) fill_buffer();
        const std::size_t taken = std::min(left, room());
        if (taken == 0) break;
        std::memcpy(to, m_position, taken);
        m_position += taken;
        to += taken;
        left -= taken;
    }
    return count - left;
}

void CArchive::Write(const void* bytes, std::size_t count) {
    require(store);
    if (count == 0) return;
    if (count > room()) empty_buffer();
    if (count > room()) {
        m_file->Write(bytes, count);
    } else {
        std::memcpy(m_position, bytes, count);
        m_position += count;
    }
}

void CArchive::require(Mode mode) const {
    if (m_file == nullptr) throw CArchiveException(CArchiveException::generic);
    if (m_mode == mode) return;
    throw CArchiveException(m_mode == load ? CArchiveException::readOnly
                                           : CArchiveException::writeOnly);
}

void CArchive::fill_buffer() {
    m_position = m_buffer.data();
    m_end = m_position;
    m_end += m_file->Read(m_position, m_buffer.size());
}

void CArchive::empty_buffer() {
    const auto filled = static_cast<std::size_t>(m_position - m_buffer.data());
    if (filled == 0) return;
    m_file->Write(m_buffer.data(), filled);
    m_position = m_buffer.data();
}

void CArchive::read_all(void* bytes, std::size_t count) {
    if (Read(bytes, count) < count) throw CArchiveException(CArchiveException::endOfFile);
}

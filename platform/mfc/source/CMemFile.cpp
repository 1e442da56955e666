#include <mfc/CMemFile.h>

#include <algorithm>
#include <cstring>

CRuntimeClass* CMemFile::GetRuntimeClass() const { return GetThisClass(); }

CRuntimeClass* CMemFile::GetThisClass() {
    static CRuntimeClass of_this = {"CMemFile", sizeof(CMemFile), CFile::GetThisClass()};
    return &of_this;
}

CRuntimeClass* CMemFile::_GetBaseClass() { return CFile::GetThisClass(); }

std::size_t CMemFile::Read(void* to, std::size_t count) {
    const std::span<const unsigned char> all = bytes();
    const std::size_t left = m_position < all.size() ? all.size() - m_position : 0;
    const std::size_t taken = std::min(count, left);
    if (taken > 0) std::memcpy(to, all.data() + m_position, taken);
    m_position += taken;
    return taken;
}

void CMemFile::Write(const void* from, std::size_t count) {
    if (!m_is_owner) throw CFileException(CFileException::accessDenied);
    if (count == 0) return;
    if (m_owned.size() < m_position) m_owned.resize(m_position);
    const unsigned char* const first = static_cast<const unsigned char*>(from);
    const std::size_t replaced = std::min(count, m_owned.size() - m_position);
    if (replaced > 0) std::memcpy(m_owned.data() + m_position, first, replaced);
    m_owned.insert(m_owned.end(), first + replaced, first + count);
    m_position += count;
}

std::uint64_t CMemFile::Seek(std::int64_t offset, SeekPosition from) {
    const std::size_t start = from == begin ? 0 : from == current ? m_position : bytes().size();
    std::int64_t position = 0;
    if (__builtin_add_overflow(static_cast<std::int64_t>(start), offset, &position) ||
        position < 0) {
        throw CFileException(CFileException::badSeek);
    }
    m_position = static_cast<std::size_t>(position);
    return m_position;
}

std::uint64_t CMemFile::GetPosition() const { return m_position; }

std::uint64_t CMemFile::GetLength() const { return bytes().size(); }

void CMemFile::Close() {}

void CMemFile::Abort() noexcept {}

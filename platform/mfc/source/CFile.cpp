#include <fcntl.h>
#include <mfc/CFile.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace {

constexpr mode_t mode_of_new_files = 0666;  // less what the process's mask takes away

int system_flags(unsigned int flags) {
    const unsigned int access = flags & 3U;
    int system = access == CFile::modeRead ? O_RDONLY : O_WRONLY;
    if (access == CFile::modeReadWrite) system = O_RDWR;
    if ((flags & CFile::modeCreate) != 0) {
        system |= O_CREAT;
        if ((flags & CFile::modeNoTruncate) == 0) system |= O_TRUNC;
    }
    return system | O_CLOEXEC;
}

[[noreturn]] void fail() { throw CFileException::from_os_error(errno); }

// Calls again where a signal came in between.
template <class Call>
auto uninterrupted(const Call& call) {
    auto result = call();
    while (result < 0 && errno == EINTR) result = call();
    return result;
}

}  // namespace

CFile::CFile(const char* name, unsigned int flags) {
    CFileException error;
    if (!Open(name, flags, &error)) throw error;
}

CFile::~CFile() { CFile::Abort(); }

CRuntimeClass* CFile::GetRuntimeClass() const { return GetThisClass(); }

CRuntimeClass* CFile::GetThisClass() {
    static CRuntimeClass of_this = {"CFile", sizeof(CFile), CObject::GetThisClass()};
    return &of_this;
}

CRuntimeClass* CFile::_GetBaseClass() { return CObject::GetThisClass(); }

bool CFile::Open(const char* name, unsigned int flags, CFileException* error) {
    CFile::Abort();
    if (name != nullptr) {
        m_descriptor =
            uninterrupted([&] { return ::open(name, system_flags(flags), mode_of_new_files); });
    } else {
        errno = ENOENT;
    }
    if (m_descriptor < 0 && error != nullptr) *error = CFileException::from_os_error(errno);
    return m_descriptor >= 0;
}

std::size_t CFile::Read(void* bytes, std::size_t count) {
    std::size_t done = 0;
    while (done < count) {
        const ssize_t got = uninterrupted(
            [&] { return ::read(m_descriptor, static_cast<char*>(bytes) + done, count - done); });
        if (got < 0) fail();
        if (got == 0) break;
        done += static_cast<std::size_t>(got);
    }
    return done;
}

void CFile::Write(const void* bytes, std::size_t count) {
    std::size_t done = 0;
    while (done < count) {
        const ssize_t put = uninterrupted([&] {
            return ::write(m_descriptor, static_cast<const char*>(bytes) + done, count - done);
        });
        if (put < 0) fail();
        done += static_cast<std::size_t>(put);
    }
}

std::uint64_t CFile::Seek(std::int64_t offset, SeekPosition from) {
    const int whence = from == begin ? SEEK_SET : from == current ? SEEK_CUR : SEEK_END;
    const off_t position = ::lseek(m_descriptor, offset, whence);
    if (position < 0) fail();
    return static_cast<std::uint64_t>(position);
}

std::uint64_t CFile::GetPosition() const {
    const off_t position = ::lseek(m_descriptor, 0, SEEK_CUR);
    if (position < 0) fail();
    return static_cast<std::uint64_t>(position);
}

std::uint64_t CFile::GetLength() const {
    struct stat state {};
    if (::fstat(m_descriptor, &state) != 0) fail();
    return static_cast<std::uint64_t>(state.st_size);
}

void CFile::Flush() {}

void CFile::Close() {
    if (m_descriptor < 0) return;
    // A close that a signal interrupts has closed the descriptor all the same.
    if (::close(std::exchange(m_descriptor, -1)) != 0 && errno != EINTR) fail();
}

void CFile::Abort() noexcept {
    if (m_descriptor >= 0) ::close(std::exchange(m_descriptor, -1));
}

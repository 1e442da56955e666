#include "archive_output.h"

#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdlib>

namespace nmk_compress {

namespace {

constexpr std::size_t buffer_size = 1 << 16;
constexpr mode_t mode_of_a_new_file = 0666;  // less the umask

bool is_same_file(const struct stat& a, const struct stat& b) {
    return a.st_ino == b.st_ino && a.st_dev == b.st_dev;
}

}  // namespace

// A symlink at the name means the file that it leads to.
int ArchiveOutput::resolve(const char* name) {
    struct stat link;
    m_target = name;
    if (::lstat(name, &link) != 0) return errno == ENOENT ? 0 : errno;
    if (::stat(name, &m_replaced) != 0) return errno;
    if (S_ISDIR(m_replaced.st_mode)) return EISDIR;
    if (!S_ISREG(m_replaced.st_mode)) return EINVAL;
    if (::access(name, W_OK) != 0) return errno;
    m_replaces = true;
    char resolved[PATH_MAX];
    if (S_ISLNK(link.st_mode)) {
        if (::realpath(name, resolved) == nullptr) return errno;
        m_target = resolved;
    }
    return 0;
}

int ArchiveOutput::open(const char* name) {
    int error_number = resolve(name);
    if (error_number == 0) error_number = m_file.create(m_target, mode_of_a_new_file);
    if (error_number == 0 && m_replaces) error_number = m_file.set_mode(m_replaced.st_mode & 07777);
    m_buffer.reserve(buffer_size);
    return error_number;
}

bool ArchiveOutput::is_own_file(const char* name) const {
    struct stat other, own;
    if (::stat(name, &other) != 0) return false;
    return (m_replaces && is_same_file(other, m_replaced)) ||
           (::fstat(m_file.descriptor(), &own) == 0 && is_same_file(other, own));
}

void ArchiveOutput::set_failure(int error_number) {
    if (m_failure == 0) m_failure = error_number;
}

void ArchiveOutput::append(std::string_view bytes) {
    if (m_failure != 0) return;
    m_position += bytes.size();
    if (m_buffer.size() + bytes.size() > buffer_size) flush();
    if (bytes.size() < buffer_size) {
        m_buffer += bytes;
    } else {
        set_failure(m_file.write(bytes));
    }
}

void ArchiveOutput::flush() {
    set_failure(m_file.write(m_buffer));
    m_buffer.clear();
}

void ArchiveOutput::rewrite(std::uint64_t offset, std::string_view bytes) {
    flush();
    while (m_failure == 0 && !bytes.empty()) {
        const ssize_t count =
            ::pwrite(m_file.descriptor(), bytes.data(), bytes.size(), static_cast<off_t>(offset));
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return set_failure(count < 0 ? errno : EIO);
        offset += static_cast<std::uint64_t>(count);
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
}

int ArchiveOutput::commit() {
    flush();
    if (m_failure == 0) set_failure(m_file.commit(nmk_filesystem::SafeFile::Existing::replaced));
    if (m_failure == 0) m_file.flush_directory();
    m_file.discard();
    return m_failure;
}

}  // namespace nmk_compress

#include <fcntl.h>
#include <filesystem/directory_walk.h>
#include <filesystem/faults.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace nmk_filesystem {

namespace {

int result_of(int returned) { return returned == 0 ? 0 : errno; }

// What is missing already counts as deleted.
int result_of_deletion(int returned) { return returned == 0 || errno == ENOENT ? 0 : errno; }

}  // namespace

int DirectoryWalk::open_flags() const {
    return (m_use == Use::writing ? O_PATH : O_RDONLY) | O_DIRECTORY | O_CLOEXEC;
}

DirectoryWalk::Identity DirectoryWalk::identity_of(int descriptor) {
    struct stat record {};
    ::fstat(descriptor, &record);
    return {record.st_dev, record.st_ino};
}

int DirectoryWalk::open(const char* name, Symlink symlink) {
    m_above.clear();
    m_directory.reset(::open(name, open_flags() | (symlink == Symlink::refused ? O_NOFOLLOW : 0)));
    return m_directory.is_open() ? 0 : errno;
}

bool DirectoryWalk::exists(const char* name) const {
    struct stat record;
    return ::fstatat(descriptor(), name, &record, AT_SYMLINK_NOFOLLOW) == 0 || errno != ENOENT;
}

int DirectoryWalk::enter(const char* name) {
    if (const int fault = injected_fault("enter directory", name); fault != 0) return fault;
    Descriptor inner(::openat(descriptor(), name, open_flags() | O_NOFOLLOW));
    if (!inner.is_open()) return errno;
    m_above.push_back(identity());
    m_directory = std::move(inner);
    return 0;
}

int DirectoryWalk::leave() {
    m_directory.reset(::openat(descriptor(), "..", open_flags()));
    if (!m_directory.is_open()) return errno;
    const Identity expected = m_above.back();
    m_above.pop_back();
    return identity() == expected ? 0 : ENOENT;
}

int DirectoryWalk::make_writeable() const {
    struct stat record;
    if (::fstat(descriptor(), &record) != 0) return errno;
    if ((record.st_mode & S_IWUSR) != 0) return 0;
    return result_of(::fchmod(descriptor(), (record.st_mode & 07777) | S_IWUSR));
}

int DirectoryWalk::remove_file(const char* name) const {
    struct stat record;
    if (::fstatat(descriptor(), name, &record, AT_SYMLINK_NOFOLLOW) != 0) {
        return result_of_deletion(-1);
    }
    if (S_ISDIR(record.st_mode)) return EISDIR;
    if (const int fault = injected_fault("remove", name); fault != 0) return fault;
    if (!S_ISLNK(record.st_mode) && (record.st_mode & S_IWUSR) == 0) return EACCES;
    return result_of_deletion(::unlinkat(descriptor(), name, 0));
}

int DirectoryWalk::remove_directory(const char* name) const {
    if (const int fault = injected_fault("remove directory", name); fault != 0) return fault;
    return result_of_deletion(::unlinkat(descriptor(), name, AT_REMOVEDIR));
}

int DirectoryWalk::make_directory(const char* name) const {
    if (const int fault = injected_fault("make directory", name); fault != 0) return fault;
    return result_of(::mkdirat(descriptor(), name, 0777));
}

}  // namespace nmk_filesystem

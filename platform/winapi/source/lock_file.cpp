#include "lock_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <mutex>
#include <set>

#include "file_identity.h"
#include "fork_handlers.h"

namespace winapi {

namespace {

struct LockFiles {
    std::mutex guard;
    std::set<LockFile*> all;  // under guard
};

// Never destroyed: a lock may be given back by the destructor of another static object.
LockFiles& lock_files() {
    static auto* const the_files = new LockFiles;
    return *the_files;
}

}  // namespace

LockFile::LockFile() {
    install_fork_handlers();
    const std::lock_guard lock(lock_files().guard);
    lock_files().all.insert(this);
}

LockFile::~LockFile() {
    const std::lock_guard lock(lock_files().guard);
    lock_files().all.erase(this);
    m_file.reset(-1);
}

int LockFile::open(const std::string& name) {
    const std::lock_guard lock(lock_files().guard);
    m_file.reset(
        ::open(name.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0600));
    return m_file.is_open() ? 0 : errno;
}

int LockFile::lock(Part part) { return set(F_OFD_SETLKW, F_WRLCK, part); }

int LockFile::try_lock(Part part) { return set(F_OFD_SETLK, F_WRLCK, part); }

int LockFile::try_share(Part part) { return set(F_OFD_SETLK, F_RDLCK, part); }

int LockFile::unlock(Part part) { return set(F_OFD_SETLK, F_UNLCK, part); }

bool LockFile::is_still_named(const std::string& name) const {
    const auto open_file = identity_of(m_file.number());
    return open_file && open_file == identity_of(name, false);
}

bool LockFile::is_marked() const {
    char byte = 0;
    return ::pread(m_file.number(), &byte, 1, 0) == 1 && byte == 1;
}

void LockFile::mark(bool marked) const {
    const char byte = marked ? 1 : 0;
    [[maybe_unused]] const ssize_t ignored = ::pwrite(m_file.number(), &byte, 1, 0);
}

int LockFile::set(int command, short kind, Part part) {
    struct flock range = {};
    range.l_type = kind;
    range.l_whence = SEEK_SET;
    range.l_start = static_cast<off_t>(part);
    range.l_len = 1;
    while (::fcntl(m_file.number(), command, &range) != 0) {
        if (errno != EINTR) return errno == EACCES ? EAGAIN : errno;
    }
    return 0;
}

void LockFile::before_fork() { lock_files().guard.lock(); }

void LockFile::after_fork_in_parent() { lock_files().guard.unlock(); }

void LockFile::after_fork_in_child() {
    for (LockFile* const file : lock_files().all) file->m_file.reset(-1);
    lock_files().guard.unlock();
}

}  // namespace winapi

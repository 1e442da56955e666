#include <fcntl.h>
#include <filesystem/directory_listing.h>
#include <filesystem/faults.h>
#include <filesystem/random_number.h>
#include <filesystem/remove_rename.h>
#include <filesystem/safe_file.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cinttypes>
#include <cstdio>

namespace nmk_filesystem {

namespace {

// Attempts to find a free hidden name; each has 64 bits of its own.
constexpr int max_attempts = 10;
// From so many files on, one flush of the whole disk is quicker than one for each file.
constexpr std::size_t min_files_for_one_flush = 8;

constexpr std::string_view prefix = ".nmk_part_";
constexpr std::size_t digits_of_a_name = 16;

std::string temporary_name(std::uint64_t random) {
    char digits[digits_of_a_name + 1];
    std::snprintf(digits, sizeof digits, "%016" PRIx64, random);
    return std::string(prefix) + digits;
}

bool is_same_file(const struct stat& a, const struct stat& b) {
    return a.st_ino == b.st_ino && a.st_dev == b.st_dev;
}

// True while the entry of that name is the open file.
bool is_entry(int directory, const char* name, int file) {
    struct stat open_file, entry;
    return ::fstat(file, &open_file) == 0 &&
           ::fstatat(directory, name, &entry, AT_SYMLINK_NOFOLLOW) == 0 &&
           is_same_file(open_file, entry);
}

// 0, or the errno for which the file could not be locked at once.
int lock(int file) {
    const int fault = injected_fault("flock", "");
    return fault != 0 ? fault : ::flock(file, LOCK_EX | LOCK_NB) == 0 ? 0 : errno;
}

void remove_leftover(int directory, const char* name) {
    // Without waiting: the name may have been given to a pipe.
    const Descriptor file(
        ::openat(directory, name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    struct stat record;
    if (!file.is_open() || ::fstat(file.number(), &record) != 0 || !S_ISREG(record.st_mode)) return;
    // A file that was renamed meanwhile has its lock released and must stay.
    if (lock(file.number()) == 0 && is_entry(directory, name, file.number())) {
        ::unlinkat(directory, name, 0);
    }
}

}  // namespace

bool is_temporary_name(std::string_view name) {
    constexpr std::string_view digits = "0123456789abcdef";
    return name.size() == prefix.size() + digits_of_a_name && name.starts_with(prefix) &&
           name.find_first_not_of(digits, prefix.size()) == name.npos;
}

void remove_leftovers(int directory) {
    DirectoryListing entries;
    entries.read(directory, &is_temporary_name);
    for (std::size_t i = 0; i < entries.size(); ++i) {
        remove_leftover(directory, entries[i].name);
    }
}

int SafeFile::create(const std::string& target, mode_t mode) {
    const auto slash = target.rfind('/');
    const std::string directory =
        slash == target.npos ? "." : target.substr(0, std::max<std::size_t>(slash, 1));
    discard();
    if (target.empty() || target.ends_with('/')) return EISDIR;
    m_own_directory.reset(::open(directory.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (!m_own_directory.is_open()) return errno;
    remove_leftovers(m_own_directory.number());
    return create_in(m_own_directory.number(),
                     slash == target.npos ? target : target.substr(slash + 1), mode);
}

int SafeFile::create_in(int directory, const std::string& name, mode_t mode) {
    discard();
    if (name.empty() || name == "." || name == "..") return EISDIR;
    // Once committed it would count as a leftover, and be removed.
    if (is_temporary_name(name)) return EPERM;
    m_directory = directory;
    m_name = name;
    m_size = 0;
    m_is_flushed = false;
    int error_number = EEXIST;
    for (int i = 0; i < max_attempts && error_number == EEXIST; ++i) {
        error_number = create_temporary(mode);
    }
    return error_number;
}

// 0 or errno; EEXIST when another name is to be tried.
int SafeFile::create_temporary(mode_t mode) {
    std::uint64_t random;
    if (!random_number(random)) return errno;
    const std::string name = temporary_name(random);
    // Neither an existing file nor a symlink, dangling or not, is taken.
    m_file.reset(::openat(m_directory, name.c_str(),
                          O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode));
    if (!m_file.is_open()) return errno;
    m_temporary = name;
    const int error_number = lock_temporary();
    if (error_number != 0) discard();
    return error_number;
}

// Another process may have taken the new file for a leftover before it was locked. Disks without
// locks do without: nothing is removed there either.
int SafeFile::lock_temporary() {
    const int error_number = lock(m_file.number());
    const bool is_lost = error_number == EWOULDBLOCK || !is_still_named();
    return is_lost ? EEXIST : 0;
}

bool SafeFile::is_still_named() const {
    return is_entry(m_directory, m_temporary.c_str(), m_file.number());
}

int SafeFile::write(std::string_view bytes) {
    m_is_flushed = false;
    while (!bytes.empty()) {
        const ssize_t count = ::write(m_file.number(), bytes.data(), bytes.size());
        if (count < 0 && errno != EINTR) return errno;
        const auto written = static_cast<std::size_t>(std::max<ssize_t>(count, 0));
        m_size += static_cast<std::int64_t>(written);
        bytes.remove_prefix(written);
    }
    return 0;
}

int SafeFile::set_mode(mode_t mode) { return ::fchmod(m_file.number(), mode) == 0 ? 0 : errno; }

int SafeFile::set_owner(uid_t owner, gid_t group) {
    return ::fchown(m_file.number(), owner, group) == 0 ? 0 : errno;
}

void SafeFile::flush_together(std::span<SafeFile* const> files) {
    if (files.size() < min_files_for_one_flush) return;
    if (injected_fault("syncfs", "") != 0 || ::syncfs(files.front()->descriptor()) != 0) return;
    for (SafeFile* const file : files) file->m_is_flushed = true;
}

int SafeFile::flush() {
    int error_number = injected_fault("fsync", m_name.c_str());
    if (error_number == 0 && ::fsync(m_file.number()) != 0) error_number = errno;
    m_is_flushed = error_number == 0;
    return error_number;
}

int SafeFile::check_size() const {
    struct stat record;
    if (::fstat(m_file.number(), &record) != 0) return errno;
    return record.st_size == m_size ? 0 : EIO;
}

int SafeFile::commit(Existing existing) {
    if (!m_file.is_open()) return EBADF;
    if (const int error_number = m_is_flushed ? 0 : flush(); error_number != 0) return error_number;
    if (const int error_number = check_size(); error_number != 0) return error_number;
    const Location from{m_directory, m_temporary.c_str()};
    const Location to{m_directory, m_name.c_str()};
    const int error_number = existing == Existing::kept ? rename_without_replacing(from, to)
                                                        : rename_replacing(from, to);
    if (error_number != 0) return error_number;
    m_temporary.clear();
    m_file.reset(-1);
    return 0;
}

void SafeFile::flush_directory() const {
    const Descriptor directory(::openat(m_directory, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (directory.is_open()) ::fsync(directory.number());
}

void SafeFile::discard() {
    // Only our own file: another process may have removed it and used the name.
    if (!m_temporary.empty() && is_still_named()) {
        ::unlinkat(m_directory, m_temporary.c_str(), 0);
    }
    m_temporary.clear();
    m_file.reset(-1);
}

}  // namespace nmk_filesystem

#include <fcntl.h>
#include <filesystem/copy_file.h>
#include <filesystem/descriptor.h>
#include <filesystem/faults.h>
#include <stdlib.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <memory>

#include "data_pump.h"

namespace nmk_filesystem {

namespace {

// Bytes between two calls of the watch.
constexpr std::int64_t watched_part = 1 << 20;
// Bytes handed to the kernel at once when nothing watches.
constexpr std::int64_t unwatched_part = 1 << 28;

// Looks at a target that another process creates or replaces meanwhile.
constexpr int max_looks = 3;

constexpr mode_t permissions = 0777;

bool is_same_file(const struct stat& a, const struct stat& b) {
    return a.st_ino == b.st_ino && a.st_dev == b.st_dev;
}

// Opens the source and reads its record; 0 or errno.
int open_source(const Location& source, Descriptor& file, struct stat& record) {
    if (const int fault = injected_fault("copy file", source.name); fault != 0) return fault;
    // Without waiting: a pipe without a writer must not hold the copy up.
    file.reset(::openat(source.directory, source.name, O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    if (!file.is_open() || ::fstat(file.number(), &record) != 0) {
        return errno == ENXIO ? EACCES : errno;
    }
    return S_ISREG(record.st_mode) ? 0 : EACCES;
}

// Moves `total` bytes, or all that there are if it is 0: virtual files report no length.
int move_contents(int from, SafeFile& to, std::int64_t total, const CopyWatch& watch,
                  const char* source) {
    if (watch && !watch(total, 0)) return ECANCELED;
    const std::int64_t part = watch ? watched_part : unwatched_part;
    DataPump pump(from, to.descriptor(), total);
    std::int64_t transferred = 0;
    while (total == 0 || transferred < total) {
        if (const int fault = injected_fault("copy part", source); fault != 0) return fault;
        const auto moved = pump.move(total == 0 ? part : std::min(part, total - transferred));
        if (moved < 0) return errno;
        if (moved == 0) break;
        to.count_written(moved);
        transferred += moved;
        if (watch && !watch(total, transferred)) return ECANCELED;
    }
    return transferred < total ? ENODATA : 0;
}

// A disk that keeps no times does not fail the copy.
void copy_times(const struct stat& source, int target) {
    const timespec times[2] = {source.st_atim, source.st_mtim};
    [[maybe_unused]] const int kept = ::futimens(target, times);
}

}  // namespace

CopyResult copy_file(const Location& source, const Location& target, const CopySettings& settings) {
    FileCopy copy;
    const CopyResult written = copy.write(source, target, settings);
    return written.error_number == 0 ? copy.commit() : written;
}

CopyResult FileCopy::write(const Location& source, const Location& target,
                           const CopySettings& settings) {
    Descriptor from;
    if (const int error_number = open_source(source, from, m_source); error_number != 0) {
        return {error_number, false};
    }
    m_target = target;
    m_existing = settings.existing;
    m_target_symlink = settings.target_symlink;
    m_mode = settings.mode;
    int error_number = look_at_target();
    if (error_number == 0) error_number = create_file();
    if (error_number != 0) return fail_at_target(error_number);
    error_number =
        move_contents(from.number(), m_file, m_source.st_size, settings.watch, source.name);
    copy_times(m_source, m_file.descriptor());
    if (error_number != 0) m_file.discard();
    return {error_number, false};
}

// 0, or the errno that forbids the copy.
int FileCopy::look_at_target() {
    m_resolved.clear();
    m_target_exists =
        ::fstatat(m_target.directory, m_target.name, &m_replaced, AT_SYMLINK_NOFOLLOW) == 0;
    // A missing directory is reported when the file is created.
    if (!m_target_exists) return errno == ENOENT ? 0 : errno;
    if (m_existing == SafeFile::Existing::kept) return EEXIST;
    if (S_ISLNK(m_replaced.st_mode)) {
        if (m_target_symlink == TargetSymlink::replaced) return 0;
        if (const int error_number = resolve_target_symlink(); error_number != 0) {
            return error_number;
        }
    }
    if (is_same_file(m_replaced, m_source)) return EBUSY;
    const char* const name = m_resolved.empty() ? m_target.name : m_resolved.c_str();
    const bool is_writeable = S_ISREG(m_replaced.st_mode) && (m_replaced.st_mode & S_IWUSR) != 0 &&
                              ::faccessat(m_target.directory, name, W_OK, AT_EACCESS) == 0;
    return is_writeable ? 0 : EACCES;
}

// Only for names that start at AT_FDCWD, which realpath takes.
int FileCopy::resolve_target_symlink() {
    const std::unique_ptr<char, decltype(&::free)> whole(::realpath(m_target.name, nullptr),
                                                         &::free);
    if (!whole || ::stat(whole.get(), &m_replaced) != 0) return errno;
    m_resolved = whole.get();
    return 0;
}

int FileCopy::create_file() {
    const mode_t mode = m_mode.value_or(m_source.st_mode & permissions);
    const std::string name = m_resolved.empty() ? m_target.name : m_resolved;
    int error_number = m_target.directory == AT_FDCWD
                           ? m_file.create(name, mode)
                           : m_file.create_in(m_target.directory, name, mode);
    if (error_number != 0) return error_number;
    if (m_target_exists && !S_ISLNK(m_replaced.st_mode)) {
        // Where that is not allowed it is the process's own file, as a new one would be.
        [[maybe_unused]] const int kept = m_file.set_owner(m_replaced.st_uid, m_replaced.st_gid);
    }
    return m_mode ? m_file.set_mode(*m_mode) : 0;
}

CopyResult FileCopy::commit() {
    for (int look = 0; look < max_looks; ++look) {
        // A file that was missing at the last look is not replaced without another look.
        const auto existing =
            m_target_exists ? SafeFile::Existing::replaced : SafeFile::Existing::kept;
        int error_number = m_file.commit(existing);
        if (error_number != EEXIST) return fail_at_target(error_number);
        error_number = look_at_target();
        if (error_number != 0) return fail_at_target(error_number);
        // The file was written beside the name, not beside what a new symlink leads to.
        if (!m_resolved.empty()) return fail_at_target(EBUSY);
    }
    return fail_at_target(EBUSY);
}

}  // namespace nmk_filesystem

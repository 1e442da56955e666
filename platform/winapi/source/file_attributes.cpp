#include <fcntl.h>
#include <unistd.h>
#include <winapi/file_attributes.h>

#include <cerrno>
#include <limits>

#include "attributes_of.h"
#include "failure.h"

using winapi::fail_in_runtime;

namespace {

constexpr mode_t every_write_permission = S_IWUSR | S_IWGRP | S_IWOTH;

// Seconds from the start of 1601 to that of 1970.
constexpr std::int64_t epochs_apart = 11644473600;

int may_be_reached(const char* name, int mode) {
    struct stat record;
    if (::stat(name, &record) != 0) {
        return fail_in_runtime(errno, name);
    }
    if (mode == 0 || S_ISDIR(record.st_mode)) {
        return 0;
    }
    // Root is refused too: read-only is a property of the file here, not of the process.
    if ((mode & W_OK) != 0 && winapi::is_read_only(record)) {
        return fail_in_runtime(EACCES, name);
    }
    if (::faccessat(AT_FDCWD, name, mode, AT_EACCESS) != 0) {
        return fail_in_runtime(errno, name);
    }
    return 0;
}

void fill(struct _stat64i32& record, const struct stat& from) {
    record.st_dev = from.st_dev;
    record.st_ino = from.st_ino;
    record.st_mode = from.st_mode;
    record.st_nlink = from.st_nlink;
    record.st_uid = from.st_uid;
    record.st_gid = from.st_gid;
    record.st_rdev = from.st_rdev;
    record.st_size = static_cast<std::int32_t>(from.st_size);
    record.st_atim = from.st_atim;
    record.st_mtim = from.st_mtim;
    record.st_ctim = from.st_ctim;
}

}  // namespace

namespace winapi {

DWORD attributes_of(const struct stat& record) {
    const DWORD read_only = is_read_only(record) ? FILE_ATTRIBUTE_READONLY : 0;
    switch (record.st_mode & S_IFMT) {
        case S_IFDIR:
            return FILE_ATTRIBUTE_DIRECTORY | read_only;
        case S_IFREG:
            return FILE_ATTRIBUTE_ARCHIVE | read_only;
        case S_IFLNK:
            return FILE_ATTRIBUTE_REPARSE_POINT;
        default:
            return FILE_ATTRIBUTE_DEVICE | read_only;
    }
}

FILETIME file_time_of(const timespec& moment) {
    const auto ticks = static_cast<std::uint64_t>((moment.tv_sec + epochs_apart) * 10000000 +
                                                  moment.tv_nsec / 100);
    return {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
}

}  // namespace winapi

DWORD GetFileAttributesA(LPCSTR name) {
    if (winapi::is_nothing(name)) {
        winapi::fail(ENOENT, name);
        return INVALID_FILE_ATTRIBUTES;
    }
    struct stat record;
    int error_number = winapi::injected_fault("GetFileAttributesA", name);
    if (error_number == 0 && ::lstat(name, &record) != 0) {
        error_number = errno;
    }
    if (error_number != 0) {
        winapi::fail(error_number, name);
        return INVALID_FILE_ATTRIBUTES;
    }
    return winapi::attributes_of(record);
}

BOOL SetFileAttributesA(LPCSTR name, DWORD attributes) {
    if (winapi::is_nothing(name)) {
        return winapi::fail(ENOENT, name);
    }
    if (const int fault = winapi::injected_fault("SetFileAttributesA", name); fault != 0) {
        return winapi::fail(fault, name);
    }
    struct stat record;
    if (::lstat(name, &record) != 0) {
        return winapi::fail(errno, name);
    }
    const bool read_only = (attributes & FILE_ATTRIBUTE_READONLY) != 0;
    if (S_ISLNK(record.st_mode)) {
        return read_only ? winapi::fail(EACCES, name) : TRUE;
    }
    if (read_only == winapi::is_read_only(record)) {
        return TRUE;
    }
    const mode_t mode = record.st_mode & 07777;
    const mode_t wanted = read_only ? mode & ~every_write_permission : mode | S_IWUSR;
    // A symlink that took the file's place meanwhile is refused by the kernel, not followed.
    if (::fchmodat(AT_FDCWD, name, wanted, AT_SYMLINK_NOFOLLOW) != 0) {
        return winapi::fail(errno == EOPNOTSUPP ? EACCES : errno, name);
    }
    return TRUE;
}

int _access(const char* name, int mode) {
    if (mode != 0 && mode != W_OK && mode != R_OK && mode != (R_OK | W_OK)) {
        return fail_in_runtime(EINVAL, name);
    }
    if (winapi::is_nothing(name)) {
        return fail_in_runtime(ENOENT, name);
    }
    if (const int fault = winapi::injected_fault("_access", name); fault != 0) {
        return fail_in_runtime(fault, name);
    }
    return may_be_reached(name, mode);
}

int _stat64i32(const char* name, struct _stat64i32* record) {
    if (winapi::is_nothing(name) || record == nullptr) {
        return fail_in_runtime(record == nullptr ? EINVAL : ENOENT, name);
    }
    if (const int fault = winapi::injected_fault("_stat64i32", name); fault != 0) {
        return fail_in_runtime(fault, name);
    }
    struct stat from;
    if (::stat(name, &from) != 0) {
        return fail_in_runtime(errno, name);
    }
    if (from.st_size > std::numeric_limits<std::int32_t>::max()) {
        return fail_in_runtime(EOVERFLOW, name);
    }
    fill(*record, from);
    return 0;
}

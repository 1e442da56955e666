#include <fcntl.h>
#include <stdio.h>
#include <sys/stat.h>
#include <unistd.h>
#include <winapi/copy_file.h>
#include <winapi/last_error.h>
#include <winapi/remove_rename.h>

#include <cerrno>

#include "attributes_of.h"
#include "failure.h"

using winapi::fail_in_runtime;

namespace {

int refuse_existing(const char* name) {
    winapi::fail(EEXIST, name);
    errno = EACCES;
    return -1;
}

int rename_without_replacing(const char* old_name, const char* new_name) {
    if (const int fault = winapi::injected_fault("renameat2", old_name); fault != 0) {
        errno = fault;
        return -1;
    }
    return ::renameat2(AT_FDCWD, old_name, AT_FDCWD, new_name, RENAME_NOREPLACE);
}

// The end of a rename in two steps. Where the old name has to stay the new one goes again, as if
// nothing had been done; an old one that somebody else took away meanwhile is no failure.
int take_old_name_away(const char* old_name, const char* new_name) {
    if (::unlink(old_name) == 0 || errno == ENOENT) {
        return 0;
    }
    const int error_number = errno;
    ::unlink(new_name);
    return fail_in_runtime(error_number, old_name);
}

// For file systems that cannot rename without replacing. A hard link never replaces; where there
// are none, looking first is the best that can be had.
int rename_by_looking(const char* old_name, const char* new_name) {
    if (::linkat(AT_FDCWD, old_name, AT_FDCWD, new_name, 0) == 0) {
        return take_old_name_away(old_name, new_name);
    }
    struct stat record;
    if (errno == EEXIST || ::lstat(new_name, &record) == 0) {
        return refuse_existing(new_name);
    }
    return ::rename(old_name, new_name) == 0 ? 0 : fail_in_runtime(errno, old_name);
}

int move_to_another_disk(const char* old_name, const char* new_name) {
    struct stat record;
    if (::lstat(old_name, &record) != 0 || !S_ISREG(record.st_mode)) {
        return fail_in_runtime(EXDEV, old_name);
    }
    if (!CopyFileExA(old_name, new_name, nullptr, nullptr, nullptr, COPY_FILE_FAIL_IF_EXISTS)) {
        if (GetLastError() == ERROR_FILE_EXISTS) {
            return refuse_existing(new_name);
        }
        errno = EIO;  // the last error tells more
        return -1;
    }
    return take_old_name_away(old_name, new_name);
}

}  // namespace

int winapi_remove(const char* name) {
    if (winapi::is_nothing(name)) {
        return fail_in_runtime(ENOENT, name);
    }
    if (const int fault = winapi::injected_fault("winapi_remove", name); fault != 0) {
        return fail_in_runtime(fault, name);
    }
    struct stat record;
    if (::lstat(name, &record) != 0) {
        return fail_in_runtime(errno, name);
    }
    const bool is_protected = !S_ISLNK(record.st_mode) && winapi::is_read_only(record);
    if (S_ISDIR(record.st_mode) || is_protected) {
        return fail_in_runtime(EACCES, name);
    }
    // A folder that took the file's place meanwhile is refused by unlink.
    return ::unlink(name) == 0 ? 0 : fail_in_runtime(errno == EISDIR ? EACCES : errno, name);
}

int winapi_rename(const char* old_name, const char* new_name) {
    if (winapi::is_nothing(old_name) || winapi::is_nothing(new_name)) {
        return fail_in_runtime(ENOENT, "");
    }
    if (const int fault = winapi::injected_fault("winapi_rename", old_name); fault != 0) {
        return fail_in_runtime(fault, old_name);
    }
    if (rename_without_replacing(old_name, new_name) == 0) {
        return 0;
    }
    struct stat record;
    switch (errno) {
        case EEXIST:
            return refuse_existing(new_name);
        case EXDEV:
            return move_to_another_disk(old_name, new_name);
        case EINVAL:
        case ENOSYS:
            return rename_by_looking(old_name, new_name);
        case ENOENT:  // the old name, or the folder of the new one
            return fail_in_runtime(ENOENT, ::lstat(old_name, &record) == 0 ? new_name : old_name);
        default:
            return fail_in_runtime(errno, old_name);
    }
}

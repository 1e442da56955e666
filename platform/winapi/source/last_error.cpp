#include <sys/stat.h>
#include <winapi/last_error.h>

#include <cerrno>
#include <string>
#include <string_view>

#include "failure.h"

namespace {

thread_local DWORD reason_of_this_thread = ERROR_SUCCESS;

bool parent_is_a_directory(std::string_view name) {
    while (name.size() > 1 && name.back() == '/') {
        name.remove_suffix(1);
    }
    const auto slash = name.rfind('/');
    if (slash == std::string_view::npos) {
        return true;
    }
    const std::string parent(name.substr(0, slash == 0 ? 1 : slash));
    struct stat record;
    return ::stat(parent.c_str(), &record) == 0 && S_ISDIR(record.st_mode);
}

struct Meaning {
    int error_number;
    DWORD reason;
};

constexpr Meaning meanings[] = {
    {ENOTDIR, ERROR_PATH_NOT_FOUND},
    {ELOOP, ERROR_PATH_NOT_FOUND},
    {EMFILE, ERROR_TOO_MANY_OPEN_FILES},
    {ENFILE, ERROR_TOO_MANY_OPEN_FILES},
    {EACCES, ERROR_ACCESS_DENIED},
    {EPERM, ERROR_ACCESS_DENIED},
    {EISDIR, ERROR_ACCESS_DENIED},
    {ENOMEM, ERROR_NOT_ENOUGH_MEMORY},
    {EXDEV, ERROR_NOT_SAME_DEVICE},
    {EROFS, ERROR_WRITE_PROTECT},
    {EBUSY, ERROR_SHARING_VIOLATION},
    {ETXTBSY, ERROR_SHARING_VIOLATION},
    {EEXIST, ERROR_ALREADY_EXISTS},
    {EINVAL, ERROR_INVALID_PARAMETER},
    {ENOSPC, ERROR_DISK_FULL},
    {EDQUOT, ERROR_DISK_FULL},
    {EFBIG, ERROR_DISK_FULL},
    {ENOTEMPTY, ERROR_DIR_NOT_EMPTY},
    {ENAMETOOLONG, ERROR_FILENAME_EXCED_RANGE},
};

}  // namespace

DWORD GetLastError() { return reason_of_this_thread; }

void SetLastError(DWORD reason) { reason_of_this_thread = reason; }

namespace winapi {

DWORD last_error_of(int error_number, const char* name) {
    if (error_number == ENOENT) {
        return !is_nothing(name) && parent_is_a_directory(name) ? ERROR_FILE_NOT_FOUND
                                                                : ERROR_PATH_NOT_FOUND;
    }
    for (const Meaning& meaning : meanings) {
        if (meaning.error_number == error_number) {
            return meaning.reason;
        }
    }
    return ERROR_GEN_FAILURE;
}

BOOL fail(int error_number, const char* name) {
    SetLastError(last_error_of(error_number, name));
    errno = error_number;
    return FALSE;
}

BOOL fail_with(DWORD reason) {
    SetLastError(reason);
    return FALSE;
}

}  // namespace winapi

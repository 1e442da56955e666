#include <sys/stat.h>
#include <unistd.h>
#include <winapi/directories.h>
#include <winapi/last_error.h>

#include <cerrno>

#include "attributes_of.h"
#include "failure.h"

namespace {

// A missing component is always one on the way to the new directory.
BOOL fail_to_make(int error_number, const char* name) {
    winapi::fail(error_number, name);
    return error_number == ENOENT ? winapi::fail_with(ERROR_PATH_NOT_FOUND) : FALSE;
}

}  // namespace

BOOL CreateDirectoryA(LPCSTR name, const void* security) {
    if (security != nullptr) {
        return winapi::fail_with(ERROR_INVALID_PARAMETER);
    }
    if (winapi::is_nothing(name)) {
        return winapi::fail(ENOENT, name);
    }
    if (const int fault = winapi::injected_fault("CreateDirectoryA", name); fault != 0) {
        return fail_to_make(fault, name);
    }
    return ::mkdir(name, 0777) == 0 ? TRUE : fail_to_make(errno, name);
}

BOOL RemoveDirectoryA(LPCSTR name) {
    if (winapi::is_nothing(name)) {
        return winapi::fail(ENOENT, name);
    }
    if (const int fault = winapi::injected_fault("RemoveDirectoryA", name); fault != 0) {
        return winapi::fail(fault, name);
    }
    struct stat record;
    if (::lstat(name, &record) != 0) {
        return winapi::fail(errno, name);
    }
    if (S_ISDIR(record.st_mode) && winapi::is_read_only(record)) {
        return winapi::fail(EACCES, name);
    }
    if (::rmdir(name) == 0) {
        return TRUE;
    }
    // Some file systems report EEXIST for a directory that holds something.
    return winapi::fail(errno == EEXIST ? ENOTEMPTY : errno, name);
}

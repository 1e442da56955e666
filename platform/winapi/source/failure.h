// failure.h: from the errno of a POSIX call to the last error of ours.
#pragma once

#include <filesystem/faults.h>
#include <winapi/types.h>

namespace winapi {

/// The last error for the errno of a call on `name`. ENOENT has two: 2 if only the last
/// component is missing, 3 if the directory that should hold it is missing too.
DWORD last_error_of(int error_number, const char* name);

/// Sets the last error for it, sets errno to it, and returns FALSE.
BOOL fail(int error_number, const char* name);

/// The same for calls of the runtime, which return -1.
inline int fail_in_runtime(int error_number, const char* name) {
    fail(error_number, name);
    return -1;
}

/// Sets the last error itself and returns FALSE.
BOOL fail_with(DWORD reason);

using nmk_filesystem::injected_fault;

/// Null and empty names are missing directories to every call.
inline bool is_nothing(const char* name) { return name == nullptr || *name == '\0'; }

}  // namespace winapi

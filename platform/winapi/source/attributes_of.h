// attributes_of.h: attributes and moments, from the record of the file system.
#pragma once

#include <sys/stat.h>
#include <winapi/types.h>

namespace winapi {

/// The attributes that correspond to a record of lstat.
DWORD attributes_of(const struct stat& record);

/// Whether the owner lacks the permission to write, which makes a file read-only for everybody.
inline bool is_read_only(const struct stat& record) { return (record.st_mode & S_IWUSR) == 0; }

/// A moment of POSIX as hundreds of nanoseconds since 1601.
FILETIME file_time_of(const timespec& moment);

}  // namespace winapi

// file_attributes.h: the kind, the mode and the size of what has a name.
//
// The owner's permission to write is the read-only attribute: a file without it is read-only for
// everybody, root too. A symlink has attributes of its own: the bit of a symlink and not
// that of a directory, wherever it leads, so that nothing which goes down a tree by attributes goes
// through a symlink. With a "/" at its end the name of a symlink names the directory that it leads
// to.
#pragma once

#include <sys/stat.h>
#include <winapi/types.h>

#include <cstdint>
#include <ctime>

inline constexpr DWORD INVALID_FILE_ATTRIBUTES = 0xFFFFFFFFu;
inline constexpr DWORD FILE_ATTRIBUTE_READONLY = 0x1;
inline constexpr DWORD FILE_ATTRIBUTE_HIDDEN = 0x2;
inline constexpr DWORD FILE_ATTRIBUTE_SYSTEM = 0x4;
inline constexpr DWORD FILE_ATTRIBUTE_DIRECTORY = 0x10;
inline constexpr DWORD FILE_ATTRIBUTE_ARCHIVE = 0x20;
inline constexpr DWORD FILE_ATTRIBUTE_DEVICE = 0x40;
inline constexpr DWORD FILE_ATTRIBUTE_NORMAL = 0x80;
inline constexpr DWORD FILE_ATTRIBUTE_REPARSE_POINT = 0x400;

/// The attributes of the name; INVALID_FILE_ATTRIBUTES, with a last error, if they cannot be read.
///
/// A directory has 0x10, an ordinary file 0x20, a symlink 0x400, another thing 0x40; 0x1 is added
/// where the owner may not write. Last errors: 2 the last component is missing, 3 a directory on
/// the way is missing or is a file, or the name is empty or null, 5 a directory on the way may not
/// be searched, 206 the name is too long.
DWORD GetFileAttributesA(LPCSTR name);

/// Sets or clears read-only; the other attributes are not kept by POSIX, and asking for them is
/// not an error. Clearing gives the owner the permission to write, setting takes it from all. A
/// symlink is never followed: it has no mode, so clearing does nothing and setting fails with 5.
BOOL SetFileAttributesA(LPCSTR name, DWORD attributes);

/// 0 if the file can be reached in the way `mode` asks, -1 with errno if not.
///
/// Mode 0 asks whether it exists, 2 to write, 4 to read, 6 both; another is EINVAL. A file that
/// is read-only is EACCES for 2 and 6, also for root. A directory is only asked whether it exists.
/// Links are followed.
int _access(const char* name, int mode);

/// What _stat64i32 reports: a size of 32 bits, times of 64. The members st_atime, st_mtime and
/// st_ctime, in seconds, are read through the names that the system's own record uses.
struct _stat64i32 {
    std::uint64_t st_dev;
    std::uint64_t st_ino;
    std::uint32_t st_mode;
    std::uint64_t st_nlink;
    std::uint32_t st_uid;
    std::uint32_t st_gid;
    std::uint64_t st_rdev;
    std::int32_t st_size;
    timespec st_atim;
    timespec st_mtim;
    timespec st_ctim;
};

// Record and call share their name, as stat's do.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wshadow"
/// Fills the record, following symlinks. -1 with errno if it cannot, EOVERFLOW for a file whose
/// size does not fit into 32 signed bits; the record is then left alone.
int _stat64i32(const char* name, struct _stat64i32* record);
#pragma GCC diagnostic pop

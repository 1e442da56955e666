// file_names.h: full names, the current directory, temporary names, and what kind of disk holds
// one.
#pragma once

#include <winapi/types.h>

/// What GetDriveTypeA returns.
inline constexpr UINT DRIVE_UNKNOWN = 0;
inline constexpr UINT DRIVE_NO_ROOT_DIR = 1;
inline constexpr UINT DRIVE_REMOVABLE = 2;
inline constexpr UINT DRIVE_FIXED = 3;
inline constexpr UINT DRIVE_REMOTE = 4;
inline constexpr UINT DRIVE_CDROM = 5;
inline constexpr UINT DRIVE_RAMDISK = 6;

/// The name from the root on, with "." and ".." folded away; nothing needs to exist.
///
///   name    relative names start at the current directory
///   size    room in `buffer`, its NUL included
///   part    may be null; where the last component starts in `buffer`, null for a name that ends
///           in "/"; left alone when the call does not succeed
///   returns the length without the NUL when it fitted (below `size`); the room that is needed,
///           with the NUL, when it did not (the buffer is then left alone); 0 for failure, as for
///           an empty name
///
/// Folding goes by the text: a symlink in front of ".." is not looked at. ".." stops at the root,
/// which is "/", or "//server/share" after exactly two slashes, which are kept. A single "/" at
/// the end is kept, repeated ones elsewhere become one. Not safe against another thread's chdir.
DWORD GetFullPathNameA(LPCSTR name, DWORD size, LPSTR buffer, LPSTR* part);

/// The current directory, put into `buffer` of `size` bytes. Null, with errno ERANGE, if it is too
/// small. A null buffer is allocated, of at least `size` bytes; release it with free().
char* _getcwd(char* buffer, int size);

/// A name, made up now, that no file has; null, with errno set, if there is none.
///
/// The directory is the first that exists of: the environment's TMPDIR, its TMP, `directory`, and,
/// when `directory` is null, /tmp and the current one. A `directory` that does not exist is a
/// failure when the environment has none. The file part is the whole `prefix` and a number that
/// cannot be guessed and is never given twice, by any process or thread. No extension. Nothing is
/// created: open the file so that an existing one is not taken (O_CREAT and O_EXCL). Release with
/// free().
char* _tempnam(const char* directory, const char* prefix);

/// What kind of disk holds the name, by the type of its file system.
///
/// A null name asks for the current directory. Exactly two slashes in front mean remote without a
/// look at any disk. DRIVE_NO_ROOT_DIR if nothing of that name exists, which is what the root of
/// a lettered drive ("C:\") gets as long as no directory has that name.
UINT GetDriveTypeA(LPCSTR name);

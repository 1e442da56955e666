// find_file.h: what a directory holds.
//
// A search reads its directory once, when it is opened, and gives the names sorted by byte value,
// "." and ".." first: results do not depend on the disk. An entry that vanishes before its turn
// is left out. Close a search with FindClose only.
#pragma once

#include <winapi/types.h>

/// One entry. A symlink is described itself, not what it leads to; attributes as those of
/// GetFileAttributesA, 0 if they cannot be read.
struct WIN32_FIND_DATAA {
    DWORD dwFileAttributes;
    FILETIME ftCreationTime;  // of the last change of the entry's data; POSIX keeps no creation
    FILETIME ftLastAccessTime;
    FILETIME ftLastWriteTime;
    DWORD nFileSizeHigh;
    DWORD nFileSizeLow;
    DWORD dwReserved0;
    DWORD dwReserved1;
    char cFileName[MAX_PATH];
    char cAlternateFileName[14];  // always empty: there are no short names
};

/// Opens a search and gives its first entry; INVALID_HANDLE_VALUE, with a last error, if there is
/// none.
///
/// "*" and "?" in the last component are wildcards, any run of bytes and any one character; "*.*"
/// is the same as "*". "directory/*" lists the directory. A name without them asks for that one
/// entry, a directory too. Last errors: 2 nothing matches, or the name ends in "/"; 3 the directory
/// is missing or the name empty; 5 the directory may not be read; 206 the name is too long.
HANDLE FindFirstFileA(LPCSTR pattern, WIN32_FIND_DATAA* entry);

/// Gives the next entry; FALSE with 18 after the last, with 6 for any other handle.
BOOL FindNextFileA(HANDLE search, WIN32_FIND_DATAA* entry);

/// Ends the search; FALSE with 6 for any other handle, or one that was closed already.
BOOL FindClose(HANDLE search);

// directories.h: making and removing one directory.
#pragma once

#include <winapi/types.h>

/// Makes one directory; its parent must be there.
///
///   security  must be null: the mode is the process's default
///   returns   FALSE with 183 if something of that name exists, also a symlink; 3 if a directory on
///   the
///             way is missing; 5, 19, 112, 206 as the disk says
BOOL CreateDirectoryA(LPCSTR name, const void* security);

/// Removes an empty directory.
///
/// FALSE with 145 if it holds something; 3 if it is not a directory (a symlink to one is none); 2
/// or 3 if it is missing; 5 if it is read-only, also for root: clear the attribute first. Where the
/// process is not root, the entries of a read-only directory cannot be removed before that either.
BOOL RemoveDirectoryA(LPCSTR name);

// directories.h: making and removing one folder.
#pragma once

#include <winapi/types.h>

/// Makes one folder; its parent must be there.
///
///   security  must be null: rights are the process's defaults
///   answer    FALSE with 183 if something of that name exists, also a link; 3 if a folder on the
///             way is missing; 5, 19, 112, 206 as the disk says
BOOL CreateDirectoryA(LPCSTR name, const void* security);

/// Removes an empty folder.
///
/// FALSE with 145 if it holds something; 3 if it is not a folder (a link to one is none); 2 or 3
/// if it is missing; 5 if it is read-only, also for root: clear the attribute first. Where the
/// process is not root, the entries of a read-only folder cannot be removed before that either.
BOOL RemoveDirectoryA(LPCSTR name);

// mutexes.h: locks that the processes of a user share by name.
//
// A mutex belongs to the thread that waited for it, which may wait for it again, also through
// another handle, and must release it as often. It exists while a handle to it is open in some
// process. When its owner ends without releasing it, by a crash or kill, the mutex is free at once;
// a process that has a handle then gets it with WAIT_ABANDONED. Where no other process has one, the
// mutex ended with its owner, and the next to create it finds a new one.
//
// A process that is forked has none of the mutexes that its parent owns.
#pragma once

#include <winapi/types.h>

/// Creates the mutex of that name, or opens it if it exists; null, with a last error, on failure.
/// Wait with WaitForSingleObject, close with CloseHandle.
///
///   security       must be null
///   initial_owner  TRUE to own a new mutex at once; ignored if it exists
///   name           distinguishes upper and lower case; may begin with "Global\" or "Local\", which
///                  is the same as none
///
/// Last error on success: 0 for a new mutex, 183 for one that exists. On failure: 3 a backslash
/// elsewhere in the name, 87 no name, 206 a name of more than 259 bytes, or more than the disk
/// takes; 5, 19, 112 as the disk says about its lock file in the configuration directory.
HANDLE CreateMutexA(const void* security, BOOL initial_owner, LPCSTR name);

/// Releases it once. FALSE with 288 if this thread does not own it, with 6 for any other handle.
/// Before others get it, what this process changed in the registry is written to the disk.
BOOL ReleaseMutex(HANDLE mutex);

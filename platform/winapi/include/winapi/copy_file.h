// copy_file.h: copying one file, watched and stopped by its caller.
//
// A copy is whole or not there. It is written under a hidden name beside the target, flushed and
// renamed, so that a failure, a cancelled copy and a killed process leave the target as it was.
// Replacing a file therefore takes permission to write in its directory too, and other hard links
// to the old file keep the old contents. What a killed process left under a hidden name is removed
// by the next copy into that directory (see <filesystem/safe_file.h>).
#pragma once

#include <winapi/types.h>

inline constexpr DWORD COPY_FILE_FAIL_IF_EXISTS = 1;

/// What a progress routine returns.
inline constexpr DWORD PROGRESS_CONTINUE = 0;
inline constexpr DWORD PROGRESS_CANCEL = 1;  // the call fails with 1235
// Deliberate: the same as PROGRESS_CANCEL. Part of a file is never left under the target's name,
// where it would pass for the whole; a copy cannot be resumed here.
inline constexpr DWORD PROGRESS_STOP = 2;
inline constexpr DWORD PROGRESS_QUIET = 3;  // the copy continues without further calls

/// Why it is called.
inline constexpr DWORD CALLBACK_CHUNK_FINISHED = 0;
inline constexpr DWORD CALLBACK_STREAM_SWITCH = 1;

/// Called once at the start, with CALLBACK_STREAM_SWITCH and nothing transferred, then after each
/// part, the last of which brings the bytes transferred to the total. A file has one stream, the
/// first, so its numbers are those of the whole. The handles are null here. The length is that at
/// the start: of a file that grows meanwhile, the rest is not copied. Throwing cancels the copy.
using LPPROGRESS_ROUTINE = DWORD (*)(LARGE_INTEGER total, LARGE_INTEGER transferred,
                                     LARGE_INTEGER stream_size, LARGE_INTEGER stream_transferred,
                                     DWORD stream, DWORD reason, HANDLE source, HANDLE target,
                                     LPVOID data);

/// Copies the contents, the mode (less the umask of the process) and the time of the last write.
///
///   source    a regular file, or a symlink to one
///   target    created or replaced; a symlink to a file means that file
///   routine   may be null
///   data      handed to the routine
///   cancel    may be null; TRUE there, set at any time, cancels
///   flags     COPY_FILE_FAIL_IF_EXISTS or 0
///   returns   TRUE; or FALSE with a last error, and then the target is as it was before:
///             2 or 3 source missing, 3 target's directory missing, 5 one of them a directory or
///             not a regular file, a target that is read-only (also for root) or may not be
///             written, 32 both are the same file by whatever names, 38 the source became shorter
///             meanwhile, 80 the target exists, 112 the disk is full, 206 a name too long,
///             1235 cancelled
BOOL CopyFileExA(LPCSTR source, LPCSTR target, LPPROGRESS_ROUTINE routine, LPVOID data,
                 LPBOOL cancel, DWORD flags);

// copy_file.h: copying one file, watched and stopped by its caller.
//
// A copy is whole or it is not there. A new target is made under its own name and removed again
// if the copy fails; an existing one is written beside its place and put there by a rename, so
// that a failure leaves it as it was. Replacing a file therefore takes the right to write in its
// folder too, and other hard links to the old one keep the old contents. The name beside starts
// with ".nmk_copy_"; only a process killed half way leaves one behind.
#pragma once

#include <winapi/types.h>

inline constexpr DWORD COPY_FILE_FAIL_IF_EXISTS = 1;

/// What a progress routine answers.
inline constexpr DWORD PROGRESS_CONTINUE = 0;
inline constexpr DWORD PROGRESS_CANCEL = 1;  // fail with 1235; the part is removed
inline constexpr DWORD PROGRESS_STOP = 2;    // fail with 1235; the part becomes the target
inline constexpr DWORD PROGRESS_QUIET = 3;   // go on without asking again

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

/// Copies contents, rights (less those that the process gives no new file, its umask) and time of
/// the last write.
///
///   source    a plain file, or a link to one
///   target    made, or replaced; a link to a file means that file
///   routine   may be null
///   data      handed to the routine
///   cancel    may be null; TRUE there, set at any time, cancels
///   flags     COPY_FILE_FAIL_IF_EXISTS or 0
///   answer    TRUE; or FALSE with a last error, and then the target is as it was before:
///             2 or 3 source missing, 3 target's folder missing, 5 one of them a folder or no
///             plain file, a target that is read-only (also for root) or may not be written, 32
///             both are the same file by whatever names, 38 the source became shorter meanwhile,
///             80 the target exists, 112 the disk is full, 206 a name too long, 1235 cancelled
BOOL CopyFileExA(LPCSTR source, LPCSTR target, LPPROGRESS_ROUTINE routine, LPVOID data,
                 LPBOOL cancel, DWORD flags);

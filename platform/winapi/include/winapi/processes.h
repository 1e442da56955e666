// processes.h: running another program and waiting for it.
//
// Programs are found as the shell finds them, on the search path. There are no windows: a program
// that is to run hidden gets the null device for its three standard streams. Verbs make no
// difference, and raised privileges are never asked for: it runs with those of the caller.
#pragma once

#include <winapi/types.h>

inline constexpr DWORD INFINITE = 0xFFFFFFFFu;
inline constexpr DWORD WAIT_OBJECT_0 = 0;
inline constexpr DWORD WAIT_ABANDONED = 0x80;
inline constexpr DWORD WAIT_TIMEOUT = 0x102;
inline constexpr DWORD WAIT_FAILED = 0xFFFFFFFFu;
inline constexpr DWORD STILL_ACTIVE = 259;
inline constexpr DWORD SEE_MASK_NOCLOSEPROCESS = 0x40;
inline constexpr int SW_HIDE = 0;
inline constexpr int SW_SHOWNORMAL = 1;

struct SHELLEXECUTEINFOA {
    DWORD cbSize;  // sizeof(SHELLEXECUTEINFOA)
    DWORD fMask;   // SEE_MASK_NOCLOSEPROCESS to be given the process
    LPCSTR lpVerb;
    LPCSTR lpFile;        // the program
    LPCSTR lpParameters;  // may be null; split at blanks outside double quotes
    LPCSTR lpDirectory;   // may be null; the directory in which it runs
    int nShow;            // SW_HIDE or anything else
    HANDLE hInstApp;      // out: above 32 if it runs, else the error
    HANDLE hProcess;      // out: the process, if asked for; release it with CloseHandle
};

DWORD GetCurrentProcessId();

/// Starts a program. FALSE with a last error if it cannot: 2 not found, 5 may not be run, 87 no
/// program named or a record of another size.
BOOL ShellExecuteExA(SHELLEXECUTEINFOA* execution);

/// Waits until the process has ended: WAIT_OBJECT_0, or WAIT_TIMEOUT after so many milliseconds,
/// or WAIT_FAILED with 6 for what cannot be waited for.
DWORD WaitForSingleObject(HANDLE object, DWORD milliseconds);

/// The exit code, STILL_ACTIVE while it runs, 128 and the signal if one ended it.
BOOL GetExitCodeProcess(HANDLE process, DWORD* exit_code);

/// Closes the handle; the process continues. FALSE with 6 for anything else, searches included.
BOOL CloseHandle(HANDLE object);

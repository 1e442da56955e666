// types.h: the plain types in which the file and process calls of Windows speak.
//
// Widths are those of that system on every other: DWORD has 32 bits, "long" never occurs.
// Names of files are bytes as POSIX takes them: "/" separates, every other byte but NUL is a
// plain one, the backslash, "|" and the wildcards included (FindFirstFileA alone reads wildcards).
// The case of letters matters. A name that is not valid in the code page is a name like
// any other, for all calls.
#pragma once

#include <cstdint>

using BYTE = unsigned char;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using UINT = unsigned;
using BOOL = int;
using HANDLE = void*;
using LPVOID = void*;
using LPCSTR = const char*;
using LPSTR = char*;
using LPCWSTR = const wchar_t*;
using LPWSTR = wchar_t*;
using LPBOOL = BOOL*;

inline constexpr BOOL FALSE = 0;
inline constexpr BOOL TRUE = 1;

/// Longest name, its NUL included, in the records of fixed size.
inline constexpr int MAX_PATH = 260;

/// What the calls that open something return when they could not.
inline const HANDLE INVALID_HANDLE_VALUE = reinterpret_cast<HANDLE>(std::intptr_t{-1});

/// A signed number of 64 bits, and its two halves.
union LARGE_INTEGER {
    struct {
        DWORD LowPart;
        std::int32_t HighPart;
    } u;
    std::int64_t QuadPart;
};

/// A moment: hundreds of nanoseconds since the start of 1601, universal time.
struct FILETIME {
    DWORD dwLowDateTime;
    DWORD dwHighDateTime;
};

// code_page.h: narrow text to wide and back, into buffers of the caller.
//
// Wide text holds one UTF-16 code unit in each wchar_t, whatever its width. Code pages: 0 and 3
// are the thread's, 65001 is UTF-8, 1252 the Western single-byte one; others fail with 87.
#pragma once

#include <winapi/types.h>

inline constexpr UINT CP_ACP = 0;
inline constexpr UINT CP_THREAD_ACP = 3;
inline constexpr UINT CP_UTF8 = 65001;

inline constexpr DWORD MB_ERR_INVALID_CHARS = 0x8;
inline constexpr DWORD WC_ERR_INVALID_CHARS = 0x80;

/// Turns bytes wide.
///
///   length  bytes to take, NULs among them are characters; -1 takes all up to and with the NUL
///   room    code units that `wide` has room for; 0 asks for the number without writing
///   returns code units written or needed; 0 for failure: 122 too little room, 87 a null, empty or
///           negative argument or unknown code page, 1113 invalid bytes under MB_ERR_INVALID_CHARS
///           (otherwise U+FFFD for each maximal ill-formed part)
int MultiByteToWideChar(UINT code_page, DWORD flags, LPCSTR bytes, int length, LPWSTR wide,
                        int room);

/// Turns wide text narrow; the counterpart of the above.
///
///   substitute, substituted  must be null for UTF-8; else the text for what the code page lacks
///                            may only be null or "?", and the flag is set if anything lacked
int WideCharToMultiByte(UINT code_page, DWORD flags, LPCWSTR wide, int length, LPSTR bytes,
                        int room, LPCSTR substitute, LPBOOL substituted);

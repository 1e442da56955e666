// registry.h: a tree of keys with typed values that all processes of a user share.
//
// The calls return the error code itself, 0 for success; the last error is left alone. "\"
// separates the keys of a path: one at its start is refused with 161, further ones count as one.
// "/", ".." and every other byte are plain characters of a name. Names ignore the case of ASCII
// letters and keep that in which they were created. Keys and values are listed in the order of
// their names.
//
// Each change is whole or not there, also that of SHDeleteKeyA and RegCopyTreeA. It survives the
// end of its process at once, and a power failure once RegFlushKey or ReleaseMutex was called.
//
// Limits: 255 bytes for the name of a key, 16383 for that of a value, 32 new levels for each call,
// 512 levels in all. The four roots are independent trees. HKEY_LOCAL_MACHINE has the key
// "Software", HKEY_USERS the key ".Default"; no key can be created or deleted directly below those
// two.
//
// A handle carries the rights it was opened with. They decide which values it reads and writes, not
// what is created or deleted below it. A key may be deleted while handles to it are open: every use
// of these returns 1018.
//
// Beside the codes that are named, every call returns: 6 for a handle that is not open; 3, 5, 19,
// 112 as the disk says; 170 if another process keeps the store busy for ten seconds; 1015 if the
// store is damaged, and then its directory was renamed to "registry.damaged.N" and the next call
// begins an empty store; 1017 if it is of another format, and then it stays as it is; 1016 if it
// cannot be read or written for another reason. See registry_store.h.
#pragma once

#include <winapi/types.h>

/// The result of the calls.
using LSTATUS = std::int32_t;

/// What a value holds; the store does not check that the data fit.
inline constexpr DWORD REG_NONE = 0;
inline constexpr DWORD REG_SZ = 1;         // a text with its NUL
inline constexpr DWORD REG_EXPAND_SZ = 2;  // likewise, with names of environment variables
inline constexpr DWORD REG_BINARY = 3;
inline constexpr DWORD REG_DWORD = 4;     // 32 bits, the lowest byte first
inline constexpr DWORD REG_MULTI_SZ = 7;  // texts with their NULs, and one more NUL
inline constexpr DWORD REG_QWORD = 11;    // 64 bits, the lowest byte first

/// Rights of a handle.
using REGSAM = DWORD;
inline constexpr REGSAM KEY_QUERY_VALUE = 1;
inline constexpr REGSAM KEY_SET_VALUE = 2;
inline constexpr REGSAM KEY_CREATE_SUB_KEY = 4;
inline constexpr REGSAM KEY_ENUMERATE_SUB_KEYS = 8;
inline constexpr REGSAM KEY_READ = 0x20019;
inline constexpr REGSAM KEY_WRITE = 0x20006;
inline constexpr REGSAM KEY_ALL_ACCESS = 0xF003F;

inline constexpr DWORD REG_OPTION_NON_VOLATILE = 0;
inline constexpr DWORD REG_CREATED_NEW_KEY = 1;
inline constexpr DWORD REG_OPENED_EXISTING_KEY = 2;

struct RegistryKeyHandle;
using HKEY = RegistryKeyHandle*;

/// The roots, which are always open with all rights.
inline const HKEY HKEY_CLASSES_ROOT = reinterpret_cast<HKEY>(std::intptr_t{-0x7FFFFFFF - 1});
inline const HKEY HKEY_CURRENT_USER = reinterpret_cast<HKEY>(std::intptr_t{-0x7FFFFFFF});
inline const HKEY HKEY_LOCAL_MACHINE = reinterpret_cast<HKEY>(std::intptr_t{-0x7FFFFFFE});
inline const HKEY HKEY_USERS = reinterpret_cast<HKEY>(std::intptr_t{-0x7FFFFFFD});

/// Opens a key that exists: 2 if it is missing. The empty path opens the key itself once more; null
/// does so for a root, and is 87 for other keys. `options` are ignored.
LSTATUS RegOpenKeyExA(HKEY key, LPCSTR path, DWORD options, REGSAM rights, HKEY* opened);

/// Opens a key and creates it, and those on the way to it, where they are missing.
///
///   path         not null; "" opens the key itself
///   reserved     must be 0, as `options`
///   key_class    ignored; `security` must be null
///   disposition  may be null; 1 if the key was created, 2 if it existed
///   returns      87 for a null path, a name or depth beyond the limits, or a key directly below
///                HKEY_LOCAL_MACHINE or HKEY_USERS that is not there; `opened` is then left alone
LSTATUS RegCreateKeyExA(HKEY key, LPCSTR path, DWORD reserved, LPCSTR key_class, DWORD options,
                        REGSAM rights, const void* security, HKEY* opened, DWORD* disposition);

/// Closes the handle; nothing happens for a root.
LSTATUS RegCloseKey(HKEY key);

/// Writes all changes of this process to the disk.
LSTATUS RegFlushKey(HKEY key);

/// Deletes a key without subkeys, and its values: 2 if it is missing, 5 if it has subkeys or may
/// not be deleted, 87 for a null path. "" deletes the key itself.
LSTATUS RegDeleteKeyA(HKEY key, LPCSTR path);

/// The same with all that is below it.
LSTATUS SHDeleteKeyA(HKEY key, LPCSTR path);

/// Copies the values and subkeys of `source` (or of the key `path` below it, if that is not null)
/// into `target`. Same-named values are replaced, others stay. 2 if the source is missing; 87 if
/// the target is below it, or its depth would pass the limit: nothing is copied then. A copy of a
/// key onto itself changes nothing. 5 if the handle of the target has no KEY_SET_VALUE.
LSTATUS RegCopyTreeA(HKEY source, LPCSTR path, HKEY target);

/// The name of the subkey number `index`, from 0.
///
///   name     room for `*size` bytes, the NUL included; `*size` becomes the length without it
///   class, class_size, last_write_time   as null, or set to the empty text and 0: they are not
///   kept returns  259 past the last; 234 if the room is too small, which changes nothing; 5
///   without
///            KEY_ENUMERATE_SUB_KEYS
LSTATUS RegEnumKeyExA(HKEY key, DWORD index, LPSTR name, DWORD* size, DWORD* reserved,
                      LPSTR key_class, DWORD* class_size, FILETIME* last_write_time);

/// Sets a value: 5 without KEY_SET_VALUE, 998 for null data of some size, 87 for a name that is too
/// long. A null or empty name is that of the key's default value. Texts should bring their NUL.
LSTATUS RegSetValueExA(HKEY key, LPCSTR name, DWORD reserved, DWORD type, const BYTE* data,
                       DWORD size);

/// Reads a value: 2 if it is missing, 5 without KEY_QUERY_VALUE, 87 for data without a size.
///
///   type  may be null
///   data  null to ask for the size only; else room for `*size` bytes
///   size  becomes the bytes that are stored; 234 if the room is too small, and then nothing is
///         copied. Left alone where the value is missing
///
/// A text that was stored without its NUL has none.
LSTATUS RegQueryValueExA(HKEY key, LPCSTR name, DWORD* reserved, DWORD* type, BYTE* data,
                         DWORD* size);

/// The name, type and data of the value number `index`, from 0; as RegEnumKeyExA and
/// RegQueryValueExA.
LSTATUS RegEnumValueA(HKEY key, DWORD index, LPSTR name, DWORD* name_size, DWORD* reserved,
                      DWORD* type, BYTE* data, DWORD* size);

/// Deletes a value: 2 if it is missing, 5 without KEY_SET_VALUE.
LSTATUS RegDeleteValueA(HKEY key, LPCSTR name);

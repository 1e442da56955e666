// registry_results.h: what the calls on keys and values return.
#pragma once

#include <winapi/last_error.h>
#include <winapi/registry.h>

#include <algorithm>
#include <span>
#include <string_view>

#include "registry_tables.h"

namespace winapi {

inline constexpr LSTATUS success = 0;

constexpr LSTATUS result(DWORD reason) { return static_cast<LSTATUS>(reason); }

/// Copies the name and a NUL to the caller's room, and sets `size` to the length without it.
inline LSTATUS give_name(std::string_view name, LPSTR room, DWORD* size) {
    if (name.size() >= *size) return result(ERROR_MORE_DATA);
    *std::ranges::copy(name, room).out = '\0';
    *size = static_cast<DWORD>(name.size());
    return success;
}

/// Copies the data to the caller's room, if there is one, and sets `size`, if it is not null.
inline LSTATUS give_data(std::span<const BYTE> data, BYTE* room, DWORD* size) {
    if (size == nullptr) return success;
    const bool fits = room == nullptr || data.size() <= *size;
    if (fits && room != nullptr) std::ranges::copy(data, room);
    *size = static_cast<DWORD>(data.size());
    return result(fits ? ERROR_SUCCESS : ERROR_MORE_DATA);
}

/// What a list returns past its end.
inline LSTATUS none_left(RegistryTables& tables, KeyNumber key) {
    return result(tables.has_key(key) ? ERROR_NO_MORE_ITEMS : ERROR_KEY_DELETED);
}

/// What is returned for a value that was not found.
inline LSTATUS no_value(RegistryTables& tables, KeyNumber key) {
    return result(tables.has_key(key) ? ERROR_FILE_NOT_FOUND : ERROR_KEY_DELETED);
}

}  // namespace winapi

// The values of a key.
#include <winapi/last_error.h>
#include <winapi/registry.h>

#include <string_view>

#include "registry_key.h"
#include "registry_results.h"
#include "registry_store.h"

namespace {

using winapi::RegistryStore;
using winapi::RegistryTables;

constexpr std::size_t max_value_name = 16383;

std::string_view value_name(LPCSTR name) { return name == nullptr ? "" : name; }

}  // namespace

LSTATUS RegSetValueExA(HKEY key, LPCSTR name, DWORD, DWORD type, const BYTE* data, DWORD size) {
    const auto open_key = winapi::open_key_of(key);
    if (!open_key) return winapi::result(ERROR_INVALID_HANDLE);
    if (!open_key->has_right(KEY_SET_VALUE)) return winapi::result(ERROR_ACCESS_DENIED);
    if (data == nullptr && size != 0) return winapi::result(ERROR_NOACCESS);
    const std::string_view asked = value_name(name);
    if (asked.size() > max_value_name) return winapi::result(ERROR_INVALID_PARAMETER);
    return RegistryStore::the_store().call([&](RegistryTables& tables) {
        const bool is_set = tables.set_value(open_key->number, asked, type, {data, size});
        return winapi::result(is_set ? ERROR_SUCCESS : ERROR_KEY_DELETED);
    });
}

LSTATUS RegQueryValueExA(HKEY key, LPCSTR name, DWORD*, DWORD* type, BYTE* data, DWORD* size) {
    const auto open_key = winapi::open_key_of(key);
    if (!open_key) return winapi::result(ERROR_INVALID_HANDLE);
    if (!open_key->has_right(KEY_QUERY_VALUE)) return winapi::result(ERROR_ACCESS_DENIED);
    if (data != nullptr && size == nullptr) return winapi::result(ERROR_INVALID_PARAMETER);
    const std::string_view asked = value_name(name);
    return RegistryStore::the_store().call([&](RegistryTables& tables) {
        winapi::SqliteRows rows(tables.database(),
                                "SELECT type, data FROM entries WHERE key = ?1 AND name = ?2",
                                open_key->number, asked);
        if (!rows.next()) return winapi::no_value(tables, open_key->number);
        if (type != nullptr) *type = static_cast<DWORD>(rows.number(0));
        return winapi::give_data(rows.bytes(1), data, size);
    });
}

LSTATUS RegEnumValueA(HKEY key, DWORD index, LPSTR name, DWORD* name_size, DWORD*, DWORD* type,
                      BYTE* data, DWORD* size) {
    const auto open_key = winapi::open_key_of(key);
    if (!open_key) return winapi::result(ERROR_INVALID_HANDLE);
    if (name == nullptr || name_size == nullptr || (data != nullptr && size == nullptr)) {
        return winapi::result(ERROR_INVALID_PARAMETER);
    }
    if (!open_key->has_right(KEY_QUERY_VALUE)) return winapi::result(ERROR_ACCESS_DENIED);
    return RegistryStore::the_store().call([&](RegistryTables& tables) {
        winapi::SqliteRows rows(tables.database(),
                                "SELECT name, type, data FROM entries WHERE key = ?1 "
                                "ORDER BY name LIMIT 1 OFFSET ?2",
                                open_key->number, std::int64_t{index});
        if (!rows.next()) return winapi::none_left(tables, open_key->number);
        const LSTATUS status = winapi::give_name(rows.text(0), name, name_size);
        if (status != winapi::success) return status;
        if (type != nullptr) *type = static_cast<DWORD>(rows.number(1));
        return winapi::give_data(rows.bytes(2), data, size);
    });
}

LSTATUS RegDeleteValueA(HKEY key, LPCSTR name) {
    const auto open_key = winapi::open_key_of(key);
    if (!open_key) return winapi::result(ERROR_INVALID_HANDLE);
    if (!open_key->has_right(KEY_SET_VALUE)) return winapi::result(ERROR_ACCESS_DENIED);
    const std::string_view asked = value_name(name);
    return RegistryStore::the_store().call([&](RegistryTables& tables) {
        return tables.delete_value(open_key->number, asked)
                   ? winapi::success
                   : winapi::no_value(tables, open_key->number);
    });
}

// Opening, creating, listing and closing keys.
#include <winapi/last_error.h>
#include <winapi/registry.h>

#include <cstring>
#include <string>

#include "failure.h"
#include "registry_failure.h"
#include "registry_key.h"
#include "registry_results.h"
#include "registry_store.h"

namespace {

using winapi::KeyNumber;
using winapi::RegistryStore;
using winapi::RegistryTables;
using Names = std::vector<std::string_view>;

constexpr std::size_t max_key_name = 255;
constexpr int max_levels_of_a_call = 32;

// Keys below these two belong to the system.
bool is_closed_for_new_keys(KeyNumber key) {
    return key == winapi::local_machine || key == winapi::users;
}

bool has_a_long_name(const Names& names) {
    for (const std::string_view name : names) {
        if (name.size() > max_key_name) return true;
    }
    return false;
}

// Finds or creates the keys one after the other; `created` becomes true if one was missing.
KeyNumber create_path(RegistryTables& tables, KeyNumber key, const Names& names, bool& created) {
    int level = -1;
    int new_levels = 0;
    for (const std::string_view name : names) {
        const KeyNumber found = tables.find(key, name);
        if (found != 0) {
            key = found;
            continue;
        }
        if (level < 0) level = tables.level_of(key);
        if (++level > winapi::max_levels || ++new_levels > max_levels_of_a_call ||
            is_closed_for_new_keys(key)) {
            throw winapi::RegistryFailure{ERROR_INVALID_PARAMETER};
        }
        key = tables.create(key, name);
        created = true;
    }
    return key;
}

// The key at the path; created only where it is missing, so that a key that exists can be opened in
// a store that is read-only.
LSTATUS find_or_create(KeyNumber from, const Names& names, KeyNumber& key, bool& created) {
    const LSTATUS status = RegistryStore::the_store().call([&](RegistryTables& tables) {
        key = find_path(tables, from, names);
        return winapi::success;
    });
    if (status != winapi::success || key != 0) return status;
    if (has_a_long_name(names)) return winapi::result(ERROR_INVALID_PARAMETER);
    return RegistryStore::the_store().change([&](RegistryTables& tables) {
        if (!tables.has_key(from)) return winapi::result(ERROR_KEY_DELETED);
        key = create_path(tables, from, names, created);
        return winapi::success;
    });
}

}  // namespace

LSTATUS RegOpenKeyExA(HKEY key, LPCSTR path, DWORD, REGSAM rights, HKEY* opened) {
    const auto from = winapi::open_key_of(key);
    if (!from) return winapi::result(ERROR_INVALID_HANDLE);
    if (opened == nullptr || (path == nullptr && !from->is_root)) {
        return winapi::result(ERROR_INVALID_PARAMETER);
    }
    const auto names = winapi::names_of(path == nullptr ? "" : path);
    if (!names) return winapi::result(ERROR_BAD_PATHNAME);
    KeyNumber found = 0;
    const LSTATUS status = RegistryStore::the_store().call([&](RegistryTables& tables) {
        found = find_path(tables, from->number, *names);
        return winapi::result(found == 0 ? ERROR_FILE_NOT_FOUND : ERROR_SUCCESS);
    });
    if (status == winapi::success) *opened = winapi::handle_to(found, rights);
    return status;
}

LSTATUS RegCreateKeyExA(HKEY key, LPCSTR path, DWORD reserved, LPCSTR, DWORD options, REGSAM rights,
                        const void* security, HKEY* opened, DWORD* disposition) {
    const auto from = winapi::open_key_of(key);
    if (!from) return winapi::result(ERROR_INVALID_HANDLE);
    if (path == nullptr || opened == nullptr || reserved != 0 || security != nullptr ||
        options != REG_OPTION_NON_VOLATILE) {
        return winapi::result(ERROR_INVALID_PARAMETER);
    }
    const auto names = winapi::names_of(path);
    if (!names) return winapi::result(ERROR_BAD_PATHNAME);
    KeyNumber found = 0;
    bool created = false;
    const LSTATUS status = find_or_create(from->number, *names, found, created);
    if (status != winapi::success) return status;
    *opened = winapi::handle_to(found, rights);
    if (disposition != nullptr) {
        *disposition = created ? REG_CREATED_NEW_KEY : REG_OPENED_EXISTING_KEY;
    }
    return winapi::success;
}

LSTATUS RegCloseKey(HKEY key) {
    const auto open_key = winapi::open_key_of(key);
    const bool is_closed = open_key && (open_key->is_root || winapi::close_key_handle(key));
    return winapi::result(is_closed ? ERROR_SUCCESS : ERROR_INVALID_HANDLE);
}

LSTATUS RegFlushKey(HKEY key) {
    return winapi::open_key_of(key) ? RegistryStore::the_store().flush()
                                    : winapi::result(ERROR_INVALID_HANDLE);
}

LSTATUS RegEnumKeyExA(HKEY key, DWORD index, LPSTR name, DWORD* size, DWORD*, LPSTR key_class,
                      DWORD* class_size, FILETIME* last_write_time) {
    const auto from = winapi::open_key_of(key);
    if (!from) return winapi::result(ERROR_INVALID_HANDLE);
    if (name == nullptr || size == nullptr) return winapi::result(ERROR_INVALID_PARAMETER);
    if (!from->has_right(KEY_ENUMERATE_SUB_KEYS)) return winapi::result(ERROR_ACCESS_DENIED);
    const LSTATUS status = RegistryStore::the_store().call([&](RegistryTables& tables) {
        winapi::SqliteRows rows(
            tables.database(),
            "SELECT name FROM keys WHERE parent = ?1 ORDER BY name LIMIT 1 OFFSET ?2", from->number,
            std::int64_t{index});
        if (rows.next()) return winapi::give_name(rows.text(0), name, size);
        return winapi::none_left(tables, from->number);
    });
    if (status != winapi::success) return status;
    if (key_class != nullptr && class_size != nullptr && *class_size > 0) *key_class = '\0';
    if (class_size != nullptr) *class_size = 0;
    if (last_write_time != nullptr) *last_write_time = {};
    return status;
}

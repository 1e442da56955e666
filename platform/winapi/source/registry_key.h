// registry_key.h: the key behind a handle, and the names of a path.
#pragma once

#include <winapi/registry.h>

#include <optional>
#include <string_view>
#include <vector>

#include "handle_table.h"
#include "registry_tables.h"

namespace winapi {

/// A key with the rights of the handle that leads to it.
struct OpenKey {
    KeyNumber number;
    REGSAM rights;
    bool is_root;

    bool has_right(REGSAM right) const { return (rights & right) == right; }
};

/// The key behind the handle, which may be a root; nothing for other handles.
std::optional<OpenKey> open_key_of(HKEY handle);

/// A handle to the key.
HKEY handle_to(KeyNumber key, REGSAM rights);

/// Closes the handle; false if it is not that of a key.
bool close_key_handle(HKEY handle);

/// The names of the path from the top; nothing for a path with a backslash in front.
std::optional<std::vector<std::string_view>> names_of(std::string_view path);

/// The key at the path below `key`; 0 if it is missing. Throws ERROR_KEY_DELETED if `key` itself
/// is.
KeyNumber find_path(RegistryTables& tables, KeyNumber key,
                    const std::vector<std::string_view>& names);

}  // namespace winapi

// registry_tree: a key with its values and all that is below it, in the registry.

#include "commands/registry/registry_tree.h"

#include <winapi/last_error.h>
#include <winapi/registry_store.h>

#include "text/escaped_text.h"

namespace nmk_registry {

namespace {

// Longest names, their NULs included.
constexpr DWORD key_name_room = 256;
constexpr DWORD value_name_room = 16384;

// Where a tree is written before it is copied to its place in one step.
KeyPath staging_path() { return {HKEY_CURRENT_USER, "nmk registry import"}; }

std::string reason_text(LSTATUS status) {
    switch (static_cast<DWORD>(status)) {
        case ERROR_FILE_NOT_FOUND:
            return "does not exist";
        case ERROR_INVALID_PARAMETER:
            return "beyond the limits of the registry: expected names of at most 255 bytes, at "
                   "most 512 levels, no new keys directly below HKLM or HKU, and no copy of a key "
                   "into what is below it";
        default:
            return winapi::registry_store_problem();
    }
}

// The roots, and the keys directly below two of them.
bool belongs_to_the_system(const KeyPath& path) {
    const bool has_kept_keys = path.root == HKEY_LOCAL_MACHINE || path.root == HKEY_USERS;
    return path.below.empty() || (has_kept_keys && path.below.find('\\') == path.below.npos);
}

bool is_missing(const KeyPath& path) {
    HKEY key = nullptr;
    const LSTATUS status = RegOpenKeyExA(path.root, path.below.c_str(), 0, KEY_READ, &key);
    if (status == 0) RegCloseKey(key);
    return status == ERROR_FILE_NOT_FOUND;
}

void delete_staging() {
    const KeyPath staging = staging_path();
    if (!is_missing(staging)) {
        check(SHDeleteKeyA(staging.root, staging.below.c_str()), staging, "cannot be deleted");
    }
}

void write_values_and_keys(const Key& tree, const KeyPath& path) {
    const OpenKey key = OpenKey::created(path);
    for (const Value& value : tree.values) key.set(value);
    for (const Key& each : tree.keys) write_values_and_keys(each, below(path, each.name));
}

void read_below(const KeyPath& path, Key& tree) {
    const OpenKey key(path, KEY_READ);
    tree.values = key.values();
    for (const std::string& name : key.subkeys()) {
        tree.keys.push_back({name, {}, {}});
        read_below(below(path, name), tree.keys.back());
    }
}

}  // namespace

void check(LSTATUS status, const KeyPath& path, const std::string& what) {
    if (status != 0) {
        throw Failure{status, nmk_text::line_text(key_path_text(path)) + ": " +
                                  (what.empty() ? "" : what + ": ") + reason_text(status)};
    }
}

OpenKey::OpenKey(const KeyPath& path, REGSAM rights) : m_path(path) {
    check(RegOpenKeyExA(path.root, path.below.c_str(), 0, rights, &m_key), path, "");
}

OpenKey OpenKey::created(const KeyPath& path) {
    HKEY key = nullptr;
    check(RegCreateKeyExA(path.root, path.below.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                          &key, nullptr),
          path, "cannot be created");
    return OpenKey(path, key);
}

Value OpenKey::value(const std::string& name) const {
    Value value{name, 0, {}};
    const std::string what =
        name.empty() ? "its default value" : "the value " + nmk_text::quoted(name);
    DWORD size = 0;
    check(RegQueryValueExA(m_key, name.c_str(), nullptr, nullptr, nullptr, &size), m_path, what);
    value.bytes.resize(size);
    check(RegQueryValueExA(m_key, name.c_str(), nullptr, &value.type,
                           reinterpret_cast<BYTE*>(value.bytes.data()), &size),
          m_path, what);
    value.bytes.resize(size);
    return value;
}

std::vector<Value> OpenKey::values() const {
    std::vector<Value> values;
    std::string name(value_name_room, '\0');
    for (DWORD index = 0;; ++index) {
        DWORD size = value_name_room;
        const LSTATUS status =
            RegEnumValueA(m_key, index, name.data(), &size, nullptr, nullptr, nullptr, nullptr);
        if (status == ERROR_NO_MORE_ITEMS) return values;
        check(status, m_path, "its values");
        values.push_back(value(name.substr(0, size)));
    }
}

std::vector<std::string> OpenKey::subkeys() const {
    std::vector<std::string> names;
    char name[key_name_room];
    for (DWORD index = 0;; ++index) {
        DWORD size = key_name_room;
        const LSTATUS status =
            RegEnumKeyExA(m_key, index, name, &size, nullptr, nullptr, nullptr, nullptr);
        if (status == ERROR_NO_MORE_ITEMS) return names;
        check(status, m_path, "its subkeys");
        names.emplace_back(name, size);
    }
}

void OpenKey::set(const Value& value) const {
    check(RegSetValueExA(m_key, value.name.c_str(), 0, value.type,
                         reinterpret_cast<const BYTE*>(value.bytes.data()),
                         static_cast<DWORD>(value.bytes.size())),
          m_path, "the value " + nmk_text::quoted(value.name) + " cannot be set");
}

void OpenKey::erase(const std::string& name) const {
    check(RegDeleteValueA(m_key, name.c_str()), m_path, "the value " + nmk_text::quoted(name));
}

Key read_tree(const KeyPath& path) {
    Key tree;
    tree.name = path.below.substr(path.below.rfind('\\') + 1);
    read_below(path, tree);
    return tree;
}

void write_tree(const Key& tree, const KeyPath& path) {
    delete_staging();
    try {
        write_values_and_keys(tree, staging_path());
        copy_tree(staging_path(), path);
    } catch (const Failure&) {
        SHDeleteKeyA(staging_path().root, staging_path().below.c_str());
        throw;
    }
    delete_staging();
}

void copy_tree(const KeyPath& from, const KeyPath& to) {
    const OpenKey source(from, KEY_READ);
    const OpenKey target = OpenKey::created(to);
    check(RegCopyTreeA(source.handle(), nullptr, target.handle()), from,
          "cannot be copied to " + nmk_text::line_text(key_path_text(to)));
}

void delete_key(const KeyPath& path, bool with_subkeys) {
    if (belongs_to_the_system(path)) {
        throw Failure{static_cast<LSTATUS>(ERROR_ACCESS_DENIED),
                      key_path_text(path) + ": belongs to the system and cannot be deleted"};
    }
    check(with_subkeys ? SHDeleteKeyA(path.root, path.below.c_str())
                       : RegDeleteKeyA(path.root, path.below.c_str()),
          path, "");
}

}  // namespace nmk_registry

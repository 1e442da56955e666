// Deleting and copying keys with what is below them.
#include <winapi/last_error.h>
#include <winapi/registry.h>

#include <algorithm>
#include <ranges>
#include <string>
#include <vector>

#include "registry_failure.h"
#include "registry_key.h"
#include "registry_results.h"
#include "registry_store.h"

namespace {

using winapi::KeyNumber;
using winapi::RegistryStore;
using winapi::RegistryTables;
using winapi::WalkedKey;
using Names = std::vector<std::string_view>;

// The roots, and what the system keeps below two of them.
bool is_kept(RegistryTables& tables, KeyNumber key) {
    const KeyNumber parent = tables.parent_of(key);
    return parent == 0 || parent == winapi::local_machine || parent == winapi::users;
}

LSTATUS delete_one(RegistryTables& tables, KeyNumber key) {
    if (tables.has_subkeys(key)) return winapi::result(ERROR_ACCESS_DENIED);
    tables.delete_key(key);
    return winapi::success;
}

LSTATUS delete_tree(RegistryTables& tables, KeyNumber key) {
    for (const WalkedKey& walked : tables.walk(key)) tables.delete_key(walked.key);
    return winapi::success;
}

LSTATUS delete_path(HKEY key, LPCSTR path, LSTATUS (*remove)(RegistryTables&, KeyNumber)) {
    const auto from = winapi::open_key_of(key);
    if (!from) return winapi::result(ERROR_INVALID_HANDLE);
    if (path == nullptr) return winapi::result(ERROR_INVALID_PARAMETER);
    const auto names = winapi::names_of(path);
    if (!names) return winapi::result(ERROR_BAD_PATHNAME);
    return RegistryStore::the_store().change([&](RegistryTables& tables) {
        const KeyNumber found = find_path(tables, from->number, *names);
        if (found == 0) return winapi::result(ERROR_FILE_NOT_FOUND);
        if (is_kept(tables, found)) return winapi::result(ERROR_ACCESS_DENIED);
        return remove(tables, found);
    });
}

bool is_below(const std::vector<WalkedKey>& tree, KeyNumber key) {
    return std::ranges::find(tree | std::views::drop(1), key, &WalkedKey::key) != tree.end();
}

std::string name_of(RegistryTables& tables, KeyNumber key) {
    winapi::SqliteRows rows(tables.database(), "SELECT name FROM keys WHERE number = ?1", key);
    return std::string(rows.next() ? rows.text(0) : "");
}

// Keys are copied from the top downwards: where the target is above the source, a key is then
// copied before what it holds is replaced.
void copy_tree(RegistryTables& tables, const std::vector<WalkedKey>& tree, KeyNumber target) {
    std::vector<KeyNumber> copies = {target};
    for (const WalkedKey& walked : tree | std::views::drop(1)) {
        const std::string name = name_of(tables, walked.key);
        copies.push_back(tables.find_or_create(copies[walked.parent], name));
    }
    for (std::size_t i = 0; i < tree.size(); ++i) tables.copy_values(tree[i].key, copies[i]);
}

LSTATUS copy_key(RegistryTables& tables, KeyNumber source, KeyNumber target) {
    if (!tables.has_key(target)) return winapi::result(ERROR_KEY_DELETED);
    if (source == target) return winapi::success;
    const std::vector<WalkedKey> tree = tables.walk(source);
    const bool is_too_deep = tables.level_of(target) + tree.back().level > winapi::max_levels;
    if (is_too_deep || is_below(tree, target)) return winapi::result(ERROR_INVALID_PARAMETER);
    copy_tree(tables, tree, target);
    return winapi::success;
}

}  // namespace

LSTATUS RegDeleteKeyA(HKEY key, LPCSTR path) { return delete_path(key, path, &delete_one); }

LSTATUS SHDeleteKeyA(HKEY key, LPCSTR path) { return delete_path(key, path, &delete_tree); }

LSTATUS RegCopyTreeA(HKEY source, LPCSTR path, HKEY target) {
    const auto from = winapi::open_key_of(source);
    const auto to = winapi::open_key_of(target);
    if (!from || !to) return winapi::result(ERROR_INVALID_HANDLE);
    if (!to->has_right(KEY_SET_VALUE)) return winapi::result(ERROR_ACCESS_DENIED);
    const auto names = winapi::names_of(path == nullptr ? "" : path);
    if (!names) return winapi::result(ERROR_BAD_PATHNAME);
    return RegistryStore::the_store().change([&](RegistryTables& tables) {
        const KeyNumber found = find_path(tables, from->number, *names);
        return found == 0 ? winapi::result(ERROR_FILE_NOT_FOUND)
                          : copy_key(tables, found, to->number);
    });
}

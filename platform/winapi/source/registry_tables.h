// registry_tables.h: keys and values as rows of two tables.
//
// A key has a number, which is never given to another, the number of its parent, and a name; the
// roots have the numbers 1 to 4 and the parent 0. Names are compared without the case of ASCII
// letters by the tables themselves.
#pragma once

#include <string_view>
#include <vector>

#include "sqlite_database.h"

namespace winapi {

using KeyNumber = std::int64_t;

inline constexpr KeyNumber classes_root = 1;
inline constexpr KeyNumber current_user = 2;
inline constexpr KeyNumber local_machine = 3;
inline constexpr KeyNumber users = 4;

/// Levels of keys below a root.
inline constexpr int max_levels = 512;

/// Makes the tables of an empty file; throws ERROR_NOT_REGISTRY_FILE, and changes nothing, if the
/// file has others.
void prepare_registry_tables(SqliteDatabase& database);

/// A key and where it is below the key that a walk began with.
struct WalkedKey {
    KeyNumber key;
    std::size_t parent;  // position of its parent in the walk; that of the first is 0
    int level;           // 0 for the first
};

class RegistryTables {
  public:
    explicit RegistryTables(SqliteDatabase& database) : m_database(database) {}

    /// Whether the key is still there.
    bool has_key(KeyNumber key);

    /// The subkey of that name; 0 if there is none.
    KeyNumber find(KeyNumber key, std::string_view name);
    KeyNumber create(KeyNumber key, std::string_view name);
    KeyNumber find_or_create(KeyNumber key, std::string_view name);
    KeyNumber parent_of(KeyNumber key);
    bool has_subkeys(KeyNumber key);

    /// Levels from the root, which has 0.
    int level_of(KeyNumber key);

    /// The key and all below it, each after its parent, one level after the other. Throws
    /// ERROR_REGISTRY_CORRUPT for keys that are below themselves.
    std::vector<WalkedKey> walk(KeyNumber key);

    void delete_key(KeyNumber key);

    /// Copies the values of one key to another, replacing those of the same name.
    void copy_values(KeyNumber from, KeyNumber to);

    /// False if the key is not there.
    bool set_value(KeyNumber key, std::string_view name, DWORD type, std::span<const BYTE> data);

    /// False if there is no such value.
    bool delete_value(KeyNumber key, std::string_view name);

    SqliteDatabase& database() { return m_database; }

  private:
    SqliteDatabase& m_database;
};

}  // namespace winapi

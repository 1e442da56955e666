#include "registry_tables.h"

#include <string>
#include <unordered_set>

#include "registry_failure.h"

namespace winapi {

namespace {

// "nmkr", in the header of the file, and the version of the tables.
constexpr std::int64_t application_number = 0x6E6D6B72;
constexpr std::int64_t version_of_tables = 1;

// Pages of 4096 bytes that are checked when the store is opened; it takes some milliseconds.
constexpr std::int64_t max_checked_pages = 512;

// Keys count upwards and are never given again, so a handle to a deleted key meets no other.
constexpr const char* table_of_keys =
    "CREATE TABLE keys(number INTEGER PRIMARY KEY AUTOINCREMENT, parent INTEGER NOT NULL, "
    "name TEXT NOT NULL COLLATE NOCASE, UNIQUE(parent, name)) STRICT";
constexpr const char* table_of_values =
    "CREATE TABLE entries(number INTEGER PRIMARY KEY, key INTEGER NOT NULL, "
    "name TEXT NOT NULL COLLATE NOCASE, type INTEGER NOT NULL, data BLOB NOT NULL, "
    "UNIQUE(key, name)) STRICT";
constexpr const char* first_rows =
    "INSERT INTO keys(number, parent, name) VALUES"
    "(1, 0, 'HKEY_CLASSES_ROOT'), (2, 0, 'HKEY_CURRENT_USER'), (3, 0, 'HKEY_LOCAL_MACHINE'), "
    "(4, 0, 'HKEY_USERS'), (5, 3, 'Software'), (6, 4, '.Default');"
    "PRAGMA application_id=0x6E6D6B72; PRAGMA user_version=1";

bool is_empty(SqliteDatabase& database) {
    return database.number("PRAGMA application_id") == 0 &&
           database.number("PRAGMA user_version") == 0 &&
           database.number("SELECT count(*) FROM sqlite_schema") == 0;
}

// A trigger, say, that somebody added would act within our changes.
bool has_our_tables(SqliteDatabase& database) {
    std::string found;
    SqliteRows rows(database,
                    "SELECT sql FROM sqlite_schema WHERE sql IS NOT NULL "
                    "AND name <> 'sqlite_sequence' ORDER BY rowid");
    while (rows.next()) found.append(rows.text(0)).append(";");
    return found == std::string(table_of_keys) + ";" + table_of_values + ";" &&
           database.number("PRAGMA application_id") == application_number &&
           database.number("PRAGMA user_version") == version_of_tables;
}

// SQLite reads what a file has lost as zeros and may find nothing wrong: a value would just be
// missing. The whole file is checked unless it is so large that it would be noticed.
bool is_sound(SqliteDatabase& database) {
    if (database.number("PRAGMA page_count") > max_checked_pages) return true;
    SqliteRows rows(database, "PRAGMA integrity_check(1)");
    return rows.next() && rows.text(0) == "ok";
}

void make_tables(SqliteDatabase& database) {
    database.run("BEGIN IMMEDIATE");
    database.run(table_of_keys);
    database.run(table_of_values);
    database.run(first_rows);
    database.run("COMMIT");
    // From now on the file itself is a store, whatever happens to its log.
    database.number("PRAGMA wal_checkpoint(TRUNCATE)");
}

}  // namespace

void prepare_registry_tables(SqliteDatabase& database) {
    const bool is_new = is_empty(database);
    if (!is_new && !has_our_tables(database)) throw RegistryFailure{ERROR_NOT_REGISTRY_FILE};
    if (!is_new && !is_sound(database)) throw RegistryFailure{ERROR_REGISTRY_CORRUPT};
    database.number("PRAGMA journal_mode=WAL");
    if (is_new) make_tables(database);
    // The log is open from the first read on; its name may belong to another file later.
    database.number("SELECT number FROM keys LIMIT 1");
}

bool RegistryTables::has_key(KeyNumber key) {
    return SqliteRows(m_database, "SELECT 1 FROM keys WHERE number = ?1", key).next();
}

KeyNumber RegistryTables::find(KeyNumber key, std::string_view name) {
    SqliteRows rows(m_database, "SELECT number FROM keys WHERE parent = ?1 AND name = ?2", key,
                    name);
    return rows.next() ? rows.number(0) : 0;
}

KeyNumber RegistryTables::create(KeyNumber key, std::string_view name) {
    sqlite_change(m_database, "INSERT INTO keys(parent, name) VALUES(?1, ?2)", key, name);
    return m_database.inserted_key();
}

KeyNumber RegistryTables::find_or_create(KeyNumber key, std::string_view name) {
    const KeyNumber found = find(key, name);
    return found != 0 ? found : create(key, name);
}

KeyNumber RegistryTables::parent_of(KeyNumber key) {
    SqliteRows rows(m_database, "SELECT parent FROM keys WHERE number = ?1", key);
    return rows.next() ? rows.number(0) : 0;
}

bool RegistryTables::has_subkeys(KeyNumber key) {
    return SqliteRows(m_database, "SELECT 1 FROM keys WHERE parent = ?1 LIMIT 1", key).next();
}

int RegistryTables::level_of(KeyNumber key) {
    int level = 0;
    for (KeyNumber parent = parent_of(key); parent != 0; parent = parent_of(parent)) {
        if (++level > max_levels) throw RegistryFailure{ERROR_REGISTRY_CORRUPT};
    }
    return level;
}

std::vector<WalkedKey> RegistryTables::walk(KeyNumber key) {
    std::vector<WalkedKey> keys = {{key, 0, 0}};
    std::unordered_set<KeyNumber> seen = {key};
    for (std::size_t at = 0; at < keys.size(); ++at) {
        const WalkedKey walked = keys[at];
        SqliteRows rows(m_database, "SELECT number FROM keys WHERE parent = ?1", walked.key);
        while (rows.next()) {
            if (!seen.insert(rows.number(0)).second) throw RegistryFailure{ERROR_REGISTRY_CORRUPT};
            keys.push_back({rows.number(0), at, walked.level + 1});
        }
    }
    return keys;
}

void RegistryTables::delete_key(KeyNumber key) {
    sqlite_change(m_database, "DELETE FROM entries WHERE key = ?1", key);
    sqlite_change(m_database, "DELETE FROM keys WHERE number = ?1", key);
}

void RegistryTables::copy_values(KeyNumber from, KeyNumber to) {
    sqlite_change(m_database,
                  "INSERT INTO entries(key, name, type, data) "
                  "SELECT ?2, name, type, data FROM entries WHERE key = ?1 "
                  "ON CONFLICT(key, name) DO UPDATE SET type = excluded.type, data = excluded.data",
                  from, to);
}

bool RegistryTables::set_value(KeyNumber key, std::string_view name, DWORD type,
                               std::span<const BYTE> data) {
    return sqlite_change(m_database,
                         "INSERT INTO entries(key, name, type, data) "
                         "SELECT ?1, ?2, ?3, ?4 FROM keys WHERE number = ?1 "
                         "ON CONFLICT(key, name) "
                         "DO UPDATE SET type = excluded.type, data = excluded.data",
                         key, name, std::int64_t{type}, data) != 0;
}

bool RegistryTables::delete_value(KeyNumber key, std::string_view name) {
    return sqlite_change(m_database, "DELETE FROM entries WHERE key = ?1 AND name = ?2", key,
                         name) != 0;
}

}  // namespace winapi

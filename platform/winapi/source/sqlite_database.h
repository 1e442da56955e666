// sqlite_database.h: one connection to a file of SQLite, and its statements.
//
// Whatever fails throws a SqliteFailure. For one thread at a time.
#pragma once

#include <sqlite3.h>
#include <winapi/types.h>

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>

namespace winapi {

struct SqliteFailure {
    int code;          // SQLite's extended result code
    int error_number;  // errno of the call of the system that failed, 0 if none did
};

class SqliteDatabase {
  public:
    /// Opens the file, and creates it if it is missing.
    explicit SqliteDatabase(const std::string& file);
    SqliteDatabase(const SqliteDatabase&) = delete;
    SqliteDatabase& operator=(const SqliteDatabase&) = delete;
    /// Closes it without removing or moving anything: another file may have the name by now.
    ~SqliteDatabase();

    /// Runs statements that give no rows and have no arguments.
    void run(const char* statements);

    /// The first column of the first row that the statement gives; 0 if it gives none.
    std::int64_t number(const char* statement);

    /// Rows that the last statement changed.
    int changed_rows() const { return ::sqlite3_changes(m_connection); }

    /// Rows that were changed since it was opened.
    int all_changed_rows() const { return ::sqlite3_total_changes(m_connection); }

    /// Ends the transaction, if there is one, without its changes.
    void roll_back() noexcept;

    /// The key of the row that was inserted last.
    std::int64_t inserted_key() const { return ::sqlite3_last_insert_rowid(m_connection); }

    /// Writes what was committed to the disk.
    void flush();

  private:
    friend class SqliteRows;

    void set_up();
    void close();
    sqlite3_stmt* prepared(const char* statement);
    void check(int code) const;
    int error_number_of(int code) const;
    sqlite3_file* open_log() const;

    sqlite3* m_connection = nullptr;
    std::unordered_map<const char*, sqlite3_stmt*> m_statements;  // by the address of their text
};

/// The rows that a statement gives for its arguments, which must outlive them. The text of the
/// statement must be a literal.
class SqliteRows {
  public:
    template <class... Arguments>
    SqliteRows(SqliteDatabase& database, const char* statement, const Arguments&... arguments)
        : m_database(database), m_statement(database.prepared(statement)) {
        int index = 0;
        (bind(++index, arguments), ...);
    }
    SqliteRows(const SqliteRows&) = delete;
    SqliteRows& operator=(const SqliteRows&) = delete;
    ~SqliteRows();

    /// Goes to the next row, at first to the first one; false after the last.
    bool next();

    std::int64_t number(int column) const { return ::sqlite3_column_int64(m_statement, column); }
    std::string_view text(int column) const;
    std::span<const BYTE> bytes(int column) const;

  private:
    void bind(int index, std::int64_t number);
    void bind(int index, std::string_view text);
    void bind(int index, std::span<const BYTE> bytes);

    SqliteDatabase& m_database;
    sqlite3_stmt* const m_statement;
};

/// Runs a statement that gives no rows; returns how many rows it changed.
template <class... Arguments>
int sqlite_change(SqliteDatabase& database, const char* statement, const Arguments&... arguments) {
    SqliteRows(database, statement, arguments...).next();
    return database.changed_rows();
}

}  // namespace winapi

#include "sqlite_database.h"

#include <cstring>

namespace winapi {

namespace {

// Milliseconds to wait while another process writes.
constexpr int longest_wait = 10000;

// The write-ahead log keeps a commit safe from the end of the process without flushing it, and the
// file whole whenever the power fails; `flush` writes it to the disk.
//
// The log is written over from its beginning after some 4 MB. It keeps that size, since a flush of
// blocks that the file has already is quicker; the limit is for what one large change leaves.
constexpr const char* settings =
    "PRAGMA synchronous=NORMAL;"
    "PRAGMA trusted_schema=OFF;"
    "PRAGMA cell_size_check=ON;"
    "PRAGMA journal_size_limit=8388608;";

}  // namespace

SqliteDatabase::SqliteDatabase(const std::string& file) {
    constexpr int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX;
    try {
        check(::sqlite3_open_v2(file.c_str(), &m_connection, flags, nullptr));
        set_up();
    } catch (...) {
        close();
        throw;
    }
}

SqliteDatabase::~SqliteDatabase() { close(); }

void SqliteDatabase::set_up() {
    ::sqlite3_extended_result_codes(m_connection, 1);
    ::sqlite3_busy_timeout(m_connection, longest_wait);
    ::sqlite3_db_config(m_connection, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    ::sqlite3_db_config(m_connection, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
    int keep_log = 1;
    ::sqlite3_file_control(m_connection, "main", SQLITE_FCNTL_PERSIST_WAL, &keep_log);
    run(settings);
}

void SqliteDatabase::close() {
    for (const auto& [text, statement] : m_statements) ::sqlite3_finalize(statement);
    ::sqlite3_close(m_connection);
}

void SqliteDatabase::run(const char* statements) {
    check(::sqlite3_exec(m_connection, statements, nullptr, nullptr, nullptr));
}

std::int64_t SqliteDatabase::number(const char* statement) {
    SqliteRows rows(*this, statement);
    return rows.next() ? rows.number(0) : 0;
}

void SqliteDatabase::roll_back() noexcept {
    if (::sqlite3_get_autocommit(m_connection) == 0) {
        ::sqlite3_exec(m_connection, "ROLLBACK", nullptr, nullptr, nullptr);
    }
}

void SqliteDatabase::flush() {
    if (sqlite3_file* const log = open_log()) check(log->pMethods->xSync(log, SQLITE_SYNC_NORMAL));
}

sqlite3_stmt* SqliteDatabase::prepared(const char* statement) {
    sqlite3_stmt*& known = m_statements[statement];
    if (known == nullptr) {
        check(::sqlite3_prepare_v3(m_connection, statement, -1, SQLITE_PREPARE_PERSISTENT, &known,
                                   nullptr));
    }
    return known;
}

void SqliteDatabase::check(int code) const {
    if (code == SQLITE_OK || code == SQLITE_ROW || code == SQLITE_DONE) return;
    throw SqliteFailure{code, m_connection == nullptr ? 0 : error_number_of(code)};
}

// A quota that is used up, for one, is known from the log's own errno only.
int SqliteDatabase::error_number_of(int code) const {
    int error_number = ::sqlite3_system_errno(m_connection);
    if (error_number != 0 || (code & 0xFF) != SQLITE_IOERR) return error_number;
    sqlite3_file* const log = open_log();
    if (log != nullptr) log->pMethods->xFileControl(log, SQLITE_FCNTL_LAST_ERRNO, &error_number);
    return error_number;
}

// Null where none is open.
sqlite3_file* SqliteDatabase::open_log() const {
    sqlite3_file* log = nullptr;
    ::sqlite3_file_control(m_connection, "main", SQLITE_FCNTL_JOURNAL_POINTER, &log);
    return log == nullptr || log->pMethods == nullptr ? nullptr : log;
}

SqliteRows::~SqliteRows() {
    ::sqlite3_reset(m_statement);
    ::sqlite3_clear_bindings(m_statement);
}

bool SqliteRows::next() {
    const int code = ::sqlite3_step(m_statement);
    m_database.check(code);
    return code == SQLITE_ROW;
}

std::string_view SqliteRows::text(int column) const {
    const auto* const characters =
        reinterpret_cast<const char*>(::sqlite3_column_text(m_statement, column));
    return characters == nullptr ? std::string_view() : std::string_view(characters);
}

std::span<const BYTE> SqliteRows::bytes(int column) const {
    const auto* const data = static_cast<const BYTE*>(::sqlite3_column_blob(m_statement, column));
    const int size = ::sqlite3_column_bytes(m_statement, column);
    return {data, data == nullptr ? 0 : static_cast<std::size_t>(size)};
}

void SqliteRows::bind(int index, std::int64_t number) {
    m_database.check(::sqlite3_bind_int64(m_statement, index, number));
}

void SqliteRows::bind(int index, std::string_view text) {
    const char* const characters = text.data() == nullptr ? "" : text.data();
    m_database.check(::sqlite3_bind_text64(m_statement, index, characters, text.size(),
                                           SQLITE_STATIC, SQLITE_UTF8));
}

// A null pointer would bind NULL in place of no bytes.
void SqliteRows::bind(int index, std::span<const BYTE> bytes) {
    m_database.check(bytes.empty() ? ::sqlite3_bind_zeroblob(m_statement, index, 0)
                                   : ::sqlite3_bind_blob64(m_statement, index, bytes.data(),
                                                           bytes.size(), SQLITE_STATIC));
}

}  // namespace winapi

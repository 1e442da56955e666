// nmkRegistry_benchmark: sessions on the registry without contention, beside SQLite called
// directly.
//
// A session writes a number, reads it and is on the disk when it is over. The peer does the same
// with one connection, prepared statements and one transaction, which SQLite flushes when it is
// committed. Both are on the disk of /var/tmp: in memory a flush costs nothing, and what a session
// is for would not be measured; the rows "in_memory" print what is left then.
//
// In the second row one session writes 2,000 values, each of which survives the end of the process
// at once; the target is in seconds.

#include <nmktoolbox/runtime/nmkRegistry.h>
#include <sqlite3.h>
#include <stdlib.h>
#include <winapi/configuration_directory.h>

#include <filesystem>
#include <string>

#include "stopwatch.h"

namespace {

constexpr int rounds = 7;
constexpr double target = 1.3;
constexpr double target_seconds = 2.0;

int sessions() { return stopwatch::size(200, 5); }
int values() { return stopwatch::size(2000, 50); }

// A directory that is deleted when the program ends.
class Directory {
  public:
    explicit Directory(std::string pattern) : m_name(std::move(pattern)) {
        if (::mkdtemp(m_name.data()) == nullptr) std::abort();
    }
    Directory(const Directory&) = delete;
    Directory& operator=(const Directory&) = delete;
    ~Directory() {
        std::error_code ignored;
        std::filesystem::remove_all(m_name, ignored);
    }
    const std::string& name() const { return m_name; }

  private:
    std::string m_name;
};

class Peer {
  public:
    explicit Peer(const std::string& file) {
        ::sqlite3_open(file.c_str(), &m_connection);
        run("PRAGMA journal_mode=WAL; PRAGMA synchronous=FULL;"
            "CREATE TABLE entries(key INTEGER, name TEXT COLLATE NOCASE, type INTEGER, data BLOB,"
            "UNIQUE(key, name))");
        prepare("BEGIN IMMEDIATE", m_begin);
        prepare("COMMIT", m_commit);
        prepare(
            "INSERT INTO entries VALUES(1, 'number', 4, ?1) ON CONFLICT(key, name) DO UPDATE "
            "SET type = excluded.type, data = excluded.data",
            m_write);
        prepare("SELECT data FROM entries WHERE key = 1 AND name = 'number'", m_read);
    }
    Peer(const Peer&) = delete;
    Peer& operator=(const Peer&) = delete;
    ~Peer() {
        for (sqlite3_stmt* const statement : {m_begin, m_commit, m_write, m_read}) {
            ::sqlite3_finalize(statement);
        }
        ::sqlite3_close(m_connection);
    }

    int session(int number) {
        step(m_begin);
        ::sqlite3_bind_blob(m_write, 1, &number, sizeof number, SQLITE_STATIC);
        step(m_write);
        int read = -1;
        if (::sqlite3_step(m_read) == SQLITE_ROW) {
            read = *static_cast<const int*>(::sqlite3_column_blob(m_read, 0));
        }
        ::sqlite3_reset(m_read);
        step(m_commit);
        return read;
    }

  private:
    void run(const char* statements) {
        ::sqlite3_exec(m_connection, statements, nullptr, nullptr, nullptr);
    }
    void prepare(const char* text, sqlite3_stmt*& statement) {
        ::sqlite3_prepare_v2(m_connection, text, -1, &statement, nullptr);
    }
    static void step(sqlite3_stmt* statement) {
        ::sqlite3_step(statement);
        ::sqlite3_reset(statement);
    }

    sqlite3* m_connection = nullptr;
    sqlite3_stmt* m_begin = nullptr;
    sqlite3_stmt* m_commit = nullptr;
    sqlite3_stmt* m_write = nullptr;
    sqlite3_stmt* m_read = nullptr;
};

constexpr const char* path = "Software\\benchmark";

int our_session(int number) {
    nmkRegistry registry;
    registry.create_key(HKEY_CURRENT_USER, path);
    registry.set_value("number", number);
    int read = -1;
    registry.query_value("number", read);
    return read;
}

template <class Session>
long sum_of_sessions(const Session& session) {
    long sum = 0;
    for (int i = 0; i < sessions(); ++i) sum += session(i);
    return sum;
}

stopwatch::Taken measure_sessions(const std::string& directory) {
    winapi::set_configuration_directory(directory.c_str());
    Peer peer(directory + "/peer.sqlite");
    return stopwatch::in_turns(
        rounds, [] { return sum_of_sessions(our_session); },
        [&] { return sum_of_sessions([&](int number) { return peer.session(number); }); });
}

// The values that could be read again.
int write_many_values() {
    nmkRegistry registry;
    registry.create_key(HKEY_CURRENT_USER, path);
    for (int i = 0; i < values(); ++i) registry.set_value(std::to_string(i).c_str(), i);
    int right = 0;
    for (int i = 0; i < values(); ++i) {
        int read = -1;
        right += registry.query_value(std::to_string(i).c_str(), read) == 0 && read == i ? 1 : 0;
    }
    return right;
}

}  // namespace

int main() {
    const Directory on_disk("/var/tmp/nmk_benchmark_XXXXXX");
    const Directory in_memory("/dev/shm/nmk_benchmark_XXXXXX");
    const auto there = measure_sessions(in_memory.name());
    stopwatch::print("nmkRegistry_200_sessions_in_memory", there.ours, there.peer);
    const auto taken = measure_sessions(on_disk.name());
    bool reached = stopwatch::report("nmkRegistry_200_sessions", taken.ours, taken.peer, target,
                                     taken.same && there.same);
    int right = 0;
    const double seconds = stopwatch::seconds([&] { right = write_many_values(); });
    reached = stopwatch::report("nmkRegistry_2000_values_seconds", seconds, 1.0, target_seconds,
                                right == values()) &&
              reached;
    return reached ? 0 : 1;
}

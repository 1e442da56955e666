#include "registry_store.h"

#include <filesystem/remove_rename.h>
#include <sys/stat.h>
#include <winapi/configuration_directory.h>
#include <winapi/registry_store.h>

#include <cerrno>
#include <exception>
#include <new>

#include "failure.h"
#include "fork_handlers.h"
#include "lock_file.h"
#include "make_directories.h"
#include "registry_failure.h"

namespace winapi {

namespace {

// Damaged stores that are kept at most.
constexpr int max_kept = 1000;

// The smallest page of SQLite; a file that is shorter but not empty is the beginning of one.
constexpr off_t min_store_size = 512;

thread_local std::string problem_of_this_thread;

std::string store_file(const std::string& directory) {
    return directory + "/registry/store.sqlite";
}

// Held while a store is opened or set aside. Where the directory cannot be written, nobody does
// either, and it goes without.
class StoreLock {
  public:
    explicit StoreLock(const std::string& directory) {
        if (m_file.open(directory + "/registry.lock") == 0) m_file.lock(LockFile::Part::ownership);
    }

  private:
    LockFile m_file;
};

// SQLite takes a file of at most one byte for a new one and deletes its log, which may hold
// everything.
bool has_lost_its_contents(const std::string& file) {
    struct stat store, log;
    if (::stat(file.c_str(), &store) != 0 || store.st_size >= min_store_size) return false;
    return store.st_size > 0 || (::stat((file + "-wal").c_str(), &log) == 0 && log.st_size > 0);
}

// Renames the directory of the store; its new name, or empty if it stays.
std::string rename_store(const std::string& directory) {
    const std::string name = directory + "/registry";
    for (int number = 1; number <= max_kept; ++number) {
        std::string kept = name + ".damaged." + std::to_string(number);
        const int error_number = nmk_filesystem::rename_without_replacing({.name = name.c_str()},
                                                                          {.name = kept.c_str()});
        if (error_number == 0) return kept;
        if (error_number != EEXIST && error_number != ENOTEMPTY) return "";
    }
    return "";
}

std::string description_of(DWORD reason) {
    switch (reason) {
        case ERROR_ACCESS_DENIED:
            return "may not be written; expected write permission on the file and its directory";
        case ERROR_WRITE_PROTECT:
            return "cannot be written: the disk is read-only";
        case ERROR_DISK_FULL:
            return "cannot be written: the disk is full";
        case ERROR_BUSY:
            return "another process writes to it; waited ten seconds";
        case ERROR_NOT_REGISTRY_FILE:
            return "another format; expected a registry store of version 1";
        case ERROR_REGISTRY_CORRUPT:
            return "damaged";
        default:
            return "cannot be read or written (error " + std::to_string(reason) + ")";
    }
}

LSTATUS fail_for(DWORD reason, const std::string& directory, const std::string& kept = "") {
    problem_of_this_thread = store_file(directory) + ": " + description_of(reason) +
                             (kept.empty() ? "" : "; kept in " + kept);
    return static_cast<LSTATUS>(reason);
}

}  // namespace

std::string registry_store_file() { return store_file(configuration_directory()); }

std::string registry_store_problem() { return problem_of_this_thread; }

RegistryStore::RegistryStore() { install_fork_handlers(); }

RegistryStore& RegistryStore::the_store() {
    static auto* const the_one = new RegistryStore;
    return *the_one;
}

namespace {

// The store is made while the library is loaded: a child that is forked while another thread makes
// it would wait for that thread for ever.
[[maybe_unused]] const RegistryStore& made_at_load = RegistryStore::the_store();

}  // namespace

LSTATUS RegistryStore::call(const Work& work) { return guarded("registry call", work); }

LSTATUS RegistryStore::change(const Work& work) {
    return guarded("registry change", [&](RegistryTables& tables) {
        tables.database().run("BEGIN IMMEDIATE");
        try {
            const LSTATUS status = work(tables);
            tables.database().run(status == ERROR_SUCCESS ? "COMMIT" : "ROLLBACK");
            return status;
        } catch (...) {
            tables.database().roll_back();
            throw;
        }
    });
}

LSTATUS RegistryStore::flush() {
    const std::lock_guard lock(m_guard);
    if (!m_is_changed) return ERROR_SUCCESS;
    try {
        ready();
        flush_open_store();
        return ERROR_SUCCESS;
    } catch (const RegistryFailure& failure) {
        return fail_for(failure.reason, m_directory);
    } catch (const SqliteFailure& failure) {
        return fail_for(reason_of(failure), m_directory);
    }
}

void RegistryStore::before_fork() {
    m_guard.lock();
    m_database.reset();
}

LSTATUS RegistryStore::guarded(const char* call, const Work& work) {
    const std::lock_guard lock(m_guard);
    DWORD reason = ERROR_NOT_ENOUGH_MEMORY;
    try {
        if (const int fault = injected_fault(call, ""); fault != 0) {
            throw RegistryFailure{last_error_of(fault, "")};
        }
        ready();
        RegistryTables tables(*m_database);
        const int changes = m_database->all_changed_rows();
        const LSTATUS status = work(tables);
        m_is_changed = m_is_changed || m_database->all_changed_rows() != changes;
        return status;
    } catch (const RegistryFailure& failure) {
        reason = failure.reason;
    } catch (const SqliteFailure& failure) {
        reason = reason_of(failure);
    } catch (const std::exception&) {
    }
    if (reason != ERROR_REGISTRY_CORRUPT) return fail_for(reason, m_directory);
    return fail_for(reason, m_directory, set_aside());
}

// Opens the store unless it is open. A file that was replaced meanwhile is opened anew.
void RegistryStore::ready() {
    const std::string directory = configuration_directory();
    if (m_database != nullptr && directory == m_directory && is_still_named()) return;
    if (m_database != nullptr && m_is_changed) flush_open_store();
    m_database.reset();
    m_directory = directory;
    if (directory.empty()) throw RegistryFailure{ERROR_PATH_NOT_FOUND};
    open(directory);
}

void RegistryStore::open(const std::string& directory) {
    const int error_number = make_directories(directory + "/registry");
    if (error_number != 0) throw RegistryFailure{last_error_of(error_number, directory.c_str())};
    const StoreLock lock(directory);
    const std::string file = store_file(directory);
    try {
        if (has_lost_its_contents(file)) throw RegistryFailure{ERROR_REGISTRY_CORRUPT};
        m_database = std::make_unique<SqliteDatabase>(file);
        prepare_registry_tables(*m_database);
        m_is_changed = m_is_changed || m_database->all_changed_rows() > 0;
        note_file(file);
    } catch (...) {
        m_database.reset();
        note_file(file);
        throw;
    }
}

void RegistryStore::note_file(const std::string& file) { m_file = identity_of(file); }

bool RegistryStore::is_still_named() const {
    return m_file && m_file == identity_of(store_file(m_directory));
}

void RegistryStore::flush_open_store() {
    m_database->flush();
    m_is_changed = false;
}

// Under the lock another process may have been first: only the file that was open is renamed.
std::string RegistryStore::set_aside() {
    m_database.reset();
    m_is_changed = false;
    const StoreLock lock(m_directory);
    return is_still_named() ? rename_store(m_directory) : "";
}

}  // namespace winapi

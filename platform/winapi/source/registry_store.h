// registry_store.h: the store of the registry: opened when it is used first, and where its file is
// replaced; set aside where it is damaged.
//
// Files, in the configuration directory: "registry/store.sqlite" with its log; a damaged store is
// kept by renaming the directory "registry", so that everything of it stays together. The lock on
// "registry.lock" is held while a store is opened or set aside.
#pragma once

#include <winapi/registry.h>

#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "file_identity.h"
#include "registry_tables.h"

namespace winapi {

class RegistryStore {
  public:
    using Work = std::function<LSTATUS(RegistryTables&)>;

    /// The one of the process; never destroyed.
    static RegistryStore& the_store();

    /// Calls the work, which may change one row; whatever fails becomes the result. Work of other
    /// threads waits.
    LSTATUS call(const Work& work);

    /// The same for several changes, of which all are made or, when the result is not 0, none.
    LSTATUS change(const Work& work);

    /// Writes the changes of this process to the disk.
    LSTATUS flush();

    /// Around fork: the store is closed, and no thread is at work on it.
    void before_fork();
    void after_fork() { m_guard.unlock(); }

  private:
    RegistryStore();

    LSTATUS guarded(const char* call, const Work& work);
    void ready();
    void open(const std::string& directory);
    void note_file(const std::string& file);
    bool is_still_named() const;
    void flush_open_store();
    std::string set_aside();

    std::mutex m_guard;  // of all that follows
    std::unique_ptr<SqliteDatabase> m_database;
    std::string m_directory;             // of the configuration
    std::optional<FileIdentity> m_file;  // the one that is open
    bool m_is_changed = false;           // since the last flush
};

}  // namespace winapi

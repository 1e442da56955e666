// registry_tree.h: a key with its values and all that is below it, read from the registry and
// written to it.
#pragma once

#include <string>
#include <vector>

#include "commands/registry/registry_path.h"
#include "commands/registry/registry_value.h"
#include "text/result.h"

namespace nmk_registry {

struct Key {
    std::string name;
    std::vector<Value> values;
    std::vector<Key> keys;

    bool operator==(const Key&) const = default;
};

/// A failure of the registry, with what was being done. A missing key or value is not one of input.
struct Failure {
    LSTATUS status;
    std::string message;  // one line
};

/// An open key, closed when it goes. Whatever fails throws a Failure.
class OpenKey {
  public:
    /// Opens the key with these rights.
    OpenKey(const KeyPath& path, REGSAM rights);
    OpenKey(const OpenKey&) = delete;
    OpenKey& operator=(const OpenKey&) = delete;
    ~OpenKey() { RegCloseKey(m_key); }

    /// Opens the key to read and write, and creates it if it is missing.
    static OpenKey created(const KeyPath& path);

    Value value(const std::string& name) const;
    std::vector<Value> values() const;
    std::vector<std::string> subkeys() const;
    void set(const Value& value) const;
    void erase(const std::string& name) const;
    HKEY handle() const { return m_key; }

  private:
    OpenKey(const KeyPath& path, HKEY key) : m_path(path), m_key(key) {}

    KeyPath m_path;
    HKEY m_key = nullptr;
};

/// The key with all that is below it.
Key read_tree(const KeyPath& path);

/// Writes the values of the tree and its subkeys into the key, which is created if it is missing.
/// Same-named values are replaced, others stay. All is written or, after a failure, nothing, even
/// if the process is killed.
void write_tree(const Key& tree, const KeyPath& path);

void copy_tree(const KeyPath& from, const KeyPath& to);

/// Deletes the key; one with subkeys only if `with_subkeys`.
void delete_key(const KeyPath& path, bool with_subkeys);

/// Throws a Failure unless the status is 0: "HKCU/a: cannot be deleted: ...".
void check(LSTATUS status, const KeyPath& path, const std::string& what);

}  // namespace nmk_registry

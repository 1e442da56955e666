// held_folder.h: walking down a tree and deleting in it, proof against links put in the way.
//
// A path is looked up anew by each call that takes one: between two calls another process may put
// a link in the place of a folder, and what comes next happens elsewhere. Here the folder is held
// open, its entries are named relative to it, and a link is never gone through. Only one folder is
// held however deep the walk, and no path grows with the depth. For one thread at a time.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

class winapi_held_folder {
  public:
    enum class Removal { done, is_folder, refused };

    /// Opens a folder; a link to one is refused.
    explicit winapi_held_folder(const char* name);
    winapi_held_folder(const winapi_held_folder&) = delete;
    winapi_held_folder& operator=(const winapi_held_folder&) = delete;
    ~winapi_held_folder();

    /// False, with a last error, when it could not be opened; then nothing else may be called.
    bool is_open() const { return m_descriptor >= 0; }

    /// Reads what the held folder holds, by byte value, without "." and "..". False, with a last
    /// error, when it may not be read.
    bool list(std::vector<std::string>& names) const;

    /// False only when there is nothing of that name.
    bool exists(const std::string& name) const;

    /// Goes into a folder of the held one. A link of that name is refused.
    bool enter(const std::string& name);

    /// Goes back to the folder that was held before the last `enter`; false, and nothing else may
    /// be called then, if what is above is not that folder any more, as when it was moved.
    bool leave();

    /// Gives the owner the right to write in the held folder, where that is missing: without it
    /// nothing in it can be deleted.
    void let_write() const;

    /// Deletes what is no folder, a link itself; a folder is told and left alone. What is missing
    /// counts as deleted; a file without the owner's right to write is refused, as winapi_remove
    /// does, and then there is a last error.
    Removal remove_file(const std::string& name) const;

    /// Deletes an empty folder, read-only or not. One that is missing counts as deleted.
    bool remove_folder(const std::string& name) const;

  private:
    struct Identity {
        std::uint64_t device;
        std::uint64_t node;
        bool operator==(const Identity&) const = default;
    };

    static Identity identity_of(int descriptor);
    void hold(int descriptor);

    int m_descriptor = -1;
    std::vector<Identity> m_above;  // the folders that were entered from, the last one last
};

// directory_walk.h: walking through a tree, safe against symlinks put in the way.
//
// A path is looked up again by each call that takes one: between two calls another process may put
// a symlink in the place of a directory, and the second call then works elsewhere. A walk holds the
// current directory open, names its entries relative to it and never goes through a symlink. One
// descriptor is open however deep the walk, and no path grows with the depth.
//
// All calls but `exists` return 0 or an errno. For one thread at a time.
#pragma once

#include <filesystem/descriptor.h>
#include <filesystem/directory_listing.h>

#include <cstdint>
#include <string>
#include <vector>

namespace nmk_filesystem {

class DirectoryWalk {
  public:
    /// Which directory it is, whatever its names.
    struct Identity {
        std::uint64_t device;
        std::uint64_t node;
        bool operator==(const Identity&) const = default;
    };

    /// What a symlink of the name given to `open` means.
    enum class Symlink { refused, followed };

    /// What the walk is for: writing needs no permission to list the directories.
    enum class Use { listing, writing };

    explicit DirectoryWalk(Use use) : m_use(use) {}

    /// Starts in the directory.
    int open(const char* name, Symlink symlink);

    /// The current directory.
    int descriptor() const { return m_directory.number(); }
    Identity identity() const { return identity_of(descriptor()); }

    /// Reads what the current directory holds.
    int list(DirectoryListing& entries) const { return entries.read(descriptor()); }

    /// False only when nothing has that name.
    bool exists(const char* name) const;

    /// Moves to a subdirectory. ENOTDIR or ELOOP for a symlink and a file.
    int enter(const char* name);

    /// Moves back to the directory from which the last `enter` was made. ENOENT if the directory
    /// above is another one by now, because this one was moved; nothing else may be called then.
    int leave();

    /// Gives the owner the permission to write the current directory, without which nothing in it
    /// can be deleted.
    int make_writeable() const;

    /// Deletes anything but a directory; a symlink itself. EISDIR for a directory, EACCES for a
    /// file that its owner may not write, also for root. What is missing counts as deleted.
    int remove_file(const char* name) const;

    /// Deletes an empty directory, read-only or not. What is missing counts as deleted.
    int remove_directory(const char* name) const;

    /// Creates a subdirectory with the default mode. EEXIST if the name is taken.
    int make_directory(const char* name) const;

  private:
    static Identity identity_of(int descriptor);
    int open_flags() const;

    Use m_use;
    Descriptor m_directory;
    std::vector<Identity> m_above;  // the directories that were entered from, the last one last
};

}  // namespace nmk_filesystem

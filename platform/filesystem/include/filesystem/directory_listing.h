// directory_listing.h: what a directory holds, in order of the byte values of the names.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace nmk_filesystem {

/// What the directory itself knows of an entry.
enum class EntryKind { unknown, file, directory, symlink, other };

class DirectoryListing {
  public:
    struct Entry {
        const char* name;  // valid until the listing is read again
        EntryKind kind;
    };

    using Filter = bool (*)(std::string_view name);

    /// Reads the entries of a directory that is open (with O_PATH is enough), without "." and "..",
    /// and keeps those that pass the filter; a null one passes all. 0; or an errno, and then the
    /// listing may lack entries.
    int read(int directory, Filter filter = nullptr);

    /// The same for a directory by name.
    int read(const char* directory);

    std::size_t size() const { return m_starts.size(); }
    Entry operator[](std::size_t index) const;

  private:
    int read_stream(int descriptor, Filter filter);
    int fail(int error_number);
    void clear() {
        m_bytes.clear();
        m_starts.clear();
    }

    // The names one behind the other, each with its kind in front and a NUL behind: a listing of
    // 100,000 entries takes two allocations.
    std::string m_bytes;
    std::vector<std::size_t> m_starts;  // of the names, sorted
};

}  // namespace nmk_filesystem

#include "tree_removal.h"

#include <filesystem/directory_walk.h>

#include <cerrno>
#include <cstddef>
#include <vector>

namespace nmk_files {

namespace {

using nmk_filesystem::DirectoryListing;
using nmk_filesystem::DirectoryWalk;

// The entries of one directory on the way down, and how many of them are done.
struct Level {
    DirectoryListing entries;
    std::size_t done = 0;
};

// Starts on the current directory of the walk; 0 or errno.
int start_level(const DirectoryWalk& walk, std::vector<Level>& levels) {
    // Deliberate: a read-only directory is deleted, a read-only file is not.
    walk.make_writeable();
    return walk.list(levels.emplace_back().entries);
}

// Deletes the next entry of the level, or enters it; 0 or errno.
int take_next(DirectoryWalk& walk, std::vector<Level>& levels) {
    Level& level = levels.back();
    const char* const name = level.entries[level.done].name;
    const int removed = walk.remove_file(name);
    if (removed != EISDIR) {
        ++level.done;
        return removed;
    }
    if (const int entered = walk.enter(name); entered != 0) {
        ++level.done;
        return walk.exists(name) ? entered : 0;
    }
    return start_level(walk, levels);
}

// Moves back up from an empty level, and removes its directory; 0 or errno.
int finish_level(DirectoryWalk& walk, std::vector<Level>& levels) {
    levels.pop_back();
    if (levels.empty()) return 0;
    if (const int error_number = walk.leave(); error_number != 0) return error_number;
    Level& above = levels.back();
    return walk.remove_directory(above.entries[above.done++].name);
}

}  // namespace

int remove_entries(const utString& directory) {
    DirectoryWalk walk(DirectoryWalk::Use::listing);
    int error_number = walk.open(directory.c_str(), DirectoryWalk::Symlink::refused);
    std::vector<Level> levels;  // not by recursion: a tree may be deeper than the stack
    if (error_number == 0) error_number = start_level(walk, levels);
    while (error_number == 0 && !levels.empty()) {
        const bool is_empty = levels.back().done == levels.back().entries.size();
        error_number = is_empty ? finish_level(walk, levels) : take_next(walk, levels);
    }
    return error_number;
}

}  // namespace nmk_files

#include "tree_removal.h"

#include <winapi/held_folder.h>

#include <cstddef>
#include <string>
#include <vector>

namespace {

// The names of one folder on the way down, and how many of them are done with.
struct Level {
    std::vector<std::string> names;
    std::size_t done = 0;
};

// Starts on the folder that is held now.
bool start_level(const winapi_held_folder& folder, std::vector<Level>& levels) {
    // Deliberate: a directory that is read-only goes, a file that is read-only does not.
    folder.let_write();
    return folder.list(levels.emplace_back().names);
}

// Deletes the next name of the level, or enters it. False when it cannot go.
bool take_next(winapi_held_folder& folder, std::vector<Level>& levels) {
    using Removal = winapi_held_folder::Removal;
    const std::string& name = levels.back().names[levels.back().done];
    const Removal removal = folder.remove_file(name);
    if (removal == Removal::is_folder && folder.enter(name)) return start_level(folder, levels);
    ++levels.back().done;
    return removal == Removal::done || (removal == Removal::is_folder && !folder.exists(name));
}

// Goes back up from a level that is empty, and removes its folder.
bool finish_level(winapi_held_folder& folder, std::vector<Level>& levels) {
    levels.pop_back();
    if (levels.empty()) return true;
    if (!folder.leave()) return false;
    Level& above = levels.back();
    return folder.remove_folder(above.names[above.done++]);
}

}  // namespace

bool remove_entries(const utString& directory) {
    winapi_held_folder folder(directory.c_str());
    if (!folder.is_open()) return false;
    std::vector<Level> levels;  // not by recursion: a tree may be deeper than the stack
    if (!start_level(folder, levels)) return false;
    while (!levels.empty()) {
        const bool is_empty = levels.back().done == levels.back().names.size();
        const bool went = is_empty ? finish_level(folder, levels) : take_next(folder, levels);
        if (!went) return false;
    }
    return true;
}

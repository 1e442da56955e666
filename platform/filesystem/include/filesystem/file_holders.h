// file_holders.h: which processes hold a file.
//
// POSIX has no tool of a fixed name for this; the kernel shows it under /proc. Only processes that
// the caller may look into are seen: all for root, otherwise those of the same user.
#pragma once

#include <string>
#include <vector>

namespace nmk_filesystem {

/// One way in which a process holds a file.
struct FileHolder {
    int process;          // its identifier
    std::string command;  // its short name, as the kernel keeps it
    std::string held_as;  // "fd 3", "map", "cwd", "root" or "exe"
    std::string path;     // the name by which the process knows it
};

/// All holders of the file or directory, by identifier; empty if there are none, if the name is
/// missing or null, or on a system without /proc. Processes and descriptors that vanish meanwhile
/// are left out. A symlink means what it leads to.
std::vector<FileHolder> file_holders(const char* name);

}  // namespace nmk_filesystem

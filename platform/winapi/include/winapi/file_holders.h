// file_holders.h: which processes hold a file.
//
// POSIX has no tool of a fixed name for this; the kernel shows it under /proc. Only processes that
// the caller may look into are seen: all for root, else those of the same user.
#pragma once

#include <string>
#include <vector>

/// One way in which a process holds a file.
struct winapi_file_holder {
    int process;          // its identifier
    std::string command;  // its short name, as the kernel keeps it
    std::string held_as;  // "fd 3", "map", "cwd", "root" or "exe"
    std::string path;     // the name by which the process knows it
};

/// Everybody who holds the file or folder, by identifier; empty if nobody does, if the name is
/// missing, or on a system without /proc. Processes and descriptors that vanish while this looks
/// are left out. A link means what it leads to.
std::vector<winapi_file_holder> winapi_file_holders(const char* name);

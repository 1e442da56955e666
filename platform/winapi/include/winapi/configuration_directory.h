// configuration_directory.h: where the registry and the locks of named mutexes are kept.
//
// The directory is the one that the host named; else "nmktoolbox" below XDG_CONFIG_HOME, where that
// is an absolute name; else ".config/nmktoolbox" in the home directory of the user. Processes that
// are to share a registry must name the same directory. It must be on a local disk.
#pragma once

#include <string>

namespace winapi {

/// Names the directory for this process; null or the empty text returns to that of the user. It is
/// created, with its parents, when something is written to it.
void set_configuration_directory(const char* directory);

/// The directory without a slash at its end; empty if the user has no home directory.
std::string configuration_directory();

}  // namespace winapi

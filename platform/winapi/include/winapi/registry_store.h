// registry_store.h: the file that holds the registry, for messages to a person.
//
// A store of up to two megabytes is checked when a process opens it; in a larger one damage is
// found when the damaged part is used.
#pragma once

#include <string>

namespace winapi {

/// The name of the file: "registry/store.sqlite" in the configuration directory.
std::string registry_store_file();

/// One line on why the store failed in this thread's last call that failed for it: "FILE: damaged;
/// kept in DIRECTORY". Empty if none did.
std::string registry_store_problem();

}  // namespace winapi

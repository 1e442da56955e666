// make_directories.h: a directory of the user's own, with its parents.
#pragma once

#include <string>

namespace winapi {

/// Creates the directories that are missing on the way to `name`, and `name`, for the user alone;
/// they survive a power failure. 0, also if it exists, or errno.
int make_directories(const std::string& name);

}  // namespace winapi

// location.h: a name, and the open directory that it starts at.
#pragma once

#include <fcntl.h>

namespace nmk_filesystem {

/// An absolute name ignores the directory; AT_FDCWD is the current one.
struct Location {
    int directory = AT_FDCWD;
    const char* name = "";
};

}  // namespace nmk_filesystem

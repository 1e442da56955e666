// directory_identities.h: the directories that a walk is in, so that loops of symlinks end.
#pragma once

#include <sys/stat.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace nmk_archive {

struct DirectoryIdentities {
    /// Goes down into a directory; false where the walk is in it already, or it cannot be read.
    bool enter(const char* name) {
        struct stat record;
        if (::stat(name, &record) != 0) return false;
        const std::pair identity(record.st_dev, record.st_ino);
        if (std::find(open.begin(), open.end(), identity) != open.end()) return false;
        open.push_back(identity);
        return true;
    }

    void leave() { open.pop_back(); }

    std::vector<std::pair<dev_t, ino_t>> open;  // from the top down
};

}  // namespace nmk_archive

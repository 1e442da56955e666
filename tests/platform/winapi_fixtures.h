// winapi_fixtures.h: what the tests of winapi share.
#pragma once

#include <sys/stat.h>
#include <unistd.h>
#include <winapi/last_error.h>

#include <csignal>
#include <string>

#include "child_process.h"
#include "disk_fault.h"
#include "file_contents.h"
#include "scratch_directory.h"

/// A last error that no call sets, to see whether one set any.
inline constexpr DWORD untouched = 0xABCD;

inline bool is_there(const std::string& name) {
    struct stat record;
    return ::lstat(name.c_str(), &record) == 0;
}

/// A directory of a test that every user may read and write.
class OpenScratchDirectory : public ScratchDirectory {
  public:
    OpenScratchDirectory() { ::chmod(path().c_str(), 0777); }
    std::string in(const std::string& name) const { return path() + "/" + name; }
    std::string directory(const std::string& name) const {
        EXPECT_EQ(::mkdir(in(name).c_str(), 0755), 0);
        return in(name);
    }
    std::string symlink(const std::string& name, const std::string& leads_to) const {
        EXPECT_EQ(::symlink(leads_to.c_str(), in(name).c_str()), 0);
        return in(name);
    }
};

// other_temporary_directory.h: another directory for temporary files, for a test.
#pragma once

#include <cstdlib>
#include <string>

/// The directory for temporary files is another one until the object is destroyed.
class OtherTemporaryDirectory {
  public:
    explicit OtherTemporaryDirectory(const std::string& name) {
        const char* const former = std::getenv("TMPDIR");
        if (former != nullptr) m_former = former;
        m_is_set = former != nullptr;
        ::setenv("TMPDIR", name.c_str(), 1);
    }
    OtherTemporaryDirectory(const OtherTemporaryDirectory&) = delete;
    OtherTemporaryDirectory& operator=(const OtherTemporaryDirectory&) = delete;
    ~OtherTemporaryDirectory() {
        m_is_set ? ::setenv("TMPDIR", m_former.c_str(), 1) : ::unsetenv("TMPDIR");
    }

  private:
    std::string m_former;
    bool m_is_set = false;
};

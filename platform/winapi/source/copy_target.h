// copy_target.h: the file that a copy is written to, which is not there unless it is whole.
//
// A new target is made under its own name and removed again when the copy fails. An existing one
// stays as it is until the copy, made beside it, takes its place in one step.
#pragma once

#include <sys/stat.h>

#include <string>

namespace winapi {

class CopyTarget {
  public:
    CopyTarget() = default;
    CopyTarget(const CopyTarget&) = delete;
    CopyTarget& operator=(const CopyTarget&) = delete;
    /// Removes what was not kept.
    ~CopyTarget();

    /// Makes the file `name`, which must not exist; 0 or errno. `rights` as for open().
    int make(const std::string& name, mode_t rights);

    /// Makes a file beside `name`, which keep() puts in its place; 0 or errno. The owner and group
    /// of the file replaced are kept where the process may.
    int make_beside(const std::string& name, const struct stat& replaced, mode_t rights);

    int descriptor() const { return m_descriptor; }

    /// Closes the file and lets it stand under its name; 0 or errno, and then it is removed.
    int keep();

  private:
    int close();
    void discard();

    std::string m_written;  // the name under which it is written
    std::string m_name;     // the name it is to have
    int m_descriptor = -1;
    bool m_stands = false;  // made and not kept: to be removed
};

}  // namespace winapi

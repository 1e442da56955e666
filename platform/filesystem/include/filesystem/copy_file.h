// copy_file.h: copying one file so that the copy is whole or not there.
//
// The copy is a SafeFile: it gets the target's name when every byte is on the disk. Whatever stops
// it before, the target is as it was. The time of the last write is copied too.
#pragma once

#include <filesystem/location.h>
#include <filesystem/safe_file.h>
#include <sys/stat.h>
#include <sys/types.h>

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace nmk_filesystem {

/// Called at the start, with nothing transferred, and after each part, the last of which brings
/// `transferred` to `total`; false stops the copy. The length is that at the start: of a file that
/// grows meanwhile the rest is not copied. It may throw, which stops the copy too.
using CopyWatch = std::function<bool(std::int64_t total, std::int64_t transferred)>;

/// What a symlink at the target's name means.
enum class TargetSymlink {
    followed,  // the file that it leads to; ENOENT for a dangling one
    replaced,  // itself
};

struct CopySettings {
    std::optional<mode_t> mode;  // of the copy; without it the source's, less the umask
    SafeFile::Existing existing = SafeFile::Existing::replaced;
    TargetSymlink target_symlink = TargetSymlink::followed;
    CopyWatch watch;  // may be empty
};

/// Why a copy failed; 0 if it did not.
struct CopyResult {
    int error_number = 0;
    bool concerns_target = false;  // ENOENT say: the source is missing, or the target's directory
};

/// Copies a regular file, or the one that a symlink leads to. Errors, apart from the disk's own:
/// EACCES   one of them is a directory or not a regular file, the target's owner may not write it
///          (also for root), or this process may not
/// EBUSY    both are the same file, by whatever names; or the target changes all the time
/// EEXIST   the target exists and is to be kept
/// ENODATA  the source became shorter meanwhile
/// ECANCELED  the watch stopped the copy
CopyResult copy_file(const Location& source, const Location& target, const CopySettings& settings);

/// The two steps of copy_file, so that many files can be flushed together between them. The names
/// and the directory of the target must stay valid until `commit`.
class FileCopy {
  public:
    /// Writes the copy under its hidden name. What killed processes left in the target's directory
    /// is removed if the target starts at AT_FDCWD.
    CopyResult write(const Location& source, const Location& target, const CopySettings& settings);

    /// Gives the copy the target's name.
    CopyResult commit();

    SafeFile& file() { return m_file; }

  private:
    int look_at_target();
    int resolve_target_symlink();
    int create_file();
    CopyResult fail_at_target(int error_number) const { return {error_number, true}; }

    Location m_target;
    SafeFile::Existing m_existing = SafeFile::Existing::replaced;
    TargetSymlink m_target_symlink = TargetSymlink::followed;
    std::optional<mode_t> m_mode;
    struct stat m_source = {};
    std::string m_resolved;  // where a symlink at the target's name leads
    bool m_target_exists = false;
    struct stat m_replaced = {};  // the target, if it exists
    SafeFile m_file;
};

}  // namespace nmk_filesystem

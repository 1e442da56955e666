// tree_copy.h: copying a directory with all that is below it.
#pragma once

#include <sys/types.h>
#include <utils/utString.h>

namespace nmk_files {

/// Mode of every copied file: its owner reads and writes it.
inline constexpr mode_t mode_of_copies = 0600;

/// Copies what is in the directory `source` into the directory `target`, or into its subdirectory
/// of the given name, which is created where it is missing; an empty name means `target` itself.
/// The copy continues past what cannot be copied, and stops when a directory in which it works is
/// moved away.
///
/// Both trees are walked by open directories, so the copy never leaves the target: a symlink in the
/// place of a directory is not entered, one in the place of a file is replaced by the file.
/// Symlinks to directories are created again unless the name is taken; of others the file is
/// copied. Temporary files of copies under way are left out.
void copy_tree(const utString& source, const utString& target, const utString& subdirectory);

}  // namespace nmk_files

// tree_removal.h: emptying a directory, with all that is below it.
#pragma once

#include <utils/utString.h>

namespace nmk_files {

/// Deletes what is in the directory, by byte value of the names, and stops at the first entry that
/// cannot be deleted: 0, or the errno of that entry. What vanishes meanwhile counts as deleted.
///
/// Symlinks are deleted, never followed: a directory is only entered from its parent, which is held
/// open, so a symlink that another process puts in its place leads nowhere.
int remove_entries(const utString& directory);

}  // namespace nmk_files

// remove_rename.h: remove and rename with the rules of Windows.
//
// POSIX removes read-only files and lets a rename destroy what has the new name; files meant to be
// kept would be lost. All calls return 0 or an errno.
#pragma once

#include <filesystem/location.h>

namespace nmk_filesystem {

/// Removes a file, or a symlink itself. EACCES for a directory, and for a file that its owner may
/// not write, also for root; ENOENT if there is none.
int remove_file(const char* name);

/// Gives a file or directory another name, also in another directory; a file may move to another
/// disk. After a failure both names are as they were: EEXIST if the new name is taken, ENOENT if
/// the old name is missing or the directory of the new one, EXDEV for a directory that would move
/// to another disk.
int rename_file(const char* old_name, const char* new_name);

/// The system's rename, which replaces a file or an empty directory of the new name.
int rename_replacing(const Location& old_name, const Location& new_name);

/// Renames on one disk and never replaces anything: EEXIST if the new name is taken. On a disk that
/// cannot do so in one step, a hard link is made and the old name removed.
int rename_without_replacing(const Location& old_name, const Location& new_name);

}  // namespace nmk_filesystem

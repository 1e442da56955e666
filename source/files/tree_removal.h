// tree_removal.h: emptying a directory, with all that is below it.
#pragma once

#include <utils/utString.h>

/// Deletes what is in the directory, by byte value of the names, and stops at the first thing that
/// cannot go; true when all is gone. What vanishes meanwhile is as good as deleted.
///
/// Links are deleted. A directory is never entered by its name from outside, but from its parent,
/// which is held open: whoever puts a link in its place leads nowhere.
bool remove_entries(const utString& directory);

// remove_rename.h: the runtime's remove and rename, with the rules of Windows.
//
// POSIX removes what is read-only and lets a rename destroy what stands in its way; files meant
// to be kept would be lost. Names of their own, since the runtime's stand beside them.
#pragma once

/// Removes a file, or a link itself. 0; or -1 with errno and last error: EACCES (5) for a folder
/// and for a file that is read-only, also for root; ENOENT (2 or 3) if there is none.
int winapi_remove(const char* name);

/// Gives a file or folder another name, also in another folder; a file may go to another disk.
/// 0; or -1 with errno and last error, and both names as they were: EACCES (183) if something has
/// the new name already, ENOENT (2 or 3) if the old is missing, EXDEV (17) for a folder that would
/// go to another disk.
int winapi_rename(const char* old_name, const char* new_name);

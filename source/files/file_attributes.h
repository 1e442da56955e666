// file_attributes.h: the attributes of a name, where a symlink to a directory is both.
//
// The system layer reports the attributes of a symlink itself. Names need two answers: whether it
// is a symlink, so that nothing is deleted through it, and whether it can be used as a directory.
#pragma once

#include <utils/utString.h>
#include <winapi/file_attributes.h>

namespace nmk_files {

/// The attributes of the name; a symlink to a directory has the bit of a directory beside that of a
/// symlink. INVALID_FILE_ATTRIBUTES, with a last error, when they cannot be read.
DWORD attributes_of(const utString& path);

inline bool is_directory(DWORD attributes) {
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

inline bool is_symlink(DWORD attributes) {
    return attributes != INVALID_FILE_ATTRIBUTES &&
           (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
}

}  // namespace nmk_files

// file_attributes.h: what a name leads to, with links to directories told apart.
//
// The system layer tells of a link itself. Names want both: that it is a link, so that nothing is
// deleted or copied through it, and whether it can be used as a directory.
#pragma once

#include <utils/utString.h>
#include <winapi/file_attributes.h>

/// The attributes of the name; a link to a directory has the bit of a directory beside that of a
/// link. INVALID_FILE_ATTRIBUTES, with a last error, when they cannot be had.
DWORD attributes_of(const utString& path);

inline bool is_directory(DWORD attributes) {
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

inline bool is_link(DWORD attributes) {
    return attributes != INVALID_FILE_ATTRIBUTES &&
           (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
}

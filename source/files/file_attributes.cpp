#include "file_attributes.h"

DWORD attributes_of(const utString& path) {
    const DWORD own = GetFileAttributesA(path.c_str());
    if (!is_link(own)) return own;
    utString behind_the_link(path);
    behind_the_link += '/';
    const bool leads_to_directory = is_directory(GetFileAttributesA(behind_the_link.c_str()));
    return leads_to_directory ? own | FILE_ATTRIBUTE_DIRECTORY : own;
}

#include "file_attributes.h"

namespace nmk_files {

DWORD attributes_of(const utString& path) {
    const DWORD own = GetFileAttributesA(path.c_str());
    if (!is_symlink(own)) return own;
    utString followed(path);
    followed += '/';
    const bool leads_to_directory = is_directory(GetFileAttributesA(followed.c_str()));
    return leads_to_directory ? own | FILE_ATTRIBUTE_DIRECTORY : own;
}

}  // namespace nmk_files

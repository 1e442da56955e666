// same_file.h: whether two names are names of one file.
#pragma once

#include <string_view>

namespace nmk_files {

/// True for "a.svg" and "./a.svg", whether or not the file exists, and for a file and a symlink or
/// hard link to it. A device, such as a terminal, is only the same under the same name.
bool is_same_file(std::string_view a, std::string_view b);

}  // namespace nmk_files

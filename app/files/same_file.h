// same_file.h: whether two names mean one file.
#pragma once

#include <string_view>

namespace nmk_files {

/// True for "a.svg" and "./a.svg", whether or not there is such a file, and for two links to one
/// file. What is no file (a terminal, say) is the same only under the same name.
bool is_same_file(std::string_view a, std::string_view b);

}  // namespace nmk_files

// base_name.h: the last part of the name of a file.
#pragma once

#include <string>

namespace nmk_files {

/// "plate.drl" of "parts/plate.drl".
inline std::string base_name(const std::string& file_name) {
    const std::size_t slash = file_name.find_last_of('/');
    return slash == std::string::npos ? file_name : file_name.substr(slash + 1);
}

}  // namespace nmk_files

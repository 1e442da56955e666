// temporary_directory.h: where temporary files go that have no place beside a target.
#pragma once

#include <filesystem>

namespace nmk_files {

/// $TMPDIR where that is a directory, else /tmp.
std::filesystem::path temporary_directory();

}  // namespace nmk_files

// write_all_files.h: writes several files, all of them or none.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace nmk_app {

/// A file to write, and what is to stand in it.
struct OutputFile {
    std::string file_name;
    std::string text;
};

/// Writes the files in their order and adds their names to `written`. Answers one line when one
/// cannot be written; files that this call made new are then gone again.
std::optional<std::string> write_all_files(const std::vector<OutputFile>& files,
                                           std::vector<std::string>& written);

}  // namespace nmk_app

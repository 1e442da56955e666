// write_all_files.h: writes several files, all of them or none.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace nmk_files {

/// A file to write, and what is to stand in it.
struct OutputFile {
    std::string file_name;
    std::string text;
};

/// What was written; the names in the order of the files.
struct WrittenFiles {
    std::vector<std::string> names;
    std::vector<std::string> made_new;  // those that were not there before

    /// Removes what was made new, for a run that fails after all.
    void take_back() const;
};

/// Writes the files in their order. Answers one line when one cannot be written; what was made new
/// is then taken back.
std::optional<std::string> write_all_files(const std::vector<OutputFile>& files,
                                           WrittenFiles& written);

}  // namespace nmk_files

// write_all_files.h: writes several files, all of them or none.
#pragma once

#include <string>
#include <vector>

#include "text/result.h"

namespace nmk_files {

/// A file to write, and its content.
struct OutputFile {
    std::string file_name;
    std::string text;
};

/// What was written; the names in the order of the files.
struct WrittenFiles {
    std::vector<std::string> names;
    std::vector<std::string> new_names;  // those that did not exist before

    /// Removes the new files, for a run that fails after all. Files that were replaced stay: they
    /// are whole, and what they held before is gone.
    void remove_new() const;
};

/// Writes all temporary files, then gives each its name, and writes to devices last. Where one
/// cannot be written, the Error says which, new files are removed and replaced ones restored; only
/// what a device has received cannot be taken back.
nmk_text::Result<WrittenFiles> write_all_files(const std::vector<OutputFile>& files);

}  // namespace nmk_files

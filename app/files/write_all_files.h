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

/// The files that were written; the names in their order.
struct WrittenFiles {
    std::vector<std::string> names;
    std::vector<std::string> new_names;  // those that did not exist before

    /// Removes the new files, for a run that fails later. Replaced files are kept: they are
    /// complete, and their former content no longer exists.
    void remove_new() const;
};

/// Writes all temporary files, then renames each to its name, and writes to devices last. If one
/// cannot be written, the Error names it, new files are removed and replaced ones restored; only
/// bytes that a device has received cannot be taken back.
nmk_text::Result<WrittenFiles> write_all_files(const std::vector<OutputFile>& files);

}  // namespace nmk_files

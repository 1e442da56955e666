// write_whole_file.h: writes a file as a whole or not at all.
#pragma once

#include <string>
#include <string_view>

#include "text/result.h"

namespace nmk_files {

/// Writes the text as a StagedFile and puts it in place; on success it is on the disk. Signals that
/// would end the process are blocked until then.
nmk_text::Result<void> write_whole_file(const std::string& file_name, std::string_view text);

}  // namespace nmk_files

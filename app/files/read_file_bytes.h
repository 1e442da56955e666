// read_file_bytes.h: reads a file that need not be text into memory.
#pragma once

#include <string>

#include "text/result.h"

namespace nmk_files {

/// The bytes of the file or pipe, or an Error for one larger than max_file_size too.
nmk_text::Result<std::string> read_file_bytes(const std::string& file_name);

}  // namespace nmk_files

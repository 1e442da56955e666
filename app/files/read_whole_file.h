// read_whole_file.h: reads a text file into memory, within bounds.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "text/result.h"

namespace nmk_files {

/// Past these a file is refused while it is read, so that neither a huge file nor one endless line
/// is ever held in memory.
constexpr std::size_t max_file_size = std::size_t{256} << 20U;   // bytes
constexpr std::size_t max_line_length = std::size_t{64} << 10U;  // bytes

/// The bytes of the file (a pipe will do), or one line on why they cannot be had.
nmk_text::Result<std::string> read_whole_file(const std::string& file_name);

/// The first line that is longer than longest_line, counted from 1; 0 where none is.
std::size_t first_too_long_line(const std::string& text);

/// Why the text is no text file that a reader may be given: a line that is too long, or a zero
/// byte, which binary files have and text never. Nothing where it is one.
nmk_text::Result<void> check_text_file(const std::string& file_name, const std::string& text);

}  // namespace nmk_files

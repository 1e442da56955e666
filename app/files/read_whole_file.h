// read_whole_file.h: reads a text file into memory, within bounds.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "text/result.h"

namespace nmk_files {

/// A file with more bytes, or with a longer line, is refused while it is read, so that neither is
/// ever held in memory.
constexpr std::size_t max_file_size = std::size_t{256} << 20U;   // bytes
constexpr std::size_t max_line_length = std::size_t{64} << 10U;  // bytes

/// The bytes of the file or pipe, or an Error.
nmk_text::Result<std::string> read_whole_file(const std::string& file_name);

/// The name of standard input and standard output on a command line.
constexpr const char* standard_stream = "-";

/// What messages and reports call an input: "standard input" for "-", any other name as it is.
std::string input_name(const std::string& file_name);

/// The bytes of the file, or of standard input for "-". Its errors name the input as input_name.
nmk_text::Result<std::string> read_input(const std::string& file_name);

/// The bytes of standard input, which need not be lines of text. Its errors name "standard input".
nmk_text::Result<std::string> read_standard_input_bytes();

/// The bytes of the file, or of standard input for "-", which need not be lines of text. Its errors
/// name the input as input_name.
nmk_text::Result<std::string> read_input_bytes(const std::string& file_name);

/// The number of the first line longer than max_line_length, from 1; 0 if there is none.
std::size_t first_too_long_line(const std::string& text);

/// An Error if the text has a line longer than max_line_length, or a zero byte, which only binary
/// files have.
nmk_text::Result<void> check_text_file(const std::string& file_name, const std::string& text);

}  // namespace nmk_files

// wrapped_text.h: text in lines of limited width.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace nmk_text {

/// The text in lines of at most `width` bytes, each after `indent` blanks and ended by a line feed.
///
/// Lines break at blanks; a longer word gets a line of its own. A line feed in the text begins a
/// new line.
std::string wrapped(std::string_view text, std::size_t indent, std::size_t width);

/// The columns of a terminal, which tables and lists fit.
constexpr std::size_t terminal_columns = 80;

/// The text if it has at most `length` characters, else its beginning and "...", with that length.
/// A character of more than one byte is not divided.
std::string shortened(std::string_view text, std::size_t length);

/// A command in lines of at most `width` bytes that a shell reads as one: each line but the last
/// ends with a backslash, and each but the first is indented further.
std::string wrapped_command(std::string_view command, std::size_t indent, std::size_t width);

}  // namespace nmk_text

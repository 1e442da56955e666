// excellon_comments.h: where the comments of a line of a drill program are.
//
// A comment is the text from a semicolon to the end of the line, or from "(" to ")" anywhere
// between words; without the ")" it ends with the line. In a message a parenthesis is text.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace nmk_excellon {

/// The position of the first character at or after `at` that is neither a blank nor in a closed
/// comment, or the size of the line.
std::size_t skip_comments(std::string_view line, std::size_t at);

struct CommentedLine {
    std::string_view code;    // a view into the line, from its first word to its last
    std::string comments;     // all of them in their order, a blank between; empty: none
    bool has_inner = false;   // a comment lies between the words of the code
    std::size_t code_at = 0;  // position of the code in the line
};

/// Splits a line. In that of a message only a semicolon begins a comment behind its first word.
CommentedLine split_comments(std::string_view line, bool is_message);

/// The text without its closed comments.
std::string without_comments(std::string_view text);

}  // namespace nmk_excellon

// escaped_text.h: text from outside, made safe for XML and for one line of a terminal.
//
// File names may have any byte. Bytes that are not valid UTF-8 become U+FFFD; characters that the
// target cannot represent are replaced or escaped, so that the result is always well-formed.
#pragma once

#include <string>
#include <string_view>

namespace nmk_text {

/// For XML and HTML, in text and in quoted attributes. Control characters become U+FFFD.
std::string xml_text(std::string_view text);

/// One line for a person: control characters, line ends and characters that change the direction of
/// the text become '?'.
std::string line_text(std::string_view text);

/// The text in quotation marks for a message: the bytes of control characters, of characters that
/// change the direction of the text and of what is not UTF-8 as \xNN, long texts cut short.
std::string quoted(std::string_view text);

}  // namespace nmk_text

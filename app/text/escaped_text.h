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

/// One line for a person: control characters become '?'.
std::string line_text(std::string_view text);

/// The text in quotation marks for a message: bytes that are not printable ASCII as \xNN, long
/// texts cut short.
std::string quoted(std::string_view text);

}  // namespace nmk_text

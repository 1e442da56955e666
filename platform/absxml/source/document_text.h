// document_text.h: the bytes of a document as UTF-8.
#pragma once

#include <string>

namespace nmk_absxml {

/// Turns the bytes into UTF-8 without a byte order mark, by that mark, else by the encoding that
/// the declaration names, else as UTF-8, which is not checked here. Throws Malformed for an
/// encoding that is not known or not the one that the bytes are in, and for a declaration that is
/// not well-formed; `text` is then UTF-8 up to that place.
///
///   returns  offset of the first byte behind the declaration
std::size_t make_utf8(std::string& text);

}  // namespace nmk_absxml

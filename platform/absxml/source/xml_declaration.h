// xml_declaration.h: <?xml version="1.0" encoding="UTF-8" standalone="yes"?>.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace nmk_absxml {

struct Declaration {
    std::size_t length = 0;  // bytes; 0 where the text has none
    std::string encoding;    // empty where none is named
    std::size_t encoding_offset = 0;
};

/// The declaration that the text begins with. Throws Malformed where it is not well-formed, or its
/// version is not 1 with any minor number (XML 1.0, fifth edition, section 2.8).
Declaration read_declaration(const std::string& text);

/// A word of a document for a message: in quotes, and cut where it is long.
std::string shown(std::string_view word);

}  // namespace nmk_absxml

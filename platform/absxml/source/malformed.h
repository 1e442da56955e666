// malformed.h: a place at which a text is not a document, and what was expected there.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace nmk_absxml {

struct Malformed {
    std::size_t offset;   // in the text in UTF-8
    std::string message;  // one line of valid UTF-8
};

/// Line and column of an offset, both from 1; a column is a character.
struct Place {
    int line = 0;
    int column = 0;
};

Place place_of(std::string_view text, std::size_t offset);

}  // namespace nmk_absxml

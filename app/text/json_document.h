// json_document.h: how every JSON document of the tool is laid out and how its numbers are written.
//
// Documents are values of nlohmann::ordered_json, so members keep the order in which they were set.
// A value that fits on a line of 80 columns is written on one line; a longer one has a line for
// each of its members. Numbers have the fewest digits that are read back as exactly the same number
// (the library's own output has needless digits for one number in a thousand: 2.2072600000000002
// for 2.20726); a number that is not finite is null. Texts that are not UTF-8 have U+FFFD in place
// of each ill-formed part.
#pragma once

#include <nlohmann/json_fwd.hpp>

#include <string>
#include <string_view>

namespace nmk_text {

using Json = nlohmann::ordered_json;

/// The document with a line feed at its end.
std::string json_document(const Json& value);

/// The value on one line, without a line feed.
std::string json_line(const Json& value);

/// The beginning of an object whose last member is an array too long to be held in memory: the
/// members of `head`, an object that is not empty, the name of the array and its bracket. The
/// caller appends the elements, separated by commas, and "]}".
std::string json_opening(const Json& head, std::string_view array_name);

}  // namespace nmk_text

// number_reader.h: strict reading of numbers in files and arguments.
//
// The decimal point is a point whatever the locale. Numbers are read as a whole or not at all.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

namespace nmk_text {

/// The largest absolute value of a coordinate, in the unit of its file: beyond any machine, and its
/// squares and their sums are far from overflow.
constexpr double max_coordinate = 1e9;

/// The number of the whole text (a leading plus sign is allowed); NaN or infinite if the text
/// spells that. Empty for a text that is not a number, or out of the range of a double.
std::optional<double> read_number(std::string_view text);

/// The same for a coordinate: also empty for NaN, infinities and numbers beyond max_coordinate.
std::optional<double> read_coordinate(std::string_view text);

/// The coordinates of a list with commas: "3,4.5" gives two. Empty if one of them cannot be read.
std::vector<double> read_coordinates(std::string_view text);

}  // namespace nmk_text

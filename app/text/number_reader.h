// number_reader.h: strict reading of numbers in files and arguments.
//
// The decimal point is a point whatever the locale. Numbers are read as a whole or not at all.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

namespace nmk_text {

/// The largest size of a coordinate, in the unit of its file. Squares and sums of squares of such
/// lengths stay far from overflow, and no machine reaches it.
constexpr double max_coordinate = 1e9;

/// The number that the whole text is (a leading plus sign is allowed): may be NaN or infinite where
/// the text spells that. Empty where it is no number or too large or too small for a double.
std::optional<double> read_number(std::string_view text);

/// The same for a coordinate: also empty for NaN, infinities and what is past largest_coordinate.
std::optional<double> read_coordinate(std::string_view text);

/// The coordinates that stand between commas: "3,4.5" gives two. Empty where one is no coordinate.
std::vector<double> read_coordinates(std::string_view text);

}  // namespace nmk_text

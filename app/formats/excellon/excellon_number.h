// excellon_number.h: the coordinates of drill files, read and written without rounding.
//
// A drill file leaves out the decimal point, and the zeros at one end of the number: "LZ" and "TZ"
// name the zeros that are KEPT. With two whole digits and four decimals 1.5 is "015" where leading
// zeros are kept and "15000" where trailing ones are. A number with a point means what it says.
//
// Coordinates are whole numbers of billionths of the file's unit, so that sums of increments are
// exact and a number can be written again to the letter.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "formats/job/machining_job.h"

namespace nmk_excellon {

enum class KeptZeros { leading, trailing };

/// How a file writes its numbers.
struct ExcellonFormat {
    nmk_job::JobUnits units = nmk_job::JobUnits::inches;
    KeptZeros zeros = KeptZeros::trailing;
    int whole_digits = 2;
    int decimal_digits = 4;
};

/// Billionths of the unit in one unit, and the largest size of a coordinate: a million units.
constexpr std::int64_t excellon_unit = 1'000'000'000;
constexpr std::int64_t max_excellon_coordinate = 1'000'000 * excellon_unit;

/// The value of a coordinate's text in billionths of the unit. Empty where it is no such number,
/// has more than nine decimals that count, or is larger than largest_excellon_coordinate.
std::optional<std::int64_t> read_excellon_number(std::string_view text,
                                                 const ExcellonFormat& format);

/// A text that reads as this value: with a point where `with_point` asks for it or where the
/// format has too few digits, otherwise as the format writes it.
std::string excellon_number_text(std::int64_t value, const ExcellonFormat& format, bool with_point);

/// Millimetres, rounded once.
double excellon_millimetres(std::int64_t value, nmk_job::JobUnits units);

/// Which zeros the coordinates of a program without LZ or TZ keep, told by the numbers themselves:
/// leading ones where some number begins with a zero and none ends with one, otherwise trailing.
KeptZeros kept_zeros_of(std::string_view program);

}  // namespace nmk_excellon

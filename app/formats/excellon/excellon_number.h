// excellon_number.h: the coordinates of drill files, read and written without rounding.
//
// A drill file leaves out the decimal point, and the zeros at one end of the number: "LZ" and "TZ"
// name the zeros that are KEPT. With two whole digits and four decimals 1.5 is "015" if leading
// zeros are kept and "15000" if trailing ones are. A number with a decimal point is read as usual.
//
// Coordinates are whole numbers of billionths of the file's unit, so that sums of increments are
// exact and a number can be written again digit for digit.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "formats/job/machining_job.h"

namespace nmk_excellon {

enum class KeptZeros { leading, trailing };

/// The number format of a file.
struct ExcellonFormat {
    nmk_job::JobUnits units = nmk_job::JobUnits::inches;
    KeptZeros zeros = KeptZeros::trailing;
    int whole_digits = 2;
    int decimal_digits = 4;
};

/// Billionths of the unit in one unit, and the largest absolute value of a coordinate: a million
/// units.
constexpr std::int64_t excellon_unit = 1'000'000'000;
constexpr std::int64_t max_excellon_coordinate = 1'000'000 * excellon_unit;

/// The value of the text of a coordinate in billionths of the unit. Empty for a text that is not
/// such a number, has more than nine significant decimals, or is beyond max_excellon_coordinate.
std::optional<std::int64_t> read_excellon_number(std::string_view text,
                                                 const ExcellonFormat& format);

/// A text that is read as this value: with a decimal point if `with_point` is set or the format has
/// too few digits, otherwise in the format.
std::string excellon_number_text(std::int64_t value, const ExcellonFormat& format, bool with_point);

/// Millimetres, rounded once.
double excellon_millimetres(std::int64_t value, nmk_job::JobUnits units);

/// The zeros that a program without LZ or TZ keeps, judged by its numbers: leading ones if some
/// number begins with a zero and none ends with one, otherwise trailing ones.
KeptZeros kept_zeros_of(std::string_view program);

}  // namespace nmk_excellon

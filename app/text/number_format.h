// number_format.h: numbers as text, the same whatever the locale of the process.
//
// Always a decimal point, never a separator of thousands.
#pragma once

#include <string>

namespace nmk_text {

/// The number with exactly so many decimals, rounded to nearest: "12.50". Never an exponent, never
/// a negative zero.
std::string fixed_number(double value, int decimals);

/// The same with at most so many decimals and no trailing zeros: "12.5".
std::string short_number(double value, int decimals);

/// The shortest text that is read back as exactly this number.
std::string exact_number(double value);

/// The same for a person: without an exponent from 0.00001 up to 1e15, even if that is longer.
std::string readable_number(double value);

}  // namespace nmk_text

// number_text.h: numbers as text, the same whatever the locale of the process.
//
// Always a decimal point, never a separator of thousands, never an exponent or a negative zero.
#pragma once

#include <string>

namespace nmk_app {

/// The number with exactly so many decimals, rounded to nearest: "12.50".
std::string fixed_number(double value, int decimals);

/// The number with at most so many decimals and no trailing zeros: "12.5".
std::string short_number(double value, int decimals);

}  // namespace nmk_app

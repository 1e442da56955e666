// exact_logarithm.h: the decimal logarithm, with the same bits everywhere.
//
// Rounded from a result of about 90 bits; a power of ten gives its exponent exactly.
#pragma once

namespace nmk_exact {

/// The logarithm of x to base 10: -infinity for 0.0 and -0.0, NaN below zero, NaN for NaN.
double exact_log10(double x);

}  // namespace nmk_exact

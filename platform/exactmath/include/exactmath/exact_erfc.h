// exact_erfc.h: the complementary error function, with the same bits everywhere.
//
// Rounded from a result of at least 80 bits. The probability that a normally distributed value is
// at most x is exact_erfc(-x / sqrt(2)) / 2.
#pragma once

namespace nmk_exact {

/// 1 less the error function of x: 2.0 far below zero, 0.0 far above. NaN for NaN.
///
/// Method: the ascending series up to 3, beyond it the continued fraction of Laplace; Abramowitz
/// and Stegun, Handbook of Mathematical Functions, 7.1.6 and 7.1.14.
double exact_erfc(double x);

}  // namespace nmk_exact

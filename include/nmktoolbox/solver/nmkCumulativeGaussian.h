// nmkCumulativeGaussian: the standard normal distribution function, by a polynomial.
//
// Abramowitz and Stegun, Handbook of Mathematical Functions, 26.2.17: good to 7.5e-8. Its constants
// have eight to ten digits, and results agree with that formula digit by digit.
#pragma once

#include <nmktoolbox/export.h>

class NMKTOOLBOX_EXPORT nmkCumulativeGaussian {
  public:
    nmkCumulativeGaussian() = default;
    ~nmkCumulativeGaussian() = default;

    /// The probability of a value of at most x.
    static double calculate(double x);

    /// The same, with `exp_term` = exp(-x squared / 2) at hand.
    static double calculate(double x, double exp_term);
};

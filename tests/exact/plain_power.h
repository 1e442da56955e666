// plain_power: exp and pow by their series in 113 bits, rounded once.
//
// For results that are neither too small nor too large for all the digits of a double; the
// reference for nmk_exact::exact_exp and exact_pow.
#pragma once

#include <cmath>

#include "exact/wide.h"

namespace plain_power {

/// 2 artanh(s), for a small s.
inline Wide twice_artanh(Wide s) {
    Wide sum = 0;
    Wide power = s;
    for (int n = 1; n < 120; n += 2) {
        sum += power / n;
        power *= s * s;
    }
    return 2 * sum;
}

inline Wide log_of_2() { return twice_artanh(Wide{1} / 3); }

inline Wide wide_exp(Wide x) {
    const int halvings = static_cast<int>(std::floor(static_cast<double>(x / log_of_2()) + 0.5));
    const Wide rest = x - log_of_2() * halvings;
    Wide sum = 0;
    Wide term = 1;
    for (int n = 1; n < 60; ++n) {
        sum += term;
        term *= rest / n;
    }
    // In two steps: a power of two by itself may be beyond the doubles.
    const int half = halvings / 2;
    return sum * std::ldexp(1.0, half) * std::ldexp(1.0, halvings - half);
}

inline Wide wide_log(double x) {
    int exponent = 0;
    const Wide m = std::frexp(x, &exponent);
    // Nearer to 1 from above or from below.
    const Wide from = m < Wide{3} / 4 ? Wide{1} / 2 : Wide{1};
    const int shift = m < Wide{3} / 4 ? 1 : 0;
    return twice_artanh((m - from) / (m + from)) + log_of_2() * (exponent - shift);
}

inline double exp(double x) { return static_cast<double>(wide_exp(x)); }

inline double pow(double base, double exponent) {
    return static_cast<double>(wide_exp(wide_log(base) * exponent));
}

}  // namespace plain_power

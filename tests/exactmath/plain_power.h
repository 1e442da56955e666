// plain_power: exp, pow and logarithm by their series in 113 bits, rounded once.
//
// The reference for nmk_exact::exact_exp, exact_pow and exact_log10; subnormal results are rounded
// once as well.
#pragma once

#include <cmath>

#include "exactmath/binary128.h"

namespace plain_power {

/// 2 artanh(s), for a small s.
inline Binary128 twice_artanh(Binary128 s) {
    Binary128 sum = 0;
    Binary128 power = s;
    for (int n = 1; n < 120; n += 2) {
        sum += power / n;
        power *= s * s;
    }
    return 2 * sum;
}

inline Binary128 log_of_2() { return twice_artanh(Binary128{1} / 3); }

inline Binary128 wide_exp(Binary128 x) {
    const int halvings = static_cast<int>(std::floor(static_cast<double>(x / log_of_2()) + 0.5));
    const Binary128 rest = x - log_of_2() * halvings;
    Binary128 sum = 0;
    Binary128 term = 1;
    for (int n = 1; n < 60; ++n) {
        sum += term;
        term *= rest / n;
    }
    // In three steps: the power of two by itself may be beyond the doubles.
    const int third = halvings / 3;
    return sum * std::ldexp(1.0, third) * std::ldexp(1.0, third) *
           std::ldexp(1.0, halvings - 2 * third);
}

inline Binary128 wide_log(double x) {
    int exponent = 0;
    const Binary128 m = std::frexp(x, &exponent);
    // Nearer to 1 from above or from below.
    const Binary128 from = m < Binary128{3} / 4 ? Binary128{1} / 2 : Binary128{1};
    const int shift = m < Binary128{3} / 4 ? 1 : 0;
    return twice_artanh((m - from) / (m + from)) + log_of_2() * (exponent - shift);
}

inline double exp(double x) { return static_cast<double>(wide_exp(x)); }

inline double pow(double base, double exponent) {
    return static_cast<double>(wide_exp(wide_log(base) * exponent));
}

inline double log10(double x) { return static_cast<double>(wide_log(x) / wide_log(10.0)); }

}  // namespace plain_power

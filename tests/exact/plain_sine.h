// plain_sine: sine and cosine by their series in 113 bits, rounded once.
//
// For angles of ordinary size; the reference for nmk_exact::exact_sine_and_cosine.
#pragma once

#include "exact/wide.h"

namespace plain_sine {

/// The series whose first term is `term`, the power n of the angle over n factorial.
inline Wide series(Wide angle, Wide term, int n) {
    Wide sum = 0;
    for (; n < 40; n += 2) {
        sum += term;
        term *= -angle * angle / ((n + 1) * (n + 2));
    }
    return sum;
}

inline double sine(double angle) { return static_cast<double>(series(angle, angle, 1)); }
inline double cosine(double angle) { return static_cast<double>(series(angle, 1, 0)); }

}  // namespace plain_sine

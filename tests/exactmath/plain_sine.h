// plain_sine: sine and cosine by their series in 113 bits, rounded once.
//
// The reference for exact_sine_and_cosine, and behind the reduction of plain_reduction.h for
// exact_sin and exact_cos.
#pragma once

#include "exactmath/binary128.h"

namespace plain_sine {

/// The series whose first term is `term`, the power n of the angle over n factorial.
inline Binary128 series(Binary128 angle, Binary128 term, int n) {
    Binary128 sum = 0;
    for (; n < 40; n += 2) {
        sum += term;
        term *= -angle * angle / ((n + 1) * (n + 2));
    }
    return sum;
}

inline Binary128 wide_sine(Binary128 angle) { return series(angle, angle, 1); }
inline Binary128 wide_cosine(Binary128 angle) { return series(angle, 1, 0); }

inline double sine(double angle) { return static_cast<double>(wide_sine(angle)); }
inline double cosine(double angle) { return static_cast<double>(wide_cosine(angle)); }

}  // namespace plain_sine

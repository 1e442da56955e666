// plain_arctangent: angles by the series of the arctangent in 113 bits, rounded once.
//
// The reference for nmk_exact::exact_atan2, exact_acos and exact_asin.
#pragma once

#include <cmath>

#include "exactmath/binary128.h"

namespace plain_arctangent {

/// Newton's steps from the root of the nearest double.
inline Binary128 root(Binary128 x) {
    Binary128 r = std::sqrt(static_cast<double>(x));
    if (r == 0) return r;
    for (int i = 0; i < 3; ++i) r = (r + x / r) / 2;
    return r;
}

/// Of t from 0 to 1: three halvings of the angle, then the series.
inline Binary128 arctangent(Binary128 t) {
    constexpr int halvings = 3;
    for (int i = 0; i < halvings; ++i) t /= 1 + root(1 + t * t);
    Binary128 sum = 0;
    Binary128 power = t;
    for (int n = 1; n < 80; n += 2) {
        sum += power / n;
        power *= -t * t;
    }
    return sum * (1 << halvings);
}

inline Binary128 half_pi() {
    return 8 * arctangent(Binary128{1} / 5) - 2 * arctangent(Binary128{1} / 239);
}

/// Of a point above the axis or on it.
inline Binary128 angle(Binary128 y, Binary128 x) {
    if (x < 0) return 2 * half_pi() - angle(y, -x);
    return y > x ? half_pi() - arctangent(x / y) : arctangent(y / x);
}

inline double atan2(double y, double x) {
    return std::copysign(static_cast<double>(angle(std::fabs(y), x)), y);
}

inline double acos(double x) {
    const Binary128 wide = x;
    return static_cast<double>(angle(root((1 - wide) * (1 + wide)), wide));
}

inline double asin(double x) {
    const Binary128 size = std::fabs(x);
    return std::copysign(static_cast<double>(angle(size, root((1 - size) * (1 + size)))), x);
}

}  // namespace plain_arctangent

// plain_erfc: the complementary error function in 113 bits, rounded once.
//
// The reference for nmk_exact::exact_erfc: the alternating series up to 1.5, beyond it a continued
// fraction with many more terms than are needed.
#pragma once

#include "exactmath/binary128.h"
#include "exactmath/plain_arctangent.h"
#include "exactmath/plain_power.h"

namespace plain_erfc {

inline Binary128 root_of_pi() { return plain_arctangent::root(2 * plain_arctangent::half_pi()); }

inline Binary128 erf(Binary128 x) {
    Binary128 sum = 0;
    Binary128 power = x;
    for (int n = 0; n < 80; ++n) {
        sum += power / (2 * n + 1);
        power *= -x * x / (n + 1);
    }
    return 2 * sum / root_of_pi();
}

inline Binary128 wide_erfc(Binary128 x) {
    if (x < 0) return 2 - wide_erfc(-x);
    if (x <= 1.5) return 1 - erf(x);
    Binary128 denominator = x;
    for (int n = 1500; n >= 1; --n) denominator = x + Binary128{0.5} * n / denominator;
    return plain_power::wide_exp(-x * x) / (root_of_pi() * denominator);
}

inline double erfc(double x) { return static_cast<double>(wide_erfc(x)); }

}  // namespace plain_erfc

// wide_power.h: exponential and logarithm to about 100 bits, and the rounding to double at the end.
//
// What the functions of exact_power.h, exact_logarithm.h and exact_erfc.h share.
#pragma once

#include <array>
#include <cstddef>

#include "double_double.h"

namespace nmk_exact {

constexpr DoubleDouble natural_log_of_2{0x1.62e42fefa39efp-1, 0x1.abc9e3b39803fp-56};

/// value * 2^exponent.
struct ScaledDoubleDouble {
    DoubleDouble value;
    int exponent;
};

/// The double nearest to x, for a value.high that is zero or of moderate size. Rounds once, also to
/// a subnormal; infinity past the largest double.
double rounded(const ScaledDoubleDouble& x);

/// The remainder of an exponent is cut to this fraction of ln 2 by a table of powers of two.
constexpr int power_steps = 64;

/// e to the power r: the Taylor series in Horner's form.
constexpr DoubleDouble exp_series(DoubleDouble r, int terms) {
    DoubleDouble sum{1.0, 0.0};
    for (int k = terms; k >= 1; --k) {
        sum = DoubleDouble{1.0, 0.0} + sum * r / DoubleDouble{static_cast<double>(k), 0.0};
    }
    return sum;
}

/// 2 to the power j / power_steps.
constexpr std::array<DoubleDouble, power_steps> powers_of_2 = [] {
    std::array<DoubleDouble, power_steps> table{};
    for (int j = 0; j < power_steps; ++j) {
        const DoubleDouble exponent = natural_log_of_2 * (j / double{power_steps});
        table[static_cast<std::size_t>(j)] = exp_series(exponent, 32);
    }
    return table;
}();

/// e to the power x, for |x| up to 1e5. Absolute error of the exponent: below 2^-90.
ScaledDoubleDouble wide_exp(DoubleDouble x);

/// The natural logarithm of a positive, finite number. Relative error below 2^-94.
DoubleDouble wide_log(double x);

}  // namespace nmk_exact

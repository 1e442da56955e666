#include <exactmath/exact_erfc.h>

#include <cmath>

#include "wide_power.h"

namespace nmk_exact {
namespace {

constexpr DoubleDouble one{1.0, 0.0};
constexpr DoubleDouble reciprocal_of_root_pi{0x1.20dd750429b6dp-1, 0x1.1ae3a914fed80p-57};

constexpr double series_up_to = 3.0;
constexpr int terms_of_series = 90;
constexpr int terms_of_fraction = 260;

// Beyond these the result rounds to 0 among the subnormals, and to 2.
constexpr double vanishes_above = 28.0;
constexpr double is_two_below = -7.0;

ScaledDoubleDouble density(double x) { return wide_exp(-exact_product(x, x)); }

DoubleDouble unscaled(const ScaledDoubleDouble& x) { return x.value * std::ldexp(1.0, x.exponent); }

// erf of x from 0 to series_up_to: all terms are positive.
DoubleDouble wide_erf(double x) {
    const DoubleDouble twice_square = exact_product(x, x) * 2.0;
    DoubleDouble sum = one;
    for (int n = terms_of_series; n >= 1; --n) {
        sum = one + sum * twice_square / DoubleDouble{2.0 * n + 1.0, 0.0};
    }
    return sum * unscaled(density(x)) * reciprocal_of_root_pi * (2.0 * x);
}

// erfc of x above series_up_to.
ScaledDoubleDouble wide_erfc(double x) {
    DoubleDouble denominator{x, 0.0};
    for (int n = terms_of_fraction; n >= 1; --n) {
        denominator = DoubleDouble{x, 0.0} + DoubleDouble{n / 2.0, 0.0} / denominator;
    }
    const ScaledDoubleDouble scaled = density(x);
    return {scaled.value * reciprocal_of_root_pi / denominator, scaled.exponent};
}

}  // namespace

double exact_erfc(double x) {
    if (std::isnan(x)) return x;
    if (x > vanishes_above) return 0.0;
    if (x < is_two_below) return 2.0;
    const double size = std::fabs(x);
    if (size <= series_up_to) {
        const DoubleDouble erf = wide_erf(size);
        const DoubleDouble erfc = x < 0.0 ? one + erf : one - erf;
        return erfc.high + erfc.low;
    }
    const ScaledDoubleDouble erfc = wide_erfc(size);
    if (x > 0.0) return rounded(erfc);
    const DoubleDouble from_two = DoubleDouble{2.0, 0.0} - unscaled(erfc);
    return from_two.high + from_two.low;
}

}  // namespace nmk_exact

#include "wide_power.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

namespace nmk_exact {
namespace {

// Doubles from 2^-1022 on have all their digits; below, the last digit is 2^-1074.
constexpr int least_normal_exponent = -1022;
constexpr int last_subnormal_digit = -1074;
constexpr int digits_of_double = std::numeric_limits<double>::digits;

// For a remainder of at most half a step, 0.0055.
constexpr int terms_of_exp = 12;

// For |s| of at most 0.1716, which is what a mantissa next to 1 leaves.
constexpr int terms_of_log = 22;
constexpr double square_root_of_half = 0.70710678118654752;

// The sum of both, cut to a double whose last digit is odd when something was cut off: a rounding
// to fewer digits then sees on which side of a half the exact sum lies.
double sum_rounded_to_odd(double a, double b) {
    const DoubleDouble sum = exact_sum(a, b);
    const bool is_even = (std::bit_cast<std::uint64_t>(sum.high) & 1) == 0;
    if (sum.low == 0.0 || !is_even) return sum.high;
    return std::nextafter(sum.high, std::copysign(HUGE_VAL, sum.low));
}

// Rounded to a multiple of `unit`, which is a power of two. high is below 2^52 units.
double rounded_to_multiple(DoubleDouble x, double unit) {
    const double large = std::copysign(unit * 0x1p52, x.high);
    const DoubleDouble sum = exact_sum(large, x.high);
    return (sum.high + sum_rounded_to_odd(sum.low, x.low)) - large;
}

}  // namespace

double rounded(const ScaledDoubleDouble& x) {
    const double nearest = x.value.high + x.value.low;
    if (nearest == 0.0 || !std::isfinite(nearest)) return nearest;
    const int exponent = std::ilogb(nearest) + x.exponent;
    if (exponent >= least_normal_exponent) return std::ldexp(nearest, x.exponent);
    if (exponent < last_subnormal_digit - 1) return std::copysign(0.0, nearest);
    // Rounded at the last digit of the subnormals, so that the scaling is exact.
    const int digits_short = least_normal_exponent - exponent;
    const double unit =
        std::ldexp(1.0, std::ilogb(nearest) - (digits_of_double - 1) + digits_short);
    return std::ldexp(rounded_to_multiple(x.value, unit), x.exponent);
}

ScaledDoubleDouble wide_exp(DoubleDouble x) {
    const double steps = std::floor(x.high * (power_steps / natural_log_of_2.high) + 0.5);
    const DoubleDouble r = x - natural_log_of_2 * (steps / power_steps);
    const int whole = static_cast<int>(steps);
    const int step = whole & (power_steps - 1);
    return {exp_series(r, terms_of_exp) * powers_of_2[static_cast<std::size_t>(step)],
            (whole - step) / power_steps};
}

DoubleDouble wide_log(double x) {
    int exponent = 0;
    double m = std::frexp(x, &exponent);
    if (m < square_root_of_half) {
        m *= 2.0;
        --exponent;
    }
    // 2 artanh((m - 1) / (m + 1)) and a multiple of ln 2.
    const DoubleDouble s = exact_sum(m, -1.0) / exact_sum(m, 1.0);
    const DoubleDouble square = s * s;
    DoubleDouble sum{0.0, 0.0};
    for (int k = terms_of_log; k >= 0; --k) {
        sum = sum * square + DoubleDouble{1.0, 0.0} / DoubleDouble{2.0 * k + 1.0, 0.0};
    }
    return natural_log_of_2 * static_cast<double>(exponent) + sum * s * 2.0;
}

}  // namespace nmk_exact

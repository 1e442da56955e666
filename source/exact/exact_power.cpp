#include "exact/exact_power.h"

#include "exact/double_double.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <limits>

namespace nmk_exact {
namespace {

constexpr Double_double natural_log_of_2{0x1.62e42fefa39efp-1, 0x1.abc9e3b39803fp-56};
constexpr Double_double one{1.0, 0.0};

// Beyond these e to the power x is infinity, or rounds to zero even among the subnormals.
constexpr double exp_overflows_above = 709.79;
constexpr double exp_vanishes_below = -745.14;

// Terms for a remainder of at most half of ln 2, and for |s| of at most 0.1716.
constexpr int terms_of_exp = 27;
constexpr int terms_of_log = 22;

// e to the power r for a small r: the Taylor series in Horner's form.
constexpr Double_double exp_of_remainder(Double_double r) {
    Double_double sum = one;
    for (int k = terms_of_exp; k >= 1; --k) {
        sum = one + sum * r / Double_double{static_cast<double>(k), 0.0};
    }
    return sum;
}

// The quick way cuts the remainder to this fraction of ln 2 with a table of powers of two.
constexpr int steps_in_table = 64;

constexpr auto powers_of_2 = [] {
    std::array<Double_double, steps_in_table> table{};
    for (int j = 0; j < steps_in_table; ++j) {
        table[static_cast<std::size_t>(j)] =
            exp_of_remainder(natural_log_of_2 * (j / double{steps_in_table}));
    }
    return table;
}();

constexpr Double_double step_of_table = natural_log_of_2 * (1.0 / steps_in_table);
constexpr double steps_in_1 = steps_in_table / natural_log_of_2.high;

// Relative error of quick_exp, with room to spare.
constexpr double quick_exp_error = 0x1p-62;

double nearest_integer(double x) { return std::floor(x + 0.5); }

// e to the power x before the scaling by 2^exponent.
struct Scaled {
    Double_double value;
    int exponent;
};

Scaled slow_exp(Double_double x) {
    const double m = nearest_integer(x.high / natural_log_of_2.high);
    const Double_double r = x + natural_log_of_2 * -m;
    return {exp_of_remainder(r), static_cast<int>(m)};
}

Scaled quick_exp(double x) {
    const double m = nearest_integer(x * steps_in_1);
    const Double_double r = Double_double{x, 0.0} + step_of_table * -m;
    const double h = r.high;
    const double tail =
        h * h *
        (1.0 / 2 +
         h * (1.0 / 6 + h * (1.0 / 24 + h * (1.0 / 120 + h * (1.0 / 720 + h * (1.0 / 5040))))));
    const Double_double low = quick_sum(1.0, h);
    const Double_double power = quick_sum(low.high, low.low + (r.low + tail));
    const int whole = static_cast<int>(m);
    const int step = whole & (steps_in_table - 1);
    return {power * powers_of_2[static_cast<std::size_t>(step)], (whole - step) / steps_in_table};
}

double rounded(const Scaled& x) { return std::ldexp(x.value.high + x.value.low, x.exponent); }

double exp_of(Double_double x) {
    if (std::isnan(x.high)) return x.high;
    if (x.high > exp_overflows_above) return std::numeric_limits<double>::infinity();
    if (x.high < exp_vanishes_below) return 0.0;
    return rounded(slow_exp(x));
}

// The logarithm of a positive, finite number: 2 artanh((m - 1) / (m + 1)) and a multiple of ln 2.
Double_double log_of(double x) {
    int exponent = 0;
    double m = std::frexp(x, &exponent);
    if (m < 0.70710678118654752) {
        m *= 2.0;
        --exponent;
    }
    const Double_double s = exact_sum(m, -1.0) / exact_sum(m, 1.0);
    const Double_double square = s * s;
    Double_double sum{0.0, 0.0};
    for (int k = terms_of_log; k >= 0; --k) {
        sum = sum * square + one / Double_double{2.0 * k + 1.0, 0.0};
    }
    return natural_log_of_2 * static_cast<double>(exponent) + sum * s * 2.0;
}

}  // namespace

double exact_exp(double x) {
    if (!(x < exp_overflows_above && x > exp_vanishes_below)) return exp_of({x, 0.0});
    const Scaled quick = quick_exp(x);
    const double error = quick.value.high * quick_exp_error;
    const double least = quick.value.high + (quick.value.low - error);
    const double most = quick.value.high + (quick.value.low + error);
    return least == most ? rounded(quick) : exp_of({x, 0.0});
}

double exact_pow(double base, double exponent) {
    if (base < 0.0) {
        return std::isinf(base) ? -base : std::numeric_limits<double>::quiet_NaN();
    }
    if (base == 0.0 || !std::isfinite(base)) return base == 0.0 ? 0.0 : base;
    return exp_of(log_of(base) * exponent);
}

}  // namespace nmk_exact

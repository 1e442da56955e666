#include <exactmath/exact_power.h>

#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>

#include "wide_power.h"

namespace nmk_exact {
namespace {

// Beyond these e to the power x is infinity, or rounds to zero even among the subnormals.
constexpr double exp_overflows_above = 709.79;
constexpr double exp_vanishes_below = -745.14;

// From here down a result may be subnormal.
constexpr double exp_is_subnormal_below = -708.0;

// More than all errors of quick_exp for an exact argument, as a part of the result.
constexpr double quick_exp_error = 0x1p-65;

// More than all errors of quick_log, as a part of the result.
constexpr double quick_log_error = 0x1p-64;

// ln 2 / 64 in three parts. The first two have so few digits that their products with the number of
// steps, which has 17 bits, are exact.
constexpr double exp_step_head = 0x1.62e42fef8p-7;
constexpr double exp_step_middle = 0x1.1cf79abc8p-42;
constexpr double exp_step_rest = 0x1.e3b39803f2f6bp-78;
constexpr double exp_steps_in_1 = power_steps / natural_log_of_2.high;

// So large that a double has no digits behind the point.
constexpr double rounds_to_integers = 0x1.8p52;

constexpr std::uint64_t head_bits = ~std::uint64_t{0x7FFFFFF};

constexpr double head_of(double x) {
    return std::bit_cast<double>(std::bit_cast<std::uint64_t>(x) & head_bits);
}

// A power of two as a head, short enough for its product with another head to be exact, and a rest.
struct ShortPower {
    double head;
    double rest;
};

constexpr auto short_powers_of_2 = [] {
    std::array<ShortPower, power_steps> table{};
    for (std::size_t j = 0; j < table.size(); ++j) {
        const double head = head_of(powers_of_2[j].high);
        table[j] = {head, (powers_of_2[j].high - head) + powers_of_2[j].low};
    }
    return table;
}();

ScaledDoubleDouble quick_exp(double x, double low_of_x) {
    const double shifted = x * exp_steps_in_1 + rounds_to_integers;
    const double m = shifted - rounds_to_integers;
    const DoubleDouble r = exact_sum(x - m * exp_step_head, -m * exp_step_middle);
    const double low = r.low + (low_of_x - m * exp_step_rest);
    const double h = r.high;
    const double square = h * h;
    const double tail =
        square * ((1.0 / 2 + h * (1.0 / 6)) + square * ((1.0 / 24 + h * (1.0 / 120)) +
                                                        square * (1.0 / 720 + h * (1.0 / 5040))));
    const int whole = static_cast<int>(m);
    const int step = whole & (power_steps - 1);
    const ShortPower& power = short_powers_of_2[static_cast<std::size_t>(step)];
    const double head = head_of(h);
    const double beyond_head = (h - head) + (tail + (low + low * h));
    const DoubleDouble sum = quick_sum(power.head, power.head * head);
    const double rest = power.head * beyond_head + (power.rest + power.rest * (h + tail));
    return {{sum.high, sum.low + rest}, (whole - step) / power_steps};
}

// The quick logarithm multiplies a mantissa by a number of nine bits that brings it next to 1.
constexpr int log_steps = 128;

struct LogStep {
    double factor;
    double log_head;  // of 1 / factor, a multiple of log_head_unit
    double log_rest;
};

// Logarithms are added up in heads without rounding, and in rests.
constexpr double log_head_unit = 0x1p-41;
constexpr double log_of_2_head = 0x1.62e42fefa3p-1;
constexpr double log_of_2_rest = 0x1.3de6af278ece6p-42;

// 2 artanh((1 - f) / (1 + f)), for f from 0.7 to 1.5.
constexpr DoubleDouble log_of_reciprocal(double f) {
    const DoubleDouble s = DoubleDouble{1.0 - f, 0.0} / DoubleDouble{1.0 + f, 0.0};
    const DoubleDouble square = s * s;
    DoubleDouble sum{0.0, 0.0};
    for (int k = 24; k >= 0; --k) {
        sum = sum * square + DoubleDouble{1.0, 0.0} / DoubleDouble{2.0 * k + 1.0, 0.0};
    }
    return sum * s * 2.0;
}

// Step j is for mantissas from 1 + j / 128 to the next; from log_wraps on for half of them, so that
// numbers next to 1 from below have a small logarithm as well.
constexpr int log_wraps = 53;

constexpr auto log_table = [] {
    std::array<LogStep, log_steps> table{};
    for (int j = 0; j < log_steps; ++j) {
        const double middle = (1.0 + (j + 0.5) / log_steps) * (j < log_wraps ? 1.0 : 0.5);
        // Around 1 the factor is 1, and the logarithm keeps all its digits.
        const bool is_next_to_1 = j == 0 || j == log_steps - 1;
        // NOLINTNEXTLINE(bugprone-incorrect-roundings): is positive, and lround is not constexpr
        const int rounded_to_256ths = static_cast<int>(256.0 / middle + 0.5);
        const double factor = is_next_to_1 ? 1.0 : rounded_to_256ths / 256.0;
        const DoubleDouble log = log_of_reciprocal(factor);
        const double shift = 0x1.8p52 * log_head_unit;
        const double head = (log.high + shift) - shift;
        table[static_cast<std::size_t>(j)] = {factor, head, (log.high - head) + log.low};
    }
    return table;
}();

// The natural logarithm of a positive, normal number.
DoubleDouble quick_log(double x) {
    const auto bits = std::bit_cast<std::uint64_t>(x);
    const int j = static_cast<int>(bits >> 45) & (log_steps - 1);
    const int wraps = j < log_wraps ? 0 : 1;
    const int exponent = static_cast<int>(bits >> 52) - 1023 + wraps;
    const double m =
        std::bit_cast<double>((bits & 0xFFFFFFFFFFFFF) | (std::uint64_t(1023 - wraps) << 52));
    const LogStep& step = log_table[static_cast<std::size_t>(j)];
    // The factor has nine bits, so that its products with the halves of the mantissa are exact.
    const DoubleDouble halves = split(m);
    const DoubleDouble z = exact_sum(halves.high * step.factor - 1.0, halves.low * step.factor);
    const double h = z.high;
    const DoubleDouble half_square = exact_product(h, -0.5 * h);
    const double square = h * h;
    const double tail =
        h * square *
            ((1.0 / 3 - h * (1.0 / 4)) +
             square *
                 ((1.0 / 5 - h * (1.0 / 6)) +
                  square * ((1.0 / 7 - h * (1.0 / 8)) + square * (1.0 / 9 - h * (1.0 / 10))))) -
        h * z.low;
    const double log_head = exponent * log_of_2_head + step.log_head;
    const double log_rest = exponent * log_of_2_rest + step.log_rest;
    const DoubleDouble sum = quick_sum(log_head, h);
    const DoubleDouble more = exact_sum(sum.high, half_square.high);
    const double rest = (half_square.low + z.low) + (tail + log_rest);
    return quick_sum(more.high, (sum.low + more.low) + rest);
}

// 2^exponent * x, for a result that is not subnormal.
double scaled(double x, int exponent) {
    constexpr int largest_exponent = 1023;
    if (exponent > largest_exponent) return std::ldexp(x, exponent);
    return x * std::bit_cast<double>(std::uint64_t(exponent + 1023) << 52);
}

// The quick result when the error cannot change its rounding, else what `wide` returns.
template <class Wide>
double certain_or(const ScaledDoubleDouble& quick, double relative_error, const Wide& wide) {
    const double error = quick.value.high * relative_error;
    const double least = quick.value.high + (quick.value.low - error);
    const double most = quick.value.high + (quick.value.low + error);
    return least == most ? scaled(least, quick.exponent) : wide();
}

double wide_exp_rounded(DoubleDouble x) {
    if (x.high > exp_overflows_above) return std::numeric_limits<double>::infinity();
    if (x.high < exp_vanishes_below) return 0.0;
    return rounded(wide_exp(x));
}

// The same for a result that may be subnormal. Beside `rounds`, whose last digit is the last of the
// subnormals, a sum has just the digits that they have, and is rounded once.
template <class Wide>
double certain_subnormal_or(const ScaledDoubleDouble& quick, double relative_error,
                            const Wide& wide) {
    constexpr int exponent_of_last_digit = -1074;
    // Above, the sum could have a digit less.
    constexpr int greatest_exponent = -1024;
    if (quick.exponent > greatest_exponent) return wide();
    const double last_digit =
        std::bit_cast<double>(std::uint64_t(exponent_of_last_digit - quick.exponent + 1023) << 52);
    const double rounds = 0x1.8p52 * last_digit;
    const DoubleDouble sum = exact_sum(rounds, quick.value.high);
    const double error = quick.value.high * relative_error + 0x1p-52 * last_digit;
    const double least = sum.high + (sum.low + (quick.value.low - error));
    const double most = sum.high + (sum.low + (quick.value.low + error));
    return least == most ? std::ldexp(least - rounds, quick.exponent) : wide();
}

bool is_in_quick_range(double x) { return x < exp_overflows_above && x > exp_is_subnormal_below; }

}  // namespace

double exact_exp(double x) {
    if (std::isnan(x)) return x;
    const auto wide = [x] { return wide_exp_rounded({x, 0.0}); };
    if (is_in_quick_range(x)) return certain_or(quick_exp(x, 0.0), quick_exp_error, wide);
    if (x <= exp_is_subnormal_below && x > exp_vanishes_below)
        return certain_subnormal_or(quick_exp(x, 0.0), quick_exp_error, wide);
    return wide();
}

double exact_pow(double base, double exponent) {
    if (base < 0.0) {
        return std::isinf(base) ? -base : std::numeric_limits<double>::quiet_NaN();
    }
    if (base == 0.0 || !std::isfinite(base)) return base == 0.0 ? 0.0 : base;
    const auto wide = [=] { return wide_exp_rounded(wide_log(base) * exponent); };
    if (base < std::numeric_limits<double>::min()) return wide();
    const DoubleDouble power = quick_log(base) * exponent;
    if (!is_in_quick_range(power.high)) return wide();
    const double error = quick_exp_error + std::fabs(power.high) * quick_log_error;
    return certain_or(quick_exp(power.high, power.low), error, wide);
}

}  // namespace nmk_exact

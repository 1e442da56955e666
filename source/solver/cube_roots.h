// cube_roots: powers of 1.0 / 3.0, two at once, and of 1.0 / 6.0, with the same bits everywhere.
//
// Each root is computed to about 60 bits. Where the error could change the rounding, in one case
// out of seventy, nmk_exact::exact_pow decides. Two roots side by side in one register take less
// time than one power.
#pragma once

#include <exactmath/exact_power.h>

#include <bit>
#include <cmath>
#include <cstdint>

namespace nmk_solver {

struct CubeRoots {
    double first;
    double second;
};

namespace cube_root_steps {

using Two = double __attribute__((vector_size(16)));
using TwoBits = std::int64_t __attribute__((vector_size(16)));

// A third of the bits of a number, and this on top, is near the bits of its cube root.
constexpr std::uint32_t guess_offset = 715094163;

// 17 leading bits: the cube of such a number is exact.
constexpr auto leading_bits = static_cast<std::int64_t>(0xFFFFFFF000000000);
constexpr std::int64_t exponent_bits = 0x7FF0000000000000;
constexpr std::int64_t split_bits = ~std::int64_t{0x7FFFFFF};  // the leading 26 bits

// Outside, the reciprocal or the cube would lose digits.
constexpr double min_quick = 1e-200;
constexpr double max_quick = 1e200;

// More than the error of the root below, in units of the power of two at or below the root. Most of
// it, 2^-60.6, comes from the logarithm below.
constexpr double quick_error = 0.0075 * 0x1p-52;

// The exponent 1.0 / 3.0 falls short of a third by this much, and the root falls short by this
// times the natural logarithm. That is linear in the bits of the number, to within 0.03.
constexpr double exponent_is_short = 1.850371707708594e-17;
constexpr double logarithm_slope = 0x1p-20 * 0.6931471805599453 * exponent_is_short;
constexpr double logarithm_at_zero_bits = (1023.0 - 0.043) * 0.6931471805599453 * exponent_is_short;

inline std::uint32_t high_bits(double x) {
    return static_cast<std::uint32_t>(std::bit_cast<std::uint64_t>(x) >> 32);
}

/// Within 4 percent.
inline double guess(double x) {
    return std::bit_cast<double>(std::uint64_t{high_bits(x) / 3 + guess_offset} << 32);
}

inline Two masked(Two x, std::int64_t mask) {
    return std::bit_cast<Two>(std::bit_cast<TwoBits>(x) & mask);
}

/// Lower and upper bounds of two roots.
struct Bounds {
    Two low;
    Two high;

    TwoBits agree() const { return low == high; }
};

/// The bounds of the roots of x + rest, with a rest below the last digit of x.
template <bool has_rest>
Bounds bounds(Two x, Two rest) {
    const Two inverse = 1.0 / x;
    // The series of (1 - h)^(-1/3), from a guess to 17 bits, and from those to 60.
    const Two rough = {guess(x[0]), guess(x[1])};
    const Two h = 1.0 - rough * rough * (rough * inverse);
    const Two better = rough + (rough * h) * ((1.0 / 3.0 + h * (2.0 / 9.0)) +
                                              (h * h) * (14.0 / 81.0 + h * (35.0 / 243.0)));
    const Two root = masked(better, leading_bits);
    const Two difference = x - root * root * root;
    const Two e = (has_rest ? difference + rest : difference) * inverse;
    const Two bits = {static_cast<double>(high_bits(x[0])), static_cast<double>(high_bits(x[1]))};
    const Two shortfall = bits * logarithm_slope - logarithm_at_zero_bits;
    const Two beyond =
        root * (e * ((1.0 / 3.0 + e * (2.0 / 9.0)) + (e * e) * (14.0 / 81.0)) - shortfall);
    const Two margin = masked(root, exponent_bits) * quick_error;
    return {root + (beyond - margin), root + (beyond + margin)};
}

/// The roots whose bounds differ. Not inlined: few calls come here.
[[gnu::cold, gnu::noinline]] inline CubeRoots by_pow_where_in_doubt(Two x, const Bounds& bounds) {
    CubeRoots roots{bounds.low[0], bounds.low[1]};
    const auto certain = [&](int i) {
        return bounds.low[i] == bounds.high[i] && x[i] > min_quick && x[i] < max_quick;
    };
    if (!certain(0)) roots.first = nmk_exact::exact_pow(x[0], 1.0 / 3.0);
    if (!certain(1)) roots.second = nmk_exact::exact_pow(x[1], 1.0 / 3.0);
    return roots;
}

}  // namespace cube_root_steps

/// a and b to the power 1.0 / 3.0, for numbers that are not negative.
inline CubeRoots cube_roots(double a, double b) {
    using namespace cube_root_steps;
    const Two x = {a, b};
    const Bounds found = bounds<false>(x, Two{});
    const TwoBits certain = found.agree() & (x > min_quick) & (x < max_quick);
    if ((certain[0] & certain[1]) != 0) [[likely]]
        return {found.low[0], found.low[1]};
    return by_pow_where_in_doubt(x, found);
}

/// x to the power 1.0 / 6.0, for a number that is not negative: infinity for infinity.
inline double sixth_root(double x) {
    using namespace cube_root_steps;
    // 1.0 / 6.0 is half of 1.0 / 3.0 to the last bit, so this is the cube root of the square root.
    // The square root's own rounding error goes on as a rest; the halves of the split have products
    // without rounding.
    const double root = std::sqrt(x);
    const double head = masked(Two{root, root}, split_bits)[0];
    const double tail = root - head;
    const double error = ((x - head * head) - 2.0 * head * tail) - tail * tail;
    const double rest = error * (0.5 / root);
    const Bounds found = bounds<true>(Two{root, root}, Two{rest, rest});
    if (found.low[0] == found.high[0] && root > min_quick && root < max_quick) [[likely]]
        return found.low[0];
    return nmk_exact::exact_pow(x, 1.0 / 6.0);
}

}  // namespace nmk_solver

// cube_roots: two powers of 1.0 / 3.0 at once, the same to the last bit as pow gives them.
//
// Each root is worked out to about 60 bits. Where what follows the last bit is so near to a half
// that pow, which errs by up to 0.511 of the last place, could have gone either way, pow is asked:
// for one root in twenty-five. Two roots side by side in one register take less time than one pow.
#pragma once

#include <bit>
#include <cmath>
#include <cstdint>

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

// Outside, the reciprocal or the cube would lose digits.
constexpr double least = 1e-200;
constexpr double greatest = 1e200;

// Parts of the last place by which pow and the root below may err together, with room to spare.
constexpr double doubt = 0.02 * 0x1p-52;

// The exponent 1.0 / 3.0 is by so much short of a third: the root is short by this times the
// natural logarithm. That is linear in the bits of the number, to within 0.03.
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

/// Sets `low` and `high` to the roots less and plus the doubt.
inline void bounds(Two x, Two& low, Two& high) {
    const Two inverse = 1.0 / x;
    // The series of (1 - h)^(-1/3), from a guess to 17 bits, and from those to 60.
    const Two rough = {guess(x[0]), guess(x[1])};
    const Two h = 1.0 - rough * rough * (rough * inverse);
    const Two better = rough + (rough * h) * ((1.0 / 3.0 + h * (2.0 / 9.0)) +
                                              (h * h) * (14.0 / 81.0 + h * (35.0 / 243.0)));
    const Two root = masked(better, leading_bits);
    const Two e = (x - root * root * root) * inverse;
    const Two bits = {static_cast<double>(high_bits(x[0])), static_cast<double>(high_bits(x[1]))};
    const Two shortfall = bits * logarithm_slope - logarithm_at_zero_bits;
    const Two rest =
        root * (e * ((1.0 / 3.0 + e * (2.0 / 9.0)) + (e * e) * (14.0 / 81.0)) - shortfall);
    const Two margin = masked(root, exponent_bits) * doubt;
    low = root + (rest - margin);
    high = root + (rest + margin);
}

/// Out of the way of the roots that are certain.
[[gnu::cold, gnu::noinline]] inline CubeRoots by_pow_where_in_doubt(Two x, Two low, Two high) {
    CubeRoots roots{low[0], low[1]};
    const auto certain = [&](int i) {
        return low[i] == high[i] && x[i] > least && x[i] < greatest;
    };
    if (!certain(0)) roots.first = std::pow(x[0], 1.0 / 3.0);
    if (!certain(1)) roots.second = std::pow(x[1], 1.0 / 3.0);
    return roots;
}

}  // namespace cube_root_steps

/// a and b to the power 1.0 / 3.0, for numbers that are not negative.
inline CubeRoots cube_roots(double a, double b) {
    using namespace cube_root_steps;
    const Two x = {a, b};
    Two low;
    Two high;
    bounds(x, low, high);
    const TwoBits certain = (low == high) & (x > least) & (x < greatest);
    if ((certain[0] & certain[1]) != 0) [[likely]]
        return {low[0], low[1]};
    return by_pow_where_in_doubt(x, low, high);
}

// cube_roots: powers of 1.0 / 3.0, two at once, and of 1.0 / 6.0, with the same bits everywhere.
//
// Each root is computed to about 60 bits. Where the error could change the rounding, in one case
// out of seventy, a few more terms make 64 bits of it; where that is not enough either,
// nmk_exact::exact_pow decides. Two roots side by side in one register take less time than one
// power.
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

// More than the error of the root with all terms, in the same units.
constexpr double fine_error = 0x1p-64;

// By how much the logarithm to base 2 exceeds its linear approximation between two powers of two,
// to within 0.001: f (1 - f) times this polynomial in f, for the number (1 + f) 2^n.
constexpr double bulge[] = {0.4427, -0.2474, 0.0834};
constexpr double bulge_in_linear = 0.043;
constexpr double shortfall_of_bulge = 0.6931471805599453 * exponent_is_short;

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

/// Two roots of few digits, and what is missing of them.
struct Approach {
    Two x;
    Two root;       // its cube is exact
    Two excess;     // of x over the cube of the root, as a part of x
    Two shortfall;  // of the power below the cube root, as a part of it
};

/// For the number x, or for x + error / (2 x) where x is a square root with that error of its
/// square.
template <bool is_square_root>
[[gnu::always_inline]] inline Approach approach(Two x, Two error) {
    const Two inverse = 1.0 / x;
    // The series of (1 - h)^(-1/3), from a guess to 17 bits.
    const Two rough = {guess(x[0]), guess(x[1])};
    const Two h = 1.0 - rough * rough * (rough * inverse);
    const Two better = rough + (rough * h) * ((1.0 / 3.0 + h * (2.0 / 9.0)) +
                                              (h * h) * (14.0 / 81.0 + h * (35.0 / 243.0)));
    const Two root = masked(better, leading_bits);
    const Two difference = x - root * root * root;
    const Two excess =
        (is_square_root ? difference + error * (0.5 * inverse) : difference) * inverse;
    const Two bits = {static_cast<double>(high_bits(x[0])), static_cast<double>(high_bits(x[1]))};
    return {x, root, excess, bits * logarithm_slope - logarithm_at_zero_bits};
}

/// Lower and upper bounds of two roots.
struct Bounds {
    Two low;
    Two high;

    TwoBits agree() const { return low == high; }
};

inline Bounds bounds_around(Two root, Two beyond, double error) {
    const Two margin = masked(root, exponent_bits) * error;
    return {root + (beyond - margin), root + (beyond + margin)};
}

/// By the same series, from 17 bits to 60.
[[gnu::always_inline]] inline Bounds bounds(const Approach& a) {
    const Two e = a.excess;
    const Two beyond =
        a.root * (e * ((1.0 / 3.0 + e * (2.0 / 9.0)) + (e * e) * (14.0 / 81.0)) - a.shortfall);
    return bounds_around(a.root, beyond, quick_error);
}

/// To 64 bits: with one more term of the series, the logarithm as the curve that it is, and the
/// product of what is missing.
inline Bounds fine_bounds(const Approach& a) {
    const Two e = a.excess;
    const Two missing =
        e * ((1.0 / 3.0 + e * (2.0 / 9.0)) + (e * e) * (14.0 / 81.0 + e * (35.0 / 243.0)));
    const TwoBits digits = std::bit_cast<TwoBits>(a.x) & ~exponent_bits;
    const Two f = std::bit_cast<Two>(digits | std::bit_cast<std::int64_t>(1.0)) - 1.0;
    const Two above_linear =
        f * (1.0 - f) * (bulge[0] + f * (bulge[1] + f * bulge[2])) - bulge_in_linear;
    const Two shortfall = a.shortfall + above_linear * shortfall_of_bulge;
    return bounds_around(a.root, a.root * (missing - shortfall * (1.0 + missing)), fine_error);
}

inline bool is_quick_size(double x) { return x > min_quick && x < max_quick; }

/// Not inlined: few calls come here.
[[gnu::cold, gnu::noinline]] inline CubeRoots cube_roots_in_doubt(const Approach& a) {
    const Bounds fine = fine_bounds(a);
    const auto root = [&](int i) {
        const bool is_certain = fine.low[i] == fine.high[i] && is_quick_size(a.x[i]);
        return is_certain ? fine.low[i] : nmk_exact::exact_pow(a.x[i], 1.0 / 3.0);
    };
    return {root(0), root(1)};
}

[[gnu::cold, gnu::noinline]] inline double sixth_root_in_doubt(double x, const Approach& a) {
    const Bounds fine = fine_bounds(a);
    const bool is_certain = fine.low[0] == fine.high[0] && is_quick_size(a.x[0]);
    return is_certain ? fine.low[0] : nmk_exact::exact_pow(x, 1.0 / 6.0);
}

}  // namespace cube_root_steps

/// a and b to the power 1.0 / 3.0, for numbers that are not negative.
inline CubeRoots cube_roots(double a, double b) {
    using namespace cube_root_steps;
    const Two x = {a, b};
    const Approach near = approach<false>(x, Two{});
    const Bounds found = bounds(near);
    const TwoBits certain = found.agree() & (x > min_quick) & (x < max_quick);
    if ((certain[0] & certain[1]) != 0) [[likely]]
        return {found.low[0], found.low[1]};
    return cube_roots_in_doubt(near);
}

/// x to the power 1.0 / 6.0, for a number that is not negative: infinity for infinity.
inline double sixth_root(double x) {
    using namespace cube_root_steps;
    // 1.0 / 6.0 is half of 1.0 / 3.0 to the last bit, so this is the cube root of the square root.
    // The square root's own rounding error is added; the halves of the split have products without
    // rounding.
    const double root = std::sqrt(x);
    const double head = masked(Two{root, root}, split_bits)[0];
    const double tail = root - head;
    const double error = ((x - head * head) - 2.0 * head * tail) - tail * tail;
    const Approach near = approach<true>(Two{root, root}, Two{error, error});
    const Bounds found = bounds(near);
    if (found.low[0] == found.high[0] && is_quick_size(root)) [[likely]]
        return found.low[0];
    return sixth_root_in_doubt(x, near);
}

}  // namespace nmk_solver

// exact_arctangent.h: angles from their sines and cosines, with the same bits everywhere.
//
// A result of about 64 bits first, and one of about 95 where 64 leave the rounding in doubt;
// nothing but additions, multiplications, divisions and square roots. Error: below 0.5 + 2^-35
// units in the last place.
#pragma once

#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace nmk_exact {

namespace arctangent_steps {

using Pair = double __attribute__((vector_size(16)));

constexpr int steps_in_1 = 128;

/// The arctangent of a multiple of 1 / steps_in_1, and its Taylor series there.
struct alignas(32) TableEntry {
    double angle;
    double rest_of_angle;
    double slope_head;  // short enough for its product with the head of a distance to be exact
    double rest_of_slope;
    std::array<double, 8> bends;  // coefficients of the powers from the second to the ninth
};

extern const std::array<TableEntry, steps_in_1 + 1> table;

/// Where an eighth of the turn begins or ends, and whether angles are counted from there backwards.
struct alignas(32) OctantBase {
    double angle;
    double rest_of_angle;
    double sign;
    double error;  // more than that of the angle
};

/// Steep directions have odd indices, those that point left have the upper two.
extern const std::array<OctantBase, 4> octants;

// Outside these sizes an intermediate result of the quick way could lose digits or overflow.
constexpr double least_quick = 0x1p-300;
constexpr double greatest_quick = 0x1p300;

// More than all errors of quick_angle and of what is added to it, as a part of its result: some
// twelve roundings of numbers of up to 2^-15 of it. What the series leave out is below 2^-78.
constexpr double quick_error = 0x1p-64;

// So large that a double has no digits behind those of a step.
constexpr double rounds_to_steps = 0x1.8p52 / steps_in_1;

/// The leading 26 bits.
inline double head_of(double x) {
    return std::bit_cast<double>(std::bit_cast<std::uint64_t>(x) & ~std::uint64_t{0x7FFFFFF});
}

/// A sum that has not been rounded yet.
struct UnroundedAngle {
    double part;
    double rest;
};

/// What the Taylor series adds to the slope's share at this distance from a table step.
inline double bend(const TableEntry& entry, double distance) {
    const auto pair = [&](std::size_t i) { return Pair{entry.bends[i], entry.bends[i + 1]}; };
    const double square = distance * distance;
    const Pair sum = pair(0) + square * (pair(2) + square * (pair(4) + square * pair(6)));
    return square * (sum[0] + distance * sum[1]);
}

/// The arctangent of y / x, for 0 < y <= x.
inline UnroundedAngle quick_angle(double y, double x) {
    // The quotient in two parts. All but the last product of the second is exact.
    const double inverse = 1.0 / x;
    const double head = head_of(y * inverse);
    const double x_head = head_of(x);
    const double tail = ((y - head * x_head) - head * (x - x_head)) * inverse;
    const double shifted = head + rounds_to_steps;
    const double head_beyond = head - (shifted - rounds_to_steps);
    const TableEntry& entry = table[std::bit_cast<std::uint64_t>(shifted) & (2 * steps_in_1 - 1)];
    const double beyond = head_beyond + tail;
    const double rise = entry.slope_head * head_beyond;
    const double part = entry.angle + rise;
    const double lost = rise - (part - entry.angle);
    const double rest_of_rise = entry.slope_head * tail + entry.rest_of_slope * beyond;
    return {part, bend(entry, beyond) + ((rest_of_rise + entry.rest_of_angle) + lost)};
}

/// exact_atan2 of any two numbers.
double wide_atan2(double y, double x);

}  // namespace arctangent_steps

/// The angle from -pi to pi of the direction (x, y), in radians.
///
/// Signed zeros and infinities as in C: pi for y = 0.0 and x = -0.0, the negative angle for y =
/// -0.0, a multiple of pi / 4 for two infinities. NaN for NaN.
inline double exact_atan2(double y, double x) {
    using namespace arctangent_steps;
    const double height = std::fabs(y);
    const double width = std::fabs(x);
    const bool is_steep = height > width;
    // So written that NaN is one of the two.
    const double longer = is_steep ? height : width;
    const double shorter = is_steep ? width : height;
    if (shorter >= least_quick && longer <= greatest_quick) [[likely]] {
        // Looked up, since a branch could not be predicted.
        const OctantBase& octant = octants[(is_steep ? 1U : 0U) + (std::signbit(x) ? 2U : 0U)];
        const UnroundedAngle first = quick_angle(shorter, longer);
        const double turned = octant.sign * first.part;
        const double part = octant.angle + turned;
        const double lost = turned - (part - octant.angle);
        const double rest = lost + (octant.rest_of_angle + octant.sign * first.rest);
        const double error = first.part * quick_error + octant.error;
        const double least = part + (rest - error);
        if (least == part + (rest + error)) [[likely]]
            return std::copysign(least, y);
    }
    return wide_atan2(y, x);
}

/// The angle from 0 to pi whose cosine is x. NaN beyond -1 and 1.
double exact_acos(double x);

/// The angle from -pi / 2 to pi / 2 whose sine is x; keeps the sign of a zero. NaN beyond -1 and 1.
double exact_asin(double x);

}  // namespace nmk_exact

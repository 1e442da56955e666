// exact_sine.h: sine and cosine that return the same bits everywhere.
//
// Those of the C library may differ in the last bit between processors and versions, and take
// longer for small angles. These are rounded from a result of about 70 bits, and from one of about
// 95 where 70 leave the rounding in doubt; nothing but additions, multiplications and divisions.
// Error: below 0.5 + 2^-35 units in the last place.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace nmk_exact {

struct SineAndCosine {
    double sine;
    double cosine;
};

constexpr double max_small_angle = 1.05;  // a little more than a sixth of a turn

namespace sine_steps {

// Sine in the first lane, cosine in the second.
using Pair = double __attribute__((vector_size(16)));
using PairBits = std::int64_t __attribute__((vector_size(16)));

constexpr int table_steps_in_1 = 256;
constexpr std::size_t table_size = 270;  // the last angle is beyond max_small_angle

/// Sine and cosine of a multiple of 1 / table_steps_in_1, and their slopes.
struct alignas(64) TableEntry {
    using Lanes = std::array<double, 2>;
    Lanes value;
    Lanes rest_of_value;
    Lanes slope_head;  // short enough for its product with the head of a distance to be exact
    Lanes rest_of_slope;
};

inline Pair pair_of(const TableEntry::Lanes& lanes) { return Pair{lanes[0], lanes[1]}; }

extern const std::array<TableEntry, table_size> table;

// More than all errors below: some six roundings of numbers up to 2^-19, and what the series of
// sine and cosine leave out, 2^-75 and 2^-87.
constexpr double quick_error = 0x1p-69;

// So large that a double has no digits behind those of a table step.
constexpr double rounds_to_steps = 0x1.8p52 / table_steps_in_1;

constexpr std::int64_t head_bits = ~std::int64_t{0x7FFFFFF};

/// A sum that has not been rounded yet: `rest` has the error of the quick way.
struct UnroundedSum {
    Pair part;
    Pair rest;
};

inline UnroundedSum quick_sine_and_cosine(double angle) {
    const double shifted = angle + rounds_to_steps;
    const double distance = angle - (shifted - rounds_to_steps);  // exact, at most half a step
    const TableEntry& entry =
        table[std::bit_cast<std::uint64_t>(shifted) & (2 * table_steps_in_1 - 1)];
    const Pair value = pair_of(entry.value);
    const Pair slope_head = pair_of(entry.slope_head);
    const Pair d = {distance, distance};
    const Pair head = std::bit_cast<Pair>(std::bit_cast<PairBits>(d) & head_bits);
    const Pair square = d * d;
    const Pair sine_beyond_d = d * square * (square * (1.0 / 120.0) - 1.0 / 6.0);
    const Pair cosine_beyond_1 = square * (square * (1.0 / 24.0 - square * (1.0 / 720.0)) - 0.5);
    const Pair step = slope_head * head;
    const Pair sum = value + step;
    const Pair lost = step - (sum - value);
    const Pair bend = value * cosine_beyond_1 + slope_head * ((d - head) + sine_beyond_d);
    const Pair rest_of_slope = pair_of(entry.rest_of_slope) * (d + sine_beyond_d);
    return {sum, bend + ((rest_of_slope + pair_of(entry.rest_of_value)) + lost)};
}

SineAndCosine wide_sine_and_cosine(double angle);

}  // namespace sine_steps

/// The sine of an angle in radians of any size. NaN for NaN and for infinities.
double exact_sin(double angle);

/// The cosine of an angle in radians of any size. NaN for NaN and for infinities.
double exact_cos(double angle);

/// Both, of an angle in radians from 0 to max_small_angle.
inline SineAndCosine exact_sine_and_cosine(double angle) {
    using namespace sine_steps;
    const auto [part, rest] = quick_sine_and_cosine(angle);
    const Pair least = part + (rest - quick_error);
    const Pair most = part + (rest + quick_error);
    const PairBits is_certain = least == most;
    if ((is_certain[0] & is_certain[1]) != 0) [[likely]]
        return {least[0], least[1]};
    return wide_sine_and_cosine(angle);
}

}  // namespace nmk_exact

// exact_sine.h: sine and cosine of small angles that are the same to the last bit everywhere.
//
// Those of the C library may differ in the last bit between processors and versions, and take
// longer. These are rounded from a result of about 70 bits, and from one of about 95 where 70 leave
// a doubt, and use nothing but additions and multiplications.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace nmk_exact {

struct Sine_and_cosine {
    double sine;
    double cosine;
};

constexpr double greatest_angle = 1.05;  // a little more than a sixth of a turn

namespace sine_steps {

// Sine in the first lane, cosine in the second.
using Pair = double __attribute__((vector_size(16)));
using Pair_bits = std::int64_t __attribute__((vector_size(16)));

constexpr int places_in_one = 256;
constexpr std::size_t places = 270;  // the last one is past the greatest angle

/// Sine and cosine of a multiple of 1 / places_in_one, and how they rise there.
struct alignas(64) Place {
    using Lanes = std::array<double, 2>;
    Lanes value;
    Lanes rest_of_value;
    Lanes slope_head;  // short enough for its product with the head of a distance to be exact
    Lanes rest_of_slope;
};

inline Pair pair_of(const Place::Lanes& lanes) { return Pair{lanes[0], lanes[1]}; }

extern const std::array<Place, places> table;

// More than all errors below: some six roundings of numbers up to 2^-19, and what the series of
// sine and cosine leave out, 2^-75 and 2^-87.
constexpr double doubt = 0x1p-69;

// So large that a double has no digits left behind those of a place.
constexpr double rounds_to_places = 0x1.8p52 / places_in_one;

constexpr std::int64_t head_bits = ~std::int64_t{0x7FFFFFF};

/// What is to be added up, the lesser part of it with the doubt.
struct Sum {
    Pair part;
    Pair rest;
};

inline Sum quickly(double angle) {
    const double shifted = angle + rounds_to_places;
    const double distance = angle - (shifted - rounds_to_places);  // exact, at most half a place
    const Place& place = table[std::bit_cast<std::uint64_t>(shifted) & (2 * places_in_one - 1)];
    const Pair value = pair_of(place.value);
    const Pair slope_head = pair_of(place.slope_head);
    const Pair d = {distance, distance};
    const Pair head = std::bit_cast<Pair>(std::bit_cast<Pair_bits>(d) & head_bits);
    const Pair square = d * d;
    const Pair sine_beyond_d = d * square * (square * (1.0 / 120.0) - 1.0 / 6.0);
    const Pair cosine_beyond_1 = square * (square * (1.0 / 24.0 - square * (1.0 / 720.0)) - 0.5);
    const Pair step = slope_head * head;
    const Pair sum = value + step;
    const Pair lost = step - (sum - value);
    const Pair bend = value * cosine_beyond_1 + slope_head * ((d - head) + sine_beyond_d);
    const Pair rest_of_slope = pair_of(place.rest_of_slope) * (d + sine_beyond_d);
    return {sum, bend + ((rest_of_slope + pair_of(place.rest_of_value)) + lost)};
}

Sine_and_cosine slowly(double angle);

}  // namespace sine_steps

/// Of an angle in radians from 0 to greatest_angle.
inline Sine_and_cosine exact_sine_and_cosine(double angle) {
    using namespace sine_steps;
    const auto [part, rest] = quickly(angle);
    const Pair least = part + (rest - doubt);
    const Pair most = part + (rest + doubt);
    const Pair_bits is_certain = least == most;
    if ((is_certain[0] & is_certain[1]) != 0) [[likely]]
        return {least[0], least[1]};
    return slowly(angle);
}

}  // namespace nmk_exact

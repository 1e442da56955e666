// anneal_schedule.h: the constants of the annealing schedule.
#pragma once

namespace nmk_ordering {

constexpr int max_temperature_steps = 1000000;
constexpr int max_steps_without_a_new_best = 7500;
constexpr int quench_steps = 7500;

/// Up to this many items stay in their order: with the number of items less this, the modulus of
/// the second position of a 2-opt move would not be above zero.
constexpr int max_items_not_annealed = 3;

/// The temperature of step k is the start temperature times exp(k * cooling_rate).
constexpr double cooling_rate = -0.01;

/// q - 1 for q = 1.1, and its reciprocal, as they round in double precision: not 0.1 and 10.
constexpr double q_less_one = 0.10000000000000009;
constexpr double reciprocal_of_q_less_one = 9.999999999999991;

/// An estimate of the number of progress steps for n items, which wraps at 32 bits.
constexpr double expected_progress_range(int n) {
    return static_cast<int>(static_cast<unsigned>(n) * 26u + 15750u);
}

}  // namespace nmk_ordering

// anneal_schedule.h: the fixed figures of the annealing schedule.
#pragma once

namespace nmk_ordering {

constexpr int most_temperature_steps = 1000000;
constexpr int most_steps_without_a_new_best = 7500;
constexpr int quench_steps = 7500;

/// The temperature of step k is the start temperature times exp(k * cooling_rate).
constexpr double cooling_rate = -0.01;

/// q - 1 for q = 1.1, and its reciprocal, as doubles come to them: not 0.1 and 10.
constexpr double q_less_one = 0.10000000000000009;
constexpr double reciprocal_of_q_less_one = 9.999999999999991;

/// A guess at the number of progress steps for n items; 32 bits wide, as it was always told.
constexpr double expected_progress_range(int n) {
    return static_cast<int>(static_cast<unsigned>(n) * 26u + 15750u);
}

}  // namespace nmk_ordering

// quartic_bracket: one real root of a quartic, by a change of sign and safeguarded Newton steps.
//
// The limits apply to quartics scaled to a largest coefficient of 1.
#include "solver/quartic_bracket.h"

#include <algorithm>
#include <cmath>

#include "solver/polynomial.h"

namespace nmk_solver {

namespace {

// Each step of the bracket search is this many times as far out as the one before.
constexpr double bracket_growth = 10.0;

// Flat enough to ask whether the step is small: |p| or its change, for each unit of the bracket.
constexpr double flat_value_factor = 4e-10;
// The step is small: slope times step, and the step beside x and by itself.
constexpr double slope_times_step_is_small = 1e-5;
constexpr double step_beside_x_is_small = 1e-5;
constexpr double step_is_small = 1e-10;
// The value no longer changes, beside the larger of the last two values.
constexpr double value_change_is_small = 1e-10;

// Values that overflow never fall below a limit above. Bisection alone needs fewer than 2200 steps
// to exhaust the doubles, so that inputs on which the iteration converges stay far below this
// bound.
constexpr int max_refinement_steps = 10000;

double midpoint(double low, double high) {
    const double middle = (low + high) / 2.0;
    return std::isfinite(middle) ? middle : low / 2.0 + high / 2.0;
}

/// The state of the iteration; its steps are the member functions.
struct Refinement {
    const double* a;
    double low;
    double high;
    double step;
    double x;
    double slope = 1.0;
    double previous_value = 0.0;
    double flat_value;

    Refinement(const double* quartic, double lo, double hi)
        : a(quartic),
          low(lo),
          high(hi),
          step(hi - lo),
          x(midpoint(lo, hi)),
          flat_value(flat_value_factor * std::max(std::fabs(lo), std::fabs(hi))) {}

    bool step_has_converged(double value) const {
        const bool flat =
            std::fabs(value) < flat_value || std::fabs(value - previous_value) <= flat_value;
        if (!flat) return false;
        return std::fabs(std::max(1.0, slope) * step) <= slope_times_step_is_small &&
               std::fabs(step) <= std::max(step_beside_x_is_small * std::fabs(x), step_is_small);
    }

    bool value_has_settled(double value) const {
        return std::fabs(value - previous_value) <
               value_change_is_small * std::max(std::fabs(value), std::fabs(previous_value));
    }

    void move_bracket(double value) {
        if (same_sign(value, a[0])) {
            low = x;
        } else {
            high = x;
        }
    }

    void move_x(double value) {
        slope = quartic_slope(a, x);
        if (std::fabs(slope * step) <= std::fabs(2.0 * value)) {
            x = midpoint(low, high);
            step = (high - low) / 2.0;
        } else {
            step = value / slope;
            x -= step;
        }
    }
};

}  // namespace

double quartic_value(const double* a, double x) { return polynomial_value(a, 4, x); }

double quartic_slope(const double* a, double x) {
    return ((4.0 * a[4] * x + 3.0 * a[3]) * x + 2.0 * a[2]) * x + a[1];
}

QuarticBracket bracket_on_the_positive_axis(const double* a) {
    double low = 0.0;
    double x = 1.0;
    // Ends when x overflows at the latest: the top term then decides the sign.
    for (double value = quartic_value(a, x); std::fabs(value) > quartic_value_is_zero;
         value = quartic_value(a, x)) {
        if (!same_sign(value, a[0])) return {QuarticBracket::Kind::change_of_sign, low, x};
        low = x;
        x *= bracket_growth;
    }
    return {QuarticBracket::Kind::root, low, x};
}

double refine_in_bracket(const double* a, double low, double high) {
    Refinement state(a, low, high);
    int idle_steps = 0;
    for (int i = 0; i < max_refinement_steps; ++i) {
        const double value = quartic_value(a, state.x);
        if (!(std::fabs(value) > quartic_value_is_zero)) break;
        if (state.step_has_converged(value) || state.value_has_settled(value)) break;
        const Refinement before = state;
        state.move_bracket(value);
        state.move_x(value);
        state.previous_value = value;
        const bool idle = state.x == before.x && state.low == before.low &&
                          state.high == before.high && state.step == before.step;
        idle_steps = idle ? idle_steps + 1 : 0;
        // The second idle step repeats the first one: the iteration has come to rest.
        if (idle_steps > 1) break;
    }
    return state.x;
}

}  // namespace nmk_solver

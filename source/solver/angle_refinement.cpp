// angle_refinement: a zero of F on the quarter circle, by safeguarded Newton steps.
//
// The variable is sin phi up to 45 degrees and a little more, cos phi above: each is computed from
// the other where that is well conditioned.
#include <algorithm>
#include <cmath>

#include "solver/angle_elimination.h"

namespace nmk_solver {

namespace {

constexpr double sine_is_variable = 0.71;  // at most: sin phi is the variable

// When the iteration stops.
constexpr double value_is_small = 1e-10;            // |F| at most
constexpr double slope_times_step_is_small = 1e-5;  // max(1, dF/dphi) times the step, at most
constexpr double step_beside_phi_is_small = 1e-5;   // the step beside the smaller of the two
constexpr double step_is_small = 1e-10;             // the step, where that is larger
constexpr double newton_step_is_last = 1e-15;       // a Newton step of at most this is the last

// When a double root is suspected beside an end.
constexpr double end_is_near_double_root = 0.001;  // |F| at the end, at most
constexpr double value_is_near_double_root = 0.1;  // |F| here, at most

// Fewer than 1100 bisections bring any bracket of the quarter circle to the spacing of doubles;
// ordinary inputs take a few dozen steps.
constexpr int max_steps = 4000;

bool same_sign(double first, double second) { return (first < 0.0) == (second < 0.0); }

bool uses_sine(const AngleDirection& phi) { return phi.sine <= sine_is_variable; }

double variable(const AngleDirection& phi, bool sine) { return sine ? phi.sine : phi.cosine; }

AngleDirection from_variable(double x, bool sine) {
    return sine ? AngleDirection{other_of_unit(x), x} : AngleDirection{x, other_of_unit(x)};
}

/// Recomputes the less accurate of the two from the other.
AngleDirection sharpened(const AngleDirection& phi) {
    return uses_sine(phi) ? from_variable(phi.sine, true) : from_variable(phi.cosine, false);
}

class Iteration {
  public:
    Iteration(const AngleElimination& elimination, const AngleBracketEnd& low,
              const AngleBracketEnd& high)
        : m_elimination(elimination), m_low(low), m_high(high) {
        m_low.phi = sharpened(low.phi);
        m_high.phi = sharpened(high.phi);
        bisect(true);
        m_step = m_high.phi.sine - m_low.phi.sine;
        if (m_phi.sine > sine_is_variable) {
            bisect(false);
            m_step = m_high.phi.cosine - m_low.phi.cosine;
        }
    }

    AngleDirection run() {
        for (int i = 0; i < max_steps; ++i) {
            const double value = m_elimination.F(m_phi);
            // Not "while it is not zero": NaN ends it as well.
            if (!(std::fabs(value) > 0.0) || has_converged(value)) break;
            const Iteration before = *this;
            if (!advance(value)) break;
            if (is_idle_since(before)) break;
        }
        return m_phi;
    }

  private:
    bool has_converged(double value) const {
        const double room =
            std::max(step_beside_phi_is_small * std::min(m_phi.sine, m_phi.cosine), step_is_small);
        return std::fabs(value) <= value_is_small &&
               std::fabs(std::max(1.0, m_slope) * m_step) <= slope_times_step_is_small &&
               std::fabs(m_step) <= room;
    }

    bool is_idle_since(const Iteration& before) const {
        return m_phi.sine == before.m_phi.sine && m_phi.cosine == before.m_phi.cosine &&
               m_step == before.m_step && m_slope == before.m_slope &&
               m_low.phi.sine == before.m_low.phi.sine &&
               m_high.phi.sine == before.m_high.phi.sine &&
               m_low.phi.cosine == before.m_low.phi.cosine &&
               m_high.phi.cosine == before.m_high.phi.cosine;
    }

    /// One step; false when it was the last.
    bool advance(double value) {
        (same_sign(value, m_low.value) ? m_low : m_high) = {m_phi, value, false};
        m_slope = m_elimination.H(m_phi);
        const bool sine = uses_sine(m_phi);
        const double tangent = sine ? m_slope / m_phi.cosine : -m_slope / m_phi.sine;
        if (std::fabs(m_slope * m_step) <= std::fabs(2.0 * value) ||
            newton_leaves(value, tangent, sine)) {
            bisect(sine);
            return true;
        }
        const double x = variable(m_phi, sine);
        if (step_beside_double_root(m_low, x, value, tangent, sine) ||
            step_beside_double_root(m_high, x, value, tangent, sine))
            return true;
        m_step = value / tangent;
        m_phi = from_variable(x - m_step, sine);
        return std::fabs(m_step) > newton_step_is_last;
    }

    /// The tangent has the same sign at both ends.
    bool newton_leaves(double value, double tangent, bool sine) const {
        const double x = variable(m_phi, sine);
        const double at_low = value + (variable(m_low.phi, sine) - x) * tangent;
        const double at_high = value + (variable(m_high.phi, sine) - x) * tangent;
        return same_sign(at_low, at_high);
    }

    void bisect(bool sine) {
        const double low = variable(m_low.phi, sine);
        const double high = variable(m_high.phi, sine);
        m_phi = from_variable((low + high) / 2.0, sine);
        m_step = (high - low) / 2.0;
    }

    /// Near a double root F is a parabola, whose root the end and this point give.
    bool step_beside_double_root(const AngleBracketEnd& end, double x, double value, double tangent,
                                 bool sine) {
        if (!end.is_candidate || !(std::fabs(end.value) <= end_is_near_double_root) ||
            !(std::fabs(value) <= value_is_near_double_root) || same_sign(value, end.value))
            return false;
        const double x0 = variable(end.phi, sine);
        const double rise = value - end.value;
        const double v = (rise - (x - x0) * tangent) * end.value;
        if (!(v > 0.0)) return false;
        const double next = x0 + std::sqrt(v) * (x - x0) / rise;
        const double low = variable(m_low.phi, sine);
        const double high = variable(m_high.phi, sine);
        if (!(next > std::min(low, high)) || !(next < std::max(low, high))) return false;
        m_step = x - next;
        m_phi = from_variable(next, sine);
        return true;
    }

    const AngleElimination& m_elimination;
    AngleBracketEnd m_low;
    AngleBracketEnd m_high;
    AngleDirection m_phi;
    double m_step = 0.0;
    double m_slope = 1.0;
};

}  // namespace

AngleDirection refine_angle(const AngleElimination& elimination, AngleBracketEnd low,
                            AngleBracketEnd high) {
    return Iteration(elimination, low, high).run();
}

}  // namespace nmk_solver

// angle_search: where on the quarter circle F changes sign.
//
// The two ends first; when F has the same sign at both, points between at which it probably has the
// other sign.
#include <nmktoolbox/solver/nmkAngleSolver.h>
#include <nmktoolbox/solver/nmkSolver.h>

#include <algorithm>
#include <cmath>

#include "solver/angle_candidates.h"

namespace nmk_solver {

namespace {

// Solutions near the pole, where F is flat.
constexpr double near_pole_c = 1e-5;       // |c| at most this, unscaled: look for them
constexpr double near_pole_radius = 1e-5;  // the same, beside the second equation
constexpr double near_pole_sine = 0.01;    // sin phi must stay below
constexpr double step_past_pole = 1e-5;    // the search goes on this far behind one

constexpr double step_past_zero = 1e-5;  // and this far behind an end at which F is zero
constexpr double psi_is_lost = 1e-5;     // A1^2 + A2^2 at most: psi comes from one equation

bool differ_in_sign(double first, double second) { return (first < 0.0) != (second < 0.0); }

class Search {
  public:
    Search(const AngleElimination& elimination, AngleCandidates& found)
        : m_elimination(elimination), m_system(elimination.s), m_found(found) {}

    /// Returns false when two solutions near the pole are the result.
    bool run() {
        m_low.phi = lowest();
        if (!start_at_the_pole()) return false;
        record_zeros_at_the_ends();
        if (m_found.too_many()) return true;
        if (differ_in_sign(m_low.value, m_high.value)) {
            m_found.add(refine_angle(m_elimination, m_low, m_high));
        } else if (!split_by_turning_points() && !m_found.too_many()) {
            split_by_slopes();
        }
        return true;
    }

  private:
    /// The lowest phi at which the radius is not negative.
    AngleDirection lowest() const {
        if (!(m_system.h < 0.0)) return {1.0, 0.0};
        const double sine = -m_system.h / m_system.k;
        return {other_of_unit(sine), sine};
    }

    bool is_near_the_pole() const {
        const double in_first = std::fabs(near_pole_c / m_system.sa);
        const double lengths = (m_system.a * m_system.a + m_system.b * m_system.b) /
                               (m_system.d * m_system.d + m_system.e * m_system.e);
        const double in_second =
            std::fabs(std::sqrt(lengths) * near_pole_radius / (m_system.k * m_system.sr));
        return std::fabs(m_system.c) <= std::min(in_first, in_second) && m_system.h > 0.0;
    }

    bool start_at_the_pole() {
        if (!is_near_the_pole()) return true;
        AngleDirection psi[2];
        const int count = directions(m_system.d * m_system.h, m_system.e * m_system.h,
                                     m_system.g - m_system.f, psi);
        for (int i = 0; i < count; ++i) {
            const double v = m_system.along_reference(psi[i]);
            if (v == 0.0) continue;
            const double sine = -m_system.c / v;
            if (sine > 0.0 && sine < near_pole_sine)
                m_found.add({other_of_unit(sine), sine}, psi[i]);
        }
        if (m_found.count == 2) return false;
        if (m_found.count == 1) {
            const double sine = m_found.pairs[0].phi.sine + step_past_pole;
            m_low.phi = {other_of_unit(sine), sine};
        }
        return true;
    }

    void record_zeros_at_the_ends() {
        m_low.value = m_elimination.F(m_low.phi);
        while (m_low.value == 0.0 && !m_found.too_many()) {
            m_found.add(m_low.phi);
            const double sine = m_low.phi.sine + step_past_zero;
            m_low.phi = {other_of_unit(sine), sine};
            m_low.value = m_elimination.F(m_low.phi);
        }
        m_high.phi = {0.0, 1.0};
        m_high.value = m_elimination.F(m_high.phi);
        while (m_high.value == 0.0 && !m_found.too_many()) {
            m_found.add(m_high.phi);
            const double cosine = m_high.phi.cosine + step_past_zero;
            m_high.phi = {cosine, other_of_unit(cosine)};
            m_high.value = m_elimination.F(m_high.phi);
        }
    }

    /// Evaluates F at a point between; true when it has the other sign there.
    bool has_other_sign(const AngleDirection& phi, double& value) {
        value = m_elimination.F(phi);
        if (value == 0.0) {
            m_found.add(phi);
            return false;
        }
        return differ_in_sign(value, m_low.value);
    }

    void refine_on_both_sides(const AngleDirection& phi, double value) {
        const AngleBracketEnd middle{phi, value, true};
        m_found.add(refine_angle(m_elimination, m_low, middle));
        m_found.add(refine_angle(m_elimination, middle, m_high));
    }

    bool split_by_turning_points() {
        const double p = m_system.c * m_system.e * m_system.k + m_system.f * m_system.b;
        const double q = m_system.c * m_system.d * m_system.k + m_system.f * m_system.a;
        const double kW = m_system.k * m_elimination.W;
        double quadratic[3] = {
            p * p + q * q - kW * kW, 2.0 * (q * m_elimination.Q + p * m_elimination.P),
            m_elimination.Q * m_elimination.Q + m_elimination.P * m_elimination.P + kW * kW};
        double roots[2];
        const int count = nmkSolver::qadsol(quadratic, roots);
        for (int i = 0; i < count; ++i) {
            const double u = roots[i];
            if (!(std::fabs(u) < 1.0)) continue;
            const AngleDirection phi{std::sqrt(std::max(0.0, (1.0 + u) / 2.0)),
                                     std::sqrt(std::max(0.0, (1.0 - u) / 2.0))};
            if (!(phi.sine >= m_low.phi.sine) || !(phi.cosine >= m_high.phi.cosine)) continue;
            const int count_before = m_found.count;
            double value = 0.0;
            if (!has_other_sign(phi, value)) continue;
            // With a solution already found, two more are too many and need not be searched for.
            m_found.count = count_before > 0 ? AngleCandidates::max_count + 1 : 0;
            if (!m_found.too_many()) refine_on_both_sides(phi, value);
            return true;
        }
        return false;
    }

    void split_by_slopes() {
        const double squares = m_system.a * m_system.a + m_system.b * m_system.b;
        const double product = m_system.a * m_system.d + m_system.b * m_system.e;
        double cosines[4];
        double sines[4];
        const int count = nmkAngleSolver::solve_angles2(
            0.0, squares * m_system.f - product * m_system.c * m_system.k, 0.0,
            -product * m_system.c * m_system.h, -squares * m_system.g, 0.0, cosines, sines);
        for (int i = 0; i < count; ++i) {
            const AngleDirection phi{cosines[i], sines[i]};
            if (!(phi.cosine > m_high.phi.cosine) || !(phi.sine > m_low.phi.sine)) continue;
            double value = 0.0;
            if (!has_other_sign(phi, value)) continue;
            refine_on_both_sides(phi, value);
            return;
        }
    }

    const AngleElimination& m_elimination;
    const AngleSystem& m_system;
    AngleCandidates& m_found;
    AngleBracketEnd m_low{{1.0, 0.0}, 0.0};
    AngleBracketEnd m_high{{0.0, 1.0}, 0.0};
};

}  // namespace

void take_psi(double a1, double a2, double limit, const AngleElimination& elimination,
              AngleCandidates& found, int slot) {
    const double squares = a1 * a1 + a2 * a2;
    found.psi_is_open[slot] = !(squares > limit);
    if (found.psi_is_open[slot]) return;
    const double m = elimination.W < 0.0 ? -std::sqrt(squares) : std::sqrt(squares);
    found.pairs[slot].psi = {a1 / m, a2 / m};
}

bool search_quarter_circle(const AngleElimination& elimination, AngleCandidates& found) {
    if (!Search(elimination, found).run()) return false;
    for (int i = 0; i < found.count && !found.too_many(); ++i) {
        const AngleDirection& phi = found.pairs[i].phi;
        take_psi(elimination.A1(phi), elimination.A2(phi), psi_is_lost, elimination, found, i);
    }
    return true;
}

}  // namespace nmk_solver

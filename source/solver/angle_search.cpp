// angle_search: where on the quarter circle F changes sign.
//
// The two ends first; when F has the same sign at both, points between at which it is likely to
// have the other one.
#include <nmktoolbox/solver/nmkAngleSolver.h>
#include <nmktoolbox/solver/nmkSolver.h>

#include <algorithm>
#include <cmath>

#include "solver/angle_candidates.h"

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
        : elimination_(elimination), s_(elimination.s), found_(found) {}

    /// Answers false when two solutions near the pole are all there is.
    bool run() {
        low_.phi = lowest();
        if (!start_at_the_pole()) return false;
        record_zeros_at_the_ends();
        if (found_.too_many()) return true;
        if (differ_in_sign(low_.value, high_.value)) {
            found_.add(refine_angle(elimination_, low_, high_));
        } else if (!split_by_turning_points() && !found_.too_many()) {
            split_by_slopes();
        }
        return true;
    }

  private:
    /// The lowest phi at which the radius is not negative.
    AngleDirection lowest() const {
        if (!(s_.h < 0.0)) return {1.0, 0.0};
        const double sine = -s_.h / s_.k;
        return {other_of_unit(sine), sine};
    }

    bool is_near_the_pole() const {
        const double in_first = std::fabs(near_pole_c / s_.sa);
        const double lengths = (s_.a * s_.a + s_.b * s_.b) / (s_.d * s_.d + s_.e * s_.e);
        const double in_second = std::fabs(std::sqrt(lengths) * near_pole_radius / (s_.k * s_.sr));
        return std::fabs(s_.c) <= std::min(in_first, in_second) && s_.h > 0.0;
    }

    bool start_at_the_pole() {
        if (!is_near_the_pole()) return true;
        AngleDirection psi[2];
        const int count = directions(s_.d * s_.h, s_.e * s_.h, s_.g - s_.f, psi);
        for (int i = 0; i < count; ++i) {
            const double v = s_.along_reference(psi[i]);
            if (v == 0.0) continue;
            const double sine = -s_.c / v;
            if (sine > 0.0 && sine < near_pole_sine)
                found_.add({other_of_unit(sine), sine}, psi[i]);
        }
        if (found_.count == 2) return false;
        if (found_.count == 1) {
            const double sine = found_.pairs[0].phi.sine + step_past_pole;
            low_.phi = {other_of_unit(sine), sine};
        }
        return true;
    }

    void record_zeros_at_the_ends() {
        low_.value = elimination_.F(low_.phi);
        while (low_.value == 0.0 && !found_.too_many()) {
            found_.add(low_.phi);
            const double sine = low_.phi.sine + step_past_zero;
            low_.phi = {other_of_unit(sine), sine};
            low_.value = elimination_.F(low_.phi);
        }
        high_.phi = {0.0, 1.0};
        high_.value = elimination_.F(high_.phi);
        while (high_.value == 0.0 && !found_.too_many()) {
            found_.add(high_.phi);
            const double cosine = high_.phi.cosine + step_past_zero;
            high_.phi = {cosine, other_of_unit(cosine)};
            high_.value = elimination_.F(high_.phi);
        }
    }

    /// Tries a point between; answers true when F has the other sign there.
    bool has_other_sign(const AngleDirection& phi, double& value) {
        value = elimination_.F(phi);
        if (value == 0.0) {
            found_.add(phi);
            return false;
        }
        return differ_in_sign(value, low_.value);
    }

    void refine_on_both_sides(const AngleDirection& phi, double value) {
        const AngleBracketEnd middle{phi, value, true};
        found_.add(refine_angle(elimination_, low_, middle));
        found_.add(refine_angle(elimination_, middle, high_));
    }

    bool split_by_turning_points() {
        const double p = s_.c * s_.e * s_.k + s_.f * s_.b;
        const double q = s_.c * s_.d * s_.k + s_.f * s_.a;
        const double kW = s_.k * elimination_.W;
        double quadratic[3] = {
            p * p + q * q - kW * kW, 2.0 * (q * elimination_.Q + p * elimination_.P),
            elimination_.Q * elimination_.Q + elimination_.P * elimination_.P + kW * kW};
        double roots[2];
        const int count = nmkSolver::qadsol(quadratic, roots);
        for (int i = 0; i < count; ++i) {
            const double u = roots[i];
            if (!(std::fabs(u) < 1.0)) continue;
            const AngleDirection phi{std::sqrt(std::max(0.0, (1.0 + u) / 2.0)),
                                     std::sqrt(std::max(0.0, (1.0 - u) / 2.0))};
            if (!(phi.sine >= low_.phi.sine) || !(phi.cosine >= high_.phi.cosine)) continue;
            const int count_before = found_.count;
            double value = 0.0;
            if (!has_other_sign(phi, value)) continue;
            // With a solution in hand, two more are too many: no need to look for them.
            found_.count = count_before > 0 ? AngleCandidates::most + 1 : 0;
            if (!found_.too_many()) refine_on_both_sides(phi, value);
            return true;
        }
        return false;
    }

    void split_by_slopes() {
        const double squares = s_.a * s_.a + s_.b * s_.b;
        const double product = s_.a * s_.d + s_.b * s_.e;
        double cosines[4];
        double sines[4];
        const int count = nmkAngleSolver::solve_angles2(0.0, squares * s_.f - product * s_.c * s_.k,
                                                        0.0, -product * s_.c * s_.h,
                                                        -squares * s_.g, 0.0, cosines, sines);
        for (int i = 0; i < count; ++i) {
            const AngleDirection phi{cosines[i], sines[i]};
            if (!(phi.cosine > high_.phi.cosine) || !(phi.sine > low_.phi.sine)) continue;
            double value = 0.0;
            if (!has_other_sign(phi, value)) continue;
            refine_on_both_sides(phi, value);
            return;
        }
    }

    const AngleElimination& elimination_;
    const AngleSystem& s_;
    AngleCandidates& found_;
    AngleBracketEnd low_{{1.0, 0.0}, 0.0};
    AngleBracketEnd high_{{0.0, 1.0}, 0.0};
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

// angle_second_method: two angles, by eliminating psi.
//
// Parallel directions and a radius without constant part have closed forms; all other systems are
// solved by a search for zeros on the quarter circle. The closing stage finds the psi that are
// still open and drops the solutions whose radius is negative.
#include <nmktoolbox/solver/nmkAngleSolver.h>
#include <nmktoolbox/solver/nmkSolver.h>

#include <algorithm>
#include <cmath>

#include "solver/angle_candidates.h"

namespace nmk_solver {

namespace {

constexpr double directions_are_parallel = 1e-10;  // |W| at most this times max(1, h + k)
constexpr double closed_form_rejects = -1e-10;     // its test value below: no solution
constexpr double closed_form_pole = 1e-6;          // sin phi below this times min(1, sa, sr)
constexpr double closed_form_psi_is_lost = 1e-5;   // u^2 + v^2 at most: psi from one equation
constexpr double radius_is_small = 0.005;          // at most: psi from (E1), else from (E2)

/// (d, e) is p times (a, b): both equations combine into one of phi. Returns false for no solution.
bool solve_parallel(const AngleSystem& s, AngleCandidates& found) {
    const bool by_a = std::fabs(s.a) > std::fabs(s.b);
    if (!by_a && s.b == 0.0) return false;
    const double p = by_a ? s.d / s.a : s.e / s.b;
    const double L = s.c * p * s.k - s.f;
    if (s.h == 0.0) {
        if (L == 0.0) return false;
        const double cosine = -s.g / L;
        if (!(cosine > 0.0 && cosine <= 1.0)) return false;
        found.add({cosine, other_of_unit(cosine)}, {}, true);
        found.single_phi = true;
        return true;
    }
    double cosines[4];
    double sines[4];
    const int count =
        nmkAngleSolver::solve_angles2(0.0, L, 0.0, s.c * p * s.h, s.g, 0.0, cosines, sines);
    for (int i = 0; i < count; ++i) {
        if (cosines[i] >= 0.0 && sines[i] >= 0.0 && s.radius(sines[i]) >= 0.0)
            found.add({cosines[i], sines[i]}, {}, true);
    }
    if (found.too_many() || found.count == 0) return false;
    found.single_phi = found.count == 1 || found.pairs[0].phi.cosine == found.pairs[1].phi.cosine;
    return true;
}

/// A quick test on the discriminant of the closed form.
bool closed_form_has_no_solution(const AngleSystem& s) {
    const double T = s.f * s.f - s.g * s.g;
    const double U = 2.0 * s.c * s.f * s.k;
    const double V = s.c * s.c * s.k * s.k;
    const double P1 = s.a * s.a * T - s.a * s.d * U + s.d * s.d * V;
    const double P2 =
        2.0 * s.a * s.b * T - (s.b * s.d + s.a * s.e) * U + 2.0 * s.c * s.c * s.k * s.k * s.d * s.e;
    const double P3 = s.b * s.b * T - s.b * s.e * U + s.e * s.e * V;
    const double P4 = -s.g * s.g * s.c * s.c;
    const double H = 2.0 * P1 * P3 - P2 * P2 + 2.0 * P1 * P4 - 2.0 * P3 * P3 - 2.0 * P3 * P4;
    return H * H - 4.0 * (P4 * P4 + 2.0 * P3 * P4 + P3 * P3) *
                       (P1 * P1 + P2 * P2 - 2.0 * P1 * P3 + P3 * P3) <
           closed_form_rejects;
}

/// h is zero: F / sin^2 phi is a quadratic in cos phi. Returns false for no solution.
bool solve_closed_form(const AngleElimination& elimination, AngleCandidates& found) {
    const AngleSystem& s = elimination.s;
    if (closed_form_has_no_solution(s)) return false;
    const double ag = s.a * s.g;
    const double bg = s.b * s.g;
    const double kW = s.k * elimination.W;
    double quadratic[3] = {ag * ag + bg * bg - kW * kW,
                           2.0 * (elimination.Q * s.a * s.g + elimination.P * s.b * s.g),
                           elimination.Q * elimination.Q + elimination.P * elimination.P + kW * kW};
    double roots[2];
    const int root_count = nmkSolver::qadsol(quadratic, roots);
    for (int i = 0; i < root_count; ++i) {
        const double cosine = roots[i];
        if (!(cosine >= 0.0 && cosine <= 1.0)) continue;
        const double sine = std::sqrt(1.0 - cosine * cosine);
        if (sine * s.k < 0.0) continue;
        const int slot = found.count;
        found.add({cosine, sine});
        if (sine < closed_form_pole * std::min({1.0, s.sa, s.sr})) {
            found.pairs[slot] = {{1.0, 0.0}, {1.0, 0.0}};
        } else if (i == 1 && cosine == roots[0]) {
            found.single_phi = true;
            found.psi_is_open[0] = found.psi_is_open[1] = true;
        } else {
            take_psi(-s.b * s.g - cosine * elimination.P, cosine * elimination.Q + s.a * s.g,
                     closed_form_psi_is_lost, elimination, found, slot);
        }
    }
    return true;
}

/// The values of psi that one equation gives for a phi, and which equation that was.
struct OpenPsi {
    AngleDirection psi[2];
    int count = 0;
    bool from_first = false;

    OpenPsi(const AngleSystem& s, const AngleDirection& phi)
        : from_first(s.radius(phi.sine) <= radius_is_small) {
        solve(s, phi);
        if (count > 0) return;
        from_first = !from_first;
        solve(s, phi);
    }

    /// The one that fits the other equation better, the first on a tie.
    const AngleDirection& better(const AngleSystem& s, const AngleDirection& phi) const {
        if (count < 2) return psi[0];
        return residual(s, phi, psi[1]) < residual(s, phi, psi[0]) ? psi[1] : psi[0];
    }

  private:
    void solve(const AngleSystem& s, const AngleDirection& phi) {
        const double R = s.radius(phi.sine);
        count = from_first ? directions(phi.sine * s.a, phi.sine * s.b, -s.c * phi.cosine, psi)
                           : directions(R * s.d, R * s.e, s.g - s.f * phi.cosine, psi);
    }

    double residual(const AngleSystem& s, const AngleDirection& phi,
                    const AngleDirection& one) const {
        if (from_first)
            return std::fabs(s.along_second(one) * s.radius(phi.sine) + s.f * phi.cosine - s.g);
        return std::fabs(s.along_reference(one) * phi.sine + s.c * phi.cosine);
    }
};

int close(const AngleSystem& s, const AngleCandidates& found, const AngleSlots& slots) {
    int kept = 0;
    for (int i = 0; i < found.count; ++i) {
        const AngleDirection& phi = found.pairs[i].phi;
        if (s.radius(phi.sine) < 0.0) continue;
        if (!found.psi_is_open[i]) {
            slots.store(kept++, found.pairs[i]);
            continue;
        }
        const OpenPsi open(s, phi);
        if (found.single_phi) {
            for (int j = 0; j < open.count; ++j) slots.store(j, {phi, open.psi[j]});
            return open.count;
        }
        if (open.count > 0) slots.store(kept++, {phi, open.better(s, phi)});
    }
    return kept;
}

}  // namespace

int angles3_second_method(const AngleSystem& system, const AngleSlots& slots) {
    const AngleElimination elimination(system);
    AngleCandidates found;
    if (std::fabs(elimination.W) <= directions_are_parallel * std::max(1.0, system.h + system.k)) {
        if (!solve_parallel(system, found)) return 0;
    } else if (system.h == 0.0) {
        if (!solve_closed_form(elimination, found)) return 0;
    } else if (!search_quarter_circle(elimination, found)) {
        for (int i = 0; i < found.count; ++i) slots.store(i, found.pairs[i]);
        return found.count;
    }
    // More than two candidates: the input has no isolated solutions.
    return found.too_many() ? 0 : close(system, found, slots);
}

}  // namespace nmk_solver

// angle_first_method: two angles, solved alternately from the first and from the second equation.
//
// Two chains start from the same phi and follow the two values of psi. When they do not converge,
// the second method is used.
#include <nmktoolbox/solver/nmkAngleSolver.h>

#include <algorithm>
#include <cmath>

#include "solver/angle_system.h"

namespace nmk_solver {

namespace {

constexpr double c_is_zero = 1e-10;           // at most: (E1) leaves psi in two opposite directions
constexpr double cosine_is_lost = 1.00001;    // a candidate's size from here on: give up
constexpr double chain_has_settled = 1e-5;    // largest move of a settled chain
constexpr double cosine_is_negative = -1e-5;  // below, when settled: no solution there
constexpr double cosine_is_beyond_1 = 1.00001;  // above, when settled: no solution there
constexpr int max_passes = 10;

/// The pole phi = 0, where psi follows from (E2) alone.
int solve_at_the_pole(const AngleSystem& s, const AngleSlots& slots) {
    if (!(s.h > 0.0)) return 0;
    AngleDirection psi[2];
    const int count = directions(s.d, s.e, (s.g - s.f) / s.h, psi);
    for (int i = 0; i < count; ++i) slots.store(i, {{1.0, 0.0}, psi[i]});
    return count;
}

/// Appends the phi that go with this psi, while there is room.
int append_phi(const AngleSystem& s, const AngleDirection& psi, double m, int count,
               const AngleSlots& slots) {
    AngleDirection phi[2];
    const int found = directions(s.f, m * s.k, s.g - m * s.h, phi);
    for (int i = 0; i < found && count < 2; ++i) {
        if (!(phi[i].cosine >= 0.0) || !(phi[i].sine >= 0.0)) continue;
        if (!(s.radius(phi[i].sine) >= 0.0)) continue;
        // Any psi solves the system at the pole: one solution there is enough.
        const bool pole_is_stored = std::any_of(slots.sin_phi, slots.sin_phi + count,
                                                [](double sine) { return sine == 0.0; });
        if (phi[i].sine == 0.0 && pole_is_stored) continue;
        slots.store(count++, {phi[i], psi});
    }
    return count;
}

int solve_without_c(const AngleSystem& s, const AngleSlots& slots) {
    const double r = std::sqrt(s.a * s.a + s.b * s.b);
    if (r == 0.0) return solve_at_the_pole(s, slots);
    const AngleDirection psi{s.b / r, -s.a / r};
    const double m = s.along_second(psi);
    int count = append_phi(s, psi, m, 0, slots);
    count = append_phi(s, {-s.b / r, s.a / r}, -m, count, slots);
    return count == 0 ? solve_at_the_pole(s, slots) : count;
}

double sine_of_chain(double cosine) { return cosine > 0.0 ? other_of_unit(cosine) : 1.0; }

/// The values that one pass through both equations gives to a chain.
struct Pass {
    int count = 0;
    AngleDirection psi[2];
    double cosine[2] = {};

    /// Returns false when the chain is lost.
    bool take(const AngleSystem& s, const AngleDirection& phi) {
        count = directions(phi.sine * s.a, phi.sine * s.b, -s.c * phi.cosine, psi);
        const double radius = s.radius(phi.sine);
        if (count == 0 || radius < 0.0) return false;
        for (int i = 0; i < count; ++i) {
            cosine[i] = (s.g - s.along_second(psi[i]) * radius) / s.f;
            if (!(std::fabs(cosine[i]) < cosine_is_lost)) return false;
        }
        return true;
    }

    int larger() const { return count == 2 && cosine[1] > cosine[0] ? 1 : 0; }
    int smaller() const { return count == 2 && cosine[1] < cosine[0] ? 1 : 0; }
    int other_than(int one) const { return count == 2 ? 1 - one : one; }

    AnglePair pair(int one) const { return {{cosine[one], sine_of_chain(cosine[one])}, psi[one]}; }
};

bool has_settled(const AngleDirection& from, const AngleDirection& to) {
    return std::fabs(to.cosine - from.cosine) <= chain_has_settled &&
           std::fabs(to.sine - from.sine) <= chain_has_settled;
}

/// Runs both chains until they settle; false when one is lost or the passes run out.
bool settle_chains(const AngleSystem& s, AnglePair* chains) {
    const double x = s.g / s.f;
    chains[0].phi = chains[1].phi = {x, sine_of_chain(x)};
    for (int pass = 0; pass < max_passes; ++pass) {
        Pass next_values;
        if (!next_values.take(s, chains[0].phi)) return false;
        const int kept = next_values.larger();
        AnglePair next[2] = {next_values.pair(kept),
                             next_values.pair(next_values.other_than(kept))};
        if (chains[1].phi.cosine != chains[0].phi.cosine) {
            if (!next_values.take(s, chains[1].phi)) return false;
            next[1] = next_values.pair(next_values.smaller());
        }
        bool settled = true;
        for (int i = 0; i < 2; ++i) {
            settled = settled && has_settled(chains[i].phi, next[i].phi) &&
                      (pass == 0 || has_settled(chains[i].psi, next[i].psi));
            chains[i] = next[i];
        }
        if (settled) return true;
    }
    return false;
}

/// Stores the solutions of the settled chains and returns their number.
int store_chains(const AngleSystem& s, AnglePair* chains, const AngleSlots& slots) {
    const AngleDirection& first = chains[0].phi;
    const AngleDirection& second = chains[1].phi;
    if (first.cosine < cosine_is_negative || second.cosine > cosine_is_beyond_1 ||
        s.radius(second.sine) < 0.0)
        return 0;
    int count = second.cosine < cosine_is_negative ? 1 : 2;
    if (first.cosine > cosine_is_beyond_1 || s.radius(first.sine) < 0.0) {
        if (--count < 1) return 0;
        chains[0] = chains[1];
    }
    for (int i = 0; i < count; ++i) {
        chains[i].phi.cosine = std::clamp(chains[i].phi.cosine, 0.0, 1.0);
        slots.store(i, chains[i]);
    }
    const bool same = count == 2 && first.cosine == second.cosine &&
                      chains[0].psi.cosine == chains[1].psi.cosine &&
                      chains[0].psi.sine == chains[1].psi.sine;
    return same ? 1 : count;
}

}  // namespace

int directions(double a, double b, double c, AngleDirection* found) {
    double cosines[2];
    double sines[2];
    const int count = nmkAngleSolver::solve_angles1(a, b, c, cosines, sines);
    for (int i = 0; i < count; ++i) found[i] = {cosines[i], sines[i]};
    return count;
}

int angles3_first_method(const AngleSystem& system, const AngleSlots& slots) {
    if (system.sa == 0.0) return solve_at_the_pole(system, slots);
    if (std::fabs(system.c) <= c_is_zero) return solve_without_c(system, slots);
    AnglePair chains[2];
    if (!settle_chains(system, chains)) return angles3_second_method(system, slots);
    return store_chains(system, chains, slots);
}

}  // namespace nmk_solver

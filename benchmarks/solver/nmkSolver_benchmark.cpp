// nmkSolver_benchmark: cubics and quartics beside the solvers of GSL, on the same random input.
#include <nmktoolbox/solver.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <vector>

#include "solver/solver_samples.h"
#include "stopwatch.h"

#if defined(NMK_WITH_GSL)
#include <gsl/gsl_poly.h>
#endif

namespace {

const int problems = stopwatch::size(1000000, 50000);
double sink = 0.0;

std::vector<double> random_polynomials(int degree) {
    solver_samples::Generator random(1);
    std::vector<double> all;
    for (int i = 0; i < problems * (degree + 1); ++i) all.push_back(random.between(-1.0, 1.0));
    return all;
}

std::vector<double> real_rooted_cubics() {
    solver_samples::Generator random(2);
    std::vector<double> all;
    for (int i = 0; i < problems; ++i) {
        for (const double c : solver_samples::polynomial_of(
                 solver_samples::separate_roots(random, 3, 5.0, 0.1), 1.0))
            all.push_back(c);
    }
    return all;
}

/// Seconds for all problems of ours and of the peer, and whether they found the same roots.
struct Seconds {
    double ours = 0.0;
    double peer = 0.0;
    bool same = true;
};

/// Both take turns on pieces that are over within a slice of the processor's time, and the least
/// time of each piece counts: what else runs on the machine then hardly shows. A piece is too long
/// for the processor to learn by heart which way its branches go.
template <class Ours, class Peer>
Seconds take_turns(int runs, const Ours& ours, const Peer& peer) {
    constexpr int piece = 50000;
    Seconds sum;
    for (int first = 0; first < problems; first += piece) {
        Seconds least{1e9, 1e9, true};
        for (int run = 0; run < stopwatch::rounds(runs); ++run) {
            const auto whole = [&](const auto& solve) {
                return stopwatch::seconds([&] {
                    for (int i = first; i < first + piece; ++i) sink += solve(i);
                });
            };
            least.ours = std::min(least.ours, whole(ours));
            least.peer = std::min(least.peer, whole(peer));
        }
        sum.ours += least.ours;
        sum.peer += least.peer;
    }
    return sum;
}

// Ours and the peer's may differ by this much of the larger of 1 and the root; more would be noise
// only where roots nearly meet, which random coefficients do not make.
constexpr double closeness = 1e-4;

bool is_close(double a, double b) {
    return std::abs(a - b) <= closeness * std::max(1.0, std::abs(b));
}

Seconds cubics(std::vector<double>& all) {
    double roots[3] = {};
    const auto ours = [&](int i) { return nmkSolver::cubsol(&all[4U * unsigned(i)], roots); };
#if defined(NMK_WITH_GSL)
    const auto peer = [&](int i) {
        const double* c = &all[4U * unsigned(i)];
        return gsl_poly_solve_cubic(c[2] / c[3], c[1] / c[3], c[0] / c[3], roots, roots + 1,
                                    roots + 2);
    };
    Seconds taken = take_turns(15, ours, peer);
    for (int i = 0; i < problems; ++i) {
        const int count = ours(i);
        const std::vector<double> found(roots, roots + count);
        taken.same = taken.same && peer(i) == count &&
                     std::equal(found.begin(), found.end(), roots, is_close);
    }
    return taken;
#else
    return take_turns(15, ours, [](int) { return 0; });
#endif
}

Seconds quartics(std::vector<double>& all) {
    double roots[4];
    int status[4];
    const auto ours = [&](int i) {
        return nmkSolver::qarsol(&all[5U * unsigned(i)], 0, roots, status);
    };
#if defined(NMK_WITH_GSL)
    gsl_poly_complex_workspace* const space = gsl_poly_complex_workspace_alloc(5);
    double z[8];
    const auto peer = [&](int i) {
        gsl_poly_complex_solve(&all[5U * unsigned(i)], 5, space, z);
        return z[0];
    };
    Seconds taken = take_turns(3, ours, peer);
    for (int i = 0; i < problems; ++i) {
        const int count = ours(i);
        peer(i);
        taken.same = taken.same && std::all_of(roots, roots + count, [&](double root) {
                         return is_close(z[0], root) || is_close(z[2], root) ||
                                is_close(z[4], root) || is_close(z[6], root);
                     });
    }
    gsl_poly_complex_workspace_free(space);
    return taken;
#else
    return take_turns(3, ours, [](int) { return 0; });
#endif
}

}  // namespace

int main() {
    std::vector<double> mixed = random_polynomials(3);
    std::vector<double> real = real_rooted_cubics();
    std::vector<double> all_quartics = random_polynomials(4);
    bool reached = true;
    const auto judge = [&](const char* name, const Seconds& taken, double target) {
#if defined(NMK_WITH_GSL)
        reached &= stopwatch::report(name, taken.ours, taken.peer, target, taken.same);
#else
        std::printf("NOT MEASURED: built without GSL: %s %.0f ns a call, to reach %g of its time\n",
                    name, taken.ours * 1e9 / problems, target);
        reached = false;
#endif
    };
    judge("cubsol, mixed", cubics(mixed), 1.0);
    judge("cubsol, all real", cubics(real), 0.8);
    judge("qarsol", quartics(all_quartics), 0.3);
    return reached && sink != 0.5 ? 0 : 1;
}

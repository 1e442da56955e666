// nmkRootSolve: every point of evaluation and every result, compared with the plain way.
#include <gtest/gtest.h>

#include <nmktoolbox/solver/nmkRootSolve.h>
#include <array>
#include <cmath>
#include <utility>
#include <vector>

#include "solver/plain_root_solve.h"
#include "solver/solver_samples.h"

namespace {

using plain_root_solve::Bracket;
using solver_samples::Generator;

/// A polynomial of degree 3 with a wave on it, and what it was asked.
class Wave : public mlFunction {
  public:
    explicit Wave(Generator& random) {
        for (double& one : c) one = random.between(-2.0, 2.0);
        if (random.below(3) == 0) c[4] = 0.0;
        if (random.below(3) == 0) c[1] = c[2] = c[4] = 0.0;  // flat in the middle
    }

    double value(double x) const override {
        calls.push_back(x);
        return ((c[3] * x + c[2]) * x + c[1]) * x + c[0] + c[4] * std::sin(3.0 * x);
    }
    double derivative(int order, double x) const override {
        calls.push_back(order * 1000.0);
        return (3.0 * c[3] * x + 2.0 * c[2]) * x + c[1] + 3.0 * c[4] * std::cos(3.0 * x);
    }
    Bracket bracket(double lo, double hi) const {
        const Bracket b{lo, hi, value(lo), value(hi), derivative(1, lo), derivative(1, hi)};
        calls.clear();
        return b;
    }

    std::array<double, 5> c;
    mutable std::vector<double> calls;
};

TEST(nmkRootSolve, evaluates_at_the_points_of_the_plain_way_and_returns_the_same) {
    Generator random(5100);
    int converged_ones = 0, long_ones = 0;
    for (int i = 0; i < 40000; ++i) {
        const Wave f(random);
        const Bracket b = f.bracket(random.between(-3.0, 0.0), random.between(0.0, 3.0));
        if (b.f_lo * b.f_hi > 0.0 && random.below(20) != 0) continue;
        const double tolerance = std::ldexp(1.0, -random.below(40));
        const int most = random.below(25);
        int ours_converged = 7, plain_converged = 7;
        const double ours = nmkRootSolve::bracketed_root_solve(
            f, b.lo, b.hi, b.f_lo, b.f_hi, b.d_lo, b.d_hi, tolerance, ours_converged, most);
        const std::vector<double> our_calls = f.calls;
        f.calls.clear();
        const double plain = plain_root_solve::root(f, b, tolerance, plain_converged, most);
        ASSERT_EQ(our_calls, f.calls) << i;
        ASSERT_EQ(ours, plain) << i;
        ASSERT_EQ(ours_converged, plain_converged) << i;
        converged_ones += ours_converged;
        long_ones += our_calls.size() > 12 ? 1 : 0;
    }
    EXPECT_GT(converged_ones, 5000);
    EXPECT_GT(long_ones, 5000);
}

// Both ends, the slope first; then the search, with a tolerance that is always the same.
double plain_short_form(const Wave& f, double lo, double hi, int& converged, int most) {
    converged = 1;
    Bracket b{lo, hi, 0.0, 0.0, 0.0, 0.0};
    b.d_lo = f.derivative(1, lo);
    b.f_lo = f.value(lo);
    if (b.f_lo == 0.0) return lo;
    b.d_hi = f.derivative(1, hi);
    b.f_hi = f.value(hi);
    if (b.f_hi == 0.0) return hi;
    return plain_root_solve::root(f, b, 1e-10, converged, most);
}

TEST(nmkRootSolve, in_its_short_form_asks_for_the_points_of_the_plain_reading) {
    Generator random(5150);
    for (int i = 0; i < 40000; ++i) {
        const Wave f(random);
        const double lo = random.between(-3.0, 0.0), hi = random.between(0.0, 3.0);
        const int most = random.below(60);
        int ours_converged = 7, plain_converged = 7;
        const double ours =
            nmkRootSolve::bracketed_root_solve(f, lo, hi, 1.0, ours_converged, most);
        const std::vector<double> our_calls = f.calls;
        f.calls.clear();
        const double plain = plain_short_form(f, lo, hi, plain_converged, most);
        ASSERT_EQ(our_calls, f.calls) << i;
        ASSERT_EQ(ours, plain) << i;
        ASSERT_EQ(ours_converged, plain_converged) << i;
    }
}

TEST(nmkRootSolve_bracketed_extrema_finder, asks_for_the_points_of_the_plain_reading) {
    Generator random(5200);
    int compared = 0;
    for (int i = 0; i < 40000; ++i) {
        const Wave f(random);
        const Bracket start = f.bracket(random.between(-3.0, 0.0), random.between(0.0, 3.0));
        if (!(start.d_lo * start.d_hi < 0.0)) continue;
        const double tolerance = std::ldexp(1.0, -random.below(30));
        Bracket ours = start, plain = start;
        double x = 9.0, f_x = 9.0, plain_x = 9.0, plain_f_x = 9.0;
        nmkRootSolve::bracketed_extrema_finder(f, ours.lo, ours.hi, ours.f_lo, ours.f_hi, ours.d_lo,
                                               ours.d_hi, x, f_x, tolerance);
        const std::vector<double> our_calls = f.calls;
        f.calls.clear();
        plain_root_solve::extremum(f, plain, plain_x, plain_f_x, tolerance);
        ASSERT_EQ(our_calls, f.calls) << i;
        for (const auto& [one, other] : {std::pair{x, plain_x},
                                         {f_x, plain_f_x},
                                         {ours.lo, plain.lo},
                                         {ours.hi, plain.hi},
                                         {ours.f_lo, plain.f_lo},
                                         {ours.f_hi, plain.f_hi},
                                         {ours.d_lo, plain.d_lo},
                                         {ours.d_hi, plain.d_hi}})
            ASSERT_EQ(one, other) << i;
        ++compared;
    }
    EXPECT_GT(compared, 5000);
}

}  // namespace

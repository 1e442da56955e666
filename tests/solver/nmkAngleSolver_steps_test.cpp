// nmkAngleSolver: the steps behind its systems, each by itself.
#include <gtest/gtest.h>

#include <nmktoolbox/solver.h>
#include <cmath>

#include "solver/angle_systems.h"
#include "solver/plain_angle_chains.h"
#include "solver/private_members.h"
#include "solver/solver_samples.h"

namespace {

using namespace private_members;
using solver_samples::Generator;

struct Phi {
    double cosine = 9.0;
    double sine = 9.0;
};

int quadratic(double d, double h, double k, Phi& phi) {
    return member_of(Quadratic())(d, h, k, phi.cosine, phi.sine);
}

TEST(nmkAngleSolver_solve_angles4_quadratic, takes_the_root_that_is_a_sine) {
    Phi phi;
    ASSERT_EQ(quadratic(0.5, 0.25, 0.5, phi), 1);
    EXPECT_DOUBLE_EQ(phi.sine, 0.5);
    EXPECT_DOUBLE_EQ(phi.cosine, std::sqrt(0.75));
    // Both roots are sines: 0.2 and 0.8. The first one is taken.
    ASSERT_EQ(quadratic(0.3, -0.5, 1.0, phi), 1);
    EXPECT_DOUBLE_EQ(phi.sine, 0.2);
}

TEST(nmkAngleSolver_solve_angles4_quadratic, without_a_root_that_is_a_sine_leaves_phi_alone) {
    Phi phi;
    EXPECT_EQ(quadratic(3.0, 0.25, 0.5, phi), 0);
    EXPECT_EQ(quadratic(0.25, 0.5, 0.0, phi), 0);
    EXPECT_EQ(phi.sine, 9.0);
    EXPECT_EQ(phi.cosine, 9.0);
}

TEST(nmkAngleSolver_solve_angles4_quadratic, accepts_a_single_root_where_the_descent_wants_two) {
    // k is so small that the equation counts as linear.
    Phi phi;
    ASSERT_EQ(quadratic(1.0 + 0.5e-11, 1.0, 1e-11, phi), 1);
    // d - h is 0.5e-11 up to the spacing of doubles near 1.
    EXPECT_NEAR(phi.sine, 0.5, 1e-4);
    double cf = 9, sf = 9, cp = 9, sp = 9;
    EXPECT_EQ(member_of(Iteratively())(1.0, 0.0, 0.0, 1.0 + 0.5e-11, 1.0, 1e-11, cf, sf, cp, sp),
              0);
}

TEST(nmkAngleSolver_solve_angles4_quartic_iteratively, gives_the_phi_of_the_whole_descent) {
    Generator random(31);
    int solved = 0;
    for (int i = 0; i < 5000; ++i) {
        const double c = random.between(-3, 3), d = random.between(-1, 1);
        const double h = random.between(0, 1), k = random.between(-1, 1);
        const double m = std::max({h, k, std::fabs(d)});
        Phi phi;
        double cf = 9, sf = 9, cp = 9, sp = 9;
        if (member_of(Iteratively())(1.0, 0.0, c, d, h, k, cf, sf, cp, sp) == 0) continue;
        ASSERT_EQ(member_of(QuarticIteratively())(c, d / m, h / m, k / m, phi.cosine, phi.sine), 1);
        EXPECT_EQ(phi.cosine, cf) << i;
        EXPECT_EQ(phi.sine, sf) << i;
        ++solved;
    }
    EXPECT_GT(solved, 1000);
}

TEST(nmkAngleSolver_quartic_laguer, stays_at_a_root_and_converges_to_one) {
    double at_once[5] = {-1, 0, 0, 0, 1};
    double x = 1.0;
    EXPECT_EQ(member_of(Laguer())(at_once, x), 1);
    EXPECT_EQ(x, 1.0);
    // x^4 = 1/16 from 1.
    double quartic[5] = {-0.0625, 0, 0, 0, 1};
    EXPECT_EQ(member_of(Laguer())(quartic, x), 1);
    EXPECT_DOUBLE_EQ(x, 0.5);
}

TEST(nmkAngleSolver_quartic_laguer, gives_up_after_thirteen_steps_and_keeps_the_last_position) {
    // No real root: the steps wander about.
    double quartic[5] = {4, 4, 4, 2, 3};
    double x = 1.0;
    EXPECT_EQ(member_of(Laguer())(quartic, x), 0);
    EXPECT_NE(x, 1.0);
    // A point without slope and usable curvature ends the iteration at once.
    double flat[5] = {1, 0, 0, 0, 0};
    x = 0.25;
    EXPECT_EQ(member_of(Laguer())(flat, x), 0);
    EXPECT_EQ(x, 0.25);
}

TEST(nmkAngleSolver_solve_angles4_one_solution,
     a_descent_that_fails_gives_what_the_full_solver_does) {
    // The radius shrinks towards 90 degrees: from there the descent goes to a root beyond 1.
    double cf = 9, sf = 9, cp = 9, sp = 9;
    ASSERT_EQ(member_of(Iteratively())(1, 0, 0.5, 0.25, 4, -2.5, cf, sf, cp, sp), 0);
    EXPECT_EQ(cf, 9.0);
    double a[4][4] = {};
    double b[4][4] = {};
    ASSERT_EQ(nmkAngleSolver::solve_angles4(1, 0, 0.5, 0.25, 4, -2.5, a[0], a[1], a[2], a[3]), 1);
    ASSERT_EQ(nmkAngleSolver::solve_angles4_one_solution(1, 0, 0.5, 0.25, 4, -2.5, b[0], b[1], b[2],
                                                         b[3]),
              1);
    for (int i = 0; i < 4; ++i) EXPECT_EQ(a[i][0], b[i][0]) << i;
}

TEST(nmkAngleSolver_solve_angles4_one_solution, is_the_descent_or_all_of_the_full_solver) {
    Generator random(12);
    int descents = 0;
    int fallbacks = 0;
    for (int i = 0; i < 20000; ++i) {
        const double a = random.between(-1, 1), b = random.between(-1, 1);
        const double c = random.between(-1, 1), d = random.between(-0.3, 0.3);
        const double h = random.between(-1, 1), k = random.between(-1, 1);
        double one[4][4] = {};
        double all[4][4] = {};
        const int count = nmkAngleSolver::solve_angles4_one_solution(a, b, c, d, h, k, one[0],
                                                                     one[1], one[2], one[3]);
        const bool descends = member_of(Iteratively())(a, b, c, d, h, k, all[0][0], all[1][0],
                                                       all[2][0], all[3][0]) == 1;
        const int expected = descends ? 1
                                      : nmkAngleSolver::solve_angles4(a, b, c, d, h, k, all[0],
                                                                      all[1], all[2], all[3]);
        (descends ? descents : fallbacks) += count > 0 ? 1 : 0;
        ASSERT_EQ(count, expected) << i;
        for (int j = 0; j < 4; ++j) {
            for (int slot = 0; slot < count; ++slot) EXPECT_EQ(one[j][slot], all[j][slot]) << i;
        }
        if (count == 0) continue;
        const double radius = h + k * one[1][0];
        EXPECT_NEAR(one[1][0] * (a * one[2][0] + b * one[3][0]) + c * one[0][0], 0.0, 1e-6) << i;
        EXPECT_NEAR(radius * (a * one[3][0] - b * one[2][0]), d, 1e-6) << i;
    }
    EXPECT_GT(descents, 1000);
    EXPECT_GT(fallbacks, 100);
}

TEST(nmkAngleSolver_solve_angles3, chains_that_do_not_settle_give_the_elimination_to_the_bit) {
    Generator random(32);
    int unsettled = 0;
    for (int i = 0; i < 20000; ++i) {
        angle_systems::System3 s{};
        for (double* p : {&s.a, &s.b, &s.c, &s.f, &s.g, &s.h}) *p = random.between(-1.0, 1.0);
        s.k = random.between(-0.5, 1.0);
        const double direction = random.between(0.0, 6.0);
        s.d = std::cos(direction);
        s.e = std::sin(direction);
        if (!(s.h > 0.0) || s.h + s.k < 0.0 || plain_angle_chains_settle(s)) continue;
        double first[4][2] = {{9, 9}, {9, 9}, {9, 9}, {9, 9}};
        double second[4][2] = {{9, 9}, {9, 9}, {9, 9}, {9, 9}};
        const auto call = [&](AnglesMethod method, double(&x)[4][2]) {
            return method(s.a, s.b, s.c, s.d, s.e, s.f, s.g, s.h, s.k, 1.0, 1.0, x[0], x[1], x[2],
                          x[3]);
        };
        ASSERT_EQ(call(member_of(FirstMethod()), first), call(member_of(SecondMethod()), second));
        for (int j = 0; j < 4; ++j) {
            EXPECT_EQ(first[j][0], second[j][0]) << i;
            EXPECT_EQ(first[j][1], second[j][1]) << i;
        }
        ++unsettled;
    }
    EXPECT_GT(unsettled, 1000);
}

}  // namespace

// nmkAngleSolver: one angle, and the general system of two.
#include <gtest/gtest.h>

#include <nmktoolbox/solver.h>
#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "solver/angle_systems.h"
#include "solver/plain_angle_chains.h"
#include "solver/plain_angle_search.h"
#include "solver/solver_samples.h"

namespace {

using angle_systems::dense_search;
using angle_systems::is_among;
using angle_systems::Solution;
using angle_systems::System3;
using plain_angle_search::visible_solutions;
using solver_samples::Generator;
using solver_samples::hostile_count;

std::vector<Solution> solve3(const System3& s) {
    double cf[2] = {9, 9}, sf[2] = {9, 9}, cp[2] = {9, 9}, sp[2] = {9, 9};
    const int count =
        nmkAngleSolver::solve_angles3(s.a, s.b, s.c, s.d, s.e, s.f, s.g, s.h, s.k, cf, sf, cp, sp);
    std::vector<Solution> found;
    for (int i = 0; i < count; ++i) found.push_back({cf[i], sf[i], cp[i], sp[i]});
    return found;
}

System3 random_system(Generator& random) {
    System3 s{};
    for (double* p : {&s.a, &s.b, &s.c, &s.d, &s.e, &s.f, &s.g, &s.h})
        *p = random.between(-1.0, 1.0);
    s.k = random.between(-0.5, 1.0);
    return s;
}

TEST(nmkAngleSolver_solve_angles1, a_right_side_just_beyond_the_amplitude_gives_the_tangent) {
    double c[2];
    double s[2];
    ASSERT_EQ(nmkAngleSolver::solve_angles1(1.0, 0.0, 1.000001, c, s), 1);
    EXPECT_EQ(c[0], 1.0);
    EXPECT_EQ(s[0], 0.0);
    ASSERT_EQ(nmkAngleSolver::solve_angles1(1.0, 0.0, -1.000001, c, s), 1);
    EXPECT_EQ(c[0], -1.0);
    EXPECT_EQ(nmkAngleSolver::solve_angles1(1.0, 0.0, 1.00001, c, s), 0);
}

TEST(nmkAngleSolver_solve_angles1, no_equation_has_no_solution) {
    double c[2];
    double s[2];
    EXPECT_EQ(nmkAngleSolver::solve_angles1(0.0, 0.0, 0.0, c, s), 0);
}

TEST(nmkAngleSolver_solve_angles1, solutions_satisfy_the_equation) {
    Generator random(1);
    for (int i = 0; i < 20000; ++i) {
        const double a = random.between(-3, 3);
        const double b = random.between(-3, 3);
        const double right = random.between(-3, 3);
        double c[2];
        double s[2];
        const int count = nmkAngleSolver::solve_angles1(a, b, right, c, s);
        if (right * right < a * a + b * b) {
            EXPECT_EQ(count, 2);
        }
        for (int j = 0; j < count && count == 2; ++j) {
            EXPECT_NEAR(a * c[j] + b * s[j], right, 1e-14);
            EXPECT_NEAR(c[j] * c[j] + s[j] * s[j], 1.0, 1e-13);
        }
    }
}

TEST(nmkAngleSolver_solve_angles1, the_angle_form_takes_sine_and_cosine) {
    giAngle angles[2];
    ASSERT_EQ(nmkAngleSolver::solve_angles1(0.0, 1.0, 0.5, angles), 2);
    EXPECT_NEAR(angles[0].angle(giDegrees), 150.0, 1e-12);
    EXPECT_NEAR(angles[1].angle(giDegrees), 30.0, 1e-12);
}

TEST(nmkAngleSolver_solve_angles2, half_a_turn_is_the_root_at_infinity) {
    double c[4];
    double s[4];
    ASSERT_EQ(nmkAngleSolver::solve_angles2(0, 0, 0, 1, 0, 1, c, s), 1);
    EXPECT_EQ(c[0], -1.0);
    EXPECT_EQ(s[0], 0.0);
    // The other way round, for sin t + 1 = 0.
    ASSERT_EQ(nmkAngleSolver::solve_angles2(0, 0, 0, 0, 1, 1, c, s), 1);
    EXPECT_EQ(c[0], 0.0);
    EXPECT_EQ(s[0], -1.0);
}

TEST(nmkAngleSolver_solve_angles2, all_zero_gives_the_cosine_minus_one) {
    double c[4];
    double s[4];
    ASSERT_EQ(nmkAngleSolver::solve_angles2(0, 0, 0, 0, 0, 0, c, s), 1);
    EXPECT_EQ(c[0], -1.0);
    EXPECT_EQ(s[0], 0.0);
}

TEST(nmkAngleSolver_solve_angles2, a_double_root_is_given_once) {
    // cos t = 1 touches at t = 0: the half-angle tangent is zero twice.
    double c[4];
    double s[4];
    ASSERT_EQ(nmkAngleSolver::solve_angles2(0, 0, 0, 1, 0, -1, c, s), 1);
    EXPECT_EQ(c[0], 1.0);
    EXPECT_EQ(s[0], 0.0);
}

TEST(nmkAngleSolver_solve_angles2, does_not_count_solutions_that_overflow) {
    double c[4];
    double s[4];
    ASSERT_EQ(nmkAngleSolver::solve_angles2(0, 1, 0, 1e-60, 0, 0, c, s), 1);
    EXPECT_EQ(c[0], 1.0);
    EXPECT_EQ(s[0], 0.0);
}

TEST(nmkAngleSolver_solve_angles2, finds_every_crossing_of_the_circle) {
    Generator random(2);
    for (int i = 0; i < 3000; ++i) {
        double p[6];
        for (double& one : p) one = random.between(-1, 1);
        const auto value = [&](double c, double s) {
            return p[0] * c * c + p[1] * c * s + p[2] * s * s + p[3] * c + p[4] * s + p[5];
        };
        double c[4];
        double s[4];
        const int count = nmkAngleSolver::solve_angles2(p[0], p[1], p[2], p[3], p[4], p[5], c, s);
        for (int j = 0; j < count; ++j) {
            EXPECT_NEAR(value(c[j], s[j]), 0.0, 1e-9) << i;
            EXPECT_NEAR(c[j] * c[j] + s[j] * s[j], 1.0, 1e-14);
        }
        int crossings = 0;
        constexpr int steps = 2000;
        for (int j = 0; j < steps; ++j) {
            const double t = 2.0 * std::acos(-1.0) * j / steps;
            const double next = 2.0 * std::acos(-1.0) * (j + 1) / steps;
            const double here = value(std::cos(t), std::sin(t));
            crossings += (here < 0.0) != (value(std::cos(next), std::sin(next)) < 0.0);
        }
        EXPECT_GE(count, crossings) << i;
    }
}

TEST(nmkAngleSolver_solve_angles3, a_radius_negative_everywhere_has_no_solution) {
    EXPECT_TRUE(solve3({1, 2, 3, 4, 5, 6, 7, -2, 1}).empty());
}

TEST(nmkAngleSolver_solve_angles3, without_a_first_equation_only_the_pole_is_left) {
    const auto found = solve3({0, 0, 0, 1, 0, 0.5, 1, 1, 0.25});
    ASSERT_EQ(found.size(), 2U);
    for (const Solution& one : found) {
        EXPECT_EQ(one.cos_phi, 1.0);
        EXPECT_EQ(one.sin_phi, 0.0);
        EXPECT_NEAR(one.cos_psi, 0.5, 1e-15);
    }
    EXPECT_TRUE(solve3({0, 0, 0, 1, 0, 0.5, 1, 0, 0.25}).empty());
}

TEST(nmkAngleSolver_solve_angles3, the_degenerate_case_counts_its_slot) {
    const auto found = solve3({1, 0.5, 0.3, 0.2, 1, 0, 0, 1, 0.5});
    ASSERT_EQ(found.size(), 1U);
    const System3 s{1, 0.5, 0.3, 0.2, 1, 0, 0, 1, 0.5};
    EXPECT_NEAR(s.first(found[0]), 0.0, 1e-15);
    EXPECT_NEAR(s.second(found[0]), 0.0, 1e-15);
}

TEST(nmkAngleSolver_solve_angles3, the_degenerate_case_prefers_two_psi_at_the_vanishing_radius) {
    const System3 s{1, 0, 0.1, 0, 1, 0, 0, -0.5, 1};
    const auto found = solve3(s);
    ASSERT_EQ(found.size(), 2U);
    for (const Solution& one : found) {
        EXPECT_EQ(one.sin_phi, 0.5);
        EXPECT_NEAR(s.first(one), 0.0, 1e-15);
        EXPECT_NEAR(s.second(one), 0.0, 1e-15);
    }
}

TEST(nmkAngleSolver_solve_angles3, parallel_directions_give_each_psi_of_the_one_phi) {
    // (d, e) along (a, b), h zero: -g / L fixes phi, and psi takes two values.
    const System3 s{1, 0, 0.1, 1, 0, -0.5, -0.3, 0, 1};
    const auto found = solve3(s);
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0].cos_phi, found[1].cos_phi);
    EXPECT_EQ(found[0].sin_psi, -found[1].sin_psi);
    for (const Solution& one : found) EXPECT_NEAR(s.first(one), 0.0, 1e-12);
}

TEST(nmkAngleSolver_solve_angles3, an_iteration_that_does_not_settle_leaves_it_to_the_elimination) {
    // The chains of these systems need more than ten passes or lose psi (plain_angle_chains.h says
    // so). The elimination then finds all that its search can see, and nothing else.
    Generator random(6);
    int unsettled = 0;
    int solved = 0;
    for (int i = 0; i < 20000; ++i) {
        const System3 s = random_system(random);
        if (!(s.h > 0.0) || s.h + s.k < 0.0 || plain_angle_chains_settle(s)) continue;
        if (!(std::fabs(s.f) > std::fabs(s.g))) continue;
        ++unsettled;
        const auto found = solve3(s);
        ASSERT_EQ(static_cast<int>(found.size()), visible_solutions(s)) << i;
        for (const Solution& one : found) {
            ++solved;
            EXPECT_NEAR(s.first(one), 0.0, 1e-4) << i;
            EXPECT_NEAR(s.second(one), 0.0, 1e-4) << i;
        }
    }
    EXPECT_GT(unsettled, 1000);
    EXPECT_GT(solved, 300);
}

TEST(nmkAngleSolver_solve_angles3, one_system_whose_chains_do_not_settle_is_still_solved) {
    const System3 s{-0.5, 0, 0.25, 0, 1, -1, -0.5, 0.5, 0.5};
    ASSERT_FALSE(plain_angle_chains_settle(s));
    const auto found = solve3(s);
    ASSERT_EQ(found.size(), 1U);
    EXPECT_NEAR(found[0].cos_phi, 0.867360, 1e-6);
    EXPECT_NEAR(s.first(found[0]), 0.0, 1e-8);
    EXPECT_NEAR(s.second(found[0]), 0.0, 1e-8);
}

TEST(nmkAngleSolver_solve_angles3, a_pair_between_the_points_that_are_looked_at_is_missed) {
    // Deliberate: the search looks at the ends and at a few angles between them, not everywhere.
    // At 0.8, 0.6 and psi straight up both equations hold, and yet nothing is found.
    const System3 s{0.25, 1, -0.75, 0, -1, 0.75, -0.75, 0.75, 1};
    const Solution exact{0.8, 0.6, 0.0, 1.0};
    EXPECT_NEAR(s.first(exact), 0.0, 1e-15);
    EXPECT_NEAR(s.second(exact), 0.0, 1e-15);
    EXPECT_EQ(visible_solutions(s), 0);
    EXPECT_TRUE(solve3(s).empty());
}

/// Solutions of a dense search that are not among those found.
int missed_solutions(const System3& s, const std::vector<Solution>& found, int& expected) {
    const double lowest = s.h < 0.0 ? -s.h / s.k : 0.0;
    auto dense = dense_search(
        s.a, s.b, s.c, [&](const Solution& x) { return s.second(x); }, lowest, 1000);
    std::erase_if(dense, [&](const Solution& x) { return s.h + s.k * x.sin_phi < 0.0; });
    expected += static_cast<int>(dense.size());
    return static_cast<int>(std::count_if(dense.begin(), dense.end(), [&](const Solution& one) {
        return !is_among(one, found, 1e-3);
    }));
}

TEST(nmkAngleSolver_solve_angles3, misses_only_what_its_search_cannot_see) {
    Generator random(3);
    int expected = 0;
    int by_elimination = 0;
    for (int i = 0; i < 4000; ++i) {
        const System3 s = random_system(random);
        if (s.h + s.k < 0.0) continue;
        const auto found = solve3(s);
        for (const Solution& one : found) {
            EXPECT_NEAR(s.first(one), 0.0, 1e-4) << i;
            EXPECT_NEAR(s.second(one), 0.0, 1e-4) << i;
            EXPECT_GE(s.h + s.k * one.sin_phi, -1e-12) << i;
            EXPECT_GE(one.cos_phi, 0.0) << i;
            EXPECT_GE(one.sin_phi, 0.0) << i;
        }
        const bool iterates = std::fabs(s.f) > std::fabs(s.g) && plain_angle_chains_settle(s);
        const int visible = iterates ? 0 : visible_solutions(s);
        // Near its limits the plain reading of the chains may judge otherwise than the solver.
        if (std::fabs(s.f) <= std::fabs(s.g)) {
            ++by_elimination;
            EXPECT_EQ(static_cast<int>(found.size()), visible) << i;
        }
        // Two chains follow two solutions at most; the elimination sees what it sees.
        if (missed_solutions(s, found, expected) > 0) {
            EXPECT_TRUE(iterates || static_cast<int>(found.size()) == visible) << i;
        }
    }
    EXPECT_GT(expected, 1500);
    EXPECT_GT(by_elimination, 1000);
}

TEST(nmkAngleSolver_solve_angles3, an_unfilled_slot_counts_and_the_angle_form_leaves_it_alone) {
    // The radius vanishes where the two directions just touch, and rounding puts the last candidate
    // a hair below it: the second slot counts and is not filled.
    const double c = 0x1.52547b1ea31eep-1;
    double cf[2] = {9, 9}, sf[2] = {9, 9}, cp[2] = {9, 9}, sp[2] = {9, 9};
    ASSERT_EQ(nmkAngleSolver::solve_angles3(-3, -1, c, -1, 3, 0, 0, -2.25, 11, cf, sf, cp, sp), 2);
    EXPECT_NEAR(sf[0], 2.25 / 11.0, 1e-15);
    for (const double unfilled : {cf[1], sf[1], cp[1], sp[1]}) EXPECT_EQ(unfilled, 9.0);

    const giAngle before(giAngleTangent2(0), 0.6, 0.8);
    giAngle phi[2] = {before, before};
    giAngle psi[2] = {before, before};
    ASSERT_EQ(nmkAngleSolver::solve_angles3(-3, -1, c, -1, 3, 0, 0, -2.25, 11, phi, psi), 2);
    EXPECT_NEAR(phi[0].angle(giDegrees), std::asin(2.25 / 11.0) * 180.0 / std::acos(-1.0), 1e-10);
    EXPECT_EQ(phi[1].angle(giDegrees), before.angle(giDegrees));
    EXPECT_EQ(psi[1].angle(giDegrees), before.angle(giDegrees));
}

TEST(nmkAngleSolver, hostile_parameters_end_with_a_count) {
    Generator random(5);
    for (int i = 0; i < hostile_count; ++i) {
        double p[9];
        for (double& one : p) one = random.hostile();
        double c[4], s[4], c2[4], s2[4];
        const int one = nmkAngleSolver::solve_angles1(p[0], p[1], p[2], c, s);
        ASSERT_TRUE(one >= 0 && one <= 2);
        const int conic = nmkAngleSolver::solve_angles2(p[0], p[1], p[2], p[3], p[4], p[5], c, s);
        ASSERT_TRUE(conic >= 0 && conic <= 4);
        for (int j = 0; j < conic; ++j)
            ASSERT_TRUE(std::isfinite(c[j]) && std::isfinite(s[j])) << i << ' ' << j;
        const int three = nmkAngleSolver::solve_angles3(p[0], p[1], p[2], p[3], p[4], p[5], p[6],
                                                        p[7], p[8], c, s, c2, s2);
        ASSERT_TRUE(three >= 0 && three <= 2);
    }
}

}  // namespace

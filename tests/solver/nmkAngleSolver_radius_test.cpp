// nmkAngleSolver: the systems of two angles whose second equation bears on the radius.
#include <gtest/gtest.h>

#include <debugncam/dbgLevelManager.h>
#include <nmktoolbox/runtime/dbgLevel_angleassert_nmkutils.h>
#include <nmktoolbox/solver.h>
#include <cmath>
#include <vector>

#include "solver/angle_systems.h"
#include "solver/solver_samples.h"

namespace {

using angle_systems::dense_search;
using angle_systems::is_among;
using angle_systems::Solution;
using solver_samples::Generator;
using solver_samples::hostile_count;

struct Arrays {
    double cf[4] = {9, 9, 9, 9}, sf[4] = {9, 9, 9, 9}, cp[4] = {9, 9, 9, 9}, sp[4] = {9, 9, 9, 9};

    bool all_numbers(int count) const {
        for (int i = 0; i < count; ++i) {
            if (std::isnan(cf[i]) || std::isnan(sf[i]) || std::isnan(cp[i]) || std::isnan(sp[i]))
                return false;
        }
        return true;
    }

    std::vector<Solution> first(int count) const {
        std::vector<Solution> found;
        for (int i = 0; i < count; ++i) found.push_back({cf[i], sf[i], cp[i], sp[i]});
        return found;
    }
};

struct System4 {
    double a, b, c, d, h, k;

    std::vector<Solution> solve() const {
        Arrays x;
        return x.first(nmkAngleSolver::solve_angles4(a, b, c, d, h, k, x.cf, x.sf, x.cp, x.sp));
    }
    std::vector<Solution> one() const {
        Arrays x;
        return x.first(
            nmkAngleSolver::solve_angles4_one_solution(a, b, c, d, h, k, x.cf, x.sf, x.cp, x.sp));
    }
    double first(const Solution& s) const {
        return s.sin_phi * (a * s.cos_psi + b * s.sin_psi) + c * s.cos_phi;
    }
    double second(const Solution& s) const {
        return (h + k * s.sin_phi) * (a * s.sin_psi - b * s.cos_psi) - d;
    }
};

bool same(const Solution& x, const Solution& y) {
    return x.cos_phi == y.cos_phi && x.sin_phi == y.sin_phi && x.cos_psi == y.cos_psi &&
           x.sin_psi == y.sin_psi;
}

TEST(nmkAngleSolver_solve_angles4, without_a_constant_radius_is_the_closed_case) {
    const System4 s{0.6, 0.8, 0.3, 0.4, 0.0, 0.9};
    Arrays x;
    const auto expected =
        x.first(nmkAngleSolver::solve_angles6(s.a, s.b, s.c, s.d, s.k, x.cf, x.sf, x.cp, x.sp));
    ASSERT_EQ(expected.size(), 1U);
    for (const auto& found : {s.solve(), s.one()}) {
        ASSERT_EQ(found.size(), 1U);
        EXPECT_TRUE(same(found[0], expected[0]));
    }
}

TEST(nmkAngleSolver_solve_angles4, without_a_direction_or_a_radius_has_no_solution) {
    EXPECT_TRUE((System4{0, 0, 0.3, 0.4, 0.5, 0.9}).solve().empty());
    EXPECT_TRUE((System4{1, 0, 0.3, 0.4, -2, 0.9}).solve().empty());
    EXPECT_TRUE((System4{1, 0, 0.3, 0.4, -2, 0.9}).one().empty());
}

TEST(nmkAngleSolver_solve_angles4, near_the_pole_mirrors_the_cosine_of_psi) {
    const auto found = System4{1, 0, 2e-6, 0.5, 1, 0.5}.solve();
    ASSERT_GE(found.size(), 2U);
    EXPECT_LT(found[0].sin_phi, 1e-5);
    EXPECT_EQ(found[0].sin_phi, found[1].sin_phi);
    EXPECT_EQ(found[0].sin_psi, found[1].sin_psi);
    EXPECT_EQ(found[0].cos_psi, -found[1].cos_psi);
    EXPECT_GT(found[0].cos_psi, 0.0);
}

TEST(nmkAngleSolver_solve_angles4, near_a_vanishing_radius_mirrors_the_sine_of_psi) {
    const auto found = System4{1, 0, 0.1, 2e-6, -0.5, 1}.solve();
    ASSERT_EQ(found.size(), 2U);
    EXPECT_NEAR(found[0].sin_phi, 0.5, 1e-5);
    EXPECT_EQ(found[0].sin_phi, found[1].sin_phi);
    EXPECT_EQ(found[0].cos_psi, found[1].cos_psi);
    EXPECT_EQ(found[0].sin_psi, -found[1].sin_psi);
    EXPECT_GT(found[0].sin_psi, 0.0);
}

TEST(nmkAngleSolver_solve_angles4, a_repeated_root_gives_its_solutions_once) {
    const auto found = System4{1, 0, 0, 0, -0.5, 1}.solve();
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0].sin_phi, 0.5);
    EXPECT_EQ(found[1].sin_phi, 0.5);
    EXPECT_EQ(found[0].sin_psi, -found[1].sin_psi);
}

TEST(nmkAngleSolver_solve_angles4, finds_what_a_dense_search_finds) {
    Generator random(11);
    int expected = 0;
    for (int i = 0; i < 3000; ++i) {
        const System4 s{random.between(-1, 1), random.between(-1, 1), random.between(-1, 1),
                        random.between(-1, 1), random.between(-1, 1), random.between(0, 1)};
        const auto found = s.solve();
        for (const Solution& one : found) {
            EXPECT_NEAR(s.first(one), 0.0, 1e-6) << i;
            EXPECT_NEAR(s.second(one), 0.0, 1e-6) << i;
        }
        if (s.h + s.k < 0.0) continue;
        const double lowest = s.h < 0.0 ? -s.h / s.k : 0.0;
        for (const Solution& one : dense_search(
                 s.a, s.b, s.c, [&](const Solution& x) { return s.second(x); }, lowest, 500)) {
            ++expected;
            EXPECT_TRUE(is_among(one, found, 1e-3)) << i;
        }
    }
    EXPECT_GT(expected, 500);
}

TEST(nmkAngleSolver_solve_angles4_one_solution, a_constant_radius_falls_back_to_the_full_solver) {
    // c and k zero: the descent has no quadratic with two roots.
    const System4 s{1, 0, 0, 0.25, 0.5, 0};
    const auto all = s.solve();
    const auto one = s.one();
    ASSERT_EQ(one.size(), all.size());
    for (std::size_t j = 0; j < all.size(); ++j) EXPECT_TRUE(same(one[j], all[j]));
}

TEST(nmkAngleSolver_solve_angles5, without_d_the_conic_gives_phi) {
    // (h + k Sf)^2 = c^2 + e^2 = 0.25: Sf = 0.5 and so R = 0.5.
    Arrays x;
    const int count =
        nmkAngleSolver::solve_angles5(1, 0, 0.3, 0, 0.4, 0.25, 0.5, x.cf, x.sf, x.cp, x.sp);
    ASSERT_EQ(count, 1);
    EXPECT_NEAR(x.sf[0], 0.5, 1e-14);
    EXPECT_NEAR(x.cp[0], 0.6, 1e-14);
    EXPECT_NEAR(x.sp[0], 0.8, 1e-14);
    EXPECT_EQ(x.cf[1], 9.0);
}

TEST(nmkAngleSolver_solve_angles5, without_d_and_radius_has_no_solution) {
    Arrays x;
    EXPECT_EQ(nmkAngleSolver::solve_angles5(1, 0, 0.3, 0, 0.4, 0, 0, x.cf, x.sf, x.cp, x.sp), 0);
}

TEST(nmkAngleSolver_solve_angles5, solutions_satisfy_both_equations) {
    Generator random(13);
    int solutions = 0;
    for (int i = 0; i < 20000; ++i) {
        const double a = random.between(-1, 1), b = random.between(-1, 1),
                     c = random.between(-1, 1), d = random.between(-1, 1),
                     e = random.between(-1, 1), h = random.between(-1, 1), k = random.between(0, 1);
        Arrays x;
        const int count =
            nmkAngleSolver::solve_angles5(a, b, c, d, e, h, k, x.cf, x.sf, x.cp, x.sp);
        for (const Solution& s : x.first(count)) {
            ++solutions;
            const double radius = h + k * s.sin_phi;
            EXPECT_NEAR(radius * (a * s.cos_psi + b * s.sin_psi), c, 1e-6) << i;
            EXPECT_NEAR(radius * (a * s.sin_psi - b * s.cos_psi) + d * s.cos_phi, e, 1e-6) << i;
        }
    }
    EXPECT_GT(solutions, 1000);
}

TEST(nmkAngleSolver_solve_angles5, finds_what_a_dense_search_finds_up_to_two) {
    Generator random(15);
    int expected = 0;
    for (int i = 0; i < 3000; ++i) {
        const double a = random.between(-1, 1), b = random.between(-1, 1),
                     c = random.between(-1, 1), d = random.between(-1, 1),
                     e = random.between(-1, 1), h = random.between(-1, 1), k = random.between(0, 1);
        if (h + k < 0.0) continue;
        Arrays x;
        const auto found =
            x.first(nmkAngleSolver::solve_angles5(a, b, c, d, e, h, k, x.cf, x.sf, x.cp, x.sp));
        const auto radius = [&](double sin_phi) { return h + k * sin_phi; };
        const double lowest = h < 0.0 ? -h / k : 0.0;
        const auto dense = dense_search(
            a, b, [&](double phi) { return c / radius(std::sin(phi)); },
            [&](const Solution& s) {
                return radius(s.sin_phi) * (a * s.sin_psi - b * s.cos_psi) + d * s.cos_phi - e;
            },
            lowest, 500);
        for (const Solution& one : dense) {
            ++expected;
            EXPECT_TRUE(found.size() == 2 || is_among(one, found, 1e-3)) << i;
        }
    }
    EXPECT_GT(expected, 500);
}

TEST(nmkAngleSolver_solve_angles6, finds_what_a_dense_search_finds) {
    Generator random(16);
    int expected = 0;
    for (int i = 0; i < 3000; ++i) {
        const System4 s{random.between(-1, 1),
                        random.between(-1, 1),
                        random.between(-1, 1),
                        random.between(-1, 1),
                        0.0,
                        random.between(0, 1)};
        Arrays x;
        const auto found =
            x.first(nmkAngleSolver::solve_angles6(s.a, s.b, s.c, s.d, s.k, x.cf, x.sf, x.cp, x.sp));
        for (const Solution& one : found) {
            EXPECT_NEAR(s.first(one), 0.0, 1e-12) << i;
            EXPECT_NEAR(s.second(one), 0.0, 1e-12) << i;
        }
        for (const Solution& one : dense_search(
                 s.a, s.b, s.c, [&](const Solution& at) { return s.second(at); }, 0.0, 500)) {
            ++expected;
            EXPECT_TRUE(is_among(one, found, 1e-3)) << i;
        }
    }
    EXPECT_GT(expected, 500);
}

TEST(nmkAngleSolver_solve_angles6, a_sine_barely_beyond_one_is_a_right_angle) {
    Arrays x;
    const double k = std::nextafter(1.0, 0.0);
    ASSERT_EQ(nmkAngleSolver::solve_angles6(1, 0, 0, 1, k, x.cf, x.sf, x.cp, x.sp), 1);
    EXPECT_EQ(x.sf[0], 1.0);
    EXPECT_EQ(x.cf[0], 0.0);
    EXPECT_EQ(nmkAngleSolver::solve_angles6(1, 0, 0, 1, 1 - 1e-14, x.cf, x.sf, x.cp, x.sp), 0);
}

TEST(nmkAngleSolver_solve_angles6, near_a_vanishing_radius_mirrors_the_sine_of_psi) {
    // c is so large that phi is a right angle, whatever the radius there.
    Arrays x;
    const double c = 0x1p47;
    EXPECT_EQ(nmkAngleSolver::solve_angles6(1, 0, c, 1, 1.1e-5, x.cf, x.sf, x.cp, x.sp), 1);
    ASSERT_EQ(nmkAngleSolver::solve_angles6(1, 0, c, 1, 0.9e-5, x.cf, x.sf, x.cp, x.sp), 2);
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(x.cf[i], 0.0);
        EXPECT_EQ(x.sf[i], 1.0);
        EXPECT_EQ(x.cp[i], 0.0);
        EXPECT_EQ(x.sp[i], i == 0 ? 1.0 : -1.0);
    }
}

TEST(nmkAngleSolver_solve_angles6, the_angle_form_gives_both_angles) {
    giAngle phi[2];
    giAngle psi[2];
    // Sf = d / k = 0.5 with c zero; psi is 90 degrees from the reference.
    ASSERT_EQ(nmkAngleSolver::solve_angles6(1, 0, 0, 0.5, 1, phi, psi), 1);
    EXPECT_NEAR(phi[0].angle(giDegrees), 30.0, 1e-12);
    EXPECT_NEAR(psi[0].angle(giDegrees), 90.0, 1e-12);
}

TEST(nmkAngleSolver_solve_angles6, a_psi_that_is_not_a_number_is_not_a_solution) {
    // k squared overflows beside d, so that phi comes out as 0 and psi as 0 / 0.
    Arrays x;
    EXPECT_EQ(nmkAngleSolver::solve_angles6(1, 0, 0, 1e-200, -1, x.cf, x.sf, x.cp, x.sp), 0);
    EXPECT_EQ(x.cp[0], 9.0);
}

TEST(nmkAngleSolver, hostile_radius_systems_end_with_a_count) {
    Generator random(14);
    for (int i = 0; i < hostile_count; ++i) {
        double p[7];
        for (double& one : p) one = random.hostile();
        Arrays x;
        const int four = nmkAngleSolver::solve_angles4(p[0], p[1], p[2], p[3], p[4], p[5], x.cf,
                                                       x.sf, x.cp, x.sp);
        ASSERT_TRUE(four >= 0 && four <= 4);
        ASSERT_TRUE(x.all_numbers(four)) << i;
        const int one = nmkAngleSolver::solve_angles4_one_solution(p[0], p[1], p[2], p[3], p[4],
                                                                   p[5], x.cf, x.sf, x.cp, x.sp);
        ASSERT_TRUE(one >= 0 && one <= 4);
        ASSERT_TRUE(x.all_numbers(one)) << i;
        const int five = nmkAngleSolver::solve_angles5(p[0], p[1], p[2], p[3], p[4], p[5], p[6],
                                                       x.cf, x.sf, x.cp, x.sp);
        ASSERT_TRUE(five >= 0 && five <= 2);
        ASSERT_TRUE(x.all_numbers(five)) << i;
        const int six =
            nmkAngleSolver::solve_angles6(p[0], p[1], p[2], p[3], p[4], x.cf, x.sf, x.cp, x.sp);
        ASSERT_TRUE(six >= 0 && six <= 2);
        ASSERT_TRUE(x.all_numbers(six)) << i;
    }
}

TEST(dbgLevel_angleassert_nmkutils, is_registered_when_the_library_is_loaded) {
    dbgLevel* const level = dbgLevel::get_manager()->get_by_name("nmkutils:angleassert");
    ASSERT_EQ(level, &dbgLevel_angleassert_nmkutils);
    EXPECT_STREQ(level->get_description(), "Check solutions to anglesolver.");
    EXPECT_EQ(level->get_level(), 0);
}

}  // namespace

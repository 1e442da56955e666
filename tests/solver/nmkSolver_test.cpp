// nmkSolver: counts, order and status of real roots, and whether they are roots.
#include <gtest/gtest.h>

#include <nmktoolbox/solver.h>
#include <algorithm>
#include <cmath>
#include <limits>
#include <ostream>
#include <string>
#include <vector>

#include "solver/solver_samples.h"

namespace {

using solver_samples::backward_error;
using solver_samples::Generator;
using solver_samples::hostile_count;
using solver_samples::polynomial_of;
using solver_samples::separate_roots;

constexpr double untouched = 12345.0;

/// The polynomial, scaled to a largest coefficient of 1, is zero there up to its rounding error.
bool stands_as_polished(const std::vector<double>& coefficients, double x) {
    double largest = 0.0;
    for (const double c : coefficients) largest = std::max(largest, std::fabs(c));
    double value = 0.0;
    double size = 0.0;
    for (std::size_t i = coefficients.size(); i-- > 0;) {
        value = value * x + coefficients[i] / largest;
        size = size * std::fabs(x) + std::fabs(coefficients[i]) / largest;
    }
    // The Adams bound counts each term at most once for each coefficient.
    return std::fabs(value) <= 1e-14 * std::max(1.0, 5.0 * size);
}

struct PolynomialCase {
    const char* name;
    std::vector<double> coefficients;
    std::vector<double> roots;
};

std::ostream& operator<<(std::ostream& out, const PolynomialCase& one) { return out << one.name; }

struct CaseName {
    template <class Info>
    std::string operator()(const Info& info) const {
        return info.param.name;
    }
};

struct Quadratic : testing::TestWithParam<PolynomialCase> {};

TEST_P(Quadratic, gives_these_roots) {
    std::vector<double> c = GetParam().coefficients;
    double roots[2] = {untouched, untouched};
    const int count = nmkSolver::qadsol(c.data(), roots);
    ASSERT_EQ(count, static_cast<int>(GetParam().roots.size()));
    for (int i = 0; i < 2; ++i) {
        const double expected =
            i < count ? GetParam().roots[static_cast<std::size_t>(i)] : untouched;
        EXPECT_DOUBLE_EQ(roots[i], expected) << i;
    }
}

INSTANTIATE_TEST_SUITE_P(
    nmkSolver_qadsol, Quadratic,
    testing::Values(
        PolynomialCase{"a_constant_alone_has_no_root", {3.0, 0.0, 0.0}, {}},
        PolynomialCase{"zero_everywhere_has_no_root", {0.0, 0.0, 0.0}, {}},
        PolynomialCase{"a_double_root_counts_as_two", {1.0, -2.0, 1.0}, {1.0, 1.0}},
        PolynomialCase{
            "a_negative_leading_coefficient_keeps_them_ascending", {-6.0, 5.0, -1.0}, {2.0, 3.0}},
        PolynomialCase{"a_linear_equation_has_one_root", {-6.0, 3.0, 0.0}, {2.0}},
        PolynomialCase{
            "a_leading_coefficient_below_its_limit_is_dropped", {-0.5, 1.0, 9e-12}, {0.5}},
        PolynomialCase{
            "a_leading_coefficient_at_its_limit_is_kept", {0.0, 1.0, 1e-11}, {-1.0 / 1e-11, 0.0}},
        PolynomialCase{"a_root_at_zero_stands_in_order", {0.0, -2.0, 1.0}, {0.0, 2.0}},
        PolynomialCase{"no_real_root", {1.0, 0.0, 1.0}, {}},
        PolynomialCase{"a_discriminant_just_below_zero_is_a_double_root",
                       {0.25 + 1e-16, -1.0, 1.0},
                       {0.5, 0.5}}),
    CaseName());

struct Cubic : testing::TestWithParam<PolynomialCase> {};

TEST_P(Cubic, gives_these_roots_in_order) {
    std::vector<double> c = GetParam().coefficients;
    double roots[3] = {untouched, untouched, untouched};
    const int count = nmkSolver::cubsol(c.data(), roots);
    ASSERT_EQ(count, static_cast<int>(GetParam().roots.size()));
    for (int i = 0; i < count; ++i)
        EXPECT_NEAR(roots[i], GetParam().roots[static_cast<std::size_t>(i)], 1e-14) << i;
    EXPECT_TRUE(std::is_sorted(roots, roots + count));
    for (int i = std::max(count, 2); i < 3; ++i) EXPECT_EQ(roots[i], untouched);
}

INSTANTIATE_TEST_SUITE_P(
    nmkSolver_cubsol, Cubic,
    testing::Values(
        PolynomialCase{"zero_everywhere_has_no_root", {0.0, 0.0, 0.0, 0.0}, {}},
        PolynomialCase{"a_double_root_counts_as_two", {2.0, -3.0, 0.0, 1.0}, {-2.0, 1.0, 1.0}},
        PolynomialCase{"one_real_root", {-1.0, 0.0, 0.0, 1.0}, {1.0}},
        PolynomialCase{"three_real_roots", {-6.0, 11.0, -6.0, 1.0}, {1.0, 2.0, 3.0}},
        PolynomialCase{"a_leading_zero_leaves_a_quadratic", {2.0, -3.0, 1.0, 0.0}, {1.0, 2.0}},
        PolynomialCase{
            "a_root_at_zero_goes_last_when_it_is_largest", {0.0, 2.0, 3.0, 1.0}, {-2.0, -1.0, 0.0}},
        PolynomialCase{
            "a_root_at_zero_goes_between_the_others", {0.0, -1.0, 0.0, 1.0}, {-1.0, 0.0, 1.0}},
        PolynomialCase{"a_root_at_zero_goes_first_when_it_is_smallest",
                       {0.0, 2.0, -3.0, 1.0},
                       {0.0, 1.0, 2.0}},
        PolynomialCase{"a_root_at_zero_alone", {0.0, 1.0, 0.0, 1.0}, {0.0}},
        PolynomialCase{"a_root_at_zero_is_seen_before_a_small_leading_coefficient",
                       {0.0, 2.0, -3.0, 1e-12},
                       {0.0, 2.0 / 3.0}},
        PolynomialCase{"a_huge_p2_gives_none", {1.0, 1.0, 1e95, 1e-6}, {}},
        PolynomialCase{"a_huge_p1_gives_none", {1.0, 1e95, 0.0, 1e-6}, {}},
        PolynomialCase{"a_huge_p0_gives_none", {1e160, 0.0, 0.0, 1.0}, {}}),
    CaseName());

TEST(nmkSolver_cubsol, a_small_leading_coefficient_is_dropped_by_the_short_form_only) {
    double c[4] = {2.0, -3.0, 1.0, 1e-11};
    double roots[3];
    EXPECT_EQ(nmkSolver::cubsol(c, roots), 2);
    EXPECT_DOUBLE_EQ(roots[0], 1.0);
    EXPECT_DOUBLE_EQ(roots[1], 2.0);

    int status[3];
    ASSERT_EQ(nmkSolver::cubsol(c, 1, roots, status), 3);
    EXPECT_NEAR(roots[0] / -1e11, 1.0, 1e-10);
}

TEST(nmkSolver_cubsol, takes_a_tiny_positive_discriminant_for_a_double_root) {
    // Deliberately uneven limits: at 1e-12 above zero the double root stands ...
    double above[4] = {2.0 + 1e-12, -3.0, 0.0, 1.0};
    double roots[3];
    EXPECT_EQ(nmkSolver::cubsol(above, roots), 3);
    EXPECT_EQ(roots[1], roots[2]);
    // ... and as far below zero the roots are told apart.
    double below[4] = {2.0 - 1e-12, -3.0, 0.0, 1.0};
    EXPECT_EQ(nmkSolver::cubsol(below, roots), 3);
    EXPECT_LT(roots[1], roots[2]);
}

TEST(nmkSolver_cubsol, the_status_form_leaves_a_root_at_zero_behind_the_others) {
    double c[4] = {0.0, 2.0, -3.0, 1.0};
    double roots[3];
    int status[3] = {7, 7, 7};
    ASSERT_EQ(nmkSolver::cubsol(c, 0, roots, status), 3);
    EXPECT_DOUBLE_EQ(roots[0], 1.0);
    EXPECT_DOUBLE_EQ(roots[1], 2.0);
    EXPECT_EQ(roots[2], 0.0);
    for (const int one : status) EXPECT_EQ(one, 0);
}

TEST(nmkSolver_cubsol, overflow_marks_every_slot) {
    double c[4] = {1.0, 1.0, 1e95, 1e-6};
    double roots[3];
    int status[3] = {};
    EXPECT_EQ(nmkSolver::cubsol(c, 1, roots, status), 0);
    for (const int one : status) EXPECT_EQ(one, 1);
}

struct QuarticCase {
    const char* name;
    std::vector<double> coefficients;
    std::vector<double> roots;
    std::vector<int> status;
};

std::ostream& operator<<(std::ostream& out, const QuarticCase& one) { return out << one.name; }

struct Quartic : testing::TestWithParam<QuarticCase> {};

TEST_P(Quartic, gives_these_roots_and_statuses) {
    for (const int polish : {0, 1}) {
        std::vector<double> c = GetParam().coefficients;
        double roots[4];
        int status[4] = {7, 7, 7, 7};
        const int count = nmkSolver::qarsol(c.data(), polish, roots, status);
        ASSERT_EQ(count, static_cast<int>(GetParam().roots.size())) << polish;
        for (int i = 0; i < count; ++i)
            EXPECT_NEAR(roots[i], GetParam().roots[static_cast<std::size_t>(i)], 1e-9) << i;
        for (int i = 0; i < 4; ++i)
            EXPECT_EQ(status[i], GetParam().status[static_cast<std::size_t>(i)]) << i;
    }
}

INSTANTIATE_TEST_SUITE_P(
    nmkSolver_qarsol, Quartic,
    testing::Values(
        QuarticCase{"zero_everywhere_marks_every_slot", {0, 0, 0, 0, 0}, {}, {2, 2, 2, 2}},
        QuarticCase{"a_cubic_has_a_root_at_infinity", {1, 0, 0, 1, 0}, {-1}, {0, 2, 0, 0}},
        QuarticCase{"a_cubic_with_three_roots", {-6, 11, -6, 1, 0}, {1, 2, 3}, {0, 0, 0, 2}},
        QuarticCase{"a_biquadratic", {-1, 0, 0, 0, 1}, {-1, 1}, {0, 0, 0, 0}},
        QuarticCase{"a_biquadratic_without_roots", {1, 0, 0, 0, 1}, {}, {0, 0, 0, 0}},
        QuarticCase{"a_biquadratic_with_four_in_order_of_finding",
                    {4, 0, -5, 0, 1},
                    {-1, 1, -2, 2},
                    {0, 0, 0, 0}},
        QuarticCase{"a_root_at_zero_comes_first", {0, -6, 11, -6, 1}, {0, 1, 2, 3}, {0, 0, 0, 0}},
        QuarticCase{
            "zero_twice_comes_first_and_last", {0, 0, 2, -3, 1}, {0, 1, 2, 0}, {0, 0, 0, 0}},
        QuarticCase{"no_turning_point_crosses", {5, 1, 0, 0, 1}, {}, {0, 0, 0, 0}},
        QuarticCase{"ends_of_opposite_sign", {-6, 3, 1, 1, 1}, {1, -2}, {0, 0, 0, 0}}),
    CaseName());

TEST(nmkSolver_qarsol, finds_the_first_root_and_then_the_others_ascending) {
    double c[5] = {24, -50, 35, -10, 1};
    double roots[4];
    int status[4];
    ASSERT_EQ(nmkSolver::qarsol(c, 1, roots, status), 4);
    EXPECT_TRUE(std::is_sorted(roots + 1, roots + 4));
    std::sort(roots, roots + 4);
    for (int i = 0; i < 4; ++i) EXPECT_NEAR(roots[i], i + 1, 1e-12);
}

TEST(nmkSolver_qarsol, a_double_root_at_a_turning_point_stands_first_and_twice) {
    // (x - 1)^2 (x^2 + 2 x + 5): the quotient has no root.
    double c[5] = {5, -8, 2, 0, 1};
    double roots[4];
    int status[4];
    ASSERT_EQ(nmkSolver::qarsol(c, 0, roots, status), 2);
    EXPECT_NEAR(roots[0], 1.0, 1e-7);
    EXPECT_EQ(roots[0], roots[1]);
}

TEST(nmkSolver_qarsol, ends_when_the_values_overflow_all_over_the_bracket) {
    double c[5] = {1.0, 1.0, 1.0, 1.0, -1e-200};
    double roots[4];
    int status[4];
    ASSERT_GE(nmkSolver::qarsol(c, 0, roots, status), 1);
    EXPECT_NEAR(roots[0] / 1e200, 1.0, 1e-10);
}

TEST(nmkSolver, coefficients_that_are_not_finite_give_no_root) {
    for (const double bad :
         {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
        for (int i = 0; i < 5; ++i) {
            double c[5] = {1.0, -3.0, 1.0, 1.0, 1.0};
            c[i] = bad;
            double roots[4];
            int status[4];
            if (i < 3) {
                EXPECT_EQ(nmkSolver::qadsol(c, roots), 0) << i;
            }
            if (i < 4) {
                EXPECT_EQ(nmkSolver::cubsol(c, roots), 0) << i;
            }
            if (i < 4) {
                EXPECT_EQ(nmkSolver::cubsol(c, 1, roots, status), 0) << i;
            }
            EXPECT_EQ(nmkSolver::qarsol(c, 1, roots, status), 0) << i;
        }
    }
}

TEST(nmkSolver, finds_every_root_of_polynomials_with_separate_roots) {
    Generator random(20240611);
    for (int i = 0; i < 20000; ++i) {
        std::vector<double> expected = separate_roots(random, 4, 5.0, 0.2);
        const double scale = random.between(0.5, 3.0);
        double roots[4];
        int status[4];

        std::vector<double> quartic = polynomial_of(expected, scale);
        ASSERT_EQ(nmkSolver::qarsol(quartic.data(), 1, roots, status), 4) << i;
        for (const double root : roots) EXPECT_TRUE(stands_as_polished(quartic, root)) << i;

        expected.pop_back();
        std::vector<double> cubic = polynomial_of(expected, scale);
        ASSERT_EQ(nmkSolver::cubsol(cubic.data(), roots), 3) << i;
        for (int j = 0; j < 3; ++j) EXPECT_LT(backward_error(cubic.data(), 3, roots[j]), 1e-10);
        // The discriminant cancels to a few parts in the sixth power of the range, so that the
        // closed form alone loses up to seven digits at this gap.
        std::sort(expected.begin(), expected.end());
        for (int j = 0; j < 3; ++j)
            EXPECT_NEAR(roots[j], expected[static_cast<std::size_t>(j)], 1e-7) << i;
        ASSERT_EQ(nmkSolver::cubsol(cubic.data(), 1, roots, status), 3) << i;
        for (int j = 0; j < 3; ++j) EXPECT_TRUE(stands_as_polished(cubic, roots[j])) << i;

        expected.pop_back();
        std::vector<double> quadratic = polynomial_of(expected, scale);
        ASSERT_EQ(nmkSolver::qadsol(quadratic.data(), roots), 2) << i;
        for (int j = 0; j < 2; ++j) EXPECT_LT(backward_error(quadratic.data(), 2, roots[j]), 1e-15);
    }
}

TEST(nmkSolver, every_answer_to_random_coefficients_is_a_root) {
    Generator random(77);
    for (int i = 0; i < 50000; ++i) {
        double c[5];
        for (double& one : c) one = random.between(-1.0, 1.0);
        double roots[4];
        int status[4];
        const int count = nmkSolver::qarsol(c, 1, roots, status);
        for (int j = 0; j < count; ++j) EXPECT_LT(backward_error(c, 4, roots[j]), 1e-9) << i;
        // Ends of opposite sign: there is a root on each side of zero.
        if (c[0] * c[4] < 0.0) {
            EXPECT_GE(count, 2) << i;
        }
    }
}

TEST(nmkSolver, hostile_coefficients_end_with_a_count) {
    Generator random(4711);
    for (int i = 0; i < hostile_count; ++i) {
        double c[5];
        for (double& one : c) one = random.hostile();
        double roots[4];
        int status[4];
        const int polish = i & 1;
        const int quadratic = nmkSolver::qadsol(c, roots);
        ASSERT_TRUE(quadratic >= 0 && quadratic <= 2);
        const int cubic = nmkSolver::cubsol(c, roots);
        ASSERT_TRUE(cubic >= 0 && cubic <= 3);
        const int polished = nmkSolver::cubsol(c, polish, roots, status);
        ASSERT_TRUE(polished >= 0 && polished <= 3);
        const int quartic = nmkSolver::qarsol(c, polish, roots, status);
        ASSERT_TRUE(quartic >= 0 && quartic <= 4);
    }
}

}  // namespace

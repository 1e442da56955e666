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

constexpr double rounding = 0x1p-53;

/// The size of a polynomial's terms at x, which its rounding errors are measured by.
double size_of_terms(const std::vector<double>& coefficients, double x) {
    double size = 0.0;
    for (std::size_t i = coefficients.size(); i-- > 0;)
        size = size * std::fabs(x) + std::fabs(coefficients[i]);
    return size;
}

/// The slope at one of the roots that a polynomial was made of.
double slope_at(const std::vector<double>& roots, std::size_t one, double scale) {
    double slope = scale;
    for (std::size_t i = 0; i < roots.size(); ++i) slope *= i == one ? 1.0 : roots[one] - roots[i];
    return std::fabs(slope);
}

/// How far the roots of the rounded coefficients can be from those that they were made of: each
/// coefficient is a sum of products that took at most eight roundings.
double given_away_by_the_coefficients(const std::vector<double>& coefficients,
                                      const std::vector<double>& roots, std::size_t one) {
    return 8.0 * rounding * size_of_terms(coefficients, roots[one]) /
           slope_at(roots, one, coefficients.back());
}

/// How far a polished root can be off. Polishing ends when the value, with a largest coefficient of
/// 1, is at most 1e-14 of the larger of 1 and a bound of the rounding error, which counts each term
/// once for every coefficient; a value divided by the slope is a distance. Twice, for the
/// curvature.
double polished_within(const std::vector<double>& coefficients, const std::vector<double>& roots,
                       std::size_t one) {
    double largest = 0.0;
    for (const double c : coefficients) largest = std::max(largest, std::fabs(c));
    const double terms =
        static_cast<double>(coefficients.size()) * size_of_terms(coefficients, roots[one]);
    const double left = 1e-14 * std::max(std::max(1.0, largest), terms);
    return 2.0 * left / slope_at(roots, one, coefficients.back()) +
           given_away_by_the_coefficients(coefficients, roots, one);
}

/// How far the closed form for three roots can be off: its roundings, followed to first order.
///
/// With D the discriminant and q as in the formula, a root is 2 m cos(t + turn) - p2 / 3, where
/// m^6 = q^2 - D and tan 3t = sqrt(-D) / q. Rounding leaves D and q off by a few units of the size
/// of their terms; D is a difference of large terms where two roots are near each other.
double closed_form_within(const std::vector<double>& c) {
    const double p2 = c[2] / c[3], p1 = c[1] / c[3], p0 = c[0] / c[3];
    const double w = p1 * p2 - 3.0 * p0;
    const double q = w / 6.0 - p2 * p2 * p2 / 27.0;
    const double D = (0.75 * w * w + p1 * p1 * p1 + (p0 * p2 - p1 * p1) * p2 * p2) / 27.0;
    const double size_w = std::fabs(p1 * p2) + 3.0 * std::fabs(p0);
    const double size_q = size_w / 6.0 + std::fabs(p2 * p2 * p2) / 27.0;
    const double size_D = (0.75 * size_w * size_w + std::fabs(p1 * p1 * p1) +
                           (std::fabs(p0 * p2) + p1 * p1) * p2 * p2) /
                          27.0;
    // No term passes through more than twenty roundings.
    const double off_D = 20.0 * rounding * size_D;
    const double off_q = 20.0 * rounding * size_q;
    const double S = std::sqrt(-D);
    const double squares = q * q - D;
    const double off_S = off_D / (2.0 * S);
    const double off_t = (std::fabs(q) * off_S + S * off_q) / squares / 3.0;
    const double m = std::pow(squares, 1.0 / 6.0);
    const double off_m = m * (2.0 * std::fabs(q) * off_q + off_D) / squares / 6.0;
    const double last_sums = 20.0 * rounding * (2.0 * m + std::fabs(p2) / 3.0);
    return 2.0 * m * off_t + 2.0 * off_m + last_sums;
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
    // Deliberately uneven limits: 1e-12 above zero still counts as a double root ...
    double above[4] = {2.0 + 1e-12, -3.0, 0.0, 1.0};
    double roots[3];
    EXPECT_EQ(nmkSolver::cubsol(above, roots), 3);
    EXPECT_EQ(roots[1], roots[2]);
    // ... and as far below zero the roots are separate.
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

// p2 past about 7e51: the square of q overflows, and with it every root of the trigonometric form.
TEST(nmkSolver_cubsol, does_not_count_roots_that_overflow) {
    double c[4] = {-1.0, 1.0, 1e52, 1.0};
    double roots[3];
    int status[3] = {7, 7, 7};
    EXPECT_EQ(nmkSolver::cubsol(c, roots), 0);
    for (const int polish : {0, 1}) {
        EXPECT_EQ(nmkSolver::cubsol(c, polish, roots, status), 0);
        for (const int one : status) EXPECT_EQ(one, 0);
    }
}

TEST(nmkSolver_cubsol, finds_all_roots_up_to_the_coefficients_that_overflow) {
    double c[4] = {-1.0, 1.0, 6e51, 1.0};
    double roots[3];
    ASSERT_EQ(nmkSolver::cubsol(c, roots), 3);
    // The shift by p2 / 3 leaves a few units of the size of p2.
    EXPECT_NEAR(roots[0] / -6e51, 1.0, 1e-14);
    for (const double root : roots) EXPECT_TRUE(std::isfinite(root));
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

TEST(nmkSolver_qarsol, a_double_root_at_a_turning_point_comes_first_and_twice) {
    // (x - 1)^2 (x^2 + 2 x + 5): the quotient has no root.
    double c[5] = {5, -8, 2, 0, 1};
    double roots[4];
    int status[4];
    ASSERT_EQ(nmkSolver::qarsol(c, 0, roots, status), 2);
    EXPECT_NEAR(roots[0], 1.0, 1e-7);
    EXPECT_EQ(roots[0], roots[1]);
}

TEST(nmkSolver_qarsol, does_not_count_roots_of_the_deflated_cubic_that_overflow) {
    double c[5] = {1e-60, 2.0, 0.0, -2.0, -1e-60};
    double roots[4];
    int status[4];
    for (const int polish : {0, 1}) {
        ASSERT_EQ(nmkSolver::qarsol(c, polish, roots, status), 1);
        EXPECT_EQ(roots[0], 0.0);
    }
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

/// Calls check(i, roots ascending, coefficients) for many polynomials of this degree.
template <class Check>
void for_each_polynomial(int degree, Check check) {
    Generator random(20240611U + static_cast<unsigned>(degree));
    for (int i = 0; i < 20000; ++i) {
        std::vector<double> roots = separate_roots(random, degree, 5.0, 0.2);
        std::sort(roots.begin(), roots.end());
        check(i, roots, polynomial_of(roots, random.between(0.5, 3.0)));
    }
}

using Roots = std::vector<double>;

TEST(nmkSolver_separate_roots, of_a_quadratic_are_off_by_the_rounding_of_its_coefficients_only) {
    for_each_polynomial(2, [](int i, const Roots& expected, Roots c) {
        double roots[2];
        ASSERT_EQ(nmkSolver::qadsol(c.data(), roots), 2) << i;
        for (std::size_t j = 0; j < 2; ++j) {
            // The discriminant takes off what the coefficients do, and the last division a unit.
            const double within = 2.0 * given_away_by_the_coefficients(c, expected, j) +
                                  8.0 * rounding * std::fabs(expected[j]);
            EXPECT_NEAR(roots[j], expected[j], within) << i;
        }
    });
}

TEST(nmkSolver_separate_roots, of_a_cubic_are_off_by_what_the_closed_form_rounds_away) {
    double widest = 0.0;
    for_each_polynomial(3, [&](int i, const Roots& expected, Roots c) {
        double roots[3];
        ASSERT_EQ(nmkSolver::cubsol(c.data(), roots), 3) << i;
        const double closed_form = closed_form_within(c);
        widest = std::max(widest, closed_form);
        for (std::size_t j = 0; j < 3; ++j)
            EXPECT_NEAR(roots[j], expected[j],
                        closed_form + given_away_by_the_coefficients(c, expected, j))
                << i;
    });
    // A bound that allows everything would say nothing.
    EXPECT_LT(widest, 1e-5);
}

TEST(nmkSolver_separate_roots, of_a_cubic_are_sharp_after_polishing) {
    for_each_polynomial(3, [](int i, const Roots& expected, Roots c) {
        double roots[3];
        int status[3];
        ASSERT_EQ(nmkSolver::cubsol(c.data(), 1, roots, status), 3) << i;
        for (std::size_t j = 0; j < 3; ++j)
            EXPECT_NEAR(roots[j], expected[j], polished_within(c, expected, j)) << i;
    });
}

TEST(nmkSolver_separate_roots, of_a_quartic_are_sharp_after_polishing) {
    for_each_polynomial(4, [](int i, const Roots& expected, Roots c) {
        double roots[4];
        int status[4];
        ASSERT_EQ(nmkSolver::qarsol(c.data(), 1, roots, status), 4) << i;
        std::sort(roots, roots + 4);
        for (std::size_t j = 0; j < 4; ++j)
            EXPECT_NEAR(roots[j], expected[j], polished_within(c, expected, j)) << i;
    });
}

TEST(nmkSolver, every_counted_root_of_random_coefficients_is_a_root) {
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

testing::AssertionResult are_finite_roots(int count, int max_count, const double* roots) {
    if (count < 0 || count > max_count) return testing::AssertionFailure() << "count " << count;
    for (int i = 0; i < count; ++i) {
        if (!std::isfinite(roots[i]))
            return testing::AssertionFailure() << "root " << i << " is " << roots[i];
    }
    return testing::AssertionSuccess();
}

TEST(nmkSolver, hostile_coefficients_give_a_count_of_finite_roots) {
    Generator random(4711);
    for (int i = 0; i < hostile_count; ++i) {
        double c[5];
        for (double& one : c) one = random.hostile();
        double roots[4];
        int status[4];
        const int polish = i & 1;
        ASSERT_TRUE(are_finite_roots(nmkSolver::qadsol(c, roots), 2, roots)) << i;
        ASSERT_TRUE(are_finite_roots(nmkSolver::cubsol(c, roots), 3, roots)) << i;
        ASSERT_TRUE(are_finite_roots(nmkSolver::cubsol(c, polish, roots, status), 3, roots)) << i;
        ASSERT_TRUE(are_finite_roots(nmkSolver::qarsol(c, polish, roots, status), 4, roots)) << i;
    }
}

}  // namespace

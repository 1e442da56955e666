// nmkRootSolve and nmkCumulativeGaussian: brackets, results at the edges, and hostile functions.
#include <gtest/gtest.h>

#include <nmktoolbox/solver.h>
#include <cmath>
#include <functional>
#include <limits>
#include <stdexcept>
#include <utility>
#include <vector>

#include "solver/solver_samples.h"

namespace {

using Real = std::function<double(double)>;

class Function : public mlFunction {
  public:
    Function(Real value, Real slope) : m_value(std::move(value)), m_slope(std::move(slope)) {}

    double value(double x) const override {
        points.push_back(x);
        return m_value(x);
    }
    double derivative(int order, double x) const override {
        EXPECT_EQ(order, 1);
        ++derivatives;
        return m_slope(x);
    }

    mutable std::vector<double> points;
    mutable int derivatives = 0;

  private:
    Real m_value;
    Real m_slope;
};

class Exposed : public nmkRootSolve {
  public:
    using nmkRootSolve::evaluate_and_update;
};

const Real square_less_two = [](double x) { return x * x - 2.0; };
const Real twice = [](double x) { return 2.0 * x; };

TEST(nmkRootSolve, finds_the_root_in_the_bracket) {
    const Function f(square_less_two, twice);
    int converged = 7;
    const double x = nmkRootSolve::bracketed_root_solve(f, 0.5, 2.0, 0.0, converged, 50);
    EXPECT_NEAR(x, std::sqrt(2.0), 1e-10);
    EXPECT_EQ(converged, 1);
    for (const double point : f.points) EXPECT_TRUE(point >= 0.5 && point <= 2.0);
}

TEST(nmkRootSolve, an_end_that_is_a_root_is_returned_at_once) {
    const Function f([](double x) { return x - 1.0; }, [](double) { return 1.0; });
    int converged = 0;
    EXPECT_EQ(nmkRootSolve::bracketed_root_solve(f, 1.0, 2.0, 0.0, converged, 0), 1.0);
    EXPECT_EQ(converged, 1);
    EXPECT_EQ(f.points, (std::vector<double>{1.0}));
    converged = 0;
    EXPECT_EQ(nmkRootSolve::bracketed_root_solve(f, 0.0, 1.0, 0.0, converged, 0), 1.0);
    EXPECT_EQ(converged, 1);
}

TEST(nmkRootSolve, without_iterations_returns_the_midpoint) {
    const Function f(square_less_two, twice);
    for (const int most : {0, -3}) {
        int converged = 1;
        EXPECT_EQ(nmkRootSolve::bracketed_root_solve(f, 0.0, 3.0, -2.0, 7.0, 0.0, 6.0, 1e-10,
                                                     converged, most),
                  1.5);
        EXPECT_EQ(converged, 0);
    }
    EXPECT_TRUE(f.points.empty());
}

TEST(nmkRootSolve, a_flat_end_on_its_turn_takes_the_secant) {
    const Function f(square_less_two, twice);
    int converged = 0;
    nmkRootSolve::bracketed_root_solve(f, 0.0, 2.0, -2.0, 2.0, 0.0, 4.0, 1e-10, converged, 1);
    ASSERT_FALSE(f.points.empty());
    EXPECT_EQ(f.points[0], 1.0);
}

TEST(nmkRootSolve, a_newton_point_outside_takes_the_secant) {
    const Function f(square_less_two, twice);
    int converged = 0;
    nmkRootSolve::bracketed_root_solve(f, 0.25, 2.0, -1.9375, 2.0, 0.5, 4.0, 1e-10, converged, 1);
    ASSERT_FALSE(f.points.empty());
    EXPECT_EQ(f.points[0], (2.0 * -1.9375 - 0.25 * 2.0) / (-1.9375 - 2.0));
}

TEST(nmkRootSolve, ends_of_the_same_sign_run_as_they_are) {
    // Deliberate: nothing checks the signs. From 1 the Newton point is 0 and outside; the secant
    // meets the axis at 1/3, outside as well, and is taken all the same, for the low end; that made
    // the bracket wider, so that its midpoint follows.
    const Function f([](double x) { return x * x + 1.0; }, twice);
    int converged = 7;
    const double x =
        nmkRootSolve::bracketed_root_solve(f, 1.0, 2.0, 2.0, 5.0, 2.0, 4.0, 1e-10, converged, 1);
    const double secant = (2.0 * 2.0 - 1.0 * 5.0) / (2.0 - 5.0);
    const double middle = (secant + 2.0) / 2.0;
    EXPECT_EQ(f.points, (std::vector<double>{secant, middle}));
    EXPECT_EQ(x, (middle + 2.0) / 2.0);
    EXPECT_EQ(converged, 0);
}

TEST(nmkRootSolve, the_short_form_ignores_the_callers_tolerance) {
    const Function f([](double x) { return std::cos(x) - x; },
                     [](double x) { return -std::sin(x) - 1.0; });
    int converged = 0;
    const double expected = nmkRootSolve::bracketed_root_solve(f, 0.0, 1.0, 0.0, converged, 50);
    for (const double ignored : {1.0, -5.0, 1e300, std::numeric_limits<double>::quiet_NaN()})
        EXPECT_EQ(nmkRootSolve::bracketed_root_solve(f, 0.0, 1.0, ignored, converged, 50),
                  expected);
}

TEST(nmkRootSolve, what_the_function_throws_passes_through) {
    const Function f([](double) -> double { throw std::runtime_error("no value"); }, twice);
    int converged = 0;
    EXPECT_THROW(nmkRootSolve::bracketed_root_solve(f, 0.0, 1.0, 0.0, converged, 5),
                 std::runtime_error);
}

TEST(nmkRootSolve_evaluate_and_update, moves_the_end_of_the_sign) {
    const Function f(square_less_two, twice);
    double lo = 0, hi = 2, d_lo = 0, f_lo = -2, d_hi = 4, f_hi = 2, width = 2, result = 9;
    EXPECT_EQ(
        Exposed::evaluate_and_update(f, 1e-3, 1.0, lo, hi, d_lo, f_lo, d_hi, f_hi, width, result),
        0);
    EXPECT_EQ(lo, 1.0);
    EXPECT_EQ(f_lo, -1.0);
    EXPECT_EQ(d_lo, 2.0);
    EXPECT_EQ(width, 1.0);
    EXPECT_EQ(result, 9.0);
    // A tolerance above the width ends it; hi on a tie.
    f_hi = 0.25;
    EXPECT_EQ(
        Exposed::evaluate_and_update(f, 3.0, 1.5, lo, hi, d_lo, f_lo, d_hi, f_hi, width, result),
        1);
    EXPECT_EQ(hi, 1.5);
    EXPECT_EQ(result, 1.5);
}

TEST(nmkRootSolve_evaluate_and_update, takes_the_high_end_on_a_tie) {
    const Function f([](double x) { return x; }, [](double) { return 1.0; });
    double lo = -1, hi = 2, d_lo = 1, f_lo = -1, d_hi = 1, f_hi = 2, width = 3, result = 9;
    EXPECT_EQ(
        Exposed::evaluate_and_update(f, 5.0, 1.0, lo, hi, d_lo, f_lo, d_hi, f_hi, width, result),
        1);
    EXPECT_EQ(result, 1.0);
}

struct Extremum {
    double lo, hi, f_lo, f_hi, d_lo, d_hi, x = 9, f_x = 9;

    Extremum(const Real& f, const Real& d, double low, double high)
        : lo(low), hi(high), f_lo(f(low)), f_hi(f(high)), d_lo(d(low)), d_hi(d(high)) {}
    void find(const Function& f, double tolerance) {
        nmkRootSolve::bracketed_extrema_finder(f, lo, hi, f_lo, f_hi, d_lo, d_hi, x, f_x,
                                               tolerance);
    }
};

TEST(nmkRootSolve_bracketed_extrema_finder, finds_the_stationary_point) {
    const Real sine = [](double x) { return std::sin(x); };
    const Real cosine = [](double x) { return std::cos(x); };
    const Function f(sine, cosine);
    Extremum e(sine, cosine, 0.3, 2.9);
    e.find(f, 1e-9);
    EXPECT_NEAR(e.x, std::acos(0.0), 1e-9);
    EXPECT_NEAR(e.f_x, 1.0, 1e-15);
}

TEST(nmkRootSolve_bracketed_extrema_finder, ends_with_a_tolerance_of_zero) {
    const Real value = [](double x) { return (x - 0.3) * (x - 0.3) * (x - 0.3) * (x - 0.3); };
    const Real slope = [](double x) { return std::exp(x) - 1.4; };
    const Function f(value, slope);
    Extremum e(value, slope, 0.0, 1.0);
    e.find(f, 0.0);
    EXPECT_NEAR(e.x, std::log(1.4), 1e-15);
    EXPECT_LT(f.points.size(), 1000U);
}

/// p x^2 + q, with a slope that need not be its own.
class Hostile : public mlFunction {
  public:
    Hostile(double p, double q) : p_(p), q_(q) {}

    double value(double x) const override {
        ++calls;
        return p_ * x * x + q_;
    }
    double derivative(int, double x) const override { return q_ * x - p_; }

    mutable int calls = 0;

  private:
    double p_;
    double q_;
};

TEST(nmkRootSolve, hostile_functions_and_brackets_end) {
    solver_samples::Generator random(21);
    for (int i = 0; i < solver_samples::hostile_count; ++i) {
        const Hostile f(random.hostile(), random.hostile());
        int converged = 7;
        nmkRootSolve::bracketed_root_solve(f, random.hostile(), random.hostile(), 0.0, converged,
                                           20);
        ASSERT_TRUE(converged == 0 || converged == 1) << i;
        ASSERT_LE(f.calls, 2 + 3 * 20) << i;
    }
}

TEST(nmkRootSolve_bracketed_extrema_finder, hostile_functions_and_brackets_end) {
    solver_samples::Generator random(22);
    for (int i = 0; i < solver_samples::hostile_count; ++i) {
        const Hostile f(random.hostile(), random.hostile());
        double lo = random.hostile(), hi = random.hostile();
        double d_lo = f.derivative(1, lo), d_hi = f.derivative(1, hi);
        double f_lo = f.value(lo), f_hi = f.value(hi), x = 9, f_x = 9;
        nmkRootSolve::bracketed_extrema_finder(f, lo, hi, f_lo, f_hi, d_lo, d_hi, x, f_x,
                                               random.hostile());
        ASSERT_LE(f.calls, 10004) << i;
    }
}

TEST(nmkCumulativeGaussian, is_symmetric_about_a_half) {
    EXPECT_NEAR(nmkCumulativeGaussian::calculate(0.0), 0.5, 1e-8);
    for (double x = 0.125; x < 9.0; x += 0.125) {
        EXPECT_NEAR(nmkCumulativeGaussian::calculate(x) + nmkCumulativeGaussian::calculate(-x), 1.0,
                    1e-15);
    }
}

TEST(nmkCumulativeGaussian, agrees_with_the_error_function_to_its_stated_accuracy) {
    for (double x = -6.0; x <= 6.0; x += 0.01) {
        EXPECT_NEAR(nmkCumulativeGaussian::calculate(x), 0.5 * std::erfc(-x / std::sqrt(2.0)),
                    7.5e-8);
    }
}

TEST(nmkCumulativeGaussian, is_zero_or_one_far_out) {
    for (const double x : {40.0, 1e200, std::numeric_limits<double>::max()}) {
        EXPECT_EQ(nmkCumulativeGaussian::calculate(x), 1.0);
        EXPECT_EQ(nmkCumulativeGaussian::calculate(-x), 0.0);
    }
}

TEST(nmkCumulativeGaussian, takes_the_exponential_from_the_caller) {
    EXPECT_EQ(nmkCumulativeGaussian::calculate(1.5, std::exp(-1.125)),
              nmkCumulativeGaussian::calculate(1.5));
    EXPECT_EQ(nmkCumulativeGaussian::calculate(1.5, 0.0), 1.0);
}

}  // namespace

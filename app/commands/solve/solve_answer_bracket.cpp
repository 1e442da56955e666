// solve_answer_bracket: a root or an extremum of a polynomial between two ends.

#include <maths/mlFunction.h>
#include <nmktoolbox/solver/nmkRootSolve.h>

#include <cmath>

#include "commands/solve/solve_answer.h"
#include "text/number_format.h"

namespace nmk_solve {

namespace {

constexpr int max_iterations = 200;  // bisection alone needs fewer for a bracket of ordinary size
constexpr double extremum_tolerance = 1e-10;

/// A polynomial as the library takes a function; derivatives of first order only.
class PolynomialFunction : public mlFunction {
  public:
    explicit PolynomialFunction(std::vector<double> coefficients)
        : m_coefficients(std::move(coefficients)), m_derivative(derivative_of(m_coefficients)) {}

    double value(double x) const override { return polynomial_value(m_coefficients, x); }
    double derivative(int, double x) const override { return polynomial_value(m_derivative, x); }

  private:
    std::vector<double> m_coefficients;
    std::vector<double> m_derivative;
};

// The search of the library then ends at a value that is not finite.
constexpr const char* values_overflow = "values between the two ends overflow";

bool differ_in_sign(double a, double b) { return (a <= 0.0 && b >= 0.0) || (a >= 0.0 && b <= 0.0); }

void find_root(const PolynomialFunction& f, double low, double high, Answer& answer) {
    if (!differ_in_sign(f.value(low), f.value(high))) {
        answer.note = "the values at the two ends do not differ in sign";
        return;
    }
    int converged = 0;
    const double x =
        nmkRootSolve::bracketed_root_solve(f, low, high, 0.0, converged, max_iterations);
    if (!std::isfinite(x)) {
        answer.note = values_overflow;
        return;
    }
    answer.solutions.push_back({{x}, {f.value(x)}});
    if (converged == 0) {
        answer.note = "not converged after " + std::to_string(max_iterations) + " iterations";
    }
}

void find_extremum(const PolynomialFunction& f, double low, double high, Answer& answer) {
    double d_low = f.derivative(1, low);
    double d_high = f.derivative(1, high);
    if (!differ_in_sign(d_low, d_high)) {
        answer.note = "the slopes at the two ends do not differ in sign";
        return;
    }
    double f_low = f.value(low);
    double f_high = f.value(high);
    double x = d_low == 0.0 ? low : high;
    double f_x = d_low == 0.0 ? f_low : f_high;
    if (d_low != 0.0 && d_high != 0.0) {
        nmkRootSolve::bracketed_extrema_finder(f, low, high, f_low, f_high, d_low, d_high, x, f_x,
                                               extremum_tolerance);
    }
    if (!std::isfinite(x)) {
        answer.note = values_overflow;
        return;
    }
    answer.solutions.push_back({{x, f_x}, {f.derivative(1, x)}});
    if (!std::isfinite(f_x)) {
        answer.note = "the value at the extremum overflows";
    }
}

}  // namespace

Answer solve_bracket(const Problem& problem) {
    const bool is_root = problem.kind == ProblemKind::root;
    const double low = problem.numbers[0];
    const double high = problem.numbers[1];
    const PolynomialFunction f({problem.numbers.begin() + 2, problem.numbers.end()});
    Answer answer;
    const std::string text = polynomial_text({problem.numbers.begin() + 2, problem.numbers.end()});
    answer.problem = (is_root ? text + " = 0" : "extremum of " + text) + " between " +
                     nmk_text::readable_number(low) + " and " + nmk_text::readable_number(high);
    answer.value_names =
        is_root ? std::vector<std::string>{"x"} : std::vector<std::string>{"x", "value"};
    answer.residual_names = {is_root ? "residual" : "slope"};
    if (is_root) {
        find_root(f, low, high, answer);
    } else {
        find_extremum(f, low, high, answer);
    }
    return answer;
}

}  // namespace nmk_solve

// solve_answer.h: the solutions of a problem by the library, with their residuals.
//
// A solution is a row of values with named columns, and one residual for each equation: the
// difference of its two sides at these values, computed by the tool and not by the library.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "commands/solve/real_roots.h"
#include "commands/solve/solve_problem.h"

namespace nmk_solve {

struct Solution {
    std::vector<double> values;
    std::vector<double> residuals;
};

struct Answer {
    std::string problem;                      // "1 - 3 x + 2 x^2 = 0"
    std::vector<std::string> value_names;     // "cos phi"
    std::vector<std::string> residual_names;  // "residual"
    std::vector<Solution> solutions;
    std::optional<RootCount> real_roots;  // of a polynomial, proved
    std::string note;  // for a person, about the count of solutions; may be empty
};

/// The answer to a problem that read_problem has accepted. A bracket without a change of sign
/// between its ends has no solution but a note; so has a polynomial whose real roots are not as
/// many as the solver lists. No number is a negative zero.
Answer solve_problem(const Problem& problem);

/// "1 - 3 x + 2 x^2"
std::string polynomial_text(const std::vector<double>& coefficients);

/// The value at x, by Horner's rule.
double polynomial_value(const std::vector<double>& coefficients, double x);

/// The coefficients of the derivative; of a constant, one zero.
std::vector<double> derivative_of(const std::vector<double>& coefficients);

/// The real roots with the brackets that hold them and their multiplicities, without the solver.
Answer solve_certified(const std::vector<double>& coefficients);

// The solvers of the kinds; each has a file of its own.
Answer solve_polynomial(const std::vector<double>& coefficients);
Answer solve_bracket(const Problem& problem);
Answer solve_angles(const Problem& problem);
Answer solve_normal(double x);

}  // namespace nmk_solve

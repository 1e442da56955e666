// solve_answer: the solutions of a problem by the library.

#include "commands/solve/solve_answer.h"

#include <exactmath/exact_erfc.h>
#include <nmktoolbox/solver/nmkCumulativeGaussian.h>

#include <cmath>

#include "text/number_format.h"

namespace nmk_solve {

Answer solve_normal(double x) {
    Answer answer;
    answer.problem = "probability of a value of at most " + nmk_text::readable_number(x);
    answer.value_names = {"probability"};
    answer.residual_names = {"error"};
    const double probability = nmkCumulativeGaussian::calculate(x);
    const double exact = 0.5 * nmk_exact::exact_erfc(-x / std::sqrt(2.0));
    answer.solutions.push_back({{probability}, {probability - exact}});
    return answer;
}

namespace {

Answer solve_kind(const Problem& problem) {
    switch (problem.kind) {
        case ProblemKind::polynomial:
            return problem.certified ? solve_certified(problem.numbers)
                                     : solve_polynomial(problem.numbers);
        case ProblemKind::root:
        case ProblemKind::extremum:
            return solve_bracket(problem);
        case ProblemKind::normal:
            return solve_normal(problem.numbers[0]);
        default:
            return solve_angles(problem);
    }
}

}  // namespace

Answer solve_problem(const Problem& problem) {
    Answer answer = solve_kind(problem);
    for (Solution& solution : answer.solutions) {
        for (auto* const numbers : {&solution.values, &solution.residuals}) {
            for (double& number : *numbers) {
                number += 0.0;  // zero for a negative zero
            }
        }
    }
    return answer;
}

}  // namespace nmk_solve

// solve_answer_angles: the systems of one and of two angles.

#include <exactmath/exact_arctangent.h>
#include <nmktoolbox/solver/nmkAngleSolver.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "commands/solve/solve_answer.h"
#include "text/number_format.h"

namespace nmk_solve {

namespace {

constexpr std::size_t max_solutions = 4;
constexpr double degrees = 180.0 / 3.14159265358979323846;

/// The arrays that the library fills. They start as NaN, so that an element that it counts but does
/// not fill is recognised.
struct Slots {
    Slots() {
        for (auto* const array : {&cos_phi, &sin_phi, &cos_psi, &sin_psi}) {
            array->fill(std::numeric_limits<double>::quiet_NaN());
        }
    }
    std::array<double, max_solutions> cos_phi, sin_phi, cos_psi, sin_psi;
    int count = 0;
};

bool is_one_angle(ProblemKind kind) {
    return kind == ProblemKind::angles1 || kind == ProblemKind::angles2;
}

Slots solve(const Problem& problem) {
    const std::vector<double>& n = problem.numbers;
    Slots s;
    double* const cf = s.cos_phi.data();
    double* const sf = s.sin_phi.data();
    double* const cs = s.cos_psi.data();
    double* const ss = s.sin_psi.data();
    switch (problem.kind) {
        case ProblemKind::angles1:
            s.count = nmkAngleSolver::solve_angles1(n[0], n[1], n[2], cf, sf);
            break;
        case ProblemKind::angles2:
            s.count = nmkAngleSolver::solve_angles2(n[0], n[1], n[2], n[3], n[4], n[5], cf, sf);
            break;
        case ProblemKind::angles3:
            s.count = nmkAngleSolver::solve_angles3(n[0], n[1], n[2], n[3], n[4], n[5], n[6], n[7],
                                                    n[8], cf, sf, cs, ss);
            break;
        case ProblemKind::angles4:
            s.count =
                nmkAngleSolver::solve_angles4(n[0], n[1], n[2], n[3], n[4], n[5], cf, sf, cs, ss);
            break;
        case ProblemKind::angles4_one:
            s.count = nmkAngleSolver::solve_angles4_one_solution(n[0], n[1], n[2], n[3], n[4], n[5],
                                                                 cf, sf, cs, ss);
            break;
        case ProblemKind::angles5:
            s.count = nmkAngleSolver::solve_angles5(n[0], n[1], n[2], n[3], n[4], n[5], n[6], cf,
                                                    sf, cs, ss);
            break;
        default:
            s.count = nmkAngleSolver::solve_angles6(n[0], n[1], n[2], n[3], n[4], cf, sf, cs, ss);
            break;
    }
    return s;
}

/// The residual of the equation at an angle.
std::vector<double> one_angle_residual(const Problem& problem, double c, double s) {
    const std::vector<double>& n = problem.numbers;
    if (problem.kind == ProblemKind::angles1) {
        return {n[0] * c + n[1] * s - n[2]};
    }
    return {n[0] * c * c + n[1] * c * s + n[2] * s * s + n[3] * c + n[4] * s + n[5]};
}

/// The residuals of the two equations: cosine and sine of phi, then of psi.
std::vector<double> two_angle_residuals(const Problem& problem, double cf, double sf, double cs,
                                        double ss) {
    const std::vector<double>& n = problem.numbers;
    const double along = n[0] * cs + n[1] * ss;
    const double across = n[0] * ss - n[1] * cs;
    switch (problem.kind) {
        case ProblemKind::angles3:
            return {sf * along + n[2] * cf,
                    n[5] * cf + (n[3] * cs + n[4] * ss) * (n[7] + n[8] * sf) - n[6]};
        case ProblemKind::angles5: {
            const double radius = n[5] + n[6] * sf;
            return {radius * along - n[2], radius * across + n[3] * cf - n[4]};
        }
        case ProblemKind::angles6:
            return {sf * along + n[2] * cf, n[4] * sf * across - n[3]};
        default:
            return {sf * along + n[2] * cf, (n[4] + n[5] * sf) * across - n[3]};
    }
}

Solution solution_at(const Problem& problem, const Slots& slots, std::size_t i) {
    const double cf = slots.cos_phi[i];
    const double sf = slots.sin_phi[i];
    const double phi = nmk_exact::exact_atan2(sf, cf) * degrees;
    if (is_one_angle(problem.kind)) {
        return {{cf, sf, phi}, one_angle_residual(problem, cf, sf)};
    }
    const double cs = slots.cos_psi[i];
    const double ss = slots.sin_psi[i];
    return {{cf, sf, phi, cs, ss, nmk_exact::exact_atan2(ss, cs) * degrees},
            two_angle_residuals(problem, cf, sf, cs, ss)};
}

/// "angles1 A=1 B=0 C=0.5"
std::string problem_text(const Problem& problem) {
    const KindFacts& facts = facts_of(problem.kind);
    std::string text(facts.name);
    for (std::size_t i = 0; i < problem.numbers.size(); ++i) {
        text += " ";
        text += facts.letters[2 * i];
        text += "=" + nmk_text::readable_number(problem.numbers[i]);
    }
    return text;
}

}  // namespace

Answer solve_angles(const Problem& problem) {
    const Slots slots = solve(problem);
    Answer answer;
    answer.problem = problem_text(problem);
    if (is_one_angle(problem.kind)) {
        answer.value_names = {"cos", "sin", "degrees"};
        answer.residual_names = {"residual"};
    } else {
        answer.value_names = {"cos phi", "sin phi", "phi degrees",
                              "cos psi", "sin psi", "psi degrees"};
        answer.residual_names = {"residual 1", "residual 2"};
    }
    if (std::all_of(problem.numbers.begin(), problem.numbers.end(),
                    [](double number) { return number == 0.0; })) {
        answer.note = slots.count == 0
                          ? "all numbers are zero; every angle is a solution, and none is listed"
                          : "all numbers are zero; every angle is a solution";
    }
    for (std::size_t i = 0; i < static_cast<std::size_t>(slots.count); ++i) {
        Solution solution = solution_at(problem, slots, i);
        if (std::isnan(slots.cos_phi[i])) {
            answer.note = "the solver counted a solution that does not exist; it is left out";
        } else if (!std::all_of(solution.values.begin(), solution.values.end(),
                                [](double value) { return std::isfinite(value); })) {
            answer.note =
                "the numbers differ too much in size; solutions that overflow are left out";
        } else {
            answer.solutions.push_back(std::move(solution));
        }
    }
    return answer;
}

}  // namespace nmk_solve

// solve_answer_polynomial: real roots of polynomials of degree one to four.

#include <nmktoolbox/solver/nmkSolver.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "commands/solve/solve_answer.h"
#include "text/number_format.h"

namespace nmk_solve {

namespace {

constexpr int polish = 1;
constexpr int lost_root = 2;   // a status of qarsol
constexpr int too_uneven = 1;  // a status of cubsol

// Compared with a coefficient divided by the leading one: above, the products of the closed form of
// a cubic may overflow.
constexpr double max_ratio_to_leading = 1e50;

// Compared with the value at a listed root divided by the sum of the sizes of its terms. The solver
// takes two near roots for a double one up to about 1e-10 of that sum; above, rounding does not
// explain it.
constexpr double max_relative_residual = 1e-9;

constexpr const char* every_x_is_a_root =
    "all coefficients are zero; every x is a root, and none is listed";

struct Roots {
    std::array<double, 4> values{};
    std::array<int, 4> status{};
    int count = 0;
};

/// The library takes coefficients that are not const, so it gets a copy.
Roots roots_of(const std::vector<double>& coefficients) {
    std::array<double, 5> c{};
    std::copy(coefficients.begin(), coefficients.end(), c.begin());
    Roots roots;
    if (coefficients.size() == 5) {
        roots.count = nmkSolver::qarsol(c.data(), polish, roots.values.data(), roots.status.data());
    } else if (coefficients.size() == 4) {
        roots.count = nmkSolver::cubsol(c.data(), polish, roots.values.data(), roots.status.data());
    } else {
        roots.count = nmkSolver::qadsol(c.data(), roots.values.data());
    }
    return roots;
}

bool all_zero(const std::vector<double>& coefficients) {
    return std::all_of(coefficients.begin(), coefficients.end(), [](double c) { return c == 0.0; });
}

/// Whether the library has left out a root that overflows: the number of real roots has the parity
/// of the degree.
bool has_lost_overflowed_roots(const std::vector<double>& coefficients, const Roots& roots) {
    const auto degree = static_cast<int>(coefficients.size()) - 1;
    const double limit = max_ratio_to_leading * std::abs(coefficients.back());
    return degree >= 3 && limit > 0.0 && (degree - roots.count) % 2 != 0 &&
           std::any_of(coefficients.begin(), coefficients.end(),
                       [limit](double c) { return std::abs(c) > limit; });
}

std::string note_of(const std::vector<double>& coefficients, const Roots& roots) {
    if (all_zero(coefficients)) {
        return every_x_is_a_root;
    }
    if (coefficients.size() == 4 && roots.status[0] == too_uneven) {
        return "the coefficients differ too much in size; no roots are computed";
    }
    if (coefficients.size() == 5 && roots.count < 4 &&
        roots.status[static_cast<std::size_t>(roots.count)] == lost_root) {
        return "the leading coefficient is zero; one root is lost";
    }
    if (has_lost_overflowed_roots(coefficients, roots)) {
        return "the coefficients differ too much in size; roots that overflow are left out";
    }
    return {};
}

void add_note(std::string& note, const std::string& more) {
    note += (note.empty() ? "" : "; ") + more;
}

std::string count_text(const RootCount& count) {
    const std::size_t roots = count.with_multiplicity;
    const std::string text = roots == 0   ? "no real root"
                             : roots == 1 ? "1 real root"
                                          : std::to_string(roots) + " real roots";
    return count.distinct == roots ? text
                                   : text + ", " + std::to_string(count.distinct) + " distinct";
}

/// Whether rounding explains that the polynomial is not zero at a value that the solver lists.
bool is_root_but_for_rounding(const std::vector<double>& coefficients, double x) {
    double size = 0.0;
    for (std::size_t i = coefficients.size(); i-- > 0;) {
        size = size * std::abs(x) + std::abs(coefficients[i]);
    }
    return !std::isfinite(size) ||
           std::abs(polynomial_value(coefficients, x)) <= max_relative_residual * size;
}

/// Compares what the solver lists with the number of real roots.
void check_answer(const std::vector<double>& coefficients, Answer& answer) {
    answer.real_roots = count_real_roots(coefficients);
    const std::size_t listed = answer.solutions.size();
    const auto doubtful = std::count_if(
        answer.solutions.begin(), answer.solutions.end(),
        [&](const Solution& s) { return !is_root_but_for_rounding(coefficients, s.values[0]); });
    if (answer.real_roots->with_multiplicity != listed && !all_zero(coefficients)) {
        add_note(answer.note, "the polynomial has " + count_text(*answer.real_roots) +
                                  "; the solver lists " + std::to_string(listed));
    }
    if (doubtful > 0) {
        add_note(answer.note,
                 std::to_string(doubtful) + (doubtful == 1 ? " listed value is not a root"
                                                           : " listed values are not roots"));
    }
}

std::string term_text(double coefficient, std::size_t power) {
    std::string variable = power == 0 ? "" : power == 1 ? "x" : "x^" + std::to_string(power);
    if (coefficient == 1.0 && power > 0) {
        return variable;
    }
    return nmk_text::readable_number(coefficient) + (power > 0 ? " " : "") + variable;
}

}  // namespace

std::string polynomial_text(const std::vector<double>& coefficients) {
    std::string text;
    for (std::size_t power = 0; power < coefficients.size(); ++power) {
        const double c = coefficients[power];
        if (c == 0.0) {
            continue;
        }
        const bool is_first = text.empty();
        text += is_first ? (c < 0.0 ? "-" : "") : (c < 0.0 ? " - " : " + ");
        text += term_text(c < 0.0 ? -c : c, power);
    }
    return text.empty() ? "0" : text;
}

double polynomial_value(const std::vector<double>& coefficients, double x) {
    double value = 0.0;
    for (std::size_t i = coefficients.size(); i-- > 0;) {
        value = value * x + coefficients[i];
    }
    return value;
}

std::vector<double> derivative_of(const std::vector<double>& coefficients) {
    std::vector<double> derivative;
    for (std::size_t i = 1; i < coefficients.size(); ++i) {
        derivative.push_back(static_cast<double>(i) * coefficients[i]);
    }
    return derivative.empty() ? std::vector<double>{0.0} : derivative;
}

Answer solve_polynomial(const std::vector<double>& coefficients) {
    Roots roots = roots_of(coefficients);
    Answer answer;
    answer.problem = polynomial_text(coefficients) + " = 0";
    answer.value_names = {"x"};
    answer.residual_names = {"residual"};
    answer.note = note_of(coefficients, roots);
    const auto end = roots.values.begin() + roots.count;
    std::sort(roots.values.begin(), end);
    for (auto x = roots.values.begin(); x != end; ++x) {
        answer.solutions.push_back({{*x}, {polynomial_value(coefficients, *x)}});
    }
    check_answer(coefficients, answer);
    return answer;
}

Answer solve_certified(const std::vector<double>& coefficients) {
    Answer answer;
    answer.problem = polynomial_text(coefficients) + " = 0";
    answer.value_names = {"x", "low", "high", "multiplicity"};
    answer.residual_names = {"residual"};
    answer.real_roots = count_real_roots(coefficients);
    for (const CertifiedRoot& root : certified_roots(coefficients)) {
        answer.solutions.push_back(
            {{root.nearest, root.low, root.high, static_cast<double>(root.multiplicity)},
             {polynomial_value(coefficients, root.nearest)}});
    }
    if (all_zero(coefficients)) {
        answer.note = every_x_is_a_root;
    }
    return answer;
}

}  // namespace nmk_solve

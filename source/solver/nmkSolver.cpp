// nmkSolver: real roots of polynomials of degree two to four.
//
// Sums and products are evaluated from left to right as written; another order would change the
// last bits, and with them the counts near a double root.
#include <nmktoolbox/solver/nmkSolver.h>

#include <algorithm>
#include <cmath>

#include "solver/cubic_closed_form.h"
#include "solver/laguerre.h"
#include "solver/polynomial.h"
#include "solver/quartic_bracket.h"

using namespace nmk_solver;

namespace {

// Limits of qadsol. They apply to the coefficients after division by the largest, so they have no
// unit. They differ on purpose; do not merge two that happen to be equal.
constexpr double qadsol_c2_is_zero = 1e-11;           // below: solve the linear equation
constexpr double qadsol_c1_is_zero = 1e-10;           // below, in the linear equation: no root
constexpr double qadsol_two_roots = 1e-15;            // discriminant above: two distinct roots
constexpr double qadsol_two_roots_beside_c1 = 1e-10;  // the same, beside c1 squared
constexpr double qadsol_no_root = -1e-15;             // discriminant below this times c2: no root

// Limits of cubsol; those of its closed form are in cubic_closed_form.h.
constexpr double cubsol_c3_is_zero = 1.0000000000000002e-10;  // below: dropped, two-argument form
constexpr double cubsol_root_at_zero = 1e-16;                 // c0 below: a root at 0, status form
constexpr double cubsol_residual = 1e-5;  // above: polish although not requested

// Limits of qarsol, on the coefficients after division by the largest.
constexpr double qarsol_root_at_zero = 1e-15;       // c0 below: a root at 0
constexpr double qarsol_square_is_zero = -1e-15;    // biquadratic: x squared from here up to 0 is 0
constexpr double qarsol_double_root = 1e-15;        // value at a turning point below: double root
constexpr double qarsol_residual = 1e-5;            // above: polish although not requested
constexpr double qarsol_polished_residual = 1e-15;  // above: polish when requested
constexpr double qarsol_bracket_residual = 1e-5;    // above: polish the root from the bracket
constexpr double qarsol_forward_root = 1.0;         // at most: deflate from the top coefficient

constexpr int status_clear = 0;
constexpr int status_overflow = 1;
constexpr int status_is_root = 1;
constexpr int status_root_at_infinity = 2;

bool all_zero(const double* coefficients, int count) {
    return std::all_of(coefficients, coefficients + count, [](double c) { return c == 0.0; });
}

/// Any of the roots leaves a value of more than `limit`.
bool leaves_residual(const double* coefficients, int degree, const double* roots, int count,
                     double limit) {
    return std::any_of(roots, roots + count, [&](double root) {
        return std::fabs(polynomial_value(coefficients, degree, root)) > limit;
    });
}

/// Drops roots that a refinement has taken beyond the doubles; the others keep their order. Returns
/// how many are left.
int drop_overflowed(double* roots, int count) {
    double* const end =
        std::remove_if(roots, roots + count, [](double root) { return !std::isfinite(root); });
    return static_cast<int>(end - roots);
}

/// Divides the quartic by x - root from the side on which the division is stable.
void deflate(const double* a, double root, double* b) {
    if (std::fabs(root) <= qarsol_forward_root) {
        b[3] = a[4];
        b[2] = root * b[3] + a[3];
        b[1] = root * b[2] + a[2];
        b[0] = root * b[1] + a[1];
        return;
    }
    const double i = 1.0 / root;
    b[0] = -a[0] * i;
    b[1] = (b[0] - a[1]) * i;
    b[2] = (b[1] - a[2]) * i;
    b[3] = (b[2] - a[3]) * i;
}

/// Roots of a0 + a2 x^2 + a4 x^4.
int biquadratic(const double* a, double* roots) {
    double in_squares[3] = {a[0], a[2], a[4]};
    double squares[2];
    const int square_count = nmkSolver::qadsol(in_squares, squares);
    int count = 0;
    for (int i = 0; i < square_count; ++i) {
        const double u = squares[i];
        if (u >= 0.0) {
            roots[count++] = -std::sqrt(u);
            roots[count++] = std::sqrt(u);
        } else if (u >= qarsol_square_is_zero) {
            roots[count++] = 0.0;
            roots[count++] = 0.0;
        }
    }
    return count;
}

/// The roots when the quartic touches zero at the turning point x: x twice, then the other two.
int quartic_from_double_root(const double* a, double x, double* roots) {
    roots[0] = roots[1] = x;
    double quotient[3] = {3.0 * a[4] * x * x + 2.0 * a[3] * x + a[2], 2.0 * a[4] * x + a[3], a[4]};
    const int others = nmkSolver::qadsol(quotient, roots + 2);
    // Deliberate: a single root of the quotient brings along the zero in the slot behind it.
    return others == 0 ? 2 : 4;
}

}  // namespace

int nmkSolver::qadsol(double* coefficients, double* roots) {
    if (!all_finite(coefficients, 3)) return 0;
    double s = largest_absolute(coefficients, 3);
    if (s == 0.0) return 0;
    if (coefficients[2] < 0.0) s = -s;
    const double a = coefficients[2] / s;
    const double b = coefficients[1] / s;
    const double c = coefficients[0] / s;
    if (std::fabs(a) < qadsol_c2_is_zero) {
        if (std::fabs(b) < qadsol_c1_is_zero) return 0;
        roots[0] = -c / b;
        return 1;
    }
    if (c == 0.0) {
        roots[0] = 0.0;
        roots[1] = -b / a;
        put_in_order(roots[0], roots[1]);
        return 2;
    }
    const double d = b * b - 4.0 * a * c;
    if (d > qadsol_two_roots || (d > 0.0 && d > qadsol_two_roots_beside_c1 * b * b)) {
        const double r = std::sqrt(d);
        const double q = b > 0.0 ? -0.5 * (b + r) : -0.5 * (b - r);
        roots[0] = c / q;
        roots[1] = q / a;
        put_in_order(roots[0], roots[1]);
        return 2;
    }
    if (d < qadsol_no_root * std::fabs(a)) return 0;
    roots[0] = roots[1] = -b / (2.0 * a);
    return 2;
}

int nmkSolver::cubsol(double* coefficients, double* roots) {
    if (coefficients[3] == 0.0) return qadsol(coefficients, roots);
    if (coefficients[0] == 0.0) {
        if (!all_finite(coefficients, 4)) return 0;
        const int others = qadsol(coefficients + 1, roots);
        roots[others] = 0.0;
        if (others > 1) put_in_order(roots[1], roots[2]);
        if (others > 0) put_in_order(roots[0], roots[1]);
        return others + 1;
    }
    if (std::fabs(coefficients[3]) < cubsol_c3_is_zero) return qadsol(coefficients, roots);
    return std::max(cubic_closed_form(coefficients, roots), 0);
}

int nmkSolver::cubsol(double* coefficients, int polish, double* roots, int* status) {
    std::fill(status, status + 3, status_clear);
    if (!all_finite(coefficients, 4) || all_zero(coefficients, 4)) return 0;
    int count = 0;
    if (coefficients[3] == 0.0) {
        count = qadsol(coefficients, roots);
    } else if (std::fabs(coefficients[0]) < cubsol_root_at_zero) {
        // Deliberate: the root at zero comes last and is not sorted.
        count = qadsol(coefficients + 1, roots);
        roots[count++] = 0.0;
    } else {
        count = cubic_closed_form(coefficients, roots);
    }
    if (count == cubic_overflowed) {
        std::fill(status, status + 3, status_overflow);
        return 0;
    }
    return polished_cubic(coefficients, polish, roots, count);
}

int nmkSolver::polished_cubic(double* coefficients, int polish, double* roots, int count) {
    if (polish != 0 || leaves_residual(coefficients, 3, roots, count, cubsol_residual)) {
        int marks[3] = {};
        laguer(coefficients, 3, roots, count, marks);
        return drop_overflowed(roots, count);
    }
    return count;
}

int nmkSolver::qarsol(double* coefficients, int polish, double* roots, int* status) {
    std::fill(roots, roots + 4, 0.0);
    std::fill(status, status + 4, status_clear);
    if (!all_finite(coefficients, 5)) return 0;
    const double s = largest_absolute(coefficients, 5);
    if (s == 0.0) {
        std::fill(status, status + 4, status_root_at_infinity);
        return 0;
    }
    double a[5];
    for (int i = 0; i < 5; ++i) a[i] = coefficients[i] / s;
    int count = 0;
    if (a[4] == 0.0) {
        count = cubsol(a, 0, roots, status);
        status[count] = status_root_at_infinity;
    } else if (std::fabs(a[0]) < qarsol_root_at_zero) {
        count = 1 + cubsol(a + 1, 0, roots + 1, status + 1);
    } else if (a[3] == 0.0 && a[1] == 0.0) {
        count = biquadratic(a, roots);
    } else {
        count = quartic_with_bracket(a, polish, roots);
    }
    return checked_quartic(a, polish, roots, count);
}

int nmkSolver::quartic_with_bracket(double* a, int polish, double* roots) {
    if (!same_sign(a[4], a[0])) {
        const QuarticBracket found = bracket_on_the_positive_axis(a);
        if (found.kind == QuarticBracket::Kind::root)
            return quartic_from_root(a, polish, roots, found.high);
        return quartic_from_root(a, polish, roots, refine_in_bracket(a, found.low, found.high));
    }
    double slope[4] = {a[1], 2.0 * a[2], 3.0 * a[3], 4.0 * a[4]};
    double turning_points[3];
    int marks[3];
    const int turning_point_count = cubsol(slope, polish, turning_points, marks);
    for (int i = 0; i < turning_point_count; ++i) {
        const double x = turning_points[i];
        const double value = quartic_value(a, x);
        if (std::fabs(value) < qarsol_double_root) return quartic_from_double_root(a, x, roots);
        if (!same_sign(value, a[0]))
            return quartic_from_root(a, polish, roots, refine_in_bracket(a, 0.0, x));
    }
    return 0;
}

int nmkSolver::quartic_from_root(double* a, int polish, double* roots, double root) {
    if (!std::isfinite(root)) return 0;
    roots[0] = root;
    if (polish != 0 || std::fabs(quartic_value(a, root)) > qarsol_bracket_residual) {
        int one = 1;
        int mark = 0;
        laguer(a, 4, roots, one, &mark);
    }
    double cubic[4];
    int marks[3];
    deflate(a, roots[0], cubic);
    return 1 + cubsol(cubic, 0, roots + 1, marks);
}

int nmkSolver::checked_quartic(double* a, int polish, double* roots, int count) {
    const double limit = polish != 0 ? qarsol_polished_residual : qarsol_residual;
    if (leaves_residual(a, 4, roots, count, limit)) {
        int marks[4] = {};
        laguer(a, 4, roots, count, marks);
        return drop_overflowed(roots, count);
    }
    return count;
}

int nmkSolver::laguer(double* coefficients, int degree, double* roots, int& count, int* status) {
    const int count_on_entry = count;
    int written = 0;
    for (int read = 0; read < count_on_entry; ++read) {
        // Deliberate: the start comes from the slot that is written, the value to put back from the
        // slot that is read. Behind a dropped root they differ: the next root starts from the
        // dropped one's value, which decides between two doubtful roots side by side.
        if (laguerre_refines(coefficients, degree, roots[written], roots[read])) {
            status[written++] = status_is_root;
        } else {
            --count;
        }
    }
    return 1;
}

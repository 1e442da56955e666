// laguerre: the refinement of one root by Laguerre's method.
//
// Each step fits a polynomial with one root near x and all others at one point far from it. Where
// the near root would be complex, the step takes its real part or goes to the turning point.
#include "solver/laguerre.h"

#include <algorithm>
#include <cmath>

namespace nmk_solver {

namespace {

// Limits of laguer.
constexpr int laguer_max_steps = 7;
constexpr double laguer_is_root = 1.0000000000000002e-14;  // |p| at most, beside its error
constexpr double laguer_is_not_root = 1e-10;               // |p| above, beside its error
constexpr double laguer_real_part = 1e-30;                 // decides between two steps

/// Value, slope and half the second derivative at a point, with a bound of the rounding error.
struct LaguerreValues {
    double p;
    double slope = 0.0;
    double half_curvature = 0.0;
    double error;

    LaguerreValues(const double* coefficients, int degree, double x)
        : p(coefficients[degree]), error(std::fabs(coefficients[degree])) {
        const double size = std::fabs(x);
        for (int i = degree - 1; i >= 0; --i) {
            half_curvature = half_curvature * x + slope;
            slope = slope * x + p;
            p = p * x + coefficients[i];
            error = std::fabs(p) + size * error;
        }
    }

    double scale() const { return std::max(1.0, error); }
};

/// One step of Laguerre's method from x; false when the method defines no step there.
bool laguerre_step(const LaguerreValues& at, int degree, double& x) {
    const double n = degree;
    const double g = at.slope / at.p;
    const double h = g * g - 2.0 * at.half_curvature / at.p;
    const double v = (n - 1.0) * (n * h - g * g);
    if (!(v < 0.0)) {
        const double plus = g + std::sqrt(v);
        const double minus = g - std::sqrt(v);
        const double d = std::fabs(minus) > std::fabs(plus) ? minus : plus;
        if (d == 0.0) return false;
        x = x - n / d;
        return true;
    }
    const double m = g * g - v;
    if (m * m * laguer_real_part > -v) {
        x = x - n * g / m;
        return true;
    }
    if (at.slope == 0.0 || at.half_curvature == 0.0) return false;
    x = x - 0.5 * at.slope / at.half_curvature;
    return true;
}

}  // namespace

bool laguerre_refines(const double* coefficients, int degree, double& root, double on_entry) {
    double first_size = 0.0;
    double last_size = 0.0;
    double scale = 1.0;
    for (int i = 0; i < laguer_max_steps; ++i) {
        const LaguerreValues at(coefficients, degree, root);
        last_size = std::fabs(at.p);
        scale = at.scale();
        if (i == 0) first_size = last_size;
        if (last_size <= laguer_is_root * scale) return true;
        double x = root;
        if (!laguerre_step(at, degree, x)) break;
        if (x == root) return true;
        root = x;
    }
    if (last_size <= first_size) return true;
    root = on_entry;
    return !(first_size > laguer_is_not_root * scale);
}

}  // namespace nmk_solver

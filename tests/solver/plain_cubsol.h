// plain_cubsol: the closed form for cubics, one formula after the other, with a power for each
// root, and sine and cosine rounded from their series.
//
// The two-argument form of nmkSolver::cubsol, whose faster way must give the same to the last bit.
#pragma once

#include <exactmath/exact_arctangent.h>
#include <exactmath/exact_power.h>
#include <nmktoolbox/solver/nmkSolver.h>

#include <cmath>
#include <utility>

#include "exactmath/plain_sine.h"

namespace plain_cubsol {

inline double signed_cube_root(double x) {
    if (x == 0.0) return 0.0;
    const double root = nmk_exact::exact_pow(std::fabs(x), 1.0 / 3.0);
    return x < 0.0 ? -root : root;
}

inline void sort_three(double* roots) {
    if (roots[1] < roots[0]) std::swap(roots[0], roots[1]);
    if (roots[2] < roots[1]) std::swap(roots[1], roots[2]);
    if (roots[1] < roots[0]) std::swap(roots[0], roots[1]);
}

inline int three_roots(double q, double discriminant, double shift, double* roots) {
    if (!std::isfinite(q * q)) return 0;
    const double m = nmk_exact::exact_pow(q * q - discriminant, 1.0 / 6.0);
    const double t = nmk_exact::exact_atan2(std::sqrt(-discriminant), q) / 3.0;
    const double sine = plain_sine::sine(t);
    const double cosine = plain_sine::cosine(t);
    roots[0] = 2.0 * m * cosine - shift;
    roots[1] = -(m * cosine) - shift + m * sine * std::sqrt(3.0);
    roots[2] = -(m * cosine) - shift - m * sine * std::sqrt(3.0);
    sort_three(roots);
    return 3;
}

inline int closed_form(const double* c, double* roots) {
    if (!std::isfinite(c[3])) return 0;
    const double p2 = c[2] * (1.0 / c[3]);
    const double p1 = c[1] * (1.0 / c[3]);
    const double p0 = c[0] * (1.0 / c[3]);
    const double w = p1 * p2 - 3.0 * p0;
    if (!(std::fabs(p2) <= 1e100)) return 0;
    const double q = w / 6.0 - p2 * p2 * p2 / 27.0;
    if (!(std::fabs(p1) <= 1e100) || !(std::fabs(w) <= 1e150)) return 0;
    const double discriminant =
        (0.75 * w * w + p1 * p1 * p1 + (p0 * p2 - p1 * p1) * p2 * p2) / 27.0;
    if (!std::isfinite(discriminant)) return 0;
    const double shift = p2 / 3.0;
    if (discriminant > 1e-11) {
        const double r = std::sqrt(discriminant);
        roots[0] = signed_cube_root(q + r) + signed_cube_root(q - r) - shift;
        return 1;
    }
    if (discriminant < -1e-30) return three_roots(q, discriminant, shift, roots);
    const double u = signed_cube_root(q);
    roots[0] = 2.0 * u - shift;
    roots[1] = roots[2] = -u - shift;
    sort_three(roots);
    return 3;
}

inline int cubsol(double* c, double* roots) {
    if (c[3] == 0.0) return nmkSolver::qadsol(c, roots);
    if (c[0] == 0.0) {
        if (!std::isfinite(c[1]) || !std::isfinite(c[2]) || !std::isfinite(c[3])) return 0;
        const int others = nmkSolver::qadsol(c + 1, roots);
        roots[others] = 0.0;
        if (others > 1 && roots[2] < roots[1]) std::swap(roots[1], roots[2]);
        if (others > 0 && roots[1] < roots[0]) std::swap(roots[0], roots[1]);
        return others + 1;
    }
    if (std::fabs(c[3]) < 1.0000000000000002e-10) return nmkSolver::qadsol(c, roots);
    return closed_form(c, roots);
}

}  // namespace plain_cubsol

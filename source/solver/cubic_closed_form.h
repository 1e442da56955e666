// cubic_closed_form: the real roots of a cubic by Cardano's formula and its trigonometric form.
//
// In a header so that it becomes part of cubsol, which is called in inner loops. For the same
// reason all guards are combined into one test.
#pragma once

#include <exactmath/exact_arctangent.h>
#include <exactmath/exact_power.h>
#include <exactmath/exact_sine.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "solver/cube_roots.h"

namespace nmk_solver {

// Limits, after division by the leading coefficient.
constexpr double cubsol_largest_p2 = 1e100;  // above: no roots
constexpr double cubsol_largest_p1 = 1e100;  // above: no roots
constexpr double cubsol_largest_w = 1e150;   // above: no roots
// Deliberate: the two limits of the discriminant are uneven. A tiny positive one is what is left of
// a double root in noise, while a tiny negative one still separates two roots.
constexpr double cubsol_one_root = 1e-11;      // above: one real root
constexpr double cubsol_three_roots = -1e-30;  // below: three distinct roots

constexpr int cubic_overflowed = -1;

/// Without a branch, which could not be predicted here.
inline void put_in_order(double& first, double& second) {
    const double low = std::min(first, second);
    second = std::max(second, first);
    first = low;
}

inline void sort_three(double* roots) {
    put_in_order(roots[0], roots[1]);
    put_in_order(roots[1], roots[2]);
    put_in_order(roots[0], roots[1]);
}

inline int cubic_one_root(double q, double discriminant, double shift, double* roots) {
    const double r = std::sqrt(discriminant);
    const CubeRoots sizes = cube_roots(std::fabs(q + r), std::fabs(q - r));
    roots[0] = std::copysign(sizes.first, q + r) + std::copysign(sizes.second, q - r) - shift;
    return 1;
}

/// 0 roots where the square of q overflows: none of the three would be a number.
inline int cubic_three_roots(double q, double discriminant, double shift, double* roots) {
    const double m = sixth_root(q * q - discriminant);
    if (!std::isfinite(m)) return 0;
    const double t = nmk_exact::exact_atan2(std::sqrt(-discriminant), q) / 3.0;
    const auto [sine, cosine] = nmk_exact::exact_sine_and_cosine(t);
    const double along = m * cosine;
    const double across = m * sine * std::sqrt(3.0);
    roots[0] = 2.0 * m * cosine - shift;
    roots[1] = -along - shift + across;
    roots[2] = -along - shift - across;
    sort_three(roots);
    return 3;
}

inline int cubic_double_root(double q, double shift, double* roots) {
    const double u =
        q == 0.0 ? 0.0 : std::copysign(nmk_exact::exact_pow(std::fabs(q), 1.0 / 3.0), q);
    roots[0] = 2.0 * u - shift;
    roots[1] = roots[2] = -u - shift;
    sort_three(roots);
    return 3;
}

/// The roots, ascending, for a leading coefficient that is not zero: a count, or cubic_overflowed.
[[gnu::always_inline]] inline int cubic_closed_form(const double* c, double* roots) {
    constexpr double largest = std::numeric_limits<double>::max();
    const double reciprocal = 1.0 / c[3];
    const double p2 = c[2] * reciprocal;
    const double p1 = c[1] * reciprocal;
    const double p0 = c[0] * reciprocal;
    const double w = p1 * p2 - 3.0 * p0;
    const double q = w / 6.0 - p2 * p2 * p2 / 27.0;
    const double discriminant =
        (0.75 * w * w + p1 * p1 * p1 + (p0 * p2 - p1 * p1) * p2 * p2) / 27.0;
    // Turned so that NaN counts as overflow.
    const bool within = int{std::fabs(c[3]) <= largest} & int{std::fabs(p2) <= cubsol_largest_p2} &
                        int{std::fabs(p1) <= cubsol_largest_p1} &
                        int{std::fabs(w) <= cubsol_largest_w} &
                        int{std::fabs(discriminant) <= largest};
    if (!within) return cubic_overflowed;
    const double shift = p2 / 3.0;
    if (discriminant < cubsol_three_roots) return cubic_three_roots(q, discriminant, shift, roots);
    if (discriminant > cubsol_one_root) return cubic_one_root(q, discriminant, shift, roots);
    return cubic_double_root(q, shift, roots);
}

}  // namespace nmk_solver

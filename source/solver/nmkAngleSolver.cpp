// nmkAngleSolver: one angle, and the choice of the method for two.
#include <nmktoolbox/solver/nmkAngleSolver.h>
#include <nmktoolbox/solver/nmkSolver.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include "solver/angle_arrays.h"
#include "solver/angle_system.h"
#include "solver/polynomial.h"

using namespace nmk_solver;

namespace {

// solve_angles1: the right side may exceed the amplitude, in the squares, by this part.
constexpr double angles1_beyond_amplitude = -1e-5;

// solve_angles2: roots on the same side of zero nearer than this are one.
constexpr double angles2_same_root = 1e-8;

// solve_angles3, after scaling: the limits of the choice of the method.
constexpr double angles3_c_is_zero = 1e-10;  // at most: first method
constexpr double angles3_k_counts = 0.001;   // above, with h zero: second method

constexpr int with_polish = 1;

/// An earlier root is the same within the limit.
bool repeats(const double* roots, int position) {
    return std::any_of(roots, roots + position, [root = roots[position]](double earlier) {
        return std::fabs(earlier - root) < angles2_same_root && (earlier < 0.0) == (root < 0.0);
    });
}

bool first_method_is_better(const AngleSystem& s) {
    if (std::fabs(s.c) <= angles3_c_is_zero) return true;
    if (s.h == 0.0 && s.k > angles3_k_counts) return false;
    return s.f != 0.0 && !(std::fabs(s.f) <= std::fabs(s.g));
}

bool is_degenerate(const AngleSystem& s) {
    const bool second_method = s.h == 0.0 && s.k > angles3_k_counts;
    return !second_method && s.f == 0.0 && s.g == 0.0;
}

/// Divides each equation by its size. Returns false when the second one vanishes or overflows.
bool scale_second_equation(AngleSystem& s) {
    const double length = std::sqrt(s.d * s.d + s.e * s.e);
    const double r = length == 0.0 ? 1.0 : length;
    s.d /= r;
    s.e /= r;
    s.h = r * s.h;
    s.k = r * s.k;
    s.sr = std::max({std::fabs(s.h), s.k, std::fabs(s.f), std::fabs(s.g)});
    if (s.sr == 0.0 || !std::isfinite(s.sr)) return false;
    s.h /= s.sr;
    s.k /= s.sr;
    s.f /= s.sr;
    s.g /= s.sr;
    return true;
}

void scale_first_equation(AngleSystem& s) {
    s.sa = std::max({std::fabs(s.a), std::fabs(s.b), std::fabs(s.c)});
    if (s.sa == 0.0) return;
    s.a /= s.sa;
    s.b /= s.sa;
    s.c /= s.sa;
}

}  // namespace

double nmkAngleSolver::clip_to_range(double value) {
    if (value > 1.0) return 1.0;
    return value < -1.0 ? -1.0 : value;
}

int nmkAngleSolver::solve_angles1(double a, double b, double c, double* cosines, double* sines) {
    const double s = a * a + b * b;
    const double d = s - c * c;
    if (!std::isfinite(s) || !std::isfinite(d)) return 0;
    if (s == 0.0 || d <= angles1_beyond_amplitude * s) return 0;
    if (!(d > 0.0)) {
        const double amplitude = 1.0 / std::sqrt(s);
        const double r = c < 0.0 ? -amplitude : amplitude;
        cosines[0] = clip_to_range(r * a);
        sines[0] = clip_to_range(r * b);
        return 1;
    }
    const double w = std::sqrt(d) / s;
    cosines[0] = clip_to_range(c * a / s - w * b);
    sines[0] = clip_to_range(c * b / s + w * a);
    cosines[1] = clip_to_range(c * a / s + w * b);
    sines[1] = clip_to_range(c * b / s - w * a);
    return 2;
}

int nmkAngleSolver::solve_angles1(double a, double b, double c, giAngle* const angles) {
    AngleArray<2> t;
    const int count = solve_angles1(a, b, c, t.cosines, t.sines);
    set_angles(count, t.cosines, t.sines, angles);
    return count;
}

int nmkAngleSolver::solve_angles2(double a, double b, double c, double d, double e, double f,
                                  double* cosines, double* sines) {
    // The larger linear term goes with the cosine, which keeps the quartic well scaled.
    const bool swapped = !(std::fabs(e) <= std::fabs(d));
    if (swapped) {
        std::swap(a, c);
        std::swap(d, e);
        std::swap(cosines, sines);
    }
    double quartic[5] = {a + d + f, 2.0 * (b + e), 2.0 * (2.0 * c + f - a), 2.0 * (e - b),
                         a - d + f};
    double roots[4];
    int status[4];
    const int root_count = nmkSolver::qarsol(quartic, with_polish, roots, status);
    int count = 0;
    for (int i = 0; i < root_count; ++i) {
        if (repeats(roots, i)) continue;
        const double t = roots[i];
        const double u = 2.0 / (1.0 + t * t);
        cosines[count] = u - 1.0;
        sines[count] = u * t;
        ++count;
    }
    if (root_count < 4 && status[root_count] != 0) {
        // The leading coefficient vanished: half the angle is a right angle.
        cosines[count] = -1.0;
        sines[count] = 0.0;
        ++count;
    }
    return count;
}

int nmkAngleSolver::solve_angles2(double a, double b, double c, double d, double e, double f,
                                  giAngle* const angles) {
    AngleArray<4> t;
    const int count = solve_angles2(a, b, c, d, e, f, t.cosines, t.sines);
    set_angles(count, t.cosines, t.sines, angles);
    return count;
}

int nmkAngleSolver::solve_angles3(double a, double b, double c, double d, double e, double f,
                                  double g, double h, double k, double* cos_phi, double* sin_phi,
                                  double* cos_psi, double* sin_psi) {
    const double parameters[] = {a, b, c, d, e, f, g, h, k};
    if (!all_finite(parameters, 9)) return 0;
    if (h + k < 0.0) return 0;
    AngleSystem s{a, b, c, d, e, f, g, h, k, 0.0, 0.0};
    if (!scale_second_equation(s)) return 0;
    scale_first_equation(s);
    if (s.sa == 0.0 || first_method_is_better(s)) {
        return solve_angles3_first_method(s.a, s.b, s.c, s.d, s.e, s.f, s.g, s.h, s.k, s.sa, s.sr,
                                          cos_phi, sin_phi, cos_psi, sin_psi);
    }
    if (is_degenerate(s)) {
        return solve_angles3_degenerate_case(s.a, s.b, s.c, s.d, s.e, s.h, s.k, cos_phi, sin_phi,
                                             cos_psi, sin_psi);
    }
    return solve_angles3_second_method(s.a, s.b, s.c, s.d, s.e, s.f, s.g, s.h, s.k, s.sa, s.sr,
                                       cos_phi, sin_phi, cos_psi, sin_psi);
}

int nmkAngleSolver::solve_angles3(double a, double b, double c, double d, double e, double f,
                                  double g, double h, double k, giAngle* const phi,
                                  giAngle* const psi) {
    AngleArray<2> first;
    AngleArray<2> second;
    const int count = solve_angles3(a, b, c, d, e, f, g, h, k, first.cosines, first.sines,
                                    second.cosines, second.sines);
    set_angles(count, first.cosines, first.sines, phi);
    set_angles(count, second.cosines, second.sines, psi);
    return count;
}

int nmkAngleSolver::solve_angles3_degenerate_case(double a, double b, double c, double d, double e,
                                                  double h, double k, double* cos_phi,
                                                  double* sin_phi, double* cos_psi,
                                                  double* sin_psi) {
    int count = 0;
    if (h < 0.0) {
        // The radius vanishes here, and psi is free in the second equation.
        const double t = -h / k;
        const double u = other_of_unit(t);
        count = solve_angles1(t * a, t * b, -u * c, cos_psi, sin_psi);
        std::fill(cos_phi, cos_phi + count, u);
        std::fill(sin_phi, sin_phi + count, t);
    }
    const double m = std::sqrt(std::max(0.0, d * d + e * e));
    if (m == 0.0 || count == 2) return count;
    double cp = -e / m;
    double sp = d / m;
    double w = cp * a + sp * b;
    if ((w > 0.0) == (c > 0.0)) {
        cp = -cp;
        sp = -sp;
        w = -w;
    }
    const double q = std::sqrt(std::max(0.0, w * w + c * c));
    const double sn = std::fabs(c) / q;
    if (sn * k + h >= 0.0) {
        cos_phi[count] = std::fabs(w) / q;
        sin_phi[count] = sn;
        cos_psi[count] = cp;
        sin_psi[count] = sp;
    }
    // Deliberate: the slot counts also when the test above left it unfilled; callers check it.
    return count + 1;
}

int nmkAngleSolver::solve_angles3_first_method(const double& a, const double& b, const double& c,
                                               const double& d, const double& e, const double& f,
                                               const double& g, const double& h, const double& k,
                                               const double& sa, const double& sr,
                                               double* const& cos_phi, double* const& sin_phi,
                                               double* const& cos_psi, double* const& sin_psi) {
    return angles3_first_method({a, b, c, d, e, f, g, h, k, sa, sr},
                                {cos_phi, sin_phi, cos_psi, sin_psi});
}

int nmkAngleSolver::solve_angles3_second_method(const double& a, const double& b, const double& c,
                                                const double& d, const double& e, const double& f,
                                                const double& g, const double& h, const double& k,
                                                const double& sa, const double& sr,
                                                double* const& cos_phi, double* const& sin_phi,
                                                double* const& cos_psi, double* const& sin_psi) {
    return angles3_second_method({a, b, c, d, e, f, g, h, k, sa, sr},
                                 {cos_phi, sin_phi, cos_psi, sin_psi});
}

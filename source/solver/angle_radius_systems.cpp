// angle_radius_systems: the systems of two angles whose second equation contains the radius alone.
//
// Squaring and adding the two equations leaves phi: a quartic (solve_angles4), a conic
// (solve_angles5) or a square root (solve_angles6). psi is computed from the stronger equation.
#include <nmktoolbox/solver/nmkAngleSolver.h>
#include <nmktoolbox/solver/nmkSolver.h>

#include <algorithm>
#include <cmath>

#include "solver/angle_arrays.h"
#include "solver/angle_reference.h"
#include "solver/polynomial.h"

using namespace nmk_solver;

namespace {

// solve_angles4 and its descent.
constexpr double angles4_same_sine = 1e-10;       // phi is taken for a repetition within this
constexpr double angles4_sine_is_small = 1e-5;    // sin phi beside R, below: psi from (E2)
constexpr double angles4_radius_is_small = 1e-5;  // R beside sin phi, below: psi from (E1)
constexpr double angles4_sine_is_variable = 1.0;  // c squared at most: the unknown is sin phi
constexpr double angles4_largest_root = 1.000000000000001;  // rounding may leave 1 by this much

// solve_angles5, beside |d|.
constexpr double angles5_size_counts = 1e-5;  // |h| + k, or c, at most this: negligible

// solve_angles6.
constexpr double angles6_beyond_one = 1e-15;      // sin phi squared beyond 1 by less: 90 degrees
constexpr double angles6_sine_is_small = 1e-5;    // this times k above 1: psi from (E2)
constexpr double angles6_radius_is_small = 1e-5;  // k below: psi from (E1)

// quartic_laguer.
constexpr int quartic_laguer_max_steps = 13;
constexpr double quartic_laguer_is_zero = 1e-15;  // |p| at most: x is a root

constexpr int with_polish = 1;

PsiSource angles4_source(double sine, double radius) {
    if (sine < angles4_sine_is_small * radius) return PsiSource::second_equation;
    if (radius < angles4_radius_is_small * sine) return PsiSource::first_equation;
    return PsiSource::both;
}

PsiSource angles6_source(double k) {
    // k was scaled to at most 1, so that the first case does not occur with ordinary data.
    if (angles6_sine_is_small * k > 1.0) return PsiSource::second_equation;
    if (k < angles6_radius_is_small) return PsiSource::first_equation;
    return PsiSource::both;
}

/// c and d by the length of the reference; then d, h and k by the largest of them.
struct Scaled4 {
    double r, c, d, h, k;

    Scaled4(double a, double b, double c_in, double d_in, double h_in, double k_in)
        : r(std::sqrt(a * a + b * b)), c(c_in / r), d(d_in / r) {
        const double m = std::max({std::fabs(h_in), k_in, std::fabs(d)});
        d /= m;
        h = h_in / m;
        k = k_in / m;
    }
};

bool sine_is_unknown(double c) { return c * c <= angles4_sine_is_variable; }

/// The quartic in sin phi, or in the squared tangent of half its complement, which stays bounded
/// for a large c.
void build_quartic(double c, double d, double h, double k, double* quartic) {
    if (sine_is_unknown(c)) {
        quartic[0] = -h * h * c * c;
        quartic[1] = -2.0 * h * k * c * c;
        quartic[2] = h * h * c * c - k * k * c * c + h * h - d * d;
        quartic[3] = 2.0 * h * k * c * c + 2.0 * h * k;
        quartic[4] = k * k * c * c + k * k;
        return;
    }
    const double A = h + k;
    const double B = h - k;
    const double p = 2.0 * A * B;
    const double q = 4.0 * c * c + 2.0;
    quartic[0] = d * d - A * A;
    quartic[1] = A * A * q - p;
    quartic[2] = -2.0 * d * d - A * A + p * q - B * B;
    quartic[3] = B * B * q - p;
    quartic[4] = d * d - B * B;
}

AngleDirection phi_of_root(double c, double y) {
    if (sine_is_unknown(c)) return {std::sqrt(1.0 - y * y), y};
    return {2.0 * std::sqrt(y) / (1.0 + y), (1.0 - y) / (1.0 + y)};
}

bool within_unit(double x) { return x >= 0.0 && x <= 1.0; }

/// Roots of (h + k y)^2 = d^2.
int radius_quadratic(double d, double h, double k, double* roots) {
    double quadratic[3] = {h * h - d * d, 2.0 * h * k, k * k};
    return nmkSolver::qadsol(quadratic, roots);
}

/// Candidates of solve_angles5 for a radius that is negligible beside d.
int negligible_radius(double c, double d, double e, double h, double k, double* cosines,
                      double* sines) {
    if (d == 0.0) return 0;
    const double radius = other_of_unit(e / d) * k + h;
    const double square = radius * radius - c * c;
    if (!(square >= 0.0)) return 0;
    const double v = std::sqrt(square);
    cosines[0] = (e - v) / d;
    cosines[1] = (e + v) / d;
    sines[0] = other_of_unit(cosines[0]);
    sines[1] = other_of_unit(cosines[1]);
    return 2;
}

/// psi of solve_angles5 from the reference, with w = e - d cos phi.
AngleDirection angles5_psi(double c, double w, double radius, double limit) {
    if (std::fabs(c) > limit || radius == 0.0) {
        const double squares = w * w + c * c;
        if (squares == 0.0) return {1.0, 0.0};
        const double m = std::sqrt(squares);
        return {c / m, w / m};
    }
    const double cosine = std::clamp(c / radius, -1.0, 1.0);
    const double sine = std::sqrt(1.0 - cosine * cosine);
    return {cosine, w > 0.0 ? sine : -sine};
}

}  // namespace

int nmkAngleSolver::solve_angles4(double a, double b, double c, double d, double h, double k,
                                  double* cos_phi, double* sin_phi, double* cos_psi,
                                  double* sin_psi) {
    const double parameters[] = {a, b, c, d, h, k};
    if (!all_finite(parameters, 6)) return 0;
    if (h == 0.0) return solve_angles6(a, b, c, d, k, cos_phi, sin_phi, cos_psi, sin_psi);
    if (h + k < 0.0) return 0;
    const Scaled4 s(a, b, c, d, h, k);
    if (s.r == 0.0) return 0;
    double cosines[4];
    double sines[4];
    const int pairs = solve_angles4_quartic(a, b, s.c, s.d, s.h, s.k, cosines, sines);
    int count = 0;
    for (int i = 0; i < pairs; ++i) {
        const auto repeated = [sine = sines[i]](double earlier) {
            return std::fabs(earlier - sine) <= angles4_same_sine;
        };
        if (std::any_of(sines, sines + i, repeated)) continue;
        const double radius = sines[i] * s.k + s.h;
        if (radius < 0.0) continue;
        const ReferencePsi found = reference_psi(angles4_source(sines[i], radius),
                                                 {cosines[i], sines[i]}, radius, s.c, s.d);
        for (int j = 0; j < found.count; ++j) {
            const AngleDirection& psi = found.psi[j];
            cos_phi[count] = clip_to_range(cosines[i]);
            sin_phi[count] = clip_to_range(sines[i]);
            cos_psi[count] = clip_to_range(psi.cosine * a / s.r - psi.sine * b / s.r);
            sin_psi[count] = clip_to_range(psi.cosine * b / s.r + psi.sine * a / s.r);
            if (++count == 4) return count;
        }
    }
    return count;
}

int nmkAngleSolver::solve_angles4(double a, double b, double c, double d, double h, double k,
                                  giAngle* const phi, giAngle* const psi) {
    AngleArray<4> first;
    AngleArray<4> second;
    const int count =
        solve_angles4(a, b, c, d, h, k, first.cosines, first.sines, second.cosines, second.sines);
    set_angles(count, first.cosines, first.sines, phi);
    set_angles(count, second.cosines, second.sines, psi);
    return count;
}

int nmkAngleSolver::solve_angles4_one_solution(double a, double b, double c, double d, double h,
                                               double k, double* cos_phi, double* sin_phi,
                                               double* cos_psi, double* sin_psi) {
    const double parameters[] = {a, b, c, d, h, k};
    if (!all_finite(parameters, 6)) return 0;
    if (h == 0.0) return solve_angles6(a, b, c, d, k, cos_phi, sin_phi, cos_psi, sin_psi);
    if (solve_angles4_iteratively(a, b, c, d, h, k, *cos_phi, *sin_phi, *cos_psi, *sin_psi) == 1)
        return 1;
    return solve_angles4(a, b, c, d, h, k, cos_phi, sin_phi, cos_psi, sin_psi);
}

int nmkAngleSolver::solve_angles4_one_solution(double a, double b, double c, double d, double h,
                                               double k, giAngle* const phi, giAngle* const psi) {
    AngleArray<4> first;
    AngleArray<4> second;
    const int count = solve_angles4_one_solution(a, b, c, d, h, k, first.cosines, first.sines,
                                                 second.cosines, second.sines);
    set_angles(count, first.cosines, first.sines, phi);
    set_angles(count, second.cosines, second.sines, psi);
    return count;
}

int nmkAngleSolver::solve_angles5(double a, double b, double c, double d, double e, double h,
                                  double k, double* cos_phi, double* sin_phi, double* cos_psi,
                                  double* sin_psi) {
    const double parameters[] = {a, b, c, d, e, h, k};
    if (!all_finite(parameters, 7)) return 0;
    if (h + k < 0.0) return 0;
    const double r = std::sqrt(a * a + b * b);
    if (r == 0.0) return 0;
    a /= r;
    b /= r;
    c /= r;
    d /= r;
    e /= r;
    const double limit = angles5_size_counts * std::fabs(d);
    double cosines[4];
    double sines[4];
    const int candidates = limit < std::fabs(h) + k
                               ? solve_angles2(-d * d, 0.0, k * k, 2.0 * d * e, 2.0 * h * k,
                                               h * h - c * c - e * e, cosines, sines)
                               : negligible_radius(c, d, e, h, k, cosines, sines);
    int count = 0;
    for (int i = 0; i < candidates && count < 2; ++i) {
        const double radius = sines[i] * k + h;
        if (!(sines[i] >= 0.0) || !within_unit(cosines[i]) || !(radius >= 0.0)) continue;
        const AngleDirection psi = angles5_psi(c, e - cosines[i] * d, radius, limit);
        cos_phi[count] = cosines[i];
        sin_phi[count] = sines[i];
        cos_psi[count] = clip_to_range(psi.cosine * a - psi.sine * b);
        sin_psi[count] = clip_to_range(psi.cosine * b + psi.sine * a);
        ++count;
    }
    return count;
}

int nmkAngleSolver::solve_angles5(double a, double b, double c, double d, double e, double h,
                                  double k, giAngle* const phi, giAngle* const psi) {
    AngleArray<2> first;
    AngleArray<2> second;
    const int count = solve_angles5(a, b, c, d, e, h, k, first.cosines, first.sines, second.cosines,
                                    second.sines);
    set_angles(count, first.cosines, first.sines, phi);
    set_angles(count, second.cosines, second.sines, psi);
    return count;
}

int nmkAngleSolver::solve_angles6(double a, double b, double c, double d, double k, double* cos_phi,
                                  double* sin_phi, double* cos_psi, double* sin_psi) {
    const double parameters[] = {a, b, c, d, k};
    if (!all_finite(parameters, 5)) return 0;
    const double r = std::sqrt(a * a + b * b);
    if (r == 0.0) return 0;
    a /= r;
    b /= r;
    c /= r;
    d /= r;
    const double m = std::max(k, std::fabs(d));
    if (m == 0.0) return 0;
    d /= m;
    k /= m;
    const double q = (c * c * k * k + d * d) / ((c * c + 1.0) * k * k);
    if (!(q - 1.0 < angles6_beyond_one)) return 0;
    const AngleDirection phi =
        q > 1.0 ? AngleDirection{0.0, 1.0} : AngleDirection{std::sqrt(1.0 - q), std::sqrt(q)};
    const double radius = phi.sine * k;
    if (radius < 0.0) return 0;
    const ReferencePsi found = reference_psi(angles6_source(k), phi, radius, c, d);
    for (int i = 0; i < found.count; ++i) {
        const AngleDirection& psi = found.psi[i];
        cos_phi[i] = clip_to_range(phi.cosine);
        sin_phi[i] = clip_to_range(phi.sine);
        cos_psi[i] = clip_to_range(psi.cosine * a - psi.sine * b);
        sin_psi[i] = clip_to_range(psi.cosine * b + psi.sine * a);
    }
    return found.count;
}

int nmkAngleSolver::solve_angles6(double a, double b, double c, double d, double k,
                                  giAngle* const phi, giAngle* const psi) {
    AngleArray<2> first;
    AngleArray<2> second;
    const int count =
        solve_angles6(a, b, c, d, k, first.cosines, first.sines, second.cosines, second.sines);
    set_angles(count, first.cosines, first.sines, phi);
    set_angles(count, second.cosines, second.sines, psi);
    return count;
}

int nmkAngleSolver::solve_angles4_quartic(double /*a*/, double /*b*/, double c, double d, double h,
                                          double k, double* cosines, double* sines) {
    double quartic[5];
    build_quartic(c, d, h, k, quartic);
    double roots[4];
    int status[4];
    const int root_count = nmkSolver::qarsol(quartic, with_polish, roots, status);
    int count = 0;
    for (int i = 0; i < root_count; ++i) {
        if (!(roots[i] >= 0.0 && roots[i] <= angles4_largest_root)) continue;
        const AngleDirection phi = phi_of_root(c, std::min(roots[i], 1.0));
        cosines[count] = phi.cosine;
        sines[count] = phi.sine;
        ++count;
    }
    return count;
}

int nmkAngleSolver::solve_angles4_iteratively(double a, double b, double c, double d, double h,
                                              double k, double& cos_phi, double& sin_phi,
                                              double& cos_psi, double& sin_psi) {
    if (h + k < 0.0) return 0;
    const Scaled4 s(a, b, c, d, h, k);
    if (s.r == 0.0) return 0;
    AngleDirection phi;
    if (s.c == 0.0) {
        double roots[2];
        if (radius_quadratic(s.d, s.h, s.k, roots) != 2) return 0;
        phi.sine = within_unit(roots[0]) ? roots[0] : roots[1];
        if (!within_unit(phi.sine)) return 0;
        phi.cosine = std::sqrt(1.0 - phi.sine * phi.sine);
    } else if (solve_angles4_quartic_iteratively(s.c, s.d, s.h, s.k, phi.cosine, phi.sine) == 0) {
        return 0;
    }
    const double radius = phi.sine * s.k + s.h;
    if (radius < 0.0) return 0;
    const ReferencePsi found =
        reference_psi(angles4_source(phi.sine, radius), phi, radius, s.c, s.d);
    if (found.count == 0) return 0;
    const AngleDirection& psi = found.psi[0];
    cos_phi = phi.cosine;
    sin_phi = phi.sine;
    cos_psi = clip_to_range(psi.cosine * a / s.r - psi.sine * b / s.r);
    sin_psi = clip_to_range(psi.cosine * b / s.r + psi.sine * a / s.r);
    return 1;
}

int nmkAngleSolver::solve_angles4_quadratic(double d, double h, double k, double& cosine,
                                            double& sine) {
    double roots[2];
    const int count = radius_quadratic(d, h, k, roots);
    if (count == 0) return 0;
    const double root = count == 1 || within_unit(roots[0]) ? roots[0] : roots[1];
    if (!within_unit(root)) return 0;
    sine = root;
    cosine = std::sqrt(1.0 - root * root);
    return 1;
}

int nmkAngleSolver::solve_angles4_quartic_iteratively(double c, double d, double h, double k,
                                                      double& cosine, double& sine) {
    double quartic[5];
    build_quartic(c, d, h, k, quartic);
    // Both starts are phi at 90 degrees.
    double y = sine_is_unknown(c) ? 1.0 : 0.0;
    if (quartic_laguer(quartic, y) == 0 || !within_unit(y)) return 0;
    const AngleDirection phi = phi_of_root(c, y);
    cosine = phi.cosine;
    sine = phi.sine;
    return 1;
}

int nmkAngleSolver::quartic_laguer(double* const a, double& x) {
    double size = 0.0;
    for (int i = 0; i < quartic_laguer_max_steps; ++i) {
        const double p = polynomial_value(a, 4, x);
        size = std::fabs(p);
        if (size <= quartic_laguer_is_zero) return 1;
        const double slope = ((4.0 * a[4] * x + 3.0 * a[3]) * x + 2.0 * a[2]) * x + a[1];
        const double curvature = (12.0 * a[4] * x + 6.0 * a[3]) * x + 2.0 * a[2];
        const double g = slope / p;
        const double v = 9.0 * g * g - 12.0 * curvature / p;
        const double s = std::sqrt(std::max(v, 0.0));
        const double d = std::fabs(g + s) > std::fabs(g - s) ? g + s : g - s;
        if (d == 0.0) break;
        const double next = x - 4.0 / d;
        if (next == x) break;
        x = next;
    }
    return size <= quartic_laguer_is_zero ? 1 : 0;
}

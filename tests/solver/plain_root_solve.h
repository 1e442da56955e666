// plain_root_solve: the searches in a bracket, written down one sentence after the other. What the
// solver returns must be the same to the last bit, and it must evaluate at the same points.
#pragma once

#include <maths/mlFunction.h>

#include <algorithm>
#include <cmath>

namespace plain_root_solve {

struct Bracket {
    double lo, hi, f_lo, f_hi, d_lo, d_hi;
};

/// Evaluates at x; true when that ends the search, with the result in `root`.
inline bool visit(const mlFunction& f, double x, double tolerance, Bracket& b, double& root) {
    const double d = f.derivative(1, x), v = f.value(x);
    root = x;
    if (v == 0.0) return true;
    if (v * b.f_lo < 0.0) {
        b.hi = x;
        b.f_hi = v;
        b.d_hi = d;
    } else {
        b.lo = x;
        b.f_lo = v;
        b.d_lo = d;
    }
    root = std::fabs(b.f_lo) < std::fabs(b.f_hi) ? b.lo : b.hi;
    return b.hi - b.lo < tolerance;
}

inline double root(const mlFunction& f, Bracket b, double tolerance, int& converged, int most) {
    converged = 1;
    double prev = b.hi - b.lo, found = 0.0;
    for (int i = 0; i < most; ++i) {
        const double slope = i % 2 == 0 ? b.d_lo : b.d_hi;
        const double x = i % 2 == 0 ? b.lo - b.f_lo / b.d_lo : b.hi - b.f_hi / b.d_hi;
        if (slope != 0.0 && x >= b.lo && x <= b.hi) {
            if (visit(f, x, tolerance, b, found)) return found;
            const bool too_wide = b.hi - b.lo >= 0.75 * prev;
            prev = b.hi - b.lo;
            if (!too_wide) continue;
        }
        const double secant = (b.hi * b.f_lo - b.lo * b.f_hi) / (b.f_lo - b.f_hi);
        if (visit(f, secant, tolerance, b, found)) return found;
        if (b.hi - b.lo > 0.75 * prev) {
            if (visit(f, (b.lo + b.hi) / 2.0, tolerance, b, found)) return found;
        }
        prev = b.hi - b.lo;
    }
    converged = 0;
    return (b.lo + b.hi) / 2.0;
}

/// True when x is the stationary point.
inline bool visit_slope(const mlFunction& f, double x, Bracket& b, double& f_x) {
    const double d = f.derivative(1, x);
    f_x = f.value(x);
    if (d == 0.0) return true;
    if (d * b.d_lo >= 0.0) {
        b.lo = x;
        b.d_lo = d;
        b.f_lo = f_x;
    } else {
        b.hi = x;
        b.d_hi = d;
        b.f_hi = f_x;
    }
    return false;
}

inline double slope_secant(const Bracket& b) {
    const double x = (b.d_lo * b.hi - b.d_hi * b.lo) / (b.d_lo - b.d_hi);
    return std::min(b.hi, std::max(b.lo, x));
}

inline void extremum(const mlFunction& f, Bracket& b, double& x, double& f_x, double tolerance) {
    while (b.hi - b.lo > tolerance) {
        x = slope_secant(b);
        if (visit_slope(f, x, b, f_x)) return;
        if (b.hi - b.lo >= tolerance) {
            x = (b.lo + b.hi) / 2.0;
            if (visit_slope(f, x, b, f_x)) return;
        }
    }
    x = slope_secant(b);
    f_x = f.value(x);
}

}  // namespace plain_root_solve

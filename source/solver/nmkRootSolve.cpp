// nmkRootSolve: a root or a stationary point of a function in a bracket.
#include <nmktoolbox/solver/nmkRootSolve.h>

#include <cmath>

namespace {

// The short form of the root search.
constexpr double short_form_tolerance = 1e-10;

// A step has shrunk the bracket enough when less than this part of the width is left.
constexpr double newton_left_enough = 0.75;
constexpr double secant_left_enough = 0.75;

// Rounds of the search for a stationary point. Each at least halves the bracket, and fewer than
// 2200 halvings exhaust the doubles.
constexpr int max_extrema_rounds = 5000;

/// A bracket of a root with what is known at its ends.
struct Bracket {
    double lo, hi, f_lo, f_hi, d_lo, d_hi;

    double midpoint() const { return (lo + hi) / 2.0; }
    double secant() const { return (hi * f_lo - lo * f_hi) / (f_lo - f_hi); }

    /// The Newton point from one end; false when it is not in the bracket.
    bool newton(bool from_low, double& x) const {
        const double slope = from_low ? d_lo : d_hi;
        if (slope == 0.0) return false;
        x = from_low ? lo - f_lo / d_lo : hi - f_hi / d_hi;
        return x >= lo && x <= hi;
    }

    /// Evaluates at x and moves an end there; true when the search is over, with the result.
    bool update(const mlFunction& f, double x, double tolerance, double& result) {
        const double d = f.derivative(1, x);
        const double v = f.value(x);
        if (v == 0.0) {
            result = x;
            return true;
        }
        if (v * f_lo < 0.0) {
            hi = x;
            f_hi = v;
            d_hi = d;
        } else {
            lo = x;
            f_lo = v;
            d_lo = d;
        }
        if (!(hi - lo < tolerance)) return false;
        result = std::fabs(f_lo) < std::fabs(f_hi) ? lo : hi;
        return true;
    }
};

/// The zero of the line through the slopes at the ends, held to the bracket.
double secant_of_slopes(double lo, double hi, double d_lo, double d_hi) {
    const double x = (d_lo * hi - d_hi * lo) / (d_lo - d_hi);
    if (x > hi) return hi;
    return x < lo ? lo : x;
}

}  // namespace

double nmkRootSolve::bracketed_root_solve(const mlFunction& f, double lo, double hi,
                                          double /*ignored*/, int& converged, int max_iterations) {
    converged = 1;
    const double d_lo = f.derivative(1, lo);
    const double f_lo = f.value(lo);
    if (f_lo == 0.0) return lo;
    const double d_hi = f.derivative(1, hi);
    const double f_hi = f.value(hi);
    if (f_hi == 0.0) return hi;
    // Deliberate: the caller's tolerance has no effect; callers pass all sorts of values for it.
    return bracketed_root_solve(f, lo, hi, f_lo, f_hi, d_lo, d_hi, short_form_tolerance, converged,
                                max_iterations);
}

double nmkRootSolve::bracketed_root_solve(const mlFunction& f, double lo, double hi, double f_lo,
                                          double f_hi, double d_lo, double d_hi, double tolerance,
                                          int& converged, int max_iterations) {
    converged = 1;
    Bracket bracket{lo, hi, f_lo, f_hi, d_lo, d_hi};
    double previous_width = hi - lo;
    double result = 0.0;
    for (int i = 0; i < max_iterations; ++i) {
        double x = 0.0;
        if (bracket.newton(i % 2 == 0, x)) {
            if (bracket.update(f, x, tolerance, result)) return result;
            const double width = bracket.hi - bracket.lo;
            const bool shrank = !(width >= newton_left_enough * previous_width);
            previous_width = width;
            if (shrank) continue;
        }
        if (bracket.update(f, bracket.secant(), tolerance, result)) return result;
        if (bracket.hi - bracket.lo > secant_left_enough * previous_width &&
            bracket.update(f, bracket.midpoint(), tolerance, result))
            return result;
        previous_width = bracket.hi - bracket.lo;
    }
    converged = 0;
    return bracket.midpoint();
}

void nmkRootSolve::bracketed_extrema_finder(const mlFunction& f, double& lo, double& hi,
                                            double& f_lo, double& f_hi, double& d_lo, double& d_hi,
                                            double& x, double& f_x, double tolerance) {
    // Evaluates at x and moves an end there; true when x is the stationary point.
    const auto finds_it_at_x = [&] {
        const double d = f.derivative(1, x);
        f_x = f.value(x);
        if (d == 0.0) return true;
        const bool low = d * d_lo >= 0.0;
        (low ? lo : hi) = x;
        (low ? d_lo : d_hi) = d;
        (low ? f_lo : f_hi) = f_x;
        return false;
    };
    for (int i = 0; i < max_extrema_rounds && hi - lo > tolerance; ++i) {
        const double lo_before = lo;
        const double hi_before = hi;
        x = secant_of_slopes(lo, hi, d_lo, d_hi);
        if (finds_it_at_x()) return;
        if (hi - lo >= tolerance) {
            x = (lo + hi) / 2.0;
            if (finds_it_at_x()) return;
        }
        // The bracket has shrunk to the spacing of doubles.
        if (lo == lo_before && hi == hi_before) break;
    }
    x = secant_of_slopes(lo, hi, d_lo, d_hi);
    f_x = f.value(x);
}

int nmkRootSolve::evaluate_and_update(const mlFunction& f, double tolerance, double x, double& lo,
                                      double& hi, double& d_lo, double& f_lo, double& d_hi,
                                      double& f_hi, double& width, double& result) {
    const double d = f.derivative(1, x);
    const double v = f.value(x);
    if (v == 0.0) {
        result = x;
        return 1;
    }
    const bool low = !(v * f_lo < 0.0);
    (low ? lo : hi) = x;
    (low ? f_lo : f_hi) = v;
    (low ? d_lo : d_hi) = d;
    width = hi - lo;
    if (tolerance <= width) return 0;
    result = std::fabs(f_lo) < std::fabs(f_hi) ? lo : hi;
    return 1;
}

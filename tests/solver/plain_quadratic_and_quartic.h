// plain_quadratic_and_quartic: qadsol, the status form of cubsol, laguer and qarsol, written down
// one sentence after the other. The results of the solver must be the same to the last bit.
//
// The closed form for cubics is that of plain_cubsol.h. Inputs are finite and of ordinary size: no
// loop has a bound, but they are given up, by an exception, after more turns than any needs.
#pragma once

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <utility>

#include "solver/plain_cubsol.h"

namespace plain_solver {

inline double value_of(const double* c, int n, double x) {
    double p = c[n];
    for (int i = n - 1; i >= 0; --i) p = p * x + c[i];
    return p;
}

inline bool negative(double x) { return x < 0.0; }

inline int qadsol(const double* coefficients, double* roots) {
    double s = std::max(
        {std::fabs(coefficients[0]), std::fabs(coefficients[1]), std::fabs(coefficients[2])});
    if (s == 0.0) return 0;
    if (coefficients[2] < 0.0) s = -s;
    const double a = coefficients[2] / s, b = coefficients[1] / s, c = coefficients[0] / s;
    if (std::fabs(a) < 1e-11) {
        if (std::fabs(b) < 1e-10) return 0;
        roots[0] = -c / b;
        return 1;
    }
    if (c == 0.0) {
        roots[0] = 0.0;
        roots[1] = -b / a;
    } else {
        const double d = b * b - 4.0 * a * c;
        if (!(d > 1e-15) && !(d > 0.0 && d > 1e-10 * b * b)) {
            if (d < -1e-15 * std::fabs(a)) return 0;
            roots[0] = roots[1] = -b / (2.0 * a);
            return 2;
        }
        const double r = std::sqrt(d);
        const double q = b > 0.0 ? -0.5 * (b + r) : -0.5 * (b - r);
        roots[0] = c / q;
        roots[1] = q / a;
    }
    if (roots[1] < roots[0]) std::swap(roots[0], roots[1]);
    return 2;
}

/// Whether the root stays; `x` is refined, starting from its value.
inline bool refine(const double* c, int n, double& x, double on_entry) {
    double first = 0.0, p = 0.0, e = 0.0;
    for (int turn = 0; turn < 7; ++turn) {
        double slope = 0.0, half = 0.0;
        p = c[n];
        e = std::fabs(p);
        for (int i = n - 1; i >= 0; --i) {
            half = half * x + slope;
            slope = slope * x + p;
            p = p * x + c[i];
            e = std::fabs(p) + std::fabs(x) * e;
        }
        if (turn == 0) first = std::fabs(p);
        if (std::fabs(p) <= 1.0000000000000002e-14 * std::max(1.0, e)) return true;
        const double g = slope / p;
        const double h = g * g - 2.0 * half / p;
        const double v = (n - 1.0) * (n * h - g * g);
        double next = 0.0;
        if (v >= 0.0) {
            const double plus = g + std::sqrt(v), minus = g - std::sqrt(v);
            const double d = std::fabs(plus) >= std::fabs(minus) ? plus : minus;
            if (d == 0.0) break;
            next = x - n / d;
        } else {
            const double m = g * g - v;
            if (m * m * 1e-30 > -v) {
                next = x - n * g / m;
            } else {
                if (slope == 0.0 || half == 0.0) break;
                next = x - 0.5 * slope / half;
            }
        }
        if (next == x) return true;
        x = next;
    }
    if (std::fabs(p) <= first) return true;
    x = on_entry;
    return first <= 1e-10 * std::max(1.0, e);
}

inline void laguer(const double* c, int n, double* roots, int& count, int* status) {
    int to = 0;
    const int all = count;
    for (int from = 0; from < all; ++from) {
        const bool stays = refine(c, n, roots[to], roots[from]);
        if (stays) {
            status[to++] = 1;
        } else {
            --count;
        }
    }
}

inline int cubsol(const double* c, int polish, double* roots, int* status) {
    status[0] = status[1] = status[2] = 0;
    if (c[0] == 0.0 && c[1] == 0.0 && c[2] == 0.0 && c[3] == 0.0) return 0;
    int count = 0;
    if (c[3] == 0.0) {
        count = plain_solver::qadsol(c, roots);
    } else if (std::fabs(c[0]) < 1e-16) {
        count = plain_solver::qadsol(c + 1, roots);
        roots[count] = 0.0;
        ++count;
    } else {
        count = plain_cubsol::closed_form(c, roots);
        if (count == 0) {  // the guards; the square of q does not overflow here
            status[0] = status[1] = status[2] = 1;
            return 0;
        }
    }
    bool doubtful = polish != 0;
    for (int i = 0; i < count; ++i) doubtful |= std::fabs(value_of(c, 3, roots[i])) > 1e-5;
    int scratch[3];
    if (doubtful) laguer(c, 3, roots, count, scratch);
    return count;
}

/// The root in the bracket, where `low` has the sign of p(0).
inline double newton(const double* a, double low, double high) {
    const auto slope_at = [&](double x) {
        return ((4.0 * a[4] * x + 3.0 * a[3]) * x + 2.0 * a[2]) * x + a[1];
    };
    const double flat = 4e-10 * std::max(std::fabs(low), std::fabs(high));
    double step = high - low, slope = 1.0, previous = 0.0, x = (low + high) / 2.0;
    for (int turn = 0;; ++turn) {
        if (turn == 5000) throw std::runtime_error("no end");
        const double p = value_of(a, 4, x);
        if (std::fabs(p) <= 1e-15) return x;
        const double change = std::fabs(p - previous);
        if ((std::fabs(p) < flat || change <= flat) &&
            std::fabs(std::max(slope, 1.0) * step) <= 1e-5 &&
            std::fabs(step) <= std::max(1e-5 * std::fabs(x), 1e-10))
            return x;
        if (change < 1e-10 * std::max(std::fabs(p), std::fabs(previous))) return x;
        (negative(p) == negative(a[0]) ? low : high) = x;
        slope = slope_at(x);
        if (std::fabs(slope * step) <= std::fabs(2.0 * p)) {
            x = (low + high) / 2.0;
            step = (high - low) / 2.0;
        } else {
            step = p / slope;
            x = x - step;
        }
        previous = p;
    }
}

inline int from_first_root(const double* a, int polish, double x, double* roots) {
    roots[0] = x;
    if (polish != 0 || std::fabs(value_of(a, 4, x)) > 1e-5) {
        int one = 1, scratch = 0;
        laguer(a, 4, roots, one, &scratch);
    }
    const double r = roots[0];
    double b[4];
    if (std::fabs(r) <= 1.0) {
        b[3] = a[4];
        b[2] = r * b[3] + a[3];
        b[1] = r * b[2] + a[2];
        b[0] = r * b[1] + a[1];
    } else {
        const double i = 1.0 / r;
        b[0] = -a[0] * i;
        b[1] = (b[0] - a[1]) * i;
        b[2] = (b[1] - a[2]) * i;
        b[3] = (b[2] - a[3]) * i;
    }
    int scratch[3];
    return plain_solver::cubsol(b, 0, roots + 1, scratch) + 1;
}

inline int by_bracket(const double* a, int polish, double* roots) {
    if (negative(a[4]) != negative(a[0])) {
        double low = 0.0, x = 1.0;
        while (std::fabs(value_of(a, 4, x)) > 1e-15) {
            if (negative(value_of(a, 4, x)) != negative(a[0])) {
                return from_first_root(a, polish, newton(a, low, x), roots);
            }
            low = x;
            x *= 10.0;
        }
        return from_first_root(a, polish, x, roots);
    }
    const double slope[4] = {a[1], 2.0 * a[2], 3.0 * a[3], 4.0 * a[4]};
    double turning[3];
    int scratch[3];
    const int turning_points = plain_solver::cubsol(slope, polish, turning, scratch);
    for (int i = 0; i < turning_points; ++i) {
        const double x = turning[i];
        const double p = value_of(a, 4, x);
        if (std::fabs(p) < 1e-15) {
            roots[0] = roots[1] = x;
            const double rest[3] = {3.0 * a[4] * x * x + 2.0 * a[3] * x + a[2],
                                    2.0 * a[4] * x + a[3], a[4]};
            return plain_solver::qadsol(rest, roots + 2) == 0 ? 2 : 4;
        }
        if (negative(p) != negative(a[0])) {
            return from_first_root(a, polish, newton(a, 0.0, x), roots);
        }
    }
    return 0;
}

inline int qarsol(const double* coefficients, int polish, double* roots, int* status) {
    std::fill(roots, roots + 4, 0.0);
    std::fill(status, status + 4, 0);
    double s = 0.0;
    for (int i = 0; i < 5; ++i) s = std::max(s, std::fabs(coefficients[i]));
    if (s == 0.0) {
        std::fill(status, status + 4, 2);
        return 0;
    }
    double a[5];
    for (int i = 0; i < 5; ++i) a[i] = coefficients[i] / s;
    int count = 0;
    if (a[4] == 0.0) {
        count = plain_solver::cubsol(a, 0, roots, status);
        status[count] = 2;
    } else if (std::fabs(a[0]) < 1e-15) {
        count = 1 + plain_solver::cubsol(a + 1, 0, roots + 1, status + 1);
    } else if (a[3] == 0.0 && a[1] == 0.0) {
        const double squares[3] = {a[0], a[2], a[4]};
        double u[2];
        const int found = plain_solver::qadsol(squares, u);
        for (int i = 0; i < found; ++i) {
            if (u[i] < -1e-15) continue;
            const double root = u[i] < 0.0 ? 0.0 : std::sqrt(u[i]);
            roots[count++] = u[i] < 0.0 ? 0.0 : -root;
            roots[count++] = root;
        }
    } else {
        count = by_bracket(a, polish, roots);
    }
    bool doubtful = false;
    for (int i = 0; i < count; ++i) {
        doubtful |= std::fabs(value_of(a, 4, roots[i])) > (polish == 0 ? 1e-5 : 1e-15);
    }
    int scratch[4];
    if (doubtful) laguer(a, 4, roots, count, scratch);
    return count;
}

}  // namespace plain_solver

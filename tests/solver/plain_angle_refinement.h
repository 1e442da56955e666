// plain_angle_refinement: the function that is left of two angles when psi is eliminated, and a
// zero of it between two ends, written down one sentence after the other.
#pragma once

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace plain_angles {

struct Phi {
    double cf, sf;
};

inline Phi from_sine(double sf) { return {std::sqrt(std::max(0.0, 1.0 - sf * sf)), sf}; }
inline Phi from_cosine(double cf) { return {cf, std::sqrt(std::max(0.0, 1.0 - cf * cf))}; }

struct System {
    double a, b, c, d, e, f, g, h, k, sa = 1.0, sr = 1.0;

    double P() const { return c * e * k - b * f; }
    double Q() const { return c * d * k - a * f; }
    double W() const { return a * e - b * d; }
    double A1(const Phi& p) const { return -b * g * p.sf - (P() * p.sf + c * e * h) * p.cf; }
    double A2(const Phi& p) const { return a * g * p.sf + (Q() * p.sf + c * d * h) * p.cf; }
    double A3(const Phi& p) const { return (h + k * p.sf) * p.sf * W(); }
    double F(const Phi& p) const { return A1(p) * A1(p) + A2(p) * A2(p) - A3(p) * A3(p); }
    double H(const Phi& p) const {
        return 2.0 * ((p.sf * c * e * h - p.cf * b * g - (1.0 - 2.0 * p.sf * p.sf) * P()) * A1(p) +
                      (p.cf * a * g - p.sf * c * d * h + (1.0 - 2.0 * p.sf * p.sf) * Q()) * A2(p) -
                      (2.0 * k * p.sf * p.cf + h * p.cf) * W() * A3(p));
    }
};

struct End {
    Phi phi;
    double value;
    bool candidate;
};

inline double coordinate(const Phi& phi, bool by_sine) { return by_sine ? phi.sf : phi.cf; }
inline Phi at(double x, bool by_sine) { return by_sine ? from_sine(x) : from_cosine(x); }

/// The step to the root of the parabola beside a double root; false where it does not apply.
inline bool parabola(const End& end, double x, double F, double D, double low, double high,
                     bool by_sine, double& next) {
    if (!end.candidate || std::fabs(end.value) > 0.001 || std::fabs(F) > 0.1) return false;
    if ((F < 0.0) == (end.value < 0.0)) return false;
    const double x0 = coordinate(end.phi, by_sine);
    const double v = ((F - end.value) - (x - x0) * D) * end.value;
    if (v <= 0.0) return false;
    next = x0 + std::sqrt(v) * (x - x0) / (F - end.value);
    return next > std::min(low, high) && next < std::max(low, high);
}

inline Phi refined(const System& s, End low, End high) {
    for (End* end : {&low, &high}) {
        end->phi = end->phi.sf > 0.71 ? from_cosine(end->phi.cf) : from_sine(end->phi.sf);
    }
    Phi phi = from_sine((low.phi.sf + high.phi.sf) / 2.0);
    double step = high.phi.sf - low.phi.sf;
    if (phi.sf > 0.71) {
        phi = from_cosine((low.phi.cf + high.phi.cf) / 2.0);
        step = high.phi.cf - low.phi.cf;
    }
    double H = 1.0;
    for (int turn = 0;; ++turn) {
        if (turn == 3000) throw std::runtime_error("no end");
        const double F = s.F(phi);
        if (F == 0.0) return phi;
        if (std::fabs(F) <= 1e-10 && std::fabs(std::max(1.0, H) * step) <= 1e-5 &&
            std::fabs(step) <= std::max(1e-5 * std::min(phi.sf, phi.cf), 1e-10))
            return phi;
        ((F < 0.0) == (low.value < 0.0) ? low : high) = {phi, F, false};
        H = s.H(phi);
        const bool by_sine = phi.sf <= 0.71;
        const double D = by_sine ? H / phi.cf : -H / phi.sf;
        const double x = coordinate(phi, by_sine);
        const double l = coordinate(low.phi, by_sine), h = coordinate(high.phi, by_sine);
        const bool leaves = (F + (l - x) * D < 0.0) == (F + (h - x) * D < 0.0);
        double next = 0.0;
        if (std::fabs(H * step) <= std::fabs(2.0 * F) || leaves) {
            phi = at((l + h) / 2.0, by_sine);
            step = (h - l) / 2.0;
        } else if (parabola(low, x, F, D, l, h, by_sine, next) ||
                   parabola(high, x, F, D, l, h, by_sine, next)) {
            phi = at(next, by_sine);
            step = x - next;
        } else {
            step = F / D;
            phi = at(x - step, by_sine);
            if (std::fabs(step) <= 1e-15) return phi;
        }
    }
}

}  // namespace plain_angles

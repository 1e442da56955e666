// angle_systems: the systems of two angles put as residuals, and a dense search of the quadrant.
//
// The search knows nothing of the solvers' methods: it walks phi, takes both psi that the first
// equation allows, and looks for changes of sign in the second.
#pragma once

#include <algorithm>
#include <cmath>
#include <functional>
#include <vector>

namespace angle_systems {

struct Solution {
    double cos_phi, sin_phi, cos_psi, sin_psi;
};

/// a .. k of solve_angles3.
struct System3 {
    double a, b, c, d, e, f, g, h, k;

    double first(const Solution& s) const {
        return s.sin_phi * (a * s.cos_psi + b * s.sin_psi) + c * s.cos_phi;
    }
    double second(const Solution& s) const {
        return f * s.cos_phi + (d * s.cos_psi + e * s.sin_psi) * (h + k * s.sin_phi) - g;
    }
    /// A common size of the terms, to hold residuals against.
    double size() const {
        const double r = std::hypot(d, e);
        return std::max({std::fabs(a), std::fabs(b), std::fabs(c), std::fabs(f), std::fabs(g),
                         r * std::fabs(h), r * std::fabs(k)});
    }
};

using Residual = std::function<double(const Solution&)>;
using Of_phi = std::function<double(double)>;

/// Solutions of a first equation a cos psi + b sin psi = right_side(phi) and the second given.
inline std::vector<Solution> dense_search(double a, double b, const Of_phi& right_side,
                                          const Residual& second, double lowest_sine, int steps) {
    std::vector<Solution> found;
    const double r = std::hypot(a, b);
    const double reference = std::atan2(b, a);
    for (const double side : {1.0, -1.0}) {
        const auto at = [&](double phi, Solution& s) {
            const double ratio = right_side(phi) / r;
            if (!(std::fabs(ratio) <= 1.0)) return false;
            const double psi = reference + side * std::acos(ratio);
            s = {std::cos(phi), std::sin(phi), std::cos(psi), std::sin(psi)};
            return true;
        };
        const double low = std::asin(std::max(lowest_sine, 0.0));
        const double high = std::acos(0.0);
        bool valid = false;
        double before = 0.0;
        double phi_before = low;
        for (int i = 0; i <= steps; ++i) {
            const double phi = low + (high - low) * i / steps;
            Solution s{};
            const bool now_valid = at(phi, s);
            const double now = now_valid ? second(s) : 0.0;
            if (valid && now_valid && (before < 0.0) != (now < 0.0)) {
                double left = phi_before;
                double right = phi;
                for (int j = 0; j < 60; ++j) {
                    const double middle = (left + right) / 2.0;
                    if (!at(middle, s)) break;
                    ((second(s) < 0.0) == (before < 0.0) ? left : right) = middle;
                }
                found.push_back(s);
            }
            valid = now_valid;
            before = now;
            phi_before = phi;
        }
    }
    return found;
}

/// The same for a first equation Sf (a cos psi + b sin psi) = -c Cf.
inline std::vector<Solution> dense_search(double a, double b, double c, const Residual& second,
                                          double lowest_sine, int steps) {
    return dense_search(
        a, b, [c](double phi) { return -c * std::cos(phi) / std::sin(phi); }, second, lowest_sine,
        steps);
}

inline bool is_among(const Solution& one, const std::vector<Solution>& others, double apart) {
    return std::any_of(others.begin(), others.end(), [&](const Solution& other) {
        return std::fabs(one.cos_phi - other.cos_phi) < apart &&
               std::fabs(one.sin_phi - other.sin_phi) < apart &&
               std::fabs(one.cos_psi - other.cos_psi) < apart &&
               std::fabs(one.sin_psi - other.sin_psi) < apart;
    });
}

}  // namespace angle_systems

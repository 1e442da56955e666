// plain_angle_search: what a search that looks at a few angles only can see of a system of two.
//
// With psi eliminated there is a function of phi alone whose zeros are the solutions. The search
// looks at its sign at both ends of the quarter circle, and, when those are equal, at the angles
// where one of two conditions holds. Here these angles are found by walking phi in radians.
#pragma once

#include <cmath>
#include <functional>
#include <vector>

#include "solver/angle_systems.h"

namespace plain_angle_search {

using angle_systems::System3;
using Condition = std::function<double(double)>;

/// Zero where some psi solves both equations: Cramer's rule, and the squares of what it gives.
inline double eliminated(const System3& s, double phi) {
    const double sine = std::sin(phi);
    const double radius = s.h + s.k * sine;
    const double right1 = -s.c * std::cos(phi);
    const double right2 = s.g - s.f * std::cos(phi);
    const double a = s.a * sine, b = s.b * sine, d = s.d * radius, e = s.e * radius;
    const double x = right1 * e - b * right2;
    const double y = a * right2 - right1 * d;
    const double w = a * e - b * d;
    return x * x + y * y - w * w;
}

/// Where the parts of its slope that g and h leave alone balance.
inline double first_condition(const System3& s, double phi) {
    const double cc = std::cos(phi) * std::cos(phi), ss = std::sin(phi) * std::sin(phi);
    const double x = s.c * s.d * s.k * cc + s.f * s.a * ss;
    const double y = s.c * s.e * s.k * cc + s.f * s.b * ss;
    const double z = s.k * (s.a * s.e - s.b * s.d) * std::sin(phi) * std::cos(phi);
    return x * x + y * y - z * z;
}

/// Where psi lies along (a, b), so that the first equation is at its extreme.
inline double second_condition(const System3& s, double phi) {
    const double squares = s.a * s.a + s.b * s.b;
    const double product = s.a * s.d + s.b * s.e;
    const double sine = std::sin(phi);
    return squares * sine * (s.f * std::cos(phi) - s.g) -
           product * s.c * std::cos(phi) * (s.h + s.k * sine);
}

/// The zeros of a condition by walking and halving.
inline std::vector<double> zeros(const Condition& condition, double low, double high) {
    constexpr int steps = 2000;
    std::vector<double> found;
    for (int i = 0; i < steps; ++i) {
        double left = low + (high - low) * i / steps;
        double right = low + (high - low) * (i + 1) / steps;
        const bool negative = condition(left) < 0.0;
        if (negative == (condition(right) < 0.0)) continue;
        for (int j = 0; j < 50; ++j) {
            const double middle = (left + right) / 2.0;
            ((condition(middle) < 0.0) == negative ? left : right) = middle;
        }
        found.push_back(left);
    }
    return found;
}

/// Solutions that the search can see: one between ends of different sign, two around an angle of
/// the other sign, else none.
inline int visible_solutions(const System3& s) {
    const double low = s.h < 0.0 ? std::asin(-s.h / s.k) : 0.0;
    const double high = std::acos(0.0);
    const bool negative = eliminated(s, low) < 0.0;
    if (negative != (eliminated(s, high) < 0.0)) return 1;
    for (const auto& condition : {first_condition, second_condition}) {
        for (const double phi : zeros([&](double x) { return condition(s, x); }, low, high)) {
            if (negative != (eliminated(s, phi) < 0.0)) return 2;
        }
    }
    return 0;
}

}  // namespace plain_angle_search

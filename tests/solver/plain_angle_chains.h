// plain_angle_chains: whether the alternating iteration for two angles settles, written with
// radians.
//
// One step: psi from the first equation at the current phi, then cos phi from the second.
#pragma once

#include <algorithm>
#include <cmath>

#include "solver/angle_systems.h"

/// The chain of the larger cosine settles within ten passes and never loses psi. With angles in
/// place of the sines and cosines; near the limits it may decide otherwise than the solver.
inline bool plain_angle_chains_settle(const angle_systems::System3& s) {
    double x = s.g / s.f;
    for (int pass = 0; pass < 10; ++pass) {
        const double y = x > 0.0 ? std::sqrt(std::max(0.0, 1.0 - x * x)) : 1.0;
        const double ratio = -s.c * x / (y * std::hypot(s.a, s.b));
        if (!(std::fabs(ratio) <= 1.0) || s.h + s.k * y < 0.0) return false;
        double largest = -2.0;
        for (const double side : {1.0, -1.0}) {
            const double psi = std::atan2(s.b, s.a) + side * std::acos(ratio);
            const double next =
                (s.g - (s.d * std::cos(psi) + s.e * std::sin(psi)) * (s.h + s.k * y)) / s.f;
            if (std::fabs(next) >= 1.00001) return false;
            largest = std::max(largest, next);
        }
        if (std::fabs(largest - x) <= 1e-5) return true;
        x = largest;
    }
    return false;
}

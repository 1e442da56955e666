// angle_arrays: from cosines and sines to giAngle.
//
// An array starts out as NaN, so that a slot which was counted but never filled is known, and is
// never taken for an angle.
#pragma once

#include <geometry/giAngle.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace nmk_solver {

/// Room for the cosines and sines of one angle.
template <int room>
struct AngleArray {
    double cosines[room];
    double sines[room];

    AngleArray() {
        std::fill(cosines, cosines + room, std::numeric_limits<double>::quiet_NaN());
        std::fill(sines, sines + room, std::numeric_limits<double>::quiet_NaN());
    }
};

/// Makes the first `count` angles; those of unfilled slots are left as they are.
inline void set_angles(int count, double* const cosines, double* const sines,
                       giAngle* const angles) {
    constexpr auto tag = static_cast<giAngleTangent2>(0);
    for (int i = 0; i < count; ++i) {
        if (!std::isnan(cosines[i])) angles[i] = giAngle(tag, sines[i], cosines[i]);
    }
}

}  // namespace nmk_solver

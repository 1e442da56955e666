// tangent_angle.h: the angle within which tangents are compared.
#pragma once

#include <geometry/giAngle.h>
#include <geometry/giPoint3.h>

namespace nmk_curves {

/// min(asin(tolerance / chord), 0.0001 radians), with the chord from `start` to `end`.
giAngle tangent_angle(const giPoint3& start, const giPoint3& end, double tolerance);

}  // namespace nmk_curves

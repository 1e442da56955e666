#include "tangent_angle.h"

#include <exactmath/exact_arctangent.h>

#include <algorithm>

namespace {

// Tangents this far apart are never the same, however large the tolerance. Radians.
constexpr double widest_tangent_angle = 0.0001;

}  // namespace

giAngle nmk_curves::tangent_angle(const giPoint3& start, const giPoint3& end, double tolerance) {
    const double sine = tolerance / start.distance(end);
    return giAngle(giRadians, std::min(nmk_exact::exact_asin(sine), widest_tangent_angle));
}

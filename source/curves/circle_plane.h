// circle_plane.h: the plane on which a circle of no stated beginning begins.
#pragma once

#include <geometry/giCircle3.h>
#include <geometry/giWorkplane3.h>

namespace nmk_curves {

/// The plane at the circle's centre with its normal. Its reference is the Y axis of the world, or
/// the X axis where the normal is along Y, in either sense.
giWorkplane3 circle_plane(const giCircle3& circle);

}  // namespace nmk_curves

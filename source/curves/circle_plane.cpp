#include "circle_plane.h"

namespace {

// The angle of the circle's normal and an axis. At most this: the axis cannot be the reference.
const giAngle along_an_axis(giRadians, 0.0001);

}  // namespace

giWorkplane3 nmk_curves::circle_plane(const giCircle3& circle) {
    const giUnitVec3& normal = circle.normal();
    const giUnitVec3 y(giAxis::y);
    const bool is_along_y = y.parallel(normal, along_an_axis) || y.parallel(-normal, along_an_axis);
    return giWorkplane3(circle.centre(), is_along_y ? giUnitVec3(giAxis::x) : y, normal);
}

#include <geometry/giLine3.h>

#include <cmath>
#include <limits>

#include "finite_coordinates.h"

using nmk_geometry::is_finite;

namespace {

// The sine of the angle between two lines. At most this: they are parallel, and where they come
// nearest is lost in rounding. No unit.
constexpr double parallel_lines = 1e-10;

}  // namespace

bool giLine3::is_valid() const noexcept {
    return m_point.is_set() && is_finite(m_point) && m_direction.is_set();
}

giPoint3 giLine3::closest_point(const giPoint3& point) const noexcept {
    if (!is_valid()) return giPoint3();
    const giVector3 along = m_direction.vector();
    return m_point + along * (point - m_point).dot(along);
}

double giLine3::distance(const giPoint3& point) const noexcept {
    if (!is_valid()) return std::numeric_limits<double>::quiet_NaN();
    // The cross product keeps the digits of a point near the line, far along it.
    return (point - m_point).cross(m_direction.vector()).length();
}

int giLine3::closest_points(const giLine3& other, giPoint3& on_this,
                            giPoint3& on_other) const noexcept {
    on_this = giPoint3();
    on_other = giPoint3();
    if (!is_valid() || !other.is_valid()) return 2;
    const giVector3 along = m_direction.vector();
    const giVector3 other_along = other.m_direction.vector();
    const giVector3 normal = along.cross(other_along);
    if (normal.length() <= parallel_lines) return 1;
    const giVector3 between = other.m_point - m_point;
    const double square = normal.dot(normal);
    on_this = m_point + along * (between.cross(other_along).dot(normal) / square);
    on_other = other.m_point + other_along * (between.cross(along).dot(normal) / square);
    return 0;
}

#include <geometry/giCircle3.h>
#include <geometry/giVector3.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "finite_coordinates.h"

using nmk_geometry::is_finite;

namespace {

// Twice the area of the triangle of three points, as a part of the square of its longest side. At
// most this: the points are on one line. No unit.
constexpr double thinnest_triangle = 1e-12;

// How many units in the last place of the coordinates may be lost in a side. No unit.
constexpr double lost_in_a_side = 4.0 * std::numeric_limits<double>::epsilon();

double largest_coordinate(const giPoint3& point) {
    return std::max({std::abs(point.x), std::abs(point.y), std::abs(point.z)});
}

double largest_component(const giVector3& vector) {
    return largest_coordinate(giPoint3(vector.x, vector.y, vector.z));
}

// A power of two that brings the longest side of a triangle to about 1, so that squares neither
// overflow nor vanish. Not finite where there is none.
double size_of(const giPoint3& first, const giPoint3& second, const giPoint3& third) {
    const double largest =
        std::max({largest_component(second - first), largest_component(third - first),
                  largest_component(third - second)});
    if (!(largest > 0.0) || !std::isfinite(largest)) return std::numeric_limits<double>::infinity();
    return std::scalbn(1.0, std::ilogb(largest));
}

}  // namespace

giCircle3::giCircle3(const giPoint3& first, const giPoint3& second,
                     const giPoint3& third) noexcept {
    if (!first.is_set() || !second.is_set() || !third.is_set()) return;
    const double size = size_of(first, second, third);
    if (!std::isfinite(size)) return;
    const auto in_sizes = [&](const giVector3& side) {
        return giVector3(side.x / size, side.y / size, side.z / size);
    };
    const giVector3 a = in_sizes(second - first);
    const giVector3 b = in_sizes(third - first);
    const giVector3 up = a.cross(b);
    const double longest = std::max({a.dot(a), b.dot(b), (b - a).dot(b - a)});
    const double coordinate = std::max(
        {largest_coordinate(first), largest_coordinate(second), largest_coordinate(third)});
    const double doubt =
        thinnest_triangle * longest + lost_in_a_side * (coordinate / size) * std::sqrt(longest);
    // So written that NaN is refused too.
    if (!(up.length() > doubt)) return;
    const giVector3 sum = b.cross(up) * a.dot(a) + up.cross(a) * b.dot(b);
    const giVector3 to_centre = sum * (0.5 / up.dot(up));
    m_centre = first + to_centre * size;
    m_normal = giUnitVec3::direction_of(up);
    m_radius = to_centre.length() * size;
}

bool giCircle3::invalid() const noexcept {
    return !m_centre.is_set() || !is_finite(m_centre) || !m_normal.is_set() ||
           !is_finite(m_normal) || !(m_radius > 0.0) || !std::isfinite(m_radius);
}

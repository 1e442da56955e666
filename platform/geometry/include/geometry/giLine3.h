// giLine3: an infinite line in space.
#pragma once

#include <geometry/giPoint3.h>
#include <geometry/giUnitVec3.h>
#include <geometry/giVector3.h>

#pragma GCC visibility push(default)

class giLine3 {
  public:
    /// The line through `point` along `direction`, which may have any length but 0. A line of
    /// numbers that are not finite, or along nothing, is not valid.
    giLine3(const giPoint3& point, const giVector3& direction) noexcept
        : m_point(point), m_direction(giUnitVec3::direction_of(direction)) {}

    const giPoint3& point() const noexcept { return m_point; }
    const giUnitVec3& direction() const noexcept { return m_direction; }
    bool is_valid() const noexcept;

    /// The point of the line that is nearest to `point`; unset where the line is not valid.
    giPoint3 closest_point(const giPoint3& point) const noexcept;

    /// How far `point` is from the line; NaN where the line is not valid.
    double distance(const giPoint3& point) const noexcept;

    /// The points of the two lines that are nearest to each other.
    ///
    ///   on_this, on_other  receive them; unset unless 0 is returned
    ///   returns            0; 1 for parallel lines, which have no such pair; 2 where a line is not
    ///                      valid
    ///
    /// Formula: Ericson, Real-Time Collision Detection, section 5.1.8, in the form with the cross
    /// product of the directions.
    int closest_points(const giLine3& other, giPoint3& on_this, giPoint3& on_other) const noexcept;

  private:
    giPoint3 m_point;
    giUnitVec3 m_direction;
};

#pragma GCC visibility pop

// giCircle3: a circle in space, or an invalid one.
//
// Centre, unit normal and radius; it has no beginning.
#pragma once

#include <geometry/giPoint3.h>
#include <geometry/giUnitVec3.h>

#pragma GCC visibility push(default)

class giCircle3 {
  public:
    /// An invalid circle.
    giCircle3() noexcept = default;
    giCircle3(const giPoint3& centre, const giUnitVec3& normal, double radius) noexcept
        : m_centre(centre), m_normal(normal), m_radius(radius) {}

    /// The circle through three points; they run counter-clockwise about its normal. Invalid where
    /// two of them are the same, all are on one line within rounding, one is unset or not finite,
    /// or the circle is too large for its numbers.
    ///
    /// All is computed from the differences of the points, so that a circle far from the origin
    /// loses no more than the coordinates themselves have lost.
    /// Formula: the circumcentre by cross products; Ericson, Real-Time Collision Detection,
    /// section 3.8.
    giCircle3(const giPoint3& first, const giPoint3& second, const giPoint3& third) noexcept;

    const giPoint3& centre() const noexcept { return m_centre; }
    const giUnitVec3& normal() const noexcept { return m_normal; }
    double radius() const noexcept { return m_radius; }

    /// True unless centre and normal are set and finite, and the radius is finite and above 0.
    bool invalid() const noexcept;

  private:
    giPoint3 m_centre;
    giUnitVec3 m_normal;
    double m_radius = 0.0;
};

#pragma GCC visibility pop

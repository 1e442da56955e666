// giWorkplane3: a plane with an origin and three axes, which are right-handed and perpendicular.
//
// It is built from an origin, a reference direction and a normal. The normal is the Z axis, the
// reference direction less its part along the normal is the Y axis, and X = Y x Z. So the reference
// y with the normal z gives the axes of the world.
#pragma once

#include <geometry/giPoint3.h>
#include <geometry/giUnitVec3.h>
#include <geometry/giXform3.h>

#pragma GCC visibility push(default)

class CArchive;

class giWorkplane3 {
  public:
    /// The world plane.
    giWorkplane3() noexcept;
    giWorkplane3(const giPoint3& origin, const giUnitVec3& reference, const giUnitVec3& normal);

    /// Takes a new origin and new axes. A reference that is unset or along the normal (its part
    /// across counts as zero) is replaced by y, or by x where y is along the normal. Without a
    /// normal all axes are unset.
    void become(const giPoint3& origin, const giUnitVec3& reference, const giUnitVec3& normal);

    const giPoint3& origin() const noexcept { return m_origin; }
    const giUnitVec3& x_axis() const noexcept { return m_x; }
    const giUnitVec3& y_axis() const noexcept { return m_y; }
    const giUnitVec3& z_axis() const noexcept { return m_z; }

    /// True where origin and axes are set.
    bool is_set() const noexcept { return m_origin.is_set() && m_z.is_set(); }

    /// From coordinates of the world to those along the axes, and back. The plane must be set.
    giXform3 xform_to_work() const;
    giXform3 xform_to_world() const;

    /// A point or vector given along the axes, in coordinates of the world, and back. The plane
    /// must be set.
    giPoint3 to_world(const giPoint3& work) const noexcept {
        return m_origin + to_world(giVector3(work.x, work.y, work.z));
    }
    giVector3 to_world(const giVector3& work) const noexcept {
        return m_x.vector() * work.x + m_y.vector() * work.y + m_z.vector() * work.z;
    }
    giPoint3 to_work(const giPoint3& world) const noexcept {
        const giVector3 work = to_work(world - m_origin);
        return {work.x, work.y, work.z};
    }
    giVector3 to_work(const giVector3& world) const noexcept {
        return {world.dot(m_x.vector()), world.dot(m_y.vector()), world.dot(m_z.vector())};
    }

    /// Equal to the last bit.
    bool operator==(const giWorkplane3&) const noexcept = default;

  private:
    friend CArchive& operator>>(CArchive& archive, giWorkplane3& plane);

    giPoint3 m_origin;
    giUnitVec3 m_x;
    giUnitVec3 m_y;
    giUnitVec3 m_z;
};

/// Writes origin, Y axis and Z axis: nine doubles.
CArchive& operator<<(CArchive& archive, const giWorkplane3& plane);

/// Reads what was written, to the last bit. Numbers that are not finite, and axes that are neither
/// unit, perpendicular and set nor all unset, throw badIndex and leave the plane as it was.
CArchive& operator>>(CArchive& archive, giWorkplane3& plane);

#pragma GCC visibility pop

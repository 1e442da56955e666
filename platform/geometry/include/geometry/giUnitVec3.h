// giUnitVec3: a direction in space, or an unset direction.
//
// Unset means that x is minus the largest double. Otherwise the length is 1, within rounding.
#pragma once

#include <geometry/giAngle.h>
#include <geometry/giUnset.h>
#include <geometry/giVector3.h>

#include <cmath>

/// The directions of the axes of space.
enum class giAxis { x = 0, y = 1, z = 2 };

/// Says that components have length 1 already.
enum class giUnit { already };

class giUnitVec3 {
  public:
    /// An unset direction.
    giUnitVec3() noexcept : x(gi_unset_low), y(gi_unset_low), z(gi_unset_low) {}
    explicit giUnitVec3(giAxis axis) noexcept
        : x(axis == giAxis::x ? 1.0 : 0.0),
          y(axis == giAxis::y ? 1.0 : 0.0),
          z(axis == giAxis::z ? 1.0 : 0.0) {}

    /// The direction of (x, y, z); unset when that vector counts as zero.
    giUnitVec3(double x_value, double y_value, double z_value) noexcept
        : giUnitVec3(giVector3(x_value, y_value, z_value)) {}
    explicit giUnitVec3(const giVector3& vector) noexcept : giUnitVec3() {
        const double length = vector.length();
        if (length <= gi_zero_length) return;
        x = vector.x / length;
        y = vector.y / length;
        z = vector.z / length;
    }

    /// The direction of a vector of any length, however short; unset for one of length 0 and for
    /// one that is not finite.
    static giUnitVec3 direction_of(const giVector3& vector) noexcept {
        const giVector3 scaled = vector.scaled_to_1();
        const double length = scaled.length();
        if (!(length > 0.0 && length <= gi_unset_high)) return giUnitVec3();
        return {giUnit::already, scaled.x / length, scaled.y / length, scaled.z / length};
    }

    /// Takes the components as they are, to the bit; their length must be 1.
    giUnitVec3(giUnit, double x_value, double y_value, double z_value) noexcept
        : x(x_value), y(y_value), z(z_value) {}

    bool is_set() const noexcept { return x != gi_unset_low; }

    giVector3 vector() const noexcept { return {x, y, z}; }
    double dot(const giUnitVec3& other) const noexcept { return vector().dot(other.vector()); }

    /// The angle between the two directions, from 0 to pi: atan2 of the length of the cross product
    /// and the dot product, so that a right angle is exactly half of pi and small angles keep their
    /// digits. Both must be set.
    giAngle unsigned_angle(const giUnitVec3& other) const noexcept {
        const double sine = vector().cross(other.vector()).length();
        return giAngle(giTangent2, sine, dot(other));
    }

    /// Non-zero when the two point the same way, at most `tolerance` apart; opposite directions are
    /// not parallel. Zero where either is unset.
    int parallel(const giUnitVec3& other, const giAngle& tolerance) const noexcept {
        return is_set() && other.is_set() && unsigned_angle(other) <= tolerance ? 1 : 0;
    }

    /// The opposite direction; unset stays unset.
    giUnitVec3 operator-() const noexcept {
        giUnitVec3 opposite;
        if (!is_set()) return opposite;
        opposite.x = -x;
        opposite.y = -y;
        opposite.z = -z;
        return opposite;
    }

    bool operator==(const giUnitVec3&) const noexcept = default;

    double x;
    double y;
    double z;
};

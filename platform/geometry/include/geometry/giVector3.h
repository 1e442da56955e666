// giVector3: a displacement in space.
#pragma once

#include <geometry/giAngle.h>
#include <geometry/giLength.h>
#include <geometry/giPoint3.h>

#pragma GCC visibility push(default)

class giUnitVec3;

/// A vector of at most this length counts as zero. Same unit as the coordinates.
inline constexpr double gi_zero_length = 1e-05;

class giVector3 {
  public:
    giVector3() noexcept : x(0.0), y(0.0), z(0.0) {}
    giVector3(double x_value, double y_value, double z_value) noexcept
        : x(x_value), y(y_value), z(z_value) {}

    /// From the point `from` to the point `to`.
    giVector3(const giPoint3& from, const giPoint3& to) noexcept
        : x(to.x - from.x), y(to.y - from.y), z(to.z - from.z) {}

    /// The root is only taken when the length is read.
    giLength length() const noexcept { return giLength::from_square(x * x + y * y + z * z); }

    /// True for a length of at most gi_zero_length.
    bool is_zero() const noexcept { return length() <= gi_zero_length; }

    double dot(const giVector3& other) const noexcept {
        return x * other.x + y * other.y + z * other.z;
    }

    giVector3 cross(const giVector3& other) const noexcept {
        return {y * other.z - z * other.y, z * other.x - x * other.z, x * other.y - y * other.x};
    }

    /// Non-zero when the two point the same way, at most `tolerance` apart; opposite vectors are
    /// not parallel. Short vectors have a direction too: only one of length 0 is parallel to
    /// nothing, and so is one that is not finite.
    ///
    /// The angle is atan2 of the length of the cross product and the dot product.
    int parallel(const giVector3& other, const giAngle& tolerance) const noexcept;

    /// The angle from this vector to `other` as they appear to a viewer who looks against `normal`:
    /// counter-clockwise from 0 to one turn, between their parts across the normal. 0 where such a
    /// part is 0, NaN for vectors that are not finite. The normal must be set.
    giAngle apparent_angle(const giVector3& other, const giUnitVec3& normal) const noexcept;

    /// This vector by a power of two, so that its largest component is from 1 to 2 and no product
    /// of two such components overflows or vanishes. Zero and what is not finite stay as they are.
    giVector3 scaled_to_1() const noexcept;

    friend giVector3 operator+(const giVector3& a, const giVector3& b) noexcept {
        return {a.x + b.x, a.y + b.y, a.z + b.z};
    }
    friend giVector3 operator-(const giVector3& a, const giVector3& b) noexcept {
        return {a.x - b.x, a.y - b.y, a.z - b.z};
    }
    friend giVector3 operator-(const giVector3& a) noexcept { return {-a.x, -a.y, -a.z}; }
    friend giVector3 operator*(const giVector3& a, double factor) noexcept {
        return {a.x * factor, a.y * factor, a.z * factor};
    }

    bool operator==(const giVector3&) const noexcept = default;

    double x;
    double y;
    double z;
};

inline giPoint3 operator+(const giPoint3& p, const giVector3& v) noexcept {
    return {p.x + v.x, p.y + v.y, p.z + v.z};
}

/// The vector from `from` to `to`. A free function: a friend of giVector3 would not be found for
/// two points.
inline giVector3 operator-(const giPoint3& to, const giPoint3& from) noexcept { return {from, to}; }

#pragma GCC visibility pop

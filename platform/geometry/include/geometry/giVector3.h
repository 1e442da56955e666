// giVector3: a displacement in space.
#pragma once

#include <geometry/giLength.h>
#include <geometry/giPoint3.h>

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

    friend giVector3 operator+(const giVector3& a, const giVector3& b) noexcept {
        return {a.x + b.x, a.y + b.y, a.z + b.z};
    }
    friend giVector3 operator-(const giVector3& a, const giVector3& b) noexcept {
        return {a.x - b.x, a.y - b.y, a.z - b.z};
    }
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

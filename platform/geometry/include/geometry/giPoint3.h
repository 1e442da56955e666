// giPoint3: a point in space, or an unset point.
//
// Unset means that x is minus the largest double, or that x, y or z is the largest double.
#pragma once

#include <geometry/giLength.h>
#include <geometry/giUnset.h>

#include <cmath>

/// Selects the origin of space.
enum class giOrigin { origin };

class giPoint3 {
  public:
    /// The values of a coordinate that is not set.
    static constexpr double unset_high() noexcept { return gi_unset_high; }
    static constexpr double unset_low() noexcept { return gi_unset_low; }

    /// An unset point.
    giPoint3() noexcept : x(gi_unset_low), y(gi_unset_low), z(gi_unset_low) {}
    giPoint3(double x_value, double y_value, double z_value) noexcept
        : x(x_value), y(y_value), z(z_value) {}
    explicit giPoint3(giOrigin) noexcept : x(0.0), y(0.0), z(0.0) {}

    bool is_set() const noexcept {
        return x != gi_unset_low && x != gi_unset_high && y != gi_unset_high && z != gi_unset_high;
    }

    /// Euclidean distance: sqrt(dx*dx + dy*dy + dz*dz), summed in that order and never in a scaled
    /// form, so that it is the same to the last bit as the formula written out.
    giLength distance(const giPoint3& other) const noexcept {
        const double dx = x - other.x;
        const double dy = y - other.y;
        const double dz = z - other.z;
        return giLength(std::sqrt(dx * dx + dy * dy + dz * dz));
    }

    /// Non-zero when the points are at most `tolerance` apart: a ball, not a cube.
    int coincident(const giPoint3& other, double tolerance) const noexcept {
        return distance(other) <= tolerance ? 1 : 0;
    }

    bool operator==(const giPoint3&) const noexcept = default;

    double x;
    double y;
    double z;
};

// giPoint2: a point of the plane, or an unset point.
//
// Unset means that x is minus the largest double, or that x or y is the largest double.
#pragma once

#include <geometry/giLength.h>
#include <geometry/giUnset.h>

#include <cmath>

class giPoint2 {
  public:
    /// An unset point.
    giPoint2() noexcept : x(gi_unset_low), y(gi_unset_low) {}
    giPoint2(double x_value, double y_value) noexcept : x(x_value), y(y_value) {}

    bool is_set() const noexcept {
        return x != gi_unset_low && x != gi_unset_high && y != gi_unset_high;
    }

    /// Euclidean distance: sqrt(dx*dx + dy*dy), never a scaled form, so that it is the same to the
    /// last bit as the formula written out.
    giLength distance(const giPoint2& other) const noexcept {
        const double dx = x - other.x;
        const double dy = y - other.y;
        return giLength(std::sqrt(dx * dx + dy * dy));
    }

    /// Non-zero when the points are at most `tolerance` apart: a circle, not a square.
    int coincident(const giPoint2& other, double tolerance) const noexcept {
        return distance(other) <= tolerance ? 1 : 0;
    }

    bool operator==(const giPoint2&) const noexcept = default;

    double x;
    double y;
};

// giVector2: a displacement in the plane.
#pragma once

#include <geometry/giLength.h>
#include <geometry/giPoint2.h>

class giVector2 {
  public:
    giVector2() noexcept : x(0.0), y(0.0) {}
    giVector2(double x_value, double y_value) noexcept : x(x_value), y(y_value) {}

    /// From the point `from` to the point `to`.
    giVector2(const giPoint2& from, const giPoint2& to) noexcept
        : x(to.x - from.x), y(to.y - from.y) {}

    /// The root is only taken when the length is read.
    giLength length() const noexcept { return giLength::from_square(x * x + y * y); }

    double dot(const giVector2& other) const noexcept { return x * other.x + y * other.y; }

    /// The third component of the cross product of the two: above 0 where `other` is to the left.
    double cross(const giVector2& other) const noexcept { return x * other.y - y * other.x; }

    bool operator==(const giVector2&) const noexcept = default;

    double x;
    double y;
};

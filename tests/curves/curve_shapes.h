// curve_shapes.h: what the tests of curves compare with.
#pragma once

#include <geometry/giPoint3.h>
#include <gtest/gtest.h>
#include <ngk/ngkCurve.h>
#include <ngk/ngk_resource_table.h>

#include <limits>

namespace curve_shapes {

inline constexpr double largest = std::numeric_limits<double>::max();
inline constexpr double infinite = std::numeric_limits<double>::infinity();
inline const double not_a_number = std::numeric_limits<double>::quiet_NaN();

/// Values that a coordinate, length or angle may have by mistake.
inline const double hostile_values[] = {not_a_number, infinite, -infinite, largest,
                                        -largest,     1e308,    -1e308,    1e200,
                                        5e-324,       -5e-324,  0.0,       1e-300};

/// The curve is of that kind, and valid.
template <class Kind, int Dimension>
const Kind* as(const coPrf<const ngkCurve<Dimension>>& curve) {
    return curve && curve->is_valid() ? dynamic_cast<const Kind*>(curve.get()) : nullptr;
}

inline giPoint3 point_at(const ngkCurvePtr3& curve, double fraction) {
    giPoint3 point;
    curve->evaluate(fraction, point);
    return point;
}

inline giUnitVec3 tangent_at(const ngkCurvePtr3& curve, double fraction) {
    giVector3 direction;
    curve->tangent(curve->t_at(fraction), direction);
    return giUnitVec3(direction);
}

inline void expect_near(const giPoint3& point, const giPoint3& expected, double tolerance = 1e-9) {
    EXPECT_LE(point.distance(expected), tolerance)
        << point.x << " " << point.y << " " << point.z << ", expected " << expected.x << " "
        << expected.y << " " << expected.z;
}

inline void expect_direction(const giUnitVec3& direction, const giUnitVec3& expected) {
    EXPECT_NE(direction.parallel(expected, giAngle(giRadians, 1e-9)), 0)
        << direction.x << " " << direction.y << " " << direction.z;
}

/// Changes a tolerance of the kernel for as long as it lives.
class ScopedTolerance {
  public:
    ScopedTolerance(const ngkResourceKey<double>& key, double value) {
        ngk_resource_table_inquire().set(key, value);
    }
    ~ScopedTolerance() { ngk_resource_table_inquire().reset(); }
    ScopedTolerance(const ScopedTolerance&) = delete;
    ScopedTolerance& operator=(const ScopedTolerance&) = delete;
};

}  // namespace curve_shapes

#include <gtest/gtest.h>
#include <ngk/ngkArc.h>
#include <ngk/ngkBezCurve.h>
#include <ngk/ngkCompCurve.h>
#include <ngk/ngkLine.h>
#include <ngk/ngkPolyline.h>
#include <ngk/ngkReverseCurve.h>
#include <ngk/ngkTransformedCurve.h>

#include <array>
#include <numbers>

namespace {

constexpr double pi = std::numbers::pi;

giPoint3 at(const ngkCurve3& curve, double fraction) {
    giPoint3 point;
    curve.evaluate(fraction, point);
    return point;
}

}  // namespace

TEST(ngkLine, evaluates_to_its_ends_exactly) {
    const ngkLine3 line(giPoint3(0.1, 0.2, 0.3), giPoint3(0.7, 1e17, -0.3));
    EXPECT_EQ(at(line, 0.0), giPoint3(0.1, 0.2, 0.3));
    EXPECT_EQ(at(line, 1.0), giPoint3(0.7, 1e17, -0.3));
}

TEST(ngkLine, without_an_end_has_a_point_at_each_distance) {
    const ngkLine3 ray(giPoint3(1, 2, 3), giUnitVec3(giAxis::y), ngkLineKind::half);
    giPoint3 point;
    EXPECT_NE(ray.evaluate(ngkT(0, 5.0), point), 0);
    EXPECT_EQ(point, giPoint3(1, 7, 3));
    EXPECT_EQ(ray.evaluate(ngkT(0, -1.0), point), 0);
    EXPECT_FALSE(point.is_set());
    EXPECT_EQ(ray.evaluate(1.0, point), 0);
    EXPECT_EQ(ray.closest_point(giPoint3(1, -4, 3)).t, ngkT(0, 0.0));
}

TEST(ngkCircle, begins_on_the_x_axis_of_its_plane_and_turns_towards_y) {
    const ngkCircle3 circle(giWorkplane3(), 2.0);
    EXPECT_EQ(at(circle, 0.0), giPoint3(2, 0, 0));
    EXPECT_EQ(at(circle, 1.0), giPoint3(2, 0, 0));
    EXPECT_NEAR(at(circle, 0.25).y, 2.0, 1e-15);
    EXPECT_DOUBLE_EQ(circle.length(), 4.0 * pi);
}

TEST(ngkArc, evaluates_to_the_points_it_was_made_from) {
    const ngkCircle3 circle(giWorkplane3(), 1.0);
    const giPoint3 start(0.6, 0.8000000001, 0.0);
    const giPoint3 end(0.8, -0.6, 0.0);
    const ngkArc3 arc(circle, start, end);
    EXPECT_EQ(at(arc, 0.0), start);
    EXPECT_EQ(at(arc, 1.0), end);
    EXPECT_LT(at(arc, 0.5).x, 0.0);
}

TEST(ngkBezCurve, is_valid_only_with_degree_and_one_points) {
    ngkBezCurve3 curve(3);
    EXPECT_FALSE(curve.is_valid());
    const std::array<giPoint3, 4> points = {giPoint3(0, 0, 0), giPoint3(1, 1, 0), giPoint3(0, 1, 0),
                                            giPoint3(1, 0, 0)};
    EXPECT_NE(curve.set_points(points), 0);
    EXPECT_EQ(at(curve, 1.0), points[3]);
    EXPECT_NEAR(curve.length(), 1.828427124746190, 2e-15);
    EXPECT_EQ(curve.set_points(std::span(points).first(3)), 0);
}

TEST(ngkCompCurve, refuses_a_curve_that_does_not_begin_at_its_end) {
    ngkCompCurve3 path(1e-5);
    EXPECT_EQ(path.add_segment_end(ngkCurvePtr3()), 0);
    EXPECT_NE(
        path.add_segment_end(ngkCurvePtr3(new ngkLine3(giPoint3(0, 0, 0), giPoint3(1, 0, 0)))), 0);
    EXPECT_EQ(
        path.add_segment_end(ngkCurvePtr3(new ngkLine3(giPoint3(0, 0, 0), giPoint3(1, 0, 0)))), 0);
    EXPECT_NE(
        path.add_segment_end(ngkCurvePtr3(new ngkLine3(giPoint3(1, 0, 0), giPoint3(1, 3, 0)))), 0);
    EXPECT_EQ(path.segment_count(), 2);
    EXPECT_EQ(path.length(), 4.0);
    EXPECT_EQ(path.closest_point(giPoint3(2, 1.5, 0)).t, ngkT(1, 0.5));
}

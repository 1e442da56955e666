#include <gtest/gtest.h>
#include <ngk/ngkArc.h>
#include <ngk/ngkBezCurve.h>
#include <ngk/ngkCompCurve.h>
#include <ngk/ngkLine.h>
#include <ngk/ngkNurbCurve.h>
#include <ngk/ngkPolyline.h>
#include <ngk/ngkReverseCurve.h>
#include <ngk/ngkTransformedCurve.h>

#include <array>
#include <numbers>
#include <random>
#include <vector>

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

TEST(ngkCircle, has_angles_from_0_to_below_a_full_turn) {
    const ngkCircle3 circle(giWorkplane3(), 2.0);
    EXPECT_EQ(circle.angle_of(giPoint3(3, 0, 0)), 0.0);
    EXPECT_NEAR(circle.angle_of(giPoint3(0, -1, 0)), 1.5 * pi, 1e-15);
    EXPECT_EQ(circle.angle_of(giPoint3(1, -1e-300, 0)), 0.0);
}

TEST(ngkCurve, ends_at_the_end_of_its_range_to_the_bit) {
    const ngkCircle3 circle(giWorkplane3(), 2.0);
    std::mt19937 random(5);
    for (int i = 0; i < 200; ++i) {
        const double low = double(random() % 6000) / 1000.0;
        const double high = low + double(1 + random() % 6000) / 1000.0;
        const ngkArc3 arc(circle, low, high);
        EXPECT_EQ(arc.t_at(1.0).value, arc.range(0).high);
        EXPECT_EQ(at(arc, 1.0), arc.end());
    }
}

TEST(ngkCurve, ends_at_the_end_of_a_range_whose_ends_and_length_are_rounded) {
    ASSERT_LT(2.6 + (6.8 - 2.6), 6.8);
    const std::vector<giPoint3> points = {giPoint3(0, 0, 0), giPoint3(1, 1, 0)};
    const ngkNurbCurve3 curve(1, std::vector<double>{2.6, 2.6, 6.8, 6.8}, points);
    EXPECT_EQ(curve.t_at(1.0).value, 6.8);
    EXPECT_EQ(at(curve, 1.0), points.back());
}

TEST(ngkCurve, has_a_tangent_where_its_first_derivative_vanishes) {
    const std::array<giPoint3, 4> points = {giPoint3(0, 0, 0), giPoint3(0, 0, 0), giPoint3(3, 4, 0),
                                            giPoint3(3, 4, 0)};
    const ngkBezCurve3 curve(points);
    for (const double end : {0.0, 1.0}) {
        giVector3 direction;
        EXPECT_NE(curve.tangent(ngkT(0, end), direction), 0);
        EXPECT_NEAR(direction.x, 0.6, 1e-15) << end;
        EXPECT_NEAR(direction.y, 0.8, 1e-15) << end;
    }
}

TEST(ngkPolyline, does_not_repeat_a_vertex_at_which_it_is_split) {
    const std::array<giPoint3, 4> points = {giPoint3(0, 0, 0), giPoint3(1, 0, 0), giPoint3(1, 1, 0),
                                            giPoint3(0, 1, 0)};
    const ngkPolyline3 polyline(points);
    for (const ngkT& t : {ngkT(0, 1.0), ngkT(1, 0.0)}) {
        const auto [first, second] = polyline.split(t);
        EXPECT_EQ(first->segment_count(), 1);
        EXPECT_EQ(second->segment_count(), 2);
    }
    const auto [first, second] = polyline.split(ngkT(1, 0.5));
    EXPECT_EQ(first->segment_count(), 2);
    EXPECT_EQ(second->segment_count(), 2);
}

TEST(ngkNurbCurve, keeps_its_ends_to_the_bit_whatever_its_weights) {
    std::mt19937 random(6);
    const std::vector<double> knots = {0, 0, 0, 0, 0.3, 1, 1, 1, 1};
    for (int i = 0; i < 100; ++i) {
        std::vector<giPoint3> points;
        std::vector<double> weights;
        for (int j = 0; j < 5; ++j) {
            const double x = double(random() % 1000) / 700.0;
            points.emplace_back(x, double(random() % 1000) / 300.0, 0.1);
            weights.push_back(0.1 + double(random() % 1000) / 900.0);
        }
        const ngkNurbCurve3 curve(3, knots, points, weights);
        ASSERT_TRUE(curve.is_valid());
        EXPECT_EQ(at(curve, 0.0), points.front());
        EXPECT_EQ(at(curve, 1.0), points.back());
    }
}

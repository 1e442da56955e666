// NaN, unset markers, sizes at the limits of a double and empty curves: a result for failure, and
// never a crash or a loop without end.
#include <gtest/gtest.h>
#include <ngk/ngk_flue_bztmag.h>

#include <cmath>
#include <limits>

#include "ngk/sample_curves.h"

namespace {

constexpr double not_a_number = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double denormal = std::numeric_limits<double>::denorm_min();

constexpr std::array hostile_numbers = {
    0.0,   -0.0,   1.0,   not_a_number, infinity, -infinity, gi_unset_low, gi_unset_high,
    1e308, -1e308, 1e100, 1e99,         1e-308,   denormal,  1e-160,       1e155};

/// Asks everything; the results have to make sense, whatever they are.
void ask_everything(const ngkCurve3& curve) {
    for (const double fraction : hostile_numbers) {
        giPoint3 point;
        const bool is_found = curve.evaluate(fraction, point) != 0;
        EXPECT_EQ(is_found, point.is_set());
        for (const int segment : {-1, 0, 1, std::numeric_limits<int>::max()}) {
            const ngkT t(segment, fraction);
            giVector3 first;
            giVector3 second;
            curve.evaluate(t, point, first, second);
            curve.tangent(t, first);
            curve.curvature(t);
            EXPECT_FALSE(!curve.contains(t) && !std::isnan(curve.fraction_at(t)));
            const auto parts = curve.split(t);
            EXPECT_EQ(bool(parts.first), bool(parts.second));
        }
        const giPoint3 query(fraction, 1.0, -fraction);
        const ngkCurvePoint3 nearest = curve.closest_point(query);
        EXPECT_EQ(nearest.is_set(), nearest.point.is_set());
        EXPECT_FALSE(nearest.is_set() && !curve.contains(nearest.t));
    }
    for (const double tolerance : {1e-3, 1e308}) {
        const ngkPolyline3 polygon = curve.curve_polygon(ngkPolygonizeTRP3(tolerance));
        EXPECT_TRUE(polygon.is_valid());
    }
    EXPECT_GE(curve.length(), 0.0);
    curve.bounding_box();
    const auto turned = curve.reverse();
    EXPECT_EQ(bool(turned), curve.is_valid());
}

std::vector<giPoint3> hostile_points(std::mt19937& random, int count) {
    std::vector<giPoint3> points;
    const auto number = [&] { return hostile_numbers[random() % hostile_numbers.size()]; };
    for (int i = 0; i < count; ++i) {
        const double x = number();
        const double y = number();
        points.emplace_back(x, y, number());
    }
    return points;
}

std::vector<double> hostile_list(std::mt19937& random, int count) {
    std::vector<double> numbers;
    for (int i = 0; i < count; ++i)
        numbers.push_back(hostile_numbers[random() % hostile_numbers.size()]);
    return numbers;
}

}  // namespace

TEST(ngkCurve3_hostile_input, ends_for_curves_of_any_numbers) {
    std::mt19937 random(4711);
    for (int i = 0; i < 100; ++i) {
        const std::vector<giPoint3> points = hostile_points(random, 6);
        const std::vector<double> numbers = hostile_list(random, 10);
        const ngkCircle3 circle(
            giWorkplane3(points[0], giUnitVec3(giAxis::y), giUnitVec3(giAxis::z)), numbers[0]);
        std::vector<double> knots = {0, 0, 0, numbers[1], numbers[2], numbers[3], 1, 1, 1};
        ask_everything(ngkLine3(points[0], points[1]));
        ask_everything(ngkLine3(points[0], giVector3(numbers[0], 1.0, 0.0), ngkLineKind::half));
        ask_everything(ngkLine3(points[0], giVector3(numbers[0], 0.0, 0.0), ngkLineKind::infinite));
        ask_everything(circle);
        ask_everything(ngkArc3(circle, numbers[1], numbers[2]));
        ask_everything(ngkArc3(circle, points[1], points[2]));
        ask_everything(ngkBezCurve3(std::span(points).first(4)));
        ask_everything(ngkBezCurve3(std::span(points).first(4), std::span(numbers).first(4)));
        ask_everything(ngkNurbCurve3(2, knots, points));
        ask_everything(ngkNurbCurve3(2, knots, points, std::span(numbers).first(6)));
        ask_everything(ngkPolyline3(points));
        ask_everything(
            ngkTransformedCurve3(ngkCurvePtr3(new ngkBezCurve3(std::span(points).first(4))),
                                 giXform3(giXform3Scale, numbers[0], numbers[1], numbers[2])));
        ask_everything(ngkReverseCurve3(ngkCurvePtr3(new ngkLine3(points[0], points[1]))));
    }
}

namespace {

std::vector<ngkSurfPtr> hostile_surfaces(const std::vector<giPoint3>& points, double radius) {
    const giWorkplane3 plane(points[0], giUnitVec3(giAxis::y), giUnitVec3(giAxis::z));
    const std::vector<double> knots = {0, 0, 1, 1};
    const auto corners = std::span(points).subspan(1, 4);
    return {ngkSurfPtr(new ngkPlaneSurf(plane)), ngkSurfPtr(new ngkCylinderSurf(plane, radius)),
            ngkSurfPtr(new ngkSphereSurf(plane, radius)),
            ngkSurfPtr(new ngkBilinearSurf({corners[0], corners[1], corners[2], corners[3]})),
            ngkSurfPtr(new ngkNurbSurf({1, knots}, {1, knots}, corners))};
}

std::vector<ngkCurvePtr2> hostile_plane_curves(const std::vector<double>& numbers) {
    std::vector<giPoint2> points;
    for (std::size_t i = 0; i + 1 < numbers.size(); ++i)
        points.emplace_back(numbers[i], numbers[i + 1]);
    return {ngkCurvePtr2(new ngkLine2(points[0], points[1])),
            ngkCurvePtr2(new ngkPolyline2(std::span(points).first(4))),
            ngkCurvePtr2(new ngkBezCurve2(std::span(points).first(4))),
            ngkCurvePtr2(new ngkCircle2(points[0], numbers[2]))};
}

}  // namespace

TEST(ngkCurve3_hostile_input, ends_for_curves_on_surfaces_of_any_numbers) {
    std::mt19937 random(4712);
    int valid = 0;
    for (int i = 0; i < 40; ++i) {
        const std::vector<giPoint3> points = hostile_points(random, 5);
        const auto surfaces = hostile_surfaces(points, i % 2 == 0 ? 1.0 : 1e-160);
        for (const ngkCurvePtr2& flat : hostile_plane_curves(hostile_list(random, 6))) {
            for (const ngkSurfPtr& surface : surfaces) {
                const ngkCurveOnSurf3 curve(flat, surface);
                valid += curve.is_valid() ? 1 : 0;
                ask_everything(curve);
            }
        }
    }
    EXPECT_GT(valid, 5);
}

TEST(ngkSurf_hostile_input, evaluates_to_a_point_or_to_nothing) {
    std::mt19937 random(4713);
    for (int i = 0; i < 50; ++i) {
        for (const ngkSurfPtr& surface : hostile_surfaces(hostile_points(random, 5), 1.5)) {
            for (const double u : hostile_numbers) {
                giPoint3 point;
                const bool is_found = surface->evaluate(giPoint2(u, 0.5), point) != 0;
                EXPECT_EQ(is_found, point.is_set());
                EXPECT_FALSE(is_found && !surface->is_valid());
            }
        }
    }
}

TEST(ngkCurve3_hostile_input, is_refused_where_it_makes_a_curve_invalid) {
    EXPECT_FALSE(ngkLine3(giPoint3(), giPoint3(1, 2, 3)).is_valid());
    EXPECT_FALSE(ngkLine3(giPoint3(not_a_number, 0, 0), giPoint3(1, 2, 3)).is_valid());
    EXPECT_FALSE(ngkLine3(giPoint3(0, 0, 0), giUnitVec3(), ngkLineKind::half).is_valid());
    EXPECT_FALSE(ngkLine3(giPoint3(0, 0, 0), giVector3(), ngkLineKind::infinite).is_valid());
    EXPECT_FALSE(ngkCircle3(giWorkplane3(), -1.0).is_valid());
    EXPECT_FALSE(ngkCircle3(giWorkplane3(), not_a_number).is_valid());
    EXPECT_FALSE(ngkArc3(ngkCircle3(giWorkplane3(), 1.0), not_a_number, 1.0).is_valid());
    EXPECT_FALSE(ngkArc3(ngkCircle3(giWorkplane3(), 1.0), 0.0, infinity).is_valid());
    EXPECT_FALSE(ngkBezCurve3(26).is_valid());
    EXPECT_FALSE(ngkBezCurve3(std::vector<giPoint3>(27, giPoint3(0, 0, 0))).is_valid());
    EXPECT_TRUE(ngkBezCurve3(std::vector<giPoint3>(26, giPoint3(0, 0, 0))).is_valid());
    EXPECT_FALSE(ngkReverseCurve3(ngkCurvePtr3()).is_valid());
    EXPECT_FALSE(ngkTransformedCurve3(ngkCurvePtr3(), giXform3()).is_valid());
    EXPECT_FALSE(ngkCurveOnSurf3(ngkCurvePtr2(), ngkSurfPtr()).is_valid());
    EXPECT_FALSE(ngkCompCurve3(1e-5).is_valid());
    EXPECT_FALSE(ngkSphereSurf(giWorkplane3(), 0.0).is_valid());
    EXPECT_FALSE(ngkCylinderSurf(giWorkplane3(), not_a_number).is_valid());
    EXPECT_FALSE(ngkPlaneSurf(giWorkplane3(giPoint3(), giUnitVec3(), giUnitVec3())).is_valid());
}

TEST(ngkCurve3_hostile_input, ends_for_any_tolerance_of_a_polygon) {
    const ngkCircle3 circle = sample_curves::circle<3>();
    for (const double tolerance : {0.0, -1.0, not_a_number, 1e-300, 1e300}) {
        const int count = circle.curve_polygon(ngkPolygonizeTRP3(tolerance)).point_count();
        EXPECT_GE(count, tolerance == 1e300 ? 3 : 20000) << tolerance;
        EXPECT_LE(count, 200000) << tolerance;
    }
}

TEST(ngkCurve3_hostile_input, does_not_make_a_polygon_grow_with_the_number_of_curves) {
    const ngkCurvePtr3 cubic(new ngkBezCurve3(sample_curves::random_points<3>(4, 3)));
    ngkCompCurve3 path(1e-5);
    for (int i = 0; i < 20; ++i) path.add_segment_end(i % 2 == 0 ? cubic : cubic->reverse());
    EXPECT_LE(path.curve_polygon(ngkPolygonizeTRP3(0.0)).point_count(), 250000);
}

TEST(ngkCurve3_hostile_input, does_not_make_a_curve_on_a_surface_leave_it) {
    const ngkSurfPtr surface = sample_curves::nurbs_surface(false);
    const ngkCurvePtr2 outside(new ngkLine2(giPoint2(0, 0), giPoint2(9, 1)));
    EXPECT_FALSE(ngkCurveOnSurf3(outside, surface).is_valid());
    const ngkCurvePtr2 along_the_edge(new ngkLine2(giPoint2(0, 0), giPoint2(2, 0)));
    EXPECT_TRUE(ngkCurveOnSurf3(along_the_edge, surface).is_valid());
    const ngkCurvePtr2 ray(new ngkLine2(giPoint2(0, 0), giVector2(1, 0), ngkLineKind::half));
    EXPECT_FALSE(ngkCurveOnSurf3(ray, ngkSurfPtr(new ngkPlaneSurf(giWorkplane3()))).is_valid());
}

TEST(ngkCurve3_hostile_input, leaves_a_box_flat_that_is_in_a_plane_of_two_axes) {
    const giWorkplane3 plane(giPoint3(1, 2, 3), giUnitVec3(giAxis::x), giUnitVec3(giAxis::y));
    const giBox3 box = ngkCircle3(plane, 2.0).bounding_box();
    EXPECT_EQ(box.min().y, 2.0);
    EXPECT_EQ(box.max().y, 2.0);
    EXPECT_NEAR(box.min().x, -1.0, 1e-15);
    EXPECT_NEAR(box.max().z, 5.0, 1e-15);
    std::vector<giPoint3> points;
    for (const giPoint2& point : sample_curves::random_points<2>(12, 3))
        points.emplace_back(point.x, 7.0, point.y);
    EXPECT_NEAR(ngkBezCurve3(points).bounding_box().max().y, 7.0, 1e-14);
}

TEST(ngkCurve3_hostile_input, ends_where_rounding_is_larger_than_the_curve) {
    for (const double far : {1e6, 1e14, 1e50, 9e99}) {
        std::vector<giPoint3> points;
        for (const giPoint3& point : sample_curves::random_points<3>(9, 8))
            points.emplace_back(point.x + far, point.y + far, point.z * far);
        const giWorkplane3 plane(giPoint3(far, -far, far), giUnitVec3(giAxis::y),
                                 giUnitVec3(giAxis::z));
        const std::vector<double> weights = sample_curves::some_weights(9);
        ask_everything(ngkBezCurve3(points));
        ask_everything(ngkBezCurve3(points, weights));
        ask_everything(ngkCircle3(plane, 1e-3));
        ask_everything(ngkTransformedCurve3(ngkCurvePtr3(new ngkCircle3(plane, 1e-3)),
                                            giXform3(giXform3Scale, 1.0, 2.0, 3.0)));
        ask_everything(ngkCurveOnSurf3(ngkCurvePtr2(new ngkCircle2(giPoint2(far, far), 1e-3)),
                                       ngkSurfPtr(new ngkPlaneSurf(plane))));
    }
}

TEST(ngkPolyline, of_no_point_is_valid_and_has_no_segment) {
    const ngkPolyline3 none;
    EXPECT_TRUE(none.is_valid());
    EXPECT_EQ(none.segment_count(), 0);
    EXPECT_EQ(none.length(), 0.0);
    EXPECT_TRUE(none.bounding_box().is_empty());
    EXPECT_FALSE(none.closest_point(giPoint3(0, 0, 0)).is_set());
    EXPECT_EQ(none.curve_polygon(ngkPolygonizeTRP3(1.0)).point_count(), 0);
    ask_everything(none);
}

TEST(ngkPolyline, of_one_point_is_that_point) {
    const ngkPolyline3 one(std::vector<giPoint3>{giPoint3(1, 2, 3)});
    giPoint3 point;
    EXPECT_NE(one.evaluate(0.5, point), 0);
    EXPECT_EQ(point, giPoint3(1, 2, 3));
    EXPECT_EQ(one.closest_point(giPoint3(1, 2, 5)).distance, 2.0);
    EXPECT_EQ(one.length(), 0.0);
    ask_everything(one);
}

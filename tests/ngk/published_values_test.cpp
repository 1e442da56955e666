// Lengths and nearest points that others have published, and values with a closed form.
#include <gtest/gtest.h>
#include <ngk/ngk_flue_bztmag.h>
#include <ngk/ngk_resource_table.h>

#include <numbers>

#include "ngk/sample_curves.h"

namespace {

struct LengthCase {
    const char* name;
    std::vector<giPoint2> points;
    double length;

    friend std::ostream& operator<<(std::ostream& stream, const LengthCase& one) {
        return stream << one.name;
    }
};

class ngkBezCurve_length : public testing::TestWithParam<LengthCase> {};

}  // namespace

TEST_P(ngkBezCurve_length, agrees_with_the_published_one_to_12_digits) {
    const LengthCase& one = GetParam();
    EXPECT_NEAR(ngkBezCurve2(one.points).length(), one.length, 1e-12 * one.length);
    std::vector<giPoint3> in_space;
    for (const giPoint2& point : one.points) in_space.emplace_back(5.0, point.x, -point.y);
    EXPECT_NEAR(ngkBezCurve3(in_space).length(), one.length, 1e-12 * one.length);
}

INSTANTIATE_TEST_SUITE_P(
    published, ngkBezCurve_length,
    testing::Values(
        LengthCase{
            "cubic", {{0, 0}, {1.0 / 3.0, 0}, {2.0 / 3.0, 1.0 / 3.0}, {1, 1}}, 1.478942857544597},
        LengthCase{"parabola", {{0, 0}, {1, 2}, {2, 0}}, 2.957885715089195},
        LengthCase{"s_shape", {{0, 0}, {1, 2}, {2, 0}, {3.5, 0}}, 4.091619551442473},
        LengthCase{"arch", {{0, 0}, {0, 1}, {1, 1}, {1, 0}}, 2.0},
        LengthCase{"large_parabola", {{200, 300}, {400, 50}, {600, 300}}, 487.771093895524},
        LengthCase{"cusp", {{0, 0}, {1, 1}, {0, 1}, {1, 0}}, 1.828427124746190}),
    [](const auto& one) { return std::string(one.param.name); });

TEST(ngkBezCurve, is_nearest_where_published) {
    const std::vector<giPoint2> cubic = {
        {3.98743, 5.29979}, {-8.21663, -2.76544}, {-5.4184, -5.00586}, {8.26971, -0.0435725}};
    const ngkCurvePoint2 on_cubic = ngkBezCurve2(cubic).closest_point(giPoint2(0, 0));
    EXPECT_NEAR(on_cubic.t.value, 0.183873743035, 1e-12);
    EXPECT_NEAR(on_cubic.distance, 1.91359119283, 5e-12);

    const std::vector<giPoint2> parabola = {{0, 0}, {100, 0}, {100, 100}};
    const ngkCurvePoint2 on_parabola = ngkBezCurve2(parabola).closest_point(giPoint2(80, 20));
    EXPECT_DOUBLE_EQ(on_parabola.t.value, 0.5);
    EXPECT_DOUBLE_EQ(on_parabola.distance, 7.0710678118654755);
}

TEST(ngkNurbCurve, draws_a_full_circle_exactly) {
    const double w = std::numbers::sqrt2 / 2.0;
    const std::vector<giPoint2> points = {{1, 0},   {1, 1},  {0, 1},  {-1, 1}, {-1, 0},
                                          {-1, -1}, {0, -1}, {1, -1}, {1, 0}};
    const std::vector<double> knots = {0, 0, 0, 1, 1, 2, 2, 3, 3, 4, 4, 4};
    const ngkNurbCurve2 circle(2, knots, points, std::vector<double>{1, w, 1, w, 1, w, 1, w, 1});
    ASSERT_TRUE(circle.is_valid());
    for (int i = 0; i <= 100; ++i) {
        giPoint2 point;
        circle.evaluate(i / 100.0, point);
        EXPECT_NEAR(point.distance(giPoint2(0, 0)), 1.0, 4e-16);
        EXPECT_NEAR(circle.curvature(circle.t_at(i / 100.0)), 1.0, 1e-13);
    }
    EXPECT_NEAR(circle.length(), 2.0 * std::numbers::pi, 1e-14);
    const giBox2 box = circle.bounding_box();
    EXPECT_NEAR(box.min().x, -1.0, 1e-15);
    EXPECT_NEAR(box.max().y, 1.0, 1e-15);
    // All points are at the same distance from the centre.
    EXPECT_DOUBLE_EQ(circle.closest_point(giPoint2(0, 0)).distance, 1.0);
    EXPECT_NEAR(circle.closest_point(giPoint2(3, 4)).distance, 4.0, 1e-15);
}

TEST(ngk_flue_bztmag, gives_an_arc_its_magnitudes) {
    // A quarter of a circle of radius 1: 4 tan(pi / 8).
    double first = 0.0;
    double second = 0.0;
    ngk_flue_bztmag(giPoint3(1, 0, 0), giPoint3(0, 1, 0), giUnitVec3(0, 1, 0), giUnitVec3(-1, 0, 0),
                    1, first, second);
    EXPECT_NEAR(first, 4.0 * (std::numbers::sqrt2 - 1.0), 1e-15);
    EXPECT_NEAR(second, first, 1e-15);
    // Half a circle: 4 tan(pi / 4).
    ngk_flue_bztmag(giPoint3(1, 0, 0), giPoint3(-1, 0, 0), giUnitVec3(0, 1, 0),
                    giUnitVec3(0, -1, 0), 7, first, second);
    EXPECT_NEAR(first, 4.0, 1e-15);
    EXPECT_NEAR(second, 4.0, 1e-15);
}

TEST(ngk_flue_bztmag, stays_finite_for_tangents_against_the_chord) {
    double first = 0.0;
    double second = 0.0;
    ngk_flue_bztmag(giPoint3(0, 0, 0), giPoint3(1, 0, 0), giUnitVec3(-1, 0, 0), giUnitVec3(1, 0, 0),
                    1, first, second);
    EXPECT_EQ(first, 4.0);
    EXPECT_EQ(second, 1.0);
}

TEST(ngkResourceTable, has_the_tolerances_of_the_kernel_until_they_are_set) {
    ngkResourceTable& table = ngk_resource_table_inquire();
    EXPECT_EQ(table.value(ngk_TOLCOINCPOINT3D), 1e-05);
    EXPECT_EQ(table.value(ngk_TOLCOINCPOINT2D), 1e-05);
    EXPECT_EQ(table.value(ngk_TOLZEROANGLE), giAngle(giRadians, 1e-04));
    table.set(ngk_TOLCOINCPOINT2D, 0.5);
    table.set(ngk_TOLZEROANGLE, giAngle(giRadians, 0.25));
    EXPECT_EQ(table.value(ngk_TOLCOINCPOINT3D), 1e-05);
    EXPECT_EQ(table.value(ngk_TOLCOINCPOINT2D), 0.5);
    EXPECT_EQ(table.value(ngk_TOLZEROANGLE), giAngle(giRadians, 0.25));
    table.reset();
    EXPECT_EQ(table.value(ngk_TOLCOINCPOINT2D), 1e-05);
}

#include <curves/curve_shapes.h>
#include <geometry/giBox3.h>
#include <gtest/gtest.h>
#include <ngk/ngkArc.h>
#include <ngk/ngkBezCurve.h>
#include <ngk/ngkCompCurve.h>
#include <ngk/ngkLine.h>
#include <ngk/ngkPolyline.h>
#include <nmktoolbox/curves/nmkNgkMakeUtils.h>

#include <algorithm>
#include <numbers>
#include <string>

using namespace curve_shapes;

namespace {

const giUnitVec3 x(giAxis::x);
const giUnitVec3 y(giAxis::y);
const giUnitVec3 z(giAxis::z);
const giPoint3 origin(0, 0, 0);
const giWorkplane3 world;

// At (1, 2, 3), with X along z of the world and Y along x.
const giWorkplane3 turned(giPoint3(1, 2, 3), x, y);

ngkCurvePtr3 filleted(double width, double height, double radius) {
    return nmkNgkMakeUtils::make_filleted_rectangle(world, {width, height}, radius);
}

// The largest coordinates of the ends of the pieces.
giPoint3 far_corner(const ngkCurvePtr3& curve) {
    giBox3 box;
    const auto* const outline = as<ngkCompCurve3>(curve);
    for (int i = 0; outline && i < outline->curve_count(); ++i)
        box.add(point_at(outline->curve(i), 1.0));
    return box.max();
}

std::string kinds_of(const ngkCurvePtr3& curve) {
    std::string kinds;
    const auto* const outline = as<ngkCompCurve3>(curve);
    for (int i = 0; outline && i < outline->curve_count(); ++i)
        kinds += as<ngkArc3>(outline->curve(i)) ? 'a' : 'l';
    return kinds;
}

}  // namespace

TEST(nmkNgkMakeUtils, a_line_joins_two_points_exactly) {
    const auto curve = nmkNgkMakeUtils::make_line({1, 2, 3}, {4, 5, 6});
    ASSERT_TRUE(as<ngkLine3>(curve));
    EXPECT_EQ(as<ngkLine3>(curve)->kind(), ngkLineKind::bounded);
    EXPECT_EQ(point_at(curve, 0.0), giPoint3(1, 2, 3));
    EXPECT_EQ(point_at(curve, 1.0), giPoint3(4, 5, 6));
}

TEST(nmkNgkMakeUtils, a_line_between_points_that_coincide_is_empty) {
    EXPECT_FALSE(nmkNgkMakeUtils::make_line(origin, {1e-5, 0, 0}));
    EXPECT_TRUE(nmkNgkMakeUtils::make_line(origin, {1.1e-5, 0, 0}));
    EXPECT_FALSE(nmkNgkMakeUtils::make_line(giPoint2(0, 0), giPoint2(0, 1e-5)));
    EXPECT_TRUE(nmkNgkMakeUtils::make_line(giPoint2(0, 0), giPoint2(0, 1.1e-5)));
}

TEST(nmkNgkMakeUtils, lines_in_space_and_in_the_plane_follow_tolerances_of_their_own) {
    const ScopedTolerance wider(ngk_TOLCOINCPOINT2D, 0.5);
    EXPECT_FALSE(nmkNgkMakeUtils::make_line(giPoint2(0, 0), giPoint2(0, 0.5)));
    EXPECT_TRUE(nmkNgkMakeUtils::make_line(origin, {0, 0.5, 0}));
}

TEST(nmkNgkMakeUtils, a_line_of_unset_points_is_empty) {
    EXPECT_FALSE(nmkNgkMakeUtils::make_line(origin, giPoint3()));
    EXPECT_FALSE(nmkNgkMakeUtils::make_line(giPoint2(), giPoint2(0, 0)));
}

TEST(nmkNgkMakeUtils, half_and_infinite_lines_are_not_checked) {
    const auto half = nmkNgkMakeUtils::make_half_line({1, 0, 0}, y);
    EXPECT_EQ(as<ngkLine3>(half)->kind(), ngkLineKind::half);
    EXPECT_EQ(as<ngkLine3>(nmkNgkMakeUtils::make_inf_line({1, 0, 0}, y))->kind(),
              ngkLineKind::infinite);
    for (const auto& unset : {nmkNgkMakeUtils::make_half_line({1, 0, 0}, giUnitVec3()),
                              nmkNgkMakeUtils::make_inf_line(giPoint3(), y)}) {
        ASSERT_TRUE(unset);
        EXPECT_FALSE(unset->is_valid());
    }
}

TEST(nmkNgkMakeUtils, a_point_curve_is_a_bezier_curve_of_degree_1_that_stays_there) {
    const auto curve = nmkNgkMakeUtils::make_point_curve({1, 2, 3});
    ASSERT_TRUE(as<ngkBezCurve3>(curve));
    EXPECT_EQ(as<ngkBezCurve3>(curve)->degree(), 1);
    for (const double fraction : {0.0, 0.3, 1.0})
        expect_near(point_at(curve, fraction), giPoint3(1, 2, 3), 1e-15);
    EXPECT_FALSE(nmkNgkMakeUtils::make_point_curve(giPoint3()));
}

TEST(nmkNgkMakeUtils, a_polyline_drops_points_that_coincide_with_the_last_one_added) {
    const auto curve = nmkNgkMakeUtils::make_polyline(
        giPoint3coDynArr{{0, 0, 0}, {0, 0, 0}, {1, 0, 0}, {1, 5e-6, 0}, {1, 1.2e-5, 0}, {0, 0, 0}});
    ASSERT_TRUE(as<ngkPolyline3>(curve));
    ASSERT_EQ(as<ngkPolyline3>(curve)->point_count(), 4);
    EXPECT_EQ(as<ngkPolyline3>(curve)->point(1), giPoint3(1, 0, 0));
    EXPECT_EQ(as<ngkPolyline3>(curve)->point(2), giPoint3(1, 1.2e-5, 0));
    EXPECT_EQ(as<ngkPolyline3>(curve)->point(3), giPoint3(0, 0, 0));
}

TEST(nmkNgkMakeUtils, a_polyline_drops_its_final_point_too) {
    const auto curve =
        nmkNgkMakeUtils::make_polyline(giPoint3coDynArr{{0, 0, 0}, {1, 0, 0}, {1, 9e-6, 0}});
    ASSERT_TRUE(as<ngkPolyline3>(curve));
    EXPECT_EQ(as<ngkPolyline3>(curve)->point_count(), 2);
    EXPECT_EQ(point_at(curve, 1.0), giPoint3(1, 0, 0));
}

TEST(nmkNgkMakeUtils, two_points_are_joined_by_a_line) {
    EXPECT_TRUE(
        as<ngkLine3>(nmkNgkMakeUtils::make_polyline(giPoint3coDynArr{{0, 0, 0}, {1, 0, 0}})));
    EXPECT_FALSE(nmkNgkMakeUtils::make_polyline(giPoint3coDynArr{{1, 0, 0}, {1, 0, 0}}));
}

TEST(nmkNgkMakeUtils, three_equal_points_give_a_polyline_of_one_point) {
    const auto curve =
        nmkNgkMakeUtils::make_polyline(giPoint3coDynArr{{1, 0, 0}, {1, 0, 0}, {1, 0, 0}});
    ASSERT_TRUE(as<ngkPolyline3>(curve));
    EXPECT_EQ(as<ngkPolyline3>(curve)->point_count(), 1);
}

TEST(nmkNgkMakeUtils, a_polyline_takes_the_first_points_of_a_count) {
    const giPoint3coDynArr points{{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, giPoint3()};
    EXPECT_EQ(as<ngkPolyline3>(nmkNgkMakeUtils::make_polyline(points, 3))->point_count(), 3);
    EXPECT_TRUE(as<ngkLine3>(nmkNgkMakeUtils::make_polyline(points, 2)));
    for (const int count : {-1, 0, 1, 4, 5})
        EXPECT_FALSE(nmkNgkMakeUtils::make_polyline(points, count)) << count;
}

TEST(nmkNgkMakeUtils, a_polyline_is_made_from_a_list_as_from_an_array) {
    giPoint3coDList list;
    for (int i = 0; i < 4; ++i) list.insert_last(giPoint3(i, i * i, 0));
    EXPECT_EQ(as<ngkPolyline3>(nmkNgkMakeUtils::make_polyline(list))->point_count(), 4);
    EXPECT_FALSE(nmkNgkMakeUtils::make_polyline(giPoint3coDList()));
}

TEST(nmkNgkMakeUtils, a_rectangle_is_a_closed_polyline_of_five_points_in_the_world) {
    const auto curve = nmkNgkMakeUtils::make_rectangle(turned, {10, 20});
    ASSERT_TRUE(as<ngkPolyline3>(curve));
    const auto* const outline = as<ngkPolyline3>(curve);
    ASSERT_EQ(outline->point_count(), 5);
    EXPECT_EQ(outline->point(0), giPoint3(1, 2, 3));
    EXPECT_EQ(outline->point(1), giPoint3(1, 2, 13));
    EXPECT_EQ(outline->point(2), giPoint3(21, 2, 13));
    EXPECT_EQ(outline->point(3), giPoint3(21, 2, 3));
    EXPECT_EQ(outline->point(4), giPoint3(1, 2, 3));
}

TEST(nmkNgkMakeUtils, a_rectangle_without_width_height_or_origin_is_empty) {
    const auto rectangle = [](double width, double height) {
        return nmkNgkMakeUtils::make_rectangle(world, {width, height});
    };
    EXPECT_FALSE(rectangle(0, 5));
    EXPECT_FALSE(rectangle(5, 0));
    EXPECT_FALSE(rectangle(0, 0));
    EXPECT_FALSE(rectangle(largest, 5));
    EXPECT_FALSE(rectangle(not_a_number, 5));
    EXPECT_FALSE(nmkNgkMakeUtils::make_rectangle(world, giPoint2()));
    EXPECT_FALSE(nmkNgkMakeUtils::make_rectangle(giWorkplane3(giPoint3(), y, z), {5, 5}));
}

TEST(nmkNgkMakeUtils, a_rectangle_of_negative_size_lies_on_the_other_side) {
    const auto curve = nmkNgkMakeUtils::make_rectangle(world, {-2, 3});
    EXPECT_EQ(as<ngkPolyline3>(curve)->point(2), giPoint3(-2, 3, 0));
}

TEST(nmkNgkMakeUtils, a_filleted_rectangle_has_arcs_and_lines_in_turn_from_the_arc_at_the_origin) {
    const auto curve = filleted(10, 6, 2);
    EXPECT_EQ(kinds_of(curve), "alalalal");
    EXPECT_NEAR(curve->length(), 2 * 6 + 2 * 2 + 4 * std::numbers::pi, 1e-9);
    expect_near(point_at(curve, 0.0), {0, 2, 0});
    expect_near(point_at(curve, 1.0), {0, 2, 0});
    expect_direction(tangent_at(curve, 0.0), -y);
    const auto* const outline = as<ngkCompCurve3>(curve);
    const giPoint3 ends[] = {{2, 0, 0}, {8, 0, 0}, {10, 2, 0}, {10, 4, 0},
                             {8, 6, 0}, {2, 6, 0}, {0, 4, 0},  {0, 2, 0}};
    for (int i = 0; i < 8; ++i) expect_near(point_at(outline->curve(i), 1.0), ends[i]);
    const auto* const corner = as<ngkArc3>(outline->curve(4));
    expect_near(corner->circle().centre(), {8, 4, 0});
    EXPECT_NEAR(corner->angles().high - corner->angles().low, std::numbers::pi / 2, 1e-9);
}

TEST(nmkNgkMakeUtils, a_filleted_rectangle_lies_on_its_plane) {
    const auto curve = nmkNgkMakeUtils::make_filleted_rectangle(turned, {10, 6}, 2);
    ASSERT_TRUE(curve);
    expect_near(point_at(curve, 0.0), {3, 2, 3});
    expect_near(far_corner(curve), {7, 2, 13});
}

TEST(nmkNgkMakeUtils, a_side_of_exactly_twice_the_radius_has_no_line) {
    EXPECT_EQ(kinds_of(filleted(4, 10, 2)), "aalaal");
    EXPECT_EQ(kinds_of(filleted(10, 4, 2)), "alaala");
    EXPECT_EQ(kinds_of(filleted(4, 4, 2)), "aaaa");
    EXPECT_FALSE(filleted(3.9, 10, 2));
    EXPECT_FALSE(filleted(10, 3.9, 2));
}

TEST(nmkNgkMakeUtils, corners_of_no_radius_are_left_out) {
    EXPECT_EQ(kinds_of(filleted(10, 6, 0)), "llll");
    EXPECT_EQ(kinds_of(filleted(10, 6, 1e-6)), "llll");
}

TEST(nmkNgkMakeUtils, negative_sizes_turn_the_sides_of_a_filleted_rectangle_with_their_sign) {
    for (const double width : {10.0, -10.0}) {
        for (const double height : {6.0, -6.0}) {
            const auto curve = filleted(width, height, 2);
            EXPECT_EQ(kinds_of(curve), "alalalal");
            EXPECT_NEAR(curve->length(), 16 + 4 * std::numbers::pi, 1e-9);
            expect_near(point_at(curve, 0.0), {0, height > 0 ? 2.0 : -2.0, 0});
            expect_near(far_corner(curve), {std::max(width, 0.0), std::max(height, 0.0), 0});
        }
    }
}

TEST(nmkNgkMakeUtils, a_filleted_rectangle_is_empty_for_a_negative_radius_and_unset_input) {
    EXPECT_FALSE(filleted(10, 6, -1));
    EXPECT_FALSE(filleted(10, 6, not_a_number));
    EXPECT_FALSE(filleted(0, 6, 0));
    EXPECT_FALSE(filleted(largest, 6, 1));
    EXPECT_FALSE(
        nmkNgkMakeUtils::make_filleted_rectangle(giWorkplane3(giPoint3(), y, z), {9, 9}, 1));
}

TEST(nmkNgkMakeUtils, hostile_numbers_give_a_valid_curve_or_an_empty_handle) {
    const auto check = [](const auto& curve) { EXPECT_TRUE(!curve || curve->is_valid()); };
    for (const double a : hostile_values) {
        for (const double b : hostile_values) {
            check(nmkNgkMakeUtils::make_line({a, b, 0}, {b, a, 1}));
            check(nmkNgkMakeUtils::make_line(giPoint2(a, b), giPoint2(b, 1)));
            check(nmkNgkMakeUtils::make_point_curve({a, b, 0}));
            check(
                nmkNgkMakeUtils::make_polyline(giPoint3coDynArr{{a, 0, 0}, {b, 0, 0}, {0, a, b}}));
            check(nmkNgkMakeUtils::make_rectangle(world, {a, b}));
            check(nmkNgkMakeUtils::make_filleted_rectangle(world, {a, b}, 0.1));
            check(nmkNgkMakeUtils::make_filleted_rectangle(world, {a, 1}, b));
            check(nmkNgkMakeUtils::make_circle(world, a));
            EXPECT_TRUE(nmkNgkMakeUtils::make_half_line({a, b, 0}, y));
        }
    }
}

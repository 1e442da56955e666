#include <curves/curve_shapes.h>
#include <gtest/gtest.h>
#include <ngk/ngkArc.h>
#include <ngk/ngkCircle.h>
#include <ngk/ngkLine.h>
#include <nmktoolbox/curves/nmkNgkMakeUtils.h>

#include <cmath>
#include <numbers>
#include <ostream>
#include <random>

using namespace curve_shapes;

namespace {

constexpr double tolerance = 1e-5;
const giUnitVec3 x(giAxis::x);
const giUnitVec3 y(giAxis::y);
const giUnitVec3 z(giAxis::z);
const giPoint3 origin(0, 0, 0);

ngkCurvePtr3 three_points(const giPoint3& start, const giPoint3& middle, const giPoint3& end) {
    return nmkNgkMakeUtils::make_arc(start, middle, end);
}

double angle_of(const ngkCurvePtr3& curve) {
    const auto* const arc = as<ngkArc3>(curve);
    return arc ? arc->angles().high - arc->angles().low : not_a_number;
}

giUnitVec3 in_plane(double degrees) {
    const double radians = degrees * std::numbers::pi / 180.0;
    return giUnitVec3(std::cos(radians), std::sin(radians), 0.0);
}

giAngle degrees(double value) { return giAngle(giDegrees, value); }

}  // namespace

TEST(nmkNgkMakeUtils_arc, three_points_on_a_line_give_a_line_from_start_to_end) {
    const auto curve = three_points({0, 0, 0}, {1, 1, 0}, {3, 3, 0});
    ASSERT_TRUE(as<ngkLine3>(curve));
    EXPECT_EQ(point_at(curve, 0.0), giPoint3(0, 0, 0));
    EXPECT_EQ(point_at(curve, 1.0), giPoint3(3, 3, 0));
}

TEST(nmkNgkMakeUtils_arc, three_points_whose_middle_is_beyond_the_end_give_a_line_to_the_end) {
    const auto curve = three_points({0, 0, 0}, {7, 0, 0}, {3, 0, 0});
    ASSERT_TRUE(as<ngkLine3>(curve));
    EXPECT_EQ(point_at(curve, 1.0), giPoint3(3, 0, 0));
}

TEST(nmkNgkMakeUtils_arc, three_equal_points_give_an_arc_as_long_as_the_tolerance) {
    const giPoint3 point(4, 5, 6);
    const auto curve = three_points(point, point, point);
    ASSERT_TRUE(as<ngkArc3>(curve));
    expect_near(point_at(curve, 0.0), point, 1e-15);
    EXPECT_NEAR(curve->length(), 1e-5, 1e-12);
    expect_near(as<ngkArc3>(curve)->circle().centre(), {3, 5, 6}, 0.0);
    EXPECT_EQ(as<ngkArc3>(curve)->circle().radius(), 1.0);
    expect_direction(tangent_at(curve, 0.0), y);
}

TEST(nmkNgkMakeUtils_arc, the_tiny_arc_follows_the_tolerance_of_the_table) {
    const ScopedTolerance wider(ngk_TOLCOINCPOINT3D, 1e-3);
    EXPECT_NEAR(three_points(origin, origin, origin)->length(), 1e-3, 1e-12);
}

TEST(nmkNgkMakeUtils_arc, start_and_end_that_are_equal_give_the_tiny_arc_wherever_the_middle_is) {
    const auto curve = three_points({1, 2, 3}, {50, 0, 0}, {1, 2, 3});
    ASSERT_TRUE(as<ngkArc3>(curve));
    EXPECT_NEAR(curve->length(), 1e-5, 1e-12);
}

TEST(nmkNgkMakeUtils_arc, three_points_of_a_tiny_circle_give_a_line) {
    const double r = 0.99e-5;
    EXPECT_TRUE(as<ngkLine3>(three_points({r, 0, 0}, {0, r, 0}, {-r, 0, 0})));
    const double wider = 1.1e-5;
    EXPECT_TRUE(as<ngkArc3>(three_points({wider, 0, 0}, {0, wider, 0}, {-wider, 0, 0})));
}

TEST(nmkNgkMakeUtils_arc, three_points_run_through_the_middle_on_the_far_side) {
    const giPoint3 start(1, 0, 0);
    const giPoint3 end(0, 1, 0);
    const giPoint3 middle(-std::sqrt(0.5), -std::sqrt(0.5), 0);
    const auto curve = three_points(start, middle, end);
    EXPECT_NEAR(angle_of(curve), 1.5 * std::numbers::pi, 1e-12);
    expect_near(point_at(curve, 0.5), middle);
    EXPECT_EQ(point_at(curve, 0.0), start);
    EXPECT_EQ(point_at(curve, 1.0), end);
}

TEST(nmkNgkMakeUtils_arc, three_points_run_the_short_way_where_the_middle_is_there) {
    const auto curve = three_points({1, 0, 0}, {std::sqrt(0.5), std::sqrt(0.5), 0}, {0, 1, 0});
    EXPECT_NEAR(angle_of(curve), 0.5 * std::numbers::pi, 1e-12);
}

TEST(nmkNgkMakeUtils_arc, three_points_whose_middle_is_opposite_the_start_run_through_it) {
    for (const double end_y : {1.0, -1.0}) {
        const auto curve = three_points({1, 0, 0}, {-1, 0, 0}, {0, end_y, 0});
        EXPECT_NEAR(angle_of(curve), 1.5 * std::numbers::pi, 1e-12);
        expect_near(point_at(curve, 2.0 / 3.0), {-1, 0, 0});
    }
}

TEST(nmkNgkMakeUtils_arc, three_generated_points_are_on_the_arc_in_their_order) {
    std::mt19937_64 random(30);
    std::uniform_real_distribution<double> coordinate(-50.0, 50.0);
    const auto point = [&] {
        return giPoint3(coordinate(random), coordinate(random), coordinate(random));
    };
    for (int i = 0; i < 500; ++i) {
        const giPoint3 start = point();
        const giPoint3 middle = point();
        const giPoint3 end = point();
        const auto curve = three_points(start, middle, end);
        ASSERT_TRUE(as<ngkArc3>(curve)) << i;
        const double radius = as<ngkArc3>(curve)->circle().radius();
        ASSERT_EQ(point_at(curve, 0.0), start) << i;
        ASSERT_EQ(point_at(curve, 1.0), end) << i;
        ASSERT_LE(curve->closest_point(middle).distance, 1e-9 * radius) << i;
    }
}

TEST(nmkNgkMakeUtils_arc, an_unset_middle_gives_the_line_and_unset_ends_an_empty_handle) {
    EXPECT_TRUE(as<ngkLine3>(three_points({0, 0, 0}, giPoint3(), {1, 0, 0})));
    EXPECT_FALSE(three_points(giPoint3(), {1, 0, 0}, {1, 1, 0}));
    EXPECT_FALSE(three_points({1, 0, 0}, {1, 1, 0}, giPoint3()));
    EXPECT_FALSE(three_points(giPoint3(), giPoint3(), giPoint3()));
}

TEST(nmkNgkMakeUtils_arc, with_centre_leaves_the_start_along_the_tangent) {
    for (const double sense : {1.0, -1.0}) {
        const giUnitVec3 tangent(0, sense, 0);
        const auto curve =
            nmkNgkMakeUtils::make_arc({2, 0, 0}, {0, 2, 0}, origin, tangent, tolerance);
        EXPECT_NEAR(angle_of(curve), (sense > 0 ? 0.5 : 1.5) * std::numbers::pi, 1e-12);
        expect_direction(tangent_at(curve, 0.0), tangent);
    }
}

TEST(nmkNgkMakeUtils_arc,
     with_centre_gives_a_full_circle_that_begins_at_the_start_along_the_tangent) {
    const giPoint3 start(0, 3, 1);
    const auto curve = nmkNgkMakeUtils::make_arc(start, giPoint3(0, 3, 1 + 5e-6), giPoint3(0, 0, 1),
                                                 -x, tolerance);
    ASSERT_TRUE(as<ngkCircle3>(curve));
    EXPECT_EQ(as<ngkCircle3>(curve)->radius(), 3.0);
    expect_near(point_at(curve, 0.0), start);
    expect_direction(tangent_at(curve, 0.0), -x);
    expect_near(point_at(curve, 0.25), {-3, 0, 1});
}

TEST(nmkNgkMakeUtils_arc, with_centre_refuses_radii_that_differ_by_more_than_the_tolerance) {
    const auto arc = [](double end_radius, double tol) {
        return nmkNgkMakeUtils::make_arc({2, 0, 0}, {0, end_radius, 0}, origin, y, tol);
    };
    EXPECT_TRUE(arc(2.25, 0.25));
    EXPECT_FALSE(arc(2.25, 0.125));
    EXPECT_FALSE(arc(2.0, -1.0));
    EXPECT_FALSE(arc(2.0, not_a_number));
}

TEST(nmkNgkMakeUtils_arc,
     with_centre_refuses_a_slant_beyond_a_fixed_length_whatever_the_tolerance) {
    const auto arc = [](double slant, double tol) {
        const giUnitVec3 tangent(giUnit::already, slant, 1.0, 0.0);
        return nmkNgkMakeUtils::make_arc({1, 0, 0}, {0, 1, 0}, origin, tangent, tol);
    };
    for (const double tol : {1e-9, 1e-3, 0.5}) {
        EXPECT_TRUE(arc(0.0001, tol));
        EXPECT_FALSE(arc(0.00011, tol));
    }
}

TEST(nmkNgkMakeUtils_arc, with_centre_measures_a_slant_as_a_length_along_the_radius) {
    const auto arc = [](double radius) {
        const giUnitVec3 tangent(giUnit::already, 0.00005, 1.0, 0.0);
        return nmkNgkMakeUtils::make_arc({radius, 0, 0}, {0, radius, 0}, origin, tangent, 1e-3);
    };
    EXPECT_TRUE(as<ngkArc3>(arc(2.0)));
    EXPECT_FALSE(arc(2.1));
    EXPECT_TRUE(as<ngkArc3>(arc(0.01)));
}

TEST(nmkNgkMakeUtils_arc, with_centre_never_checks_that_the_centre_is_in_its_plane) {
    // The chord is in the plane of x and y, the centre a unit below it.
    const auto curve =
        nmkNgkMakeUtils::make_arc({2, 0, 0}, {0, 2, 0}, giPoint3(0, 0, -1), y, tolerance);
    EXPECT_TRUE(as<ngkArc3>(curve));
}

TEST(nmkNgkMakeUtils_arc, a_short_normal_has_a_direction_and_only_one_of_exactly_0_has_none) {
    // Tangent and chord of the arc are 2e-7 long across each other.
    const auto arc = [](double bow) {
        return nmkNgkMakeUtils::make_arc({0, bow, 0}, {0, -bow, 0}, origin, x, 1e-9);
    };
    EXPECT_TRUE(as<ngkArc3>(arc(1e-7)));
    const auto to = [](const giPoint3& end) {
        return nmkNgkMakeUtils::make_arc({0, 1, 0}, end, origin, x, 1.5);
    };
    EXPECT_TRUE(as<ngkArc3>(to({2, 1.001, 0})));
    EXPECT_FALSE(to({2, 1, 0}));
}

TEST(nmkNgkMakeUtils_arc, with_centre_is_empty_for_a_circle_of_no_radius) {
    EXPECT_FALSE(nmkNgkMakeUtils::make_arc(origin, origin, origin, x, tolerance));
}

TEST(nmkNgkMakeUtils_arc, tangents_along_the_chord_give_a_line) {
    EXPECT_TRUE(as<ngkLine3>(nmkNgkMakeUtils::make_arc(origin, {3, 0, 0}, x, x, tolerance)));
}

TEST(nmkNgkMakeUtils_arc, tangents_along_the_chord_that_lead_away_are_refused) {
    EXPECT_FALSE(nmkNgkMakeUtils::make_arc(origin, {3, 0, 0}, -x, -x, tolerance));
    EXPECT_FALSE(nmkNgkMakeUtils::make_arc(origin, {3, 0, 0}, x, -x, tolerance));
    EXPECT_FALSE(nmkNgkMakeUtils::make_arc(origin, {3, 0, 0}, -x, x, tolerance));
}

TEST(nmkNgkMakeUtils_arc, opposite_tangents_across_the_chord_give_a_semicircle_about_its_middle) {
    const auto curve = nmkNgkMakeUtils::make_arc(origin, {4, 0, 0}, y, -y, tolerance);
    ASSERT_TRUE(as<ngkArc3>(curve));
    expect_near(as<ngkArc3>(curve)->circle().centre(), {2, 0, 0});
    EXPECT_NEAR(angle_of(curve), std::numbers::pi, 1e-12);
    expect_near(point_at(curve, 0.5), {2, 2, 0});
}

TEST(nmkNgkMakeUtils_arc, the_same_tangent_across_the_chord_is_an_S_and_no_arc) {
    EXPECT_FALSE(nmkNgkMakeUtils::make_arc(origin, {4, 0, 0}, y, y, tolerance));
}

TEST(nmkNgkMakeUtils_arc, parallel_tangents_that_are_slanted_to_the_chord_are_refused) {
    EXPECT_FALSE(
        nmkNgkMakeUtils::make_arc(origin, {4, 0, 0}, in_plane(60), -in_plane(60), tolerance));
}

TEST(nmkNgkMakeUtils_arc,
     parallel_tangents_give_an_arc_only_within_the_tolerance_of_a_right_angle) {
    // The end is 1e-4 from the line through the start at a right angle to its tangent.
    const giUnitVec3 nearly_across(2.5e-5, 1.0, 0.0);
    const auto arc = [&](double tol) {
        return nmkNgkMakeUtils::make_arc(origin, {4, 0, 0}, nearly_across, -nearly_across, tol);
    };
    EXPECT_FALSE(arc(1e-5));
    EXPECT_TRUE(as<ngkArc3>(arc(1e-3)));
}

TEST(nmkNgkMakeUtils_arc, tangents_with_the_same_angle_to_the_chord_give_the_arc) {
    for (int angle = 5; angle < 180; angle += 5) {
        if (angle == 90) continue;
        const auto curve = nmkNgkMakeUtils::make_arc(origin, {4, 0, 0}, in_plane(angle),
                                                     in_plane(-angle), tolerance);
        ASSERT_TRUE(as<ngkArc3>(curve)) << angle;
        EXPECT_NEAR(angle_of(curve), 2.0 * angle * std::numbers::pi / 180.0, 1e-9);
        expect_direction(tangent_at(curve, 0.0), in_plane(angle));
        expect_direction(tangent_at(curve, 1.0), in_plane(-angle));
    }
}

TEST(nmkNgkMakeUtils_arc, tangents_to_one_side_with_different_angles_are_refused) {
    EXPECT_FALSE(nmkNgkMakeUtils::make_arc(origin, {4, 0, 0}, in_plane(40), in_plane(-41), 1e-5));
}

TEST(nmkNgkMakeUtils_arc, tangents_to_opposite_sides_of_the_chord_are_refused) {
    EXPECT_FALSE(nmkNgkMakeUtils::make_arc(origin, {4, 0, 0}, in_plane(40), in_plane(40), 1e-5));
    EXPECT_FALSE(nmkNgkMakeUtils::make_arc(origin, {4, 0, 0}, in_plane(40), in_plane(140), 1e-5));
}

TEST(nmkNgkMakeUtils_arc, tangents_that_are_not_in_one_plane_are_refused) {
    EXPECT_FALSE(nmkNgkMakeUtils::make_arc(origin, {4, 0, 0}, giUnitVec3(1, 1, 0),
                                           giUnitVec3(1, 0, -1), tolerance));
}

TEST(nmkNgkMakeUtils_arc, radii_that_differ_by_the_tolerance_are_refused_for_crossing_lines_only) {
    // Radii at the angles 40 and 41 of a chord of 4 differ by about 0.047.
    const auto arc = [](double tol) {
        return nmkNgkMakeUtils::make_arc(origin, {4, 0, 0}, in_plane(40), in_plane(-41), tol);
    };
    EXPECT_FALSE(arc(0.03));
    EXPECT_TRUE(as<ngkArc3>(arc(0.1)));
}

TEST(nmkNgkMakeUtils_arc, radii_that_differ_by_exactly_the_tolerance_are_refused) {
    // The centre is the origin, the radii 3 and 3.25.
    const auto arc = [](double tol) {
        return nmkNgkMakeUtils::make_arc({-3, 0, 0}, {0, 3.25, 0}, y, x, tol);
    };
    EXPECT_FALSE(arc(0.25));
    EXPECT_TRUE(as<ngkArc3>(arc(0.2500001)));
}

TEST(nmkNgkMakeUtils_arc, tangents_out_of_a_plane_are_refused_by_the_angle_of_tolerance_and_chord) {
    // The planes of both tangents and the chord are that many radians apart.
    const auto arc = [](double radians, double tol) {
        const giUnitVec3 end = in_plane(-40);
        const giUnitVec3 turned(giUnit::already, end.x, end.y, -radians * end.y);
        return nmkNgkMakeUtils::make_arc(origin, {4, 0, 0}, in_plane(40), turned, tol);
    };
    // A chord of 4 and a tolerance of 1e-5 make 2.5e-6 radians.
    EXPECT_TRUE(as<ngkArc3>(arc(2e-6, 1e-5)));
    EXPECT_FALSE(arc(4e-6, 1e-5));
    // Never more than 0.0001 radians.
    EXPECT_TRUE(as<ngkArc3>(arc(0.9e-4, 0.03)));
    EXPECT_FALSE(arc(1.1e-4, 0.03));
}

TEST(nmkNgkMakeUtils_arc, with_two_tangents_is_empty_for_ends_that_coincide_and_unset_tangents) {
    EXPECT_FALSE(nmkNgkMakeUtils::make_arc(origin, {1e-6, 0, 0}, y, -y, tolerance));
    EXPECT_FALSE(nmkNgkMakeUtils::make_arc(origin, {4, 0, 0}, giUnitVec3(), -y, tolerance));
    EXPECT_FALSE(nmkNgkMakeUtils::make_arc(origin, {4, 0, 0}, y, giUnitVec3(), tolerance));
}

TEST(nmkNgkMakeUtils_arc, with_one_tangent_ends_where_it_was_asked_to) {
    const auto curve = nmkNgkMakeUtils::make_arc(origin, {4, 0, 0}, in_plane(30));
    ASSERT_TRUE(as<ngkArc3>(curve));
    expect_direction(tangent_at(curve, 0.0), in_plane(30));
    expect_direction(tangent_at(curve, 1.0), in_plane(-30));
    EXPECT_EQ(point_at(curve, 1.0), giPoint3(4, 0, 0));
}

TEST(nmkNgkMakeUtils_arc, with_one_tangent_across_the_chord_gives_a_semicircle) {
    EXPECT_NEAR(angle_of(nmkNgkMakeUtils::make_arc(origin, {4, 0, 0}, y)), std::numbers::pi, 1e-12);
}

TEST(nmkNgkMakeUtils_arc, with_one_tangent_along_the_chord_gives_a_line_or_nothing) {
    EXPECT_TRUE(as<ngkLine3>(nmkNgkMakeUtils::make_arc(origin, {4, 0, 0}, x)));
    EXPECT_FALSE(nmkNgkMakeUtils::make_arc(origin, {4, 0, 0}, -x));
    EXPECT_FALSE(nmkNgkMakeUtils::make_arc(origin, {4, 0, 0}, giUnitVec3(-1, 0.00005, 0)));
    EXPECT_TRUE(
        as<ngkArc3>(nmkNgkMakeUtils::make_arc(origin, {4, 0, 0}, giUnitVec3(-1, 0.0002, 0))));
    EXPECT_FALSE(nmkNgkMakeUtils::make_arc(origin, origin, x));
    EXPECT_FALSE(nmkNgkMakeUtils::make_arc(origin, {4, 0, 0}, giUnitVec3()));
}

TEST(nmkNgkMakeUtils_arc, with_one_tangent_follows_the_zero_angle_of_the_table) {
    const giUnitVec3 nearly_along(1.0, 0.01, 0.0);
    EXPECT_TRUE(as<ngkArc3>(nmkNgkMakeUtils::make_arc(origin, {4, 0, 0}, nearly_along)));
    ngk_resource_table_inquire().set(ngk_TOLZEROANGLE, giAngle(giRadians, 0.1));
    EXPECT_TRUE(as<ngkLine3>(nmkNgkMakeUtils::make_arc(origin, {4, 0, 0}, nearly_along)));
    ngk_resource_table_inquire().reset();
}

struct SweepCase {
    const char* name;
    double sweep;
    double minimum;
    char expected;  // a: arc, c: circle, -: empty

    friend std::ostream& operator<<(std::ostream& out, const SweepCase& c) { return out << c.name; }
};

class nmkNgkMakeUtils_arc_with_sweep : public testing::TestWithParam<SweepCase> {};

TEST_P(nmkNgkMakeUtils_arc_with_sweep, gives_an_arc_a_circle_or_nothing) {
    const SweepCase& c = GetParam();
    const auto curve =
        nmkNgkMakeUtils::make_arc({2, 0, 0}, origin, y, c.sweep, tolerance, degrees(c.minimum));
    EXPECT_EQ(as<ngkArc3>(curve) != nullptr, c.expected == 'a');
    EXPECT_EQ(as<ngkCircle3>(curve) != nullptr, c.expected == 'c');
    EXPECT_EQ(!curve, c.expected == '-');
    if (c.expected == 'a') {
        EXPECT_NEAR(angle_of(curve), c.sweep * std::numbers::pi / 180.0, 1e-9);
    }
}

INSTANTIATE_TEST_SUITE_P(
    cases, nmkNgkMakeUtils_arc_with_sweep,
    testing::Values(SweepCase{"a_quarter", 90, 1, 'a'}, SweepCase{"a_full_turn", 360, 1, 'c'},
                    SweepCase{"a_full_turn_less_the_minimum_is_an_arc", 359, 1, 'a'},
                    SweepCase{"the_minimum_of_30_comes_back_changed_in_its_last_bit", 330, 30, 'a'},
                    SweepCase{"less_than_the_minimum_from_a_full_turn", 359.5, 1, 'c'},
                    SweepCase{"more_than_a_turn", 400, 1, 'c'},
                    SweepCase{"the_minimum", 15, 15, 'a'},
                    SweepCase{"below_the_minimum", 14.9, 15, '-'},
                    SweepCase{"a_negative_sweep", -90, 1, '-'},
                    SweepCase{"a_negative_sweep_without_a_minimum", -90, -180, '-'},
                    SweepCase{"no_sweep_without_a_minimum_is_a_full_circle", 0, 0, 'c'},
                    SweepCase{"an_end_within_the_tolerance_of_the_start", 1e-5, 0, 'c'},
                    SweepCase{"nan", not_a_number, 1, '-'},
                    SweepCase{"a_minimum_that_is_nan", 90, not_a_number, '-'}),
    [](const auto& tested) { return tested.param.name; });

TEST(nmkNgkMakeUtils_arc, with_sweep_begins_a_full_circle_at_the_start_along_the_tangent) {
    const auto curve =
        nmkNgkMakeUtils::make_arc({0, -2, 5}, {0, 0, 5}, -x, 360, tolerance, degrees(1));
    ASSERT_TRUE(as<ngkCircle3>(curve));
    expect_near(point_at(curve, 0.0), {0, -2, 5});
    expect_direction(tangent_at(curve, 0.0), -x);
}

TEST(nmkNgkMakeUtils_arc, with_sweep_refuses_a_slanted_tangent_for_an_arc_but_not_for_a_circle) {
    const giUnitVec3 slanted(0.1, 1.0, 0.0);
    const auto arc = [&](double sweep) {
        return nmkNgkMakeUtils::make_arc({2, 0, 0}, origin, slanted, sweep, tolerance, degrees(1));
    };
    EXPECT_FALSE(arc(90));
    EXPECT_TRUE(as<ngkCircle3>(arc(360)));
}

TEST(nmkNgkMakeUtils_arc, with_sweep_is_empty_for_anything_unset_and_for_a_start_at_the_centre) {
    const auto arc = [](const giPoint3& start, const giPoint3& centre, const giUnitVec3& tangent) {
        return nmkNgkMakeUtils::make_arc(start, centre, tangent, 90, tolerance, degrees(1));
    };
    EXPECT_TRUE(arc({2, 0, 0}, origin, y));
    EXPECT_FALSE(arc(giPoint3(), origin, y));
    EXPECT_FALSE(arc({2, 0, largest}, origin, y));
    EXPECT_FALSE(arc({2, 0, 0}, giPoint3(), y));
    EXPECT_FALSE(arc({2, 0, 0}, origin, giUnitVec3()));
    EXPECT_FALSE(arc(origin, origin, y));
    EXPECT_FALSE(arc({0, 2, 0}, origin, y));
}

TEST(nmkNgkMakeUtils_arc, on_a_circle_runs_between_its_parameters) {
    const giCircle3 circle(origin, z, 2.0);
    const auto curve = nmkNgkMakeUtils::make_arc(ngkT(0, 0.5), ngkT(0, 2.0), circle);
    EXPECT_NEAR(angle_of(curve), 1.5, 1e-15);
    expect_near(point_at(curve, 0.0), {2 * std::cos(0.5), 2 * std::sin(0.5), 0});
}

TEST(nmkNgkMakeUtils_arc, on_a_circle_is_empty_for_an_unset_parameter_and_an_invalid_circle) {
    const giCircle3 circle(origin, z, 2.0);
    EXPECT_FALSE(nmkNgkMakeUtils::make_arc(ngkT(), ngkT(0, 2.0), circle));
    EXPECT_FALSE(nmkNgkMakeUtils::make_arc(ngkT(0, 2.0), ngkT(-1, 2.0), circle));
    EXPECT_FALSE(nmkNgkMakeUtils::make_arc(ngkT(0, 0.5), ngkT(0, 2.0), giCircle3()));
}

TEST(nmkNgkMakeUtils_arc, circles_begin_a_quarter_before_the_reference_which_is_their_Y_axis) {
    expect_near(point_at(nmkNgkMakeUtils::make_circle(giCircle3(origin, z, 2.0)), 0.0), {2, 0, 0});
    const auto plane = giWorkplane3(origin, x, z);
    expect_near(point_at(nmkNgkMakeUtils::make_circle(plane, 2.0), 0.0), {0, -2, 0});
    expect_near(point_at(nmkNgkMakeUtils::make_circle(plane, 2.0), 0.25), {2, 0, 0});
}

TEST(nmkNgkMakeUtils_arc, a_circle_about_the_Y_axis_takes_X_as_its_reference) {
    for (const giUnitVec3& normal : {y, -y, giUnitVec3(0.00009, 1, 0), giUnitVec3(0.00009, -1, 0),
                                     giUnitVec3(0, -1, 0.00009)}) {
        const auto curve = nmkNgkMakeUtils::make_circle(giCircle3(origin, normal, 2.0));
        expect_near(point_at(curve, 0.25), {2, 0, 0}, 1e-3);
    }
    const auto slanted = nmkNgkMakeUtils::make_circle(giCircle3(origin, {0, 1, 0.00011}, 2.0));
    expect_near(point_at(slanted, 0.25), {0, 0, -2}, 1e-3);
}

TEST(nmkNgkMakeUtils_arc, a_circle_is_empty_where_it_is_invalid) {
    EXPECT_FALSE(nmkNgkMakeUtils::make_circle(giCircle3()));
    EXPECT_FALSE(nmkNgkMakeUtils::make_circle(giWorkplane3(), -1.0));
    EXPECT_FALSE(nmkNgkMakeUtils::make_circle(giWorkplane3(giPoint3(), y, z), 1.0));
}

TEST(nmkNgkMakeUtils_arc, hostile_numbers_give_a_valid_curve_or_an_empty_handle) {
    const auto check = [](const ngkCurvePtr3& curve) { EXPECT_TRUE(!curve || curve->is_valid()); };
    for (const double a : hostile_values) {
        for (const double b : hostile_values) {
            const giPoint3 p(a, b, 0);
            const giPoint3 q(1, a, b);
            const giUnitVec3 t(giUnit::already, b, a, 0);
            for (const double tol : {tolerance, 0.0, a}) {
                check(nmkNgkMakeUtils::make_arc(p, q, giPoint3(1, 1, 1), t, tol));
                check(nmkNgkMakeUtils::make_arc({1, 0, 0}, p, q, t, tol));
                check(nmkNgkMakeUtils::make_arc(p, q, t, y, tol));
                check(nmkNgkMakeUtils::make_arc({1, 0, 0}, q, y, t, tol));
                check(nmkNgkMakeUtils::make_arc(p, {1, 0, 0}, t, b, tol, degrees(a)));
                check(nmkNgkMakeUtils::make_arc({2, 0, 0}, origin, y, a, tol, degrees(b)));
            }
            check(three_points(p, q, {1, 2, 3}));
            check(three_points({1, 2, 3}, p, q));
            check(three_points(q, {1, 2, 3}, p));
            check(nmkNgkMakeUtils::make_arc(p, q, t));
            check(nmkNgkMakeUtils::make_arc(ngkT(0, a), ngkT(0, b), giCircle3(origin, z, 1.0)));
            check(nmkNgkMakeUtils::make_circle(giCircle3(p, t, a)));
        }
    }
}

#include <geometry/giAngle.h>
#include <geometry/giBox2.h>
#include <geometry/giBox3.h>
#include <geometry/giLength.h>
#include <geometry/giPoint2.h>
#include <geometry/giPoint3.h>
#include <geometry/giPoint3Arrays.h>
#include <geometry/giUnitVec3.h>
#include <geometry/giVector3.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace {

constexpr double largest = std::numeric_limits<double>::max();

}  // namespace

TEST(giLength, reads_as_a_length_when_it_is_held_as_a_square) {
    const double length = giLength::from_square(2.0);
    EXPECT_EQ(length, std::sqrt(2.0));
    EXPECT_EQ(giLength::from_square(2.0).square(), 2.0);
}

TEST(giLength, reads_as_given_when_it_is_known) {
    const double length = giLength(3.0);
    EXPECT_EQ(length, 3.0);
    EXPECT_EQ(giLength(3.0).square(), 9.0);
}

TEST(giLength, is_never_negative) {
    EXPECT_EQ(giLength(-3.0).length(), 3.0);
    EXPECT_FALSE(std::signbit(giLength::from_square(0.0).length()));
    EXPECT_EQ(giLength().length(), 0.0);
}

TEST(giPoint2, distance_sums_the_squares_in_order) {
    std::mt19937_64 random(7);
    std::uniform_real_distribution<double> coordinate(-1000.0, 1000.0);
    for (int i = 0; i < 1000; ++i) {
        const giPoint2 a(coordinate(random), coordinate(random));
        const giPoint2 b(coordinate(random), coordinate(random));
        const double dx = a.x - b.x;
        const double dy = a.y - b.y;
        ASSERT_EQ(static_cast<double>(a.distance(b)), std::sqrt(dx * dx + dy * dy));
    }
}

TEST(giPoint3, distance_sums_the_squares_in_order) {
    std::mt19937_64 random(8);
    std::uniform_real_distribution<double> coordinate(-1000.0, 1000.0);
    for (int i = 0; i < 1000; ++i) {
        const giPoint3 a(coordinate(random), coordinate(random), coordinate(random));
        const giPoint3 b(coordinate(random), coordinate(random), coordinate(random));
        const double dx = a.x - b.x;
        const double dy = a.y - b.y;
        const double dz = a.z - b.z;
        ASSERT_EQ(static_cast<double>(a.distance(b)), std::sqrt(dx * dx + dy * dy + dz * dz));
    }
}

TEST(giPoint3, distance_overflows_as_the_plain_formula_does) {
    EXPECT_TRUE(std::isinf(giPoint3(1e200, 0, 0).distance(giPoint3(0, 0, 0)).length()));
}

TEST(giPoint3, is_unset_by_default_and_by_its_markers) {
    EXPECT_FALSE(giPoint3().is_set());
    EXPECT_FALSE(giPoint3(-largest, 0, 0).is_set());
    EXPECT_FALSE(giPoint3(largest, 0, 0).is_set());
    EXPECT_FALSE(giPoint3(0, largest, 0).is_set());
    EXPECT_FALSE(giPoint3(0, 0, largest).is_set());
    EXPECT_TRUE(giPoint3(0, -largest, -largest).is_set());
    EXPECT_TRUE(giPoint3(giOrigin::origin).is_set());
}

TEST(giPoint2, is_unset_by_default_and_by_its_markers) {
    EXPECT_FALSE(giPoint2().is_set());
    EXPECT_FALSE(giPoint2(-largest, 0).is_set());
    EXPECT_FALSE(giPoint2(0, largest).is_set());
    EXPECT_TRUE(giPoint2(0, -largest).is_set());
}

TEST(giAngle, reads_in_the_unit_asked_for) {
    EXPECT_DOUBLE_EQ(giAngle(giDegrees, 180.0).angle(giAngleRadians()), 3.141592653589793);
    EXPECT_DOUBLE_EQ(giAngle(giRadians, 3.141592653589793).angle(giAngleDegrees()), 180.0);
    EXPECT_LT(giAngle(giDegrees, 10.0), giAngle(giDegrees, 11.0));
}

TEST(giAngle, takes_the_sine_before_the_cosine) {
    EXPECT_EQ(giAngle(giTangent2, 1.0, 0.0).angle(giAngleRadians()), std::acos(0.0));
    EXPECT_EQ(giAngle(giTangent2, 0.0, 1.0).angle(giAngleRadians()), 0.0);
}

TEST(giVector3, counts_as_zero_up_to_its_limit) {
    EXPECT_TRUE(giVector3(1e-05, 0, 0).is_zero());
    EXPECT_FALSE(giVector3(1.1e-05, 0, 0).is_zero());
    EXPECT_TRUE(giVector3().is_zero());
}

TEST(giVector3, multiplies_and_adds) {
    const giVector3 x(1, 0, 0);
    const giVector3 y(0, 1, 0);
    EXPECT_EQ(x.cross(y), giVector3(0, 0, 1));
    EXPECT_EQ(x.dot(y), 0.0);
    EXPECT_EQ(x + y * 2.0, giVector3(1, 2, 0));
    EXPECT_EQ(giVector3(giPoint3(1, 1, 1), giPoint3(3, 2, 1)), giVector3(2, 1, 0));
    EXPECT_EQ(giPoint3(1, 1, 1) + x, giPoint3(2, 1, 1));
    EXPECT_EQ(giVector3(3, 4, 0).length().length(), 5.0);
}

TEST(giPoint3, minus_another_point_is_the_vector_between_them) {
    const giPoint3 from(1, 2, 3), to(4, 6, 8);
    EXPECT_EQ(to - from, giVector3(3, 4, 5));
    EXPECT_EQ(from + (to - from), to);
    EXPECT_EQ(to - from, giVector3(from, to));
}

TEST(giUnitVec3, keeps_components_that_are_unit_already_to_the_bit) {
    const double x = -0.9792291343701904, y = -0.018250430468946345, z = -0.20193371236201613;
    const giUnitVec3 direction(giUnit::already, x, y, z);
    EXPECT_EQ(direction.vector(), giVector3(x, y, z));
    EXPECT_NE(giUnitVec3(x, y, z).x, x);  // another division rounds once more
}

TEST(giUnitVec3, has_length_one_or_is_unset) {
    const giUnitVec3 direction(3, 4, 0);
    EXPECT_EQ(direction, giUnitVec3(0.6, 0.8, 0));
    EXPECT_FALSE(giUnitVec3().is_set());
    EXPECT_FALSE(giUnitVec3(1e-6, 0, 0).is_set());
    EXPECT_TRUE(giUnitVec3(giAxis::z).is_set());
}

TEST(giUnitVec3, a_right_angle_is_exactly_half_of_pi) {
    const giAngle angle = giUnitVec3(giAxis::x).unsigned_angle(giUnitVec3(giAxis::y));
    EXPECT_EQ(angle.angle(giAngleRadians()), 1.5707963267948966);
}

TEST(giUnitVec3, unsigned_angle_runs_from_zero_to_pi_and_is_the_same_both_ways) {
    const giUnitVec3 x(giAxis::x);
    EXPECT_EQ(x.unsigned_angle(x).angle(giAngleRadians()), 0.0);
    EXPECT_EQ(x.unsigned_angle(giUnitVec3(-1, 0, 0)).angle(giAngleRadians()), 3.141592653589793);
    const giUnitVec3 near(1, 1e-9, 0);
    EXPECT_DOUBLE_EQ(x.unsigned_angle(near).angle(giAngleRadians()), 1e-9);
    EXPECT_EQ(x.unsigned_angle(near), near.unsigned_angle(x));
}

TEST(giBox2, takes_any_two_opposite_corners_and_contains_its_edge) {
    const giBox2 box(giPoint2(3, 0), giPoint2(1, 2));
    EXPECT_EQ(box.min(), giPoint2(1, 0));
    EXPECT_EQ(box.max(), giPoint2(3, 2));
    EXPECT_EQ(box.width(), 2.0);
    EXPECT_EQ(box.height(), 2.0);
    EXPECT_NE(box.contains(giPoint2(1, 2)), 0);
    EXPECT_EQ(box.contains(giPoint2(3.5, 1)), 0);
    EXPECT_EQ(box.contains(giPoint2(2, -0.5)), 0);
}

TEST(giBox2, an_empty_box_takes_the_first_point) {
    giBox2 box;
    EXPECT_TRUE(box.is_empty());
    EXPECT_EQ(box.contains(giPoint2(0, 0)), 0);
    box.add(giPoint2(5, 6));
    EXPECT_EQ(box.min(), giPoint2(5, 6));
    EXPECT_EQ(box.max(), giPoint2(5, 6));
}

TEST(giBox3, grows_with_points_and_contains_its_faces) {
    giBox3 box;
    EXPECT_TRUE(box.is_empty());
    box.add(giPoint3(1, 5, 2));
    box.add(giPoint3(3, 4, -2));
    EXPECT_EQ(box.min(), giPoint3(1, 4, -2));
    EXPECT_EQ(box.max(), giPoint3(3, 5, 2));
    EXPECT_NE(box.contains(giPoint3(2, 4, 0)), 0);
    EXPECT_EQ(box.contains(giPoint3(2, 4, 3)), 0);
}

TEST(giPoint3coPageArr, starts_its_points_unset) {
    giPoint3coPageArr points;
    points[3] = giPoint3(1, 2, 3);
    EXPECT_FALSE(points[0].is_set());
    EXPECT_EQ(points.size(), 4);
}

TEST(giPoint2, coincides_within_a_circle_of_the_tolerance) {
    const giPoint2 origin(0, 0);
    EXPECT_NE(origin.coincident(giPoint2(3, 4), 5.0), 0);
    EXPECT_EQ(origin.coincident(giPoint2(3.1, 4), 5.0), 0);
    EXPECT_EQ(origin.coincident(giPoint2(5, 5), 5.0), 0);  // in the square, not in the circle
}

TEST(giBox2, is_not_empty_with_one_point_and_extends_to_every_side) {
    giBox2 box;
    box.add(giPoint2(1, 1));
    EXPECT_FALSE(box.is_empty());
    for (const giPoint2& point :
         {giPoint2(-1, 1), giPoint2(3, 1), giPoint2(1, -2), giPoint2(1, 4)}) {
        EXPECT_EQ(box.contains(point), 0);
        box.add(point);
        EXPECT_NE(box.contains(point), 0);
    }
    EXPECT_EQ(box.width(), 4.0);
    EXPECT_EQ(box.height(), 6.0);
}

TEST(giBox3, contains_no_point_beyond_any_of_its_faces) {
    const giBox3 box(giPoint3(1, 1, 1), giPoint3(0, 0, 0));
    EXPECT_FALSE(box.is_empty());
    EXPECT_NE(box.contains(giPoint3(0.5, 0.5, 0.5)), 0);
    for (const giPoint3& point : {giPoint3(-1, 0, 0), giPoint3(2, 0, 0), giPoint3(0, -1, 0),
                                  giPoint3(0, 2, 0), giPoint3(0, 0, -1), giPoint3(0, 0, 2)}) {
        EXPECT_EQ(box.contains(point), 0);
    }
}

TEST(giPoint3, differs_when_any_coordinate_does) {
    const giPoint3 point(1, 2, 3);
    EXPECT_EQ(point, giPoint3(1, 2, 3));
    EXPECT_NE(point, giPoint3(0, 2, 3));
    EXPECT_NE(point, giPoint3(1, 0, 3));
    EXPECT_NE(point, giPoint3(1, 2, 0));
    EXPECT_NE(giUnitVec3(giAxis::x), giUnitVec3(giAxis::y));
    EXPECT_NE(giUnitVec3(giAxis::y), giUnitVec3(giAxis::z));
    EXPECT_NE(giVector3(1, 2, 3), giVector3(1, 2, 4));
    EXPECT_NE(giPoint2(1, 2), giPoint2(1, 3));
}

TEST(giAngle, is_ordered_by_size) {
    const giAngle small(giDegrees, 10.0), large(giDegrees, 20.0);
    EXPECT_TRUE(small < large);
    EXPECT_TRUE(large > small);
    EXPECT_FALSE(small == large);
    EXPECT_TRUE(small == giAngle(giDegrees, 10.0));
}

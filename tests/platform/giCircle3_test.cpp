#include <geometry/giCircle3.h>
#include <geometry/giWorkplane3.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <ostream>
#include <random>

namespace {

constexpr double largest = std::numeric_limits<double>::max();
const double not_a_number = std::numeric_limits<double>::quiet_NaN();

struct InvalidCase {
    const char* name;
    giPoint3 first;
    giPoint3 second;
    giPoint3 third;

    friend std::ostream& operator<<(std::ostream& out, const InvalidCase& c) {
        return out << c.name;
    }
};

class giCircle3_invalid : public testing::TestWithParam<InvalidCase> {};

}  // namespace

TEST(giCircle3, passes_through_three_points) {
    const giCircle3 circle(giPoint3(3, 0, 7), giPoint3(0, 3, 7), giPoint3(-3, 0, 7));
    EXPECT_FALSE(circle.invalid());
    EXPECT_LE(circle.centre().distance(giPoint3(0, 0, 7)), 1e-15);
    EXPECT_EQ(circle.normal(), giUnitVec3(giAxis::z));
    EXPECT_DOUBLE_EQ(circle.radius(), 3.0);
}

TEST(giCircle3, the_points_run_counter_clockwise_about_its_normal) {
    const giCircle3 circle(giPoint3(3, 0, 0), giPoint3(0, -3, 0), giPoint3(-3, 0, 0));
    EXPECT_EQ(circle.normal(), -giUnitVec3(giAxis::z));
}

TEST(giCircle3, keeps_its_digits_far_from_the_origin) {
    const giCircle3 circle(giPoint3(1e9 + 1, 1e9, 0), giPoint3(1e9, 1e9 + 1, 0),
                           giPoint3(1e9 - 1, 1e9, 0));
    EXPECT_EQ(circle.centre(), giPoint3(1e9, 1e9, 0));
    EXPECT_DOUBLE_EQ(circle.radius(), 1.0);
}

TEST(giCircle3, tiny_and_huge_circles_neither_vanish_nor_overflow) {
    for (const double size : {1e-300, 1e-6, 1e6, 1e200, 1e300}) {
        const giCircle3 circle(giPoint3(size, 0, 0), giPoint3(0, size, 0), giPoint3(-size, 0, 0));
        ASSERT_FALSE(circle.invalid()) << size;
        EXPECT_NEAR(circle.radius() / size, 1.0, 1e-15);
        EXPECT_NEAR(circle.normal().z, 1.0, 1e-15);
    }
}

TEST(giCircle3, generated_points_of_a_circle_give_that_circle) {
    std::mt19937_64 random(21);
    std::uniform_real_distribution<double> coordinate(-100.0, 100.0);
    for (int i = 0; i < 1000; ++i) {
        const giPoint3 centre(coordinate(random), coordinate(random), coordinate(random));
        const giWorkplane3 plane(centre, giUnitVec3(giAxis::y),
                                 giUnitVec3(coordinate(random), coordinate(random), 30.0));
        const double radius = 1.0 + std::abs(coordinate(random));
        const auto at = [&](double angle) {
            return plane.to_world(giPoint3(radius * std::cos(angle), radius * std::sin(angle), 0));
        };
        const double start = coordinate(random);
        const giCircle3 circle(at(start), at(start + 1.5), at(start + 4.0));
        ASSERT_LE(circle.centre().distance(centre), 1e-11) << i;
        ASSERT_NEAR(circle.radius(), radius, 1e-11) << i;
        ASSERT_NE(circle.normal().parallel(plane.z_axis(), giAngle(giRadians, 1e-11)), 0) << i;
    }
}

TEST_P(giCircle3_invalid, is_reported) {
    const InvalidCase& c = GetParam();
    EXPECT_TRUE(giCircle3(c.first, c.second, c.third).invalid());
    EXPECT_TRUE(giCircle3(c.third, c.first, c.second).invalid());
    EXPECT_TRUE(giCircle3(c.second, c.third, c.first).invalid());
}

INSTANTIATE_TEST_SUITE_P(
    cases, giCircle3_invalid,
    testing::Values(InvalidCase{"points_on_a_line", {0, 0, 0}, {1, 1, 1}, {3, 3, 3}},
                    InvalidCase{"points_on_a_line_that_rounding_bends",
                                {0.1, 0.7, 0.3},
                                {0.2, 1.4, 0.6},
                                {0.3, 2.1, 0.9}},
                    InvalidCase{"points_on_a_line_far_from_the_origin",
                                {1e9 + 0.1, 3e9 + 0.3, 0},
                                {1e9 + 0.2, 3e9 + 0.6, 0},
                                {1e9 + 0.3, 3e9 + 0.9, 0}},
                    InvalidCase{"three_equal_points", {1, 2, 3}, {1, 2, 3}, {1, 2, 3}},
                    InvalidCase{"two_equal_points", {1, 2, 3}, {4, 5, 3}, {1, 2, 3}},
                    InvalidCase{"an_unset_point", {}, {1, 0, 0}, {0, 1, 0}},
                    InvalidCase{"a_point_with_an_unset_z", {0, 0, largest}, {1, 0, 0}, {0, 1, 0}},
                    InvalidCase{"nan", {not_a_number, 0, 0}, {1, 0, 0}, {0, 1, 0}},
                    InvalidCase{
                        "sides_that_overflow", {-1.5e308, 0, 0}, {1.5e308, 0, 0}, {0, 1e308, 0}}),
    [](const auto& tested) { return tested.param.name; });

TEST(giCircle3, is_invalid_until_it_is_given_a_centre_a_normal_and_a_radius) {
    const giUnitVec3 up(giAxis::z);
    EXPECT_TRUE(giCircle3().invalid());
    EXPECT_FALSE(giCircle3(giPoint3(0, 0, 0), up, 1.0).invalid());
    EXPECT_TRUE(giCircle3(giPoint3(), up, 1.0).invalid());
    EXPECT_TRUE(giCircle3(giPoint3(0, not_a_number, 0), up, 1.0).invalid());
    EXPECT_TRUE(giCircle3(giPoint3(0, 0, 0), giUnitVec3(), 1.0).invalid());
    EXPECT_TRUE(giCircle3(giPoint3(0, 0, 0), up, 0.0).invalid());
    EXPECT_TRUE(giCircle3(giPoint3(0, 0, 0), up, -1.0).invalid());
    EXPECT_TRUE(giCircle3(giPoint3(0, 0, 0), up, not_a_number).invalid());
}

TEST(giWorkplane3, takes_points_and_vectors_to_the_world_and_back) {
    const giWorkplane3 plane(giPoint3(1, 2, 3), giUnitVec3(giAxis::z), giUnitVec3(giAxis::x));
    // The reference is the Y axis, so X of the plane is z cross x of the world, y.
    EXPECT_EQ(plane.to_world(giPoint3(10, 20, 30)), giPoint3(31, 12, 23));
    EXPECT_EQ(plane.to_world(giVector3(10, 20, 30)), giVector3(30, 10, 20));
    EXPECT_EQ(plane.to_work(giPoint3(31, 12, 23)), giPoint3(10, 20, 30));
    EXPECT_EQ(plane.to_work(giVector3(30, 10, 20)), giVector3(10, 20, 30));
}

TEST(giWorkplane3, takes_points_to_the_world_as_its_map_does) {
    std::mt19937_64 random(22);
    std::uniform_real_distribution<double> coordinate(-100.0, 100.0);
    const auto point = [&] {
        return giPoint3(coordinate(random), coordinate(random), coordinate(random));
    };
    for (int i = 0; i < 100; ++i) {
        const giWorkplane3 plane(point(), giUnitVec3(giAxis::y), giUnitVec3(1.0 + i, 2.0, -3.0));
        const giPoint3 work = point();
        ASSERT_LE(plane.to_world(work).distance(plane.xform_to_world().transform(work)), 1e-12);
        ASSERT_LE(plane.to_work(work).distance(plane.xform_to_work().transform(work)), 1e-12);
    }
}

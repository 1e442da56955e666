#include <geometry/giUnitVec3.h>
#include <geometry/giVector3.h>
#include <geometry/giXform3.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <ostream>

namespace {

constexpr double largest = std::numeric_limits<double>::max();
constexpr double infinite = std::numeric_limits<double>::infinity();
const double not_a_number = std::numeric_limits<double>::quiet_NaN();

struct ParallelCase {
    const char* name;
    giVector3 a;
    giVector3 b;
    double degrees;
    int expected;

    friend std::ostream& operator<<(std::ostream& out, const ParallelCase& c) {
        return out << c.name;
    }
};

class giVector3_parallel : public testing::TestWithParam<ParallelCase> {};

}  // namespace

TEST_P(giVector3_parallel, compares_the_angle_with_the_bound) {
    const ParallelCase& c = GetParam();
    EXPECT_EQ(c.a.parallel(c.b, giAngle(giDegrees, c.degrees)), c.expected);
    EXPECT_EQ(c.b.parallel(c.a, giAngle(giDegrees, c.degrees)), c.expected);
}

INSTANTIATE_TEST_SUITE_P(
    cases, giVector3_parallel,
    testing::Values(
        ParallelCase{"the_same_direction_at_another_length", {1, 2, 3}, {2, 4, 6}, 0.0, 1},
        ParallelCase{"opposite_directions_are_not_parallel", {1, 2, 3}, {-1, -2, -3}, 1.0, 0},
        ParallelCase{"a_right_angle_is_within_90_degrees", {3, 0, 0}, {0, 5, 0}, 90.0, 1},
        ParallelCase{"beyond_the_bound", {1, 0, 0}, {1, 0.01, 0}, 0.5, 0},
        ParallelCase{"within_the_bound", {1, 0, 0}, {1, 0.01, 0}, 0.6, 1},
        ParallelCase{"zero_is_parallel_to_nothing", {0, 0, 0}, {1, 0, 0}, 180.0, 0},
        ParallelCase{"zero_is_not_parallel_to_itself", {0, 0, 0}, {0, 0, 0}, 180.0, 0},
        ParallelCase{
            "a_vector_that_counts_as_zero_has_a_direction", {1e-9, 0, 0}, {1, 0, 0}, 0.0, 1},
        ParallelCase{"denormal_components_have_a_direction", {5e-324, 0, 0}, {0, 1, 0}, 45.0, 0},
        ParallelCase{"the_largest_components_do_not_overflow",
                     {largest, largest, 0},
                     {1e300, 1e300, 0},
                     1e-12,
                     1},
        ParallelCase{"nan_is_parallel_to_nothing", {not_a_number, 0, 0}, {1, 0, 0}, 180.0, 0},
        ParallelCase{"infinity_is_parallel_to_nothing", {infinite, 0, 0}, {1, 0, 0}, 180.0, 0}),
    [](const auto& tested) { return tested.param.name; });

TEST(giVector3, is_parallel_to_nothing_within_a_bound_that_is_nan) {
    EXPECT_EQ(giVector3(1, 0, 0).parallel(giVector3(1, 0, 0), giAngle(giRadians, not_a_number)), 0);
}

TEST(giVector3, apparent_angle_runs_counter_clockwise_about_the_normal_for_one_turn) {
    const giVector3 from(2, 0, 0);
    const giUnitVec3 up(giAxis::z);
    for (int degrees = 1; degrees < 360; ++degrees) {
        const giXform3 turn =
            giXform3::rotation(giPoint3(giOrigin::origin), up, giAngle(giDegrees, double(degrees)));
        const giVector3 to = turn.transform(giVector3(5, 0, 0));
        EXPECT_NEAR(from.apparent_angle(to, up).angle(giDegrees), degrees, 1e-12);
        EXPECT_NEAR(from.apparent_angle(to, -up).angle(giDegrees), 360 - degrees, 1e-12);
    }
}

TEST(giVector3, apparent_angle_leaves_out_the_parts_along_the_normal) {
    const giUnitVec3 up(giAxis::z);
    EXPECT_NEAR(giVector3(1, 0, 7).apparent_angle(giVector3(0, 1, -3), up).angle(giDegrees), 90,
                1e-12);
}

TEST(giVector3, apparent_angle_to_the_same_direction_is_0_and_to_the_opposite_half_a_turn) {
    for (const giVector3& from : {giVector3(1, 0, 0), giVector3(-1, 0, 0), giVector3(0, 1, 0),
                                  giVector3(0, -1, 0), giVector3(2, -1, 0)}) {
        for (const giUnitVec3& normal : {giUnitVec3(giAxis::z), -giUnitVec3(giAxis::z)}) {
            EXPECT_EQ(from.apparent_angle(from * 3.0, normal).angle(giRadians), 0.0);
            EXPECT_EQ(from.apparent_angle(-from, normal).angle(giRadians), std::numbers::pi);
        }
    }
}

TEST(giVector3, apparent_angle_is_nan_for_a_vector_that_is_not_finite) {
    const giUnitVec3 up(giAxis::z);
    EXPECT_TRUE(
        std::isnan(giVector3(not_a_number, 0, 0).apparent_angle({1, 0, 0}, up).angle(giRadians)));
}

TEST(giUnitVec3, takes_the_direction_of_a_vector_however_short_or_long) {
    for (const double length : {5e-324, 1e-300, 1e-6, 1.0, 1e300, largest}) {
        const giUnitVec3 direction = giUnitVec3::direction_of(giVector3(0, -length, 0));
        EXPECT_EQ(direction, -giUnitVec3(giAxis::y)) << length;
    }
    EXPECT_NEAR(giUnitVec3::direction_of(giVector3(largest, largest, largest)).x,
                1.0 / std::sqrt(3.0), 1e-15);
}

TEST(giUnitVec3, has_no_direction_of_zero_or_of_what_is_not_finite) {
    EXPECT_FALSE(giUnitVec3::direction_of(giVector3()).is_set());
    EXPECT_FALSE(giUnitVec3::direction_of(giVector3(not_a_number, 1, 0)).is_set());
    EXPECT_FALSE(giUnitVec3::direction_of(giVector3(1, not_a_number, 0)).is_set());
    EXPECT_FALSE(giUnitVec3::direction_of(giVector3(1, 1, not_a_number)).is_set());
    EXPECT_FALSE(giUnitVec3::direction_of(giVector3(0, infinite, 0)).is_set());
}

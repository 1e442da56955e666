#include <geometry/giLine3.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace {

const double not_a_number = std::numeric_limits<double>::quiet_NaN();

const giLine3 along_x(giPoint3(0, 0, 0), giVector3(4, 0, 0));

class Generated {
  public:
    giPoint3 point() { return {coordinate(), coordinate(), coordinate()}; }
    giVector3 vector() { return {coordinate(), coordinate(), coordinate()}; }

  private:
    double coordinate() { return m_coordinate(m_random); }

    std::mt19937_64 m_random{20};
    std::uniform_real_distribution<double> m_coordinate{-100.0, 100.0};
};

}  // namespace

TEST(giLine3, the_closest_point_is_the_foot_of_the_perpendicular) {
    EXPECT_EQ(along_x.closest_point(giPoint3(3, 4, 5)), giPoint3(3, 0, 0));
    EXPECT_EQ(along_x.distance(giPoint3(3, 3, 4)), 5.0);
}

TEST(giLine3, keeps_the_distance_of_a_point_near_the_line_far_along_it) {
    const giLine3 slanted(giPoint3(0, 0, 0), giVector3(3, 4, 0));
    EXPECT_NEAR(slanted.distance(giPoint3(3e9 - 4e-4, 4e9 + 3e-4, 0)), 5e-4, 1e-6);
}

TEST(giLine3, crossing_lines_meet_in_one_point) {
    const giLine3 other(giPoint3(2, -5, 0), giVector3(0, 1e-9, 0));
    giPoint3 on_this;
    giPoint3 on_other;
    EXPECT_EQ(along_x.closest_points(other, on_this, on_other), 0);
    EXPECT_EQ(on_this, giPoint3(2, 0, 0));
    EXPECT_EQ(on_other, giPoint3(2, 0, 0));
}

TEST(giLine3, parallel_lines_have_no_closest_points_in_either_sense) {
    for (const double sense : {1.0, -1.0}) {
        const giLine3 other(giPoint3(2, 3, 0), giVector3(sense, 0, 0));
        giPoint3 on_this(1, 1, 1);
        giPoint3 on_other(1, 1, 1);
        EXPECT_EQ(along_x.closest_points(other, on_this, on_other), 1);
        EXPECT_FALSE(on_this.is_set());
        EXPECT_FALSE(on_other.is_set());
    }
}

TEST(giLine3, lines_at_a_small_angle_are_not_parallel) {
    const giLine3 other(giPoint3(0, 1, 0), giVector3(1e9, -1, 0));
    giPoint3 on_this;
    giPoint3 on_other;
    EXPECT_EQ(along_x.closest_points(other, on_this, on_other), 0);
    EXPECT_NEAR(on_this.x, 1e9, 1.0);
}

TEST(giLine3, a_line_along_nothing_or_through_no_point_is_not_valid) {
    giPoint3 on_this;
    giPoint3 on_other;
    for (const giLine3& line :
         {giLine3(giPoint3(0, 0, 0), giVector3()), giLine3(giPoint3(), giVector3(1, 0, 0)),
          giLine3(giPoint3(not_a_number, 0, 0), giVector3(1, 0, 0)),
          giLine3(giPoint3(0, 0, 0), giVector3(0, not_a_number, 0))}) {
        EXPECT_FALSE(line.is_valid());
        EXPECT_FALSE(line.closest_point(giPoint3(1, 1, 1)).is_set());
        EXPECT_TRUE(std::isnan(line.distance(giPoint3(1, 1, 1))));
        EXPECT_EQ(along_x.closest_points(line, on_this, on_other), 2);
        EXPECT_EQ(line.closest_points(along_x, on_this, on_other), 2);
    }
}

TEST(giLine3, the_closest_points_of_generated_lines_are_joined_by_their_common_perpendicular) {
    Generated generated;
    for (int i = 0; i < 1000; ++i) {
        const giLine3 a(generated.point(), generated.vector());
        const giLine3 b(generated.point(), generated.vector());
        giPoint3 on_a;
        giPoint3 on_b;
        ASSERT_EQ(a.closest_points(b, on_a, on_b), 0);
        ASSERT_LE(a.distance(on_a), 1e-8) << i;
        ASSERT_LE(b.distance(on_b), 1e-8) << i;
        const giVector3 between = on_b - on_a;
        ASSERT_LE(std::abs(between.dot(a.direction().vector())), 1e-6) << i;
        ASSERT_LE(std::abs(between.dot(b.direction().vector())), 1e-6) << i;
        ASSERT_LE(a.closest_point(on_b).distance(on_a), 1e-6) << i;
    }
}

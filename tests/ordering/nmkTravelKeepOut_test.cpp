// Tests of the polygons that are made around circles, rectangles and polygons.
#include <gtest/gtest.h>
#include <nmktoolbox/ordering/nmkTravelKeepOut.h>
#include <nmktoolbox/ordering/nmkTravelWays.h>

#include <cmath>
#include <limits>

namespace {

using Corners = std::vector<giPoint2>;

// The distance of a place from the line through two others, in more digits than a double has.
long double distance_from_line(const giPoint2& p, const giPoint2& a, const giPoint2& b) {
    const long double dx = static_cast<long double>(b.x) - a.x;
    const long double dy = static_cast<long double>(b.y) - a.y;
    const long double across =
        dx * (static_cast<long double>(p.y) - a.y) - dy * (static_cast<long double>(p.x) - a.x);
    return across / std::sqrt(dx * dx + dy * dy);
}

void expect_around(const Corners& corners, const giPoint2& centre, double radius, double error) {
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const giPoint2& a = corners[i];
        const giPoint2& b = corners[(i + 1) % corners.size()];
        EXPECT_GE(distance_from_line(centre, a, b), radius) << i;
        EXPECT_LE(a.distance(centre), (radius + error) * (1.0 + 1e-12)) << i;
    }
}

TEST(nmkTravelKeepOut, surrounds_a_circle_within_the_chord_error) {
    for (const double radius : {0.001, 1.0, 7.3, 250.0}) {
        for (const double error : {0.05, 0.01, 0.002}) {
            for (const giPoint2& centre : {giPoint2(0.0, 0.0), giPoint2(-812.7, 3.1)}) {
                const auto keep_out = nmkTravelKeepOut::circle(centre, radius, 2.5, error);
                ASSERT_EQ(keep_out.parts.size(), 1U);
                expect_around(keep_out.parts[0], centre, radius + 2.5, error);
            }
        }
    }
}

TEST(nmkTravelKeepOut, has_as_many_corners_as_the_chord_error_needs) {
    const auto corners = [](double error) {
        return nmkTravelKeepOut::circle({0.0, 0.0}, 10.0, 0.0, error).parts[0].size();
    };
    EXPECT_EQ(corners(1.0), 8U);
    EXPECT_EQ(corners(0.1), 32U);
    EXPECT_EQ(corners(0.01), 128U);
    EXPECT_EQ(corners(1e-12), std::size_t{nmkTravelKeepOut::max_circle_corners});
}

TEST(nmkTravelKeepOut, keeps_a_rectangle_without_clearance_as_it_is) {
    const auto keep_out = nmkTravelKeepOut::rectangle({1.0, 2.0}, {5.0, 4.0}, 0.0, 0.1);
    ASSERT_EQ(keep_out.parts.size(), 1U);
    EXPECT_EQ(keep_out.parts[0], (Corners{{1.0, 2.0}, {5.0, 2.0}, {5.0, 4.0}, {1.0, 4.0}}));
}

TEST(nmkTravelKeepOut, rounds_the_corners_of_a_rectangle_with_a_clearance) {
    nmkTravelProblem problem;
    problem.keep_outs = {nmkTravelKeepOut::rectangle({0.0, 0.0}, {4.0, 2.0}, 1.0, 0.01)};
    ASSERT_EQ(problem.keep_outs[0].parts.size(), 1U);
    const nmkTravelWays ways(problem);
    ASSERT_EQ(ways.error(), "");
    const auto is_in = [&](double x, double y) {
        return ways.keep_out_at({x, y, 0.0}).has_value();
    };
    EXPECT_TRUE(is_in(-1.0, 1.0));
    EXPECT_FALSE(is_in(-1.011, 1.0));
    EXPECT_TRUE(is_in(4.7, 2.7));
    EXPECT_FALSE(is_in(4.72, 2.72));
}

TEST(nmkTravelKeepOut, follows_a_polygon_that_is_not_convex_with_its_clearance) {
    nmkTravelProblem problem;
    const Corners arch = {{0, 0}, {2, 0}, {2, 8}, {8, 8}, {8, 0}, {10, 0}, {10, 10}, {0, 10}};
    problem.keep_outs = {nmkTravelKeepOut::polygon(arch, 1.0, 0.01)};
    const nmkTravelWays ways(problem);
    ASSERT_EQ(ways.error(), "");
    const auto is_in = [&](double x, double y) {
        return ways.keep_out_at({x, y, 0.0}).has_value();
    };
    EXPECT_TRUE(is_in(2.9, 4.0));
    EXPECT_FALSE(is_in(3.1, 4.0));  // in the notch
    EXPECT_TRUE(is_in(5.0, 7.1));
    EXPECT_FALSE(is_in(5.0, 6.9));
    EXPECT_TRUE(is_in(1.0, 9.0));  // inside the polygon itself
    EXPECT_TRUE(is_in(-0.7, -0.7));
    EXPECT_FALSE(is_in(-0.72, -0.72));
}

TEST(nmkTravelKeepOut, is_bad_where_a_number_is) {
    const double infinite = std::numeric_limits<double>::infinity();
    const double no_number = std::numeric_limits<double>::quiet_NaN();
    const giPoint2 centre(0.0, 0.0);
    for (const nmkTravelKeepOut& keep_out :
         {nmkTravelKeepOut::circle(centre, -1.0, 2.0, 0.1),
          nmkTravelKeepOut::circle(centre, 0.0, 0.0, 0.1),
          nmkTravelKeepOut::circle(centre, infinite, 0.0, 0.1),
          nmkTravelKeepOut::circle({no_number, 0.0}, 1.0, 0.0, 0.1),
          nmkTravelKeepOut::circle(giPoint2(), 1.0, 0.0, 0.1),
          nmkTravelKeepOut::circle(centre, 1.0, 0.0, 0.0),
          nmkTravelKeepOut::rectangle(centre, {1.0, 1.0}, -1.0, 0.1),
          nmkTravelKeepOut::rectangle(centre, {1.0, 0.0}, 1.0, 0.1),
          nmkTravelKeepOut::polygon({{0, 0}, {2, 2}, {2, 0}, {0, 2}}, 1.0, 0.1),
          nmkTravelKeepOut::polygon({}, 1.0, 0.1)}) {
        nmkTravelProblem problem;
        problem.keep_outs = {keep_out};
        EXPECT_EQ(nmkTravelWays(problem).error().substr(0, 12), "keep-out 0: ");
    }
}

}  // namespace

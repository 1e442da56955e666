// point_spacing: compared with the plain way over generated points.

#include "draw/point_spacing.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <random>

#include "app/draw/plain_point_spacing.h"

namespace nmk_draw {
namespace {

struct Pattern {
    const char* name;
    std::function<SvgPoint(std::mt19937&, int)> point;

    friend std::ostream& operator<<(std::ostream& out, const Pattern& pattern) {
        return out << pattern.name;
    }
};

double anywhere(std::mt19937& random) {
    return std::uniform_real_distribution<double>(0.0, 640.0)(random);
}

class point_spacing_patterns : public testing::TestWithParam<Pattern> {};

TEST_P(point_spacing_patterns, is_at_most_half_as_much_again_as_the_median) {
    for (const unsigned seed : {1U, 2U, 3U}) {
        std::mt19937 random(seed);
        std::vector<SvgPoint> points;
        for (int i = 0; i < 800; ++i) points.push_back(GetParam().point(random, i));
        const double median = plain_point_spacing::of(points);
        EXPECT_GE(point_spacing(points), median * (1 - 1e-12)) << seed;
        EXPECT_LE(point_spacing(points), median * 1.5) << seed;
    }
}

INSTANTIATE_TEST_SUITE_P(
    patterns, point_spacing_patterns,
    testing::Values(Pattern{"random",
                            [](std::mt19937& random, int) -> SvgPoint {
                                return {anywhere(random), anywhere(random)};
                            }},
                    Pattern{"a_grid",
                            [](std::mt19937&, int i) -> SvgPoint {
                                const int row = i / 40;
                                return {i % 40 * 7.0, row * 7.0};
                            }},
                    Pattern{"a_line",
                            [](std::mt19937& random, int) -> SvgPoint {
                                return {3.0, anywhere(random)};
                            }},
                    Pattern{"two_far_clusters",
                            [](std::mt19937& random, int i) -> SvgPoint {
                                return {anywhere(random) / 9 + i % 2 * 5000, anywhere(random) / 9};
                            }},
                    Pattern{"pairs_of_the_same_place",
                            [](std::mt19937&, int i) -> SvgPoint {
                                const int row = i / 40;
                                const int column = i / 2 % 20;
                                return {column * 9.0, row * 9.0};
                            }},
                    Pattern{"five_at_each_random_place", [](std::mt19937&, int i) -> SvgPoint {
                                std::mt19937 of_this_place(static_cast<unsigned>(i / 5));
                                const double x = anywhere(of_this_place);
                                return {x, anywhere(of_this_place)};
                            }}));

TEST(point_spacing, is_infinite_where_no_two_points_differ) {
    EXPECT_TRUE(std::isinf(point_spacing({})));
    EXPECT_TRUE(std::isinf(point_spacing({{1, 2}})));
    EXPECT_TRUE(std::isinf(point_spacing(std::vector<SvgPoint>(50, {1, 2}))));
}

}  // namespace
}  // namespace nmk_draw

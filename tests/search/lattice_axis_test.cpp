// The columns or rows of a lattice: which coordinates are on them, and which steps and origins are
// too small or too large for sums to distinguish.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <random>

#include "search/lattice.h"

namespace {

using nmk_search::SummedAxis;

using nmk_search::max_line;

TEST(SummedAxis, steps_forwards_backwards_and_not_at_all) {
    const SummedAxis axis(2.0, 0.1);
    EXPECT_EQ(axis.next(2.3, 0), 2.3);
    EXPECT_EQ(axis.next(2.3, 1), 2.3 + 0.1);
    EXPECT_EQ(axis.next(2.3, -1), 2.3 - 0.1);
}

TEST(SummedAxis, accepts_coordinates_that_drifted_by_a_fifth_of_the_tolerance) {
    for (const double step : {0.5, -0.5}) {
        const SummedAxis axis(2.0, step);
        for (const std::int32_t line : {0, 1, -1, 1000, -1000}) {
            const double at = 2.0 + line * step;
            for (const double side : {1.0, -1.0}) {
                EXPECT_TRUE(axis.has_on_line(line, at + side * 1.99e-6)) << line;
                EXPECT_FALSE(axis.has_on_line(line, at + side * 2.01e-6)) << line;
                EXPECT_FALSE(axis.has_on_line(line, at + side * step)) << line;
            }
        }
    }
}

TEST(SummedAxis, ends_where_coordinates_or_lines_grow_too_large) {
    const SummedAxis wide(0.0, 1e8);
    EXPECT_TRUE(wide.has_on_line(10, 1e9));
    EXPECT_TRUE(wide.has_on_line(-10, -1e9));
    EXPECT_FALSE(wide.has_on_line(11, 1.1e9));
    EXPECT_FALSE(wide.has_on_line(-11, -1.1e9));
    const SummedAxis narrow(0.0, 0x1p-10);
    EXPECT_TRUE(narrow.has_on_line(max_line, 0x1p20));
    EXPECT_TRUE(narrow.has_on_line(-max_line, -0x1p20));
    EXPECT_FALSE(narrow.has_on_line(max_line + 1, 0x1p20 + 0x1p-10));
    EXPECT_FALSE(narrow.has_on_line(-max_line - 1, -0x1p20 - 0x1p-10));
}

TEST(SummedAxis, is_not_usable_with_steps_near_the_tolerance_or_too_large_an_origin) {
    EXPECT_TRUE(SummedAxis(0.0, 1e-4).is_usable());
    EXPECT_TRUE(SummedAxis(0.0, -1e-4).is_usable());
    EXPECT_TRUE(SummedAxis(-1e9, 1.0).is_usable());
    EXPECT_FALSE(SummedAxis(0.0, 0.99e-4).is_usable());
    EXPECT_FALSE(SummedAxis(0.0, 0.0).is_usable());
    EXPECT_FALSE(SummedAxis(std::nextafter(1e9, 2e9), 1.0).is_usable());
    for (const double bad : {std::nan(""), std::numeric_limits<double>::infinity()}) {
        EXPECT_FALSE(SummedAxis(0.0, bad).is_usable());
        EXPECT_FALSE(SummedAxis(bad, 1.0).is_usable());
        EXPECT_FALSE(SummedAxis(0.0, 1.0).has_on_line(0, bad));
    }
}

// Of the origin, the step and the number of a line: small, large, and as large as can be.
double draw_size(std::mt19937& random, double least, double largest) {
    std::uniform_real_distribution<double> exponent(std::log10(least), std::log10(largest));
    return (random() % 2 == 0 ? 1.0 : -1.0) * std::pow(10.0, exponent(random));
}

TEST(SummedAxis, points_of_one_cell_are_within_the_tolerance_and_points_of_two_cells_are_not) {
    const unsigned seed = 89;
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> drift(-2.2e-6, 2.2e-6);
    int of_one_cell = 0;
    for (int i = 0; i < 200000; ++i) {
        const double origin = draw_size(random, 1e-3, 1e9);
        const double step = draw_size(random, 1.001e-4, 1e3);
        const auto line = static_cast<std::int32_t>(draw_size(random, 1.0, 1e6));
        const SummedAxis axis(origin, step);
        const double at = origin + line * step;
        const double points[] = {at + drift(random), at + drift(random), at + drift(random),
                                 at + drift(random)};
        const double beside = at + step + drift(random);
        if (!std::all_of(std::begin(points), std::end(points),
                         [&](double x) { return axis.has_on_line(line, x); })) {
            continue;
        }
        const giPoint2 point(points[0], points[1]);
        ASSERT_TRUE(nmk_search::points_coincide(point, giPoint2(points[2], points[3]))) << i;
        ++of_one_cell;
        if (!axis.has_on_line(line + 1, beside)) continue;
        ASSERT_FALSE(nmk_search::points_coincide(point, giPoint2(beside, points[1]))) << i;
    }
    EXPECT_GT(of_one_cell, 100000);
}

}  // namespace

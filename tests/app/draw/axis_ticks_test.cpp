// axis_ticks: round numbers along an axis, which differ in their texts.

#include "draw/axis_ticks.h"

#include <gtest/gtest.h>

#include <set>

namespace nmk_draw {
namespace {

std::string words_of(const std::vector<AxisTick>& ticks) {
    std::string words;
    for (const AxisTick& tick : ticks) words += (words.empty() ? "" : " ") + tick.words;
    return words;
}

TEST(axis_ticks, are_the_round_numbers_in_the_range) {
    EXPECT_EQ(words_of(axis_ticks({-0.5, 95.5}, 10)), "0 10 20 30 40 50 60 70 80 90");
    EXPECT_EQ(words_of(axis_ticks({-1.1, 1.1}, 7)), "-1 -0.5 0 0.5 1");
    EXPECT_EQ(words_of(axis_ticks({-0.5, 2.5}, 10, 1.0)), "0 1 2");
}

TEST(axis_ticks, never_show_rounding_errors) {
    EXPECT_EQ(words_of(axis_ticks({0.0, 0.75}, 8)), "0 0.1 0.2 0.3 0.4 0.5 0.6 0.7");
}

TEST(axis_ticks, differ_in_their_texts_far_from_the_origin) {
    const std::vector<AxisTick> ticks = axis_ticks({999999.0, 999999.001}, 8);
    std::set<std::string> words;
    for (const AxisTick& tick : ticks) words.insert(tick.words);
    EXPECT_GE(ticks.size(), 4U);
    EXPECT_EQ(words.size(), ticks.size());
}

TEST(axis_ticks, of_very_large_and_small_ranges_have_an_exponent) {
    EXPECT_EQ(words_of(axis_ticks({0.0, 3e12}, 4)), "0 1e+12 2e+12 3e+12");
    EXPECT_EQ(words_of(axis_ticks({0.0, 3e-12}, 4)), "0 1e-12 2e-12 3e-12");
}

}  // namespace
}  // namespace nmk_draw

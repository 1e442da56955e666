// colour_scale: the fills of tools differ clearly.

#include "draw/colour_scale.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

namespace nmk_draw {
namespace {

std::array<double, 3> channels_of(const std::string& colour) {
    std::array<double, 3> channels{};
    for (std::size_t i = 0; i < 3; ++i) {
        channels[i] = std::stoi(colour.substr(1 + 2 * i, 2), nullptr, 16);
    }
    return channels;
}

double distance(const std::string& a, const std::string& b) {
    double sum = 0.0;
    for (std::size_t i = 0; i < 3; ++i) {
        sum += std::pow(channels_of(a)[i] - channels_of(b)[i], 2);
    }
    return std::sqrt(sum);
}

TEST(colour_scale, the_fills_of_the_first_twenty_tools_differ_clearly) {
    for (std::size_t a = 0; a < 20; ++a) {
        for (std::size_t b = 0; b < a; ++b) {
            EXPECT_GT(distance(tool_colour(a), tool_colour(b)), 20.0) << a << " and " << b;
            EXPECT_NE(tool_dot_colour(a), tool_dot_colour(b));
        }
        EXPECT_GT(distance(tool_colour(a), "#fbfcfd"), 20.0) << a;
    }
    EXPECT_EQ(tool_colour(20), tool_colour(0));
}

TEST(colour_scale, dots_are_darker_than_fills) {
    for (std::size_t tool = 0; tool < 20; ++tool) {
        EXPECT_GT(distance(tool_dot_colour(tool), "#fbfcfd"), 150.0) << tool;
    }
}

TEST(colour_scale, goes_from_its_first_colour_to_its_last) {
    EXPECT_EQ(order_colour(-1.0), "#2646be");
    EXPECT_EQ(order_colour(0.0), "#2646be");
    EXPECT_EQ(order_colour(1.0), "#c41446");
    EXPECT_EQ(closing_colour(2.0), "#62a8d0");
    EXPECT_NE(order_colour(0.4), order_colour(0.6));
}

}  // namespace
}  // namespace nmk_draw

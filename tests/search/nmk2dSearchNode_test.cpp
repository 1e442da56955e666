#include <gtest/gtest.h>

#include <cmath>

#include "search/plane_nodes_for_tests.h"

namespace {

using namespace nmk_search::plane;

TEST(nmk2dSearchNode, nodes_are_equal_within_a_circle_of_the_tolerance) {
    EXPECT_TRUE(node_at(0, 0) == node_at(1e-5, 0));
    EXPECT_TRUE(node_at(1, 2) == node_at(1 + 6e-6, 2 - 6e-6));
    EXPECT_FALSE(node_at(0, 0) == node_at(9e-6, 9e-6));  // in the square, outside the circle
    EXPECT_TRUE(node_at(0, 0) != node_at(1.0000001e-5, 0));
    EXPECT_FALSE(node_at(std::nan(""), 0) == node_at(std::nan(""), 0));
}

TEST(nmk2dSearchNode, coordinates_of_1e18_are_compared_as_they_are) {
    EXPECT_TRUE(node_at(1e18, -1e18) == node_at(1e18, -1e18));
    EXPECT_FALSE(node_at(1e18, 0) == node_at(1e18 + 128, 0));
}

TEST(nmk2dSearchNode, a_node_of_another_class_is_not_equal) {
    EXPECT_FALSE(node_at(0, 0) == Other());
    EXPECT_TRUE(Other() == node_at(0, 0));  // equality need not be symmetric
}

TEST(nmk2dSearchNode, the_cost_of_a_step_is_its_length) {
    EXPECT_EQ(node_at(1, 1).min_cost(static_cast<const nmkSearchNode&>(node_at(4, 5))), 5.0);
}

}  // namespace

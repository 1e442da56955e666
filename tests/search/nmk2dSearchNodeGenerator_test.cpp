#include <gtest/gtest.h>

#include "search/plane_nodes_for_tests.h"

namespace {

using namespace nmk_search::plane;

TEST(nmk2dSearchNodeGenerator, makes_the_eight_neighbours_in_order) {
    const Points expected{{5, 9}, {5, 5}, {6, 7}, {6, 9}, {6, 5}, {4, 7}, {4, 9}, {4, 5}};
    EXPECT_EQ(neighbours(nmk2dSearchNodeGenerator(1, 2), 5, 7), expected);
}

TEST(nmk2dSearchNodeGenerator, a_step_of_zero_in_y_gives_each_neighbour_three_times) {
    const Points expected{{6, 7}, {6, 7}, {6, 7}, {4, 7}, {4, 7}, {4, 7}};
    EXPECT_EQ(neighbours(nmk2dSearchNodeGenerator(1, 0), 5, 7), expected);
}

TEST(nmk2dSearchNodeGenerator, neighbours_nearer_than_the_tolerance_are_made_too) {
    EXPECT_EQ(neighbours(nmk2dSearchNodeGenerator(1e-6, 1e-6), 0, 0).size(), 8u);
}

TEST(nmkForward2dSearchNodeGenerator, makes_the_three_neighbours_ahead_in_order) {
    const Points expected{{6, 7}, {6, 9}, {6, 5}};
    EXPECT_EQ(neighbours(nmkForward2dSearchNodeGenerator(1, 2), 5, 7), expected);
    EXPECT_EQ(nmkForward2dSearchNodeGenerator(1, 2).find_x_value(5), 6.0);
}

}  // namespace

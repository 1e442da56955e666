#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <typeinfo>

#include "search/plane.h"

namespace {

using namespace plane;

TEST(nmk2dSearchGoalPoint, only_the_very_point_is_an_arrival) {
    const nmk2dSearchGoalPoint goal(giPoint2(3, 4));
    EXPECT_EQ(goal.min_cost(node_at(0, 0)), 5.0);
    EXPECT_TRUE(goal.contains(node_at(3, 4)));
    EXPECT_FALSE(goal.contains(node_at(3, 4 + 1e-12)));
}

TEST(nmk2dSearchGoalXLine, past_the_target_only_the_distance_in_y_counts) {
    const nmk2dSearchGoalXLine goal(giPoint2(10, 2));
    EXPECT_EQ(goal.min_cost(node_at(11, 5)), 3.0);
    EXPECT_EQ(goal.min_cost(node_at(7, 6)), 5.0);
    EXPECT_TRUE(goal.contains(node_at(12, 2)));
    EXPECT_TRUE(goal.contains(node_at(10, 2)));
}

TEST(nmk2dSearchGoalXLine, at_the_very_x_of_the_target_another_y_is_no_arrival) {
    const nmk2dSearchGoalXLine goal(giPoint2(10, 2));
    EXPECT_EQ(goal.min_cost(node_at(10, 5)), 3.0);
    EXPECT_FALSE(goal.contains(node_at(10, 5)));
}

TEST(nmk2dSearchGoalXLineWithGrad, a_node_past_the_line_needs_no_further_travel) {
    const nmk2dSearchGoalXLineWithGrad goal(giPoint2(10, 0), 0.5);
    EXPECT_TRUE(goal.contains(node_at(15, 0)));
    EXPECT_EQ(goal.min_cost(node_at(4, 0)), 6.0);
    EXPECT_EQ(goal.min_cost(node_at(9, 3)), std::sqrt(9.0 + 36.0));  // the slope asks for 6
    EXPECT_EQ(goal.min_cost(node_at(15, 3)), std::sqrt(9.0 + 36.0));
}

TEST(nmk2dSearchGoalMovingXLine, the_way_back_to_a_target_that_was_passed_counts) {
    const nmk2dSearchGoalMovingXLine goal(giPoint2(10, 0), 0.5);
    EXPECT_FALSE(goal.contains(node_at(15, 0)));
    EXPECT_EQ(goal.min_cost(node_at(15, 0)), 5.0);
    EXPECT_TRUE(goal.contains(node_at(10, 0)));
}

TEST(nmk2dSearchGoalMovingXLine, a_node_that_can_just_reach_it_does_not_move_it) {
    const nmk2dSearchNodeGenerator generator(1, 1);
    nmk2dSearchGoalMovingXLine goal(giPoint2(10, 0), 0.5);
    EXPECT_FALSE(goal.overshoot_goal(node_at(6, 2), generator));  // needs 4, has 4
    EXPECT_TRUE(goal.contains(node_at(10, 0)));
}

TEST(nmk2dSearchGoalMovingXLine, a_node_one_step_further_off_moves_it_along_the_lattice) {
    const nmk2dSearchNodeGenerator generator(4, 1);
    nmk2dSearchGoalMovingXLine goal(giPoint2(10, 0), 0.5);
    EXPECT_TRUE(goal.overshoot_goal(node_at(6, 3), generator));  // needs 6, has 4
    EXPECT_TRUE(goal.contains(node_at(18, 0)));                  // 10, 14, 18: the first from 16 on
}

TEST(nmk2dSearchGoalMovingXLine, a_step_that_no_longer_changes_x_ends_the_way_on) {
    nmk2dSearchGoalMovingXLine at_rest(giPoint2(10, 0), 0.5);
    EXPECT_TRUE(at_rest.overshoot_goal(node_at(10, 3), nmk2dSearchNodeGenerator(0, 1)));
    EXPECT_TRUE(at_rest.contains(node_at(10, 0)));
    nmk2dSearchGoalMovingXLine far(giPoint2(1e18, 0), 1e-3);
    EXPECT_TRUE(far.overshoot_goal(node_at(1e18, 3), nmk2dSearchNodeGenerator(1, 1)));
    EXPECT_TRUE(far.contains(node_at(1e18, 0)));
}

TEST(nmk2dSearchGoalMovingXLine, a_way_that_is_lost_in_rounding_takes_no_step) {
    nmk2dSearchGoalMovingXLine goal(giPoint2(1e18, 0), 1.0);
    EXPECT_TRUE(goal.overshoot_goal(node_at(1e18, 3), nmk2dSearchNodeGenerator(1e6, 1)));
    EXPECT_TRUE(goal.contains(node_at(1e18, 0)));
}

TEST(nmk2dSearchGoalMovingXLine, a_place_of_the_lattice_that_is_just_far_enough_will_do) {
    nmk2dSearchGoalMovingXLine goal(giPoint2(10, 0), 0.5);
    EXPECT_TRUE(goal.overshoot_goal(node_at(6, 3), nmk2dSearchNodeGenerator(2, 1)));
    EXPECT_TRUE(goal.contains(node_at(16, 0)));  // needs 6
}

TEST(nmk2dSearchGoalMovingXLine, steps_that_lead_the_wrong_way_end_some_time) {
    nmk2dSearchGoalMovingXLine goal(giPoint2(10, 0), 0.5);
    EXPECT_TRUE(goal.overshoot_goal(node_at(10, 3), nmk2dSearchNodeGenerator(-1, 1)));
    EXPECT_TRUE(goal.contains(node_at(10 - 1e8, 0)));
}

TEST(nmk2dSearchGoalMovingXLine, a_gradient_of_zero_leaves_it_where_it_is) {
    nmk2dSearchGoalMovingXLine goal(giPoint2(10, 0), 0.0);
    EXPECT_FALSE(goal.overshoot_goal(node_at(6, 3), nmk2dSearchNodeGenerator(1, 1)));
}

TEST(nmk2dSearchGoalMovingXLine, a_target_that_was_never_placed_gives_up_its_y_as_it_moves) {
    constexpr double largest = std::numeric_limits<double>::max();
    nmk2dSearchGoalMovingXLine goal(giPoint2(-largest, 0), 0.5);
    EXPECT_TRUE(goal.overshoot_goal(node_at(-largest, 3), nmk2dSearchNodeGenerator(1, 1)));
    EXPECT_TRUE(goal.contains(node_at(-largest, largest)));
}

TEST(nmk2dSearchGoalMovingXLine, a_target_that_leaves_the_place_of_none_gives_up_its_y_too) {
    constexpr double largest = std::numeric_limits<double>::max();
    const nmk2dSearchNodeGenerator generator(1e305, 1);
    nmk2dSearchGoalMovingXLine goal(giPoint2(-largest, 0), 2e-305);
    EXPECT_TRUE(goal.overshoot_goal(node_at(-largest, 3), generator));  // needs 1.5e305
    EXPECT_TRUE(goal.contains(node_at(-largest + 1e305 + 1e305, largest)));
}

TEST(nmk2dSearchGoalMovingXLine, a_node_of_another_kind_throws) {
    nmk2dSearchGoalMovingXLine goal(giPoint2(10, 0), 0.5);
    EXPECT_THROW(goal.overshoot_goal(Other(), nmk2dSearchNodeGenerator(1, 1)), std::bad_cast);
}

}  // namespace

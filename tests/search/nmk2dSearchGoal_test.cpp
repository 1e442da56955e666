#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <typeinfo>

#include "search/plane_nodes_for_tests.h"

namespace {

using namespace nmk_search::plane;

TEST(nmk2dSearchGoalPoint, only_the_exact_point_is_an_arrival) {
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

TEST(nmk2dSearchGoalXLine, at_the_x_of_the_target_another_y_has_not_arrived) {
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

TEST(nmk2dSearchGoalMovingXLine, the_distance_back_to_a_target_that_was_passed_counts) {
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

TEST(nmk2dSearchGoalMovingXLine, a_step_that_no_longer_changes_x_ends_the_move) {
    nmk2dSearchGoalMovingXLine at_rest(giPoint2(10, 0), 0.5);
    EXPECT_TRUE(at_rest.overshoot_goal(node_at(10, 3), nmk2dSearchNodeGenerator(0, 1)));
    EXPECT_TRUE(at_rest.contains(node_at(10, 0)));
    nmk2dSearchGoalMovingXLine far(giPoint2(1e18, 0), 1e-3);
    EXPECT_TRUE(far.overshoot_goal(node_at(1e18, 3), nmk2dSearchNodeGenerator(1, 1)));
    EXPECT_TRUE(far.contains(node_at(1e18, 0)));
}

TEST(nmk2dSearchGoalMovingXLine, a_move_that_is_lost_in_rounding_takes_no_step) {
    nmk2dSearchGoalMovingXLine goal(giPoint2(1e18, 0), 1.0);
    EXPECT_TRUE(goal.overshoot_goal(node_at(1e18, 3), nmk2dSearchNodeGenerator(1e6, 1)));
    EXPECT_TRUE(goal.contains(node_at(1e18, 0)));
}

TEST(nmk2dSearchGoalMovingXLine, a_coordinate_at_exactly_the_demanded_distance_is_taken) {
    nmk2dSearchGoalMovingXLine goal(giPoint2(10, 0), 0.5);
    EXPECT_TRUE(goal.overshoot_goal(node_at(6, 3), nmk2dSearchNodeGenerator(2, 1)));
    EXPECT_TRUE(goal.contains(node_at(16, 0)));  // needs 6
}

// A generator of a caller's own class, of which the library knows only what it returns.
class OwnGenerator : public nmk2dSearchNodeGenerator {
  public:
    using nmk2dSearchNodeGenerator::nmk2dSearchNodeGenerator;
    double find_x_value(double x) const override {
        ++asked;
        return nmk2dSearchNodeGenerator::find_x_value(x);
    }
    mutable int asked = 0;
};

TEST(nmk2dSearchGoalMovingXLine, asks_a_generator_of_another_class_for_each_step) {
    const OwnGenerator generator(0.25, 1);
    nmk2dSearchGoalMovingXLine goal(giPoint2(10, 0), 0.5);
    EXPECT_TRUE(goal.overshoot_goal(node_at(10, 3), generator));
    EXPECT_TRUE(goal.contains(node_at(16, 0)));
    EXPECT_EQ(generator.asked, 24);
    nmk2dSearchGoalMovingXLine far(giPoint2(1e18, 0), 1e-3);
    EXPECT_TRUE(far.overshoot_goal(node_at(1e18, 3), generator));
    EXPECT_TRUE(far.contains(node_at(1e18, 0)));
    EXPECT_EQ(generator.asked, 25);
}

TEST(nmk2dSearchGoalMovingXLine, moves_by_as_many_steps_as_the_gradient_demands) {
    nmk2dSearchGoalMovingXLine goal(giPoint2(0, 0), 0x1p-40);
    EXPECT_TRUE(goal.overshoot_goal(node_at(0, 3), nmk2dSearchNodeGenerator(0x1p-10, 1)));
    EXPECT_TRUE(goal.contains(node_at(3 * 0x1p40, 0)));  // 3 * 2^50 steps
}

// Reaches the x by adding the step again and again.
double x_of_the_plain_walk(double x, double step, double limit) {
    while (x < limit && x + step != x) x += step;
    return x;
}

struct Move {
    const char* name;
    giPoint2 target;
    double step;
    double travel;
    double x;  // of the target once it has moved
};

std::ostream& operator<<(std::ostream& out, const Move& tested) { return out << tested.name; }

constexpr double largest_double = std::numeric_limits<double>::max();

class MovingLine : public testing::TestWithParam<Move> {};

TEST_P(MovingLine, stops_where_adding_the_step_again_and_again_stops) {
    const Move& tested = GetParam();
    nmk2dSearchGoalMovingXLine goal(tested.target, 1.0);
    const nmk2dSearchNode node = node_at(tested.target.x, tested.target.y + tested.travel);
    EXPECT_TRUE(goal.overshoot_goal(node, nmk2dSearchNodeGenerator(tested.step, 1)));
    EXPECT_TRUE(goal.contains(node_at(tested.x, tested.target.y)));
}

INSTANTIATE_TEST_SUITE_P(
    nmk2dSearchGoal, MovingLine,
    testing::Values(Move{"steps_backwards_end_where_a_step_is_lost", {10, 0}, -1.0, 3, -0x1p53},
                    Move{"steps_backwards_of_three", {10, 0}, -3.0, 3, -0x1p55},
                    Move{"steps_that_are_lost_before_the_limit", {0, 0}, 1.0, 1e17, 0x1p53},
                    Move{"steps_of_the_least_double", {0, 0}, 0x1p-1074, 0x1p-1022, 0x1p-1022},
                    Move{"steps_past_the_largest_double", {0, 0}, 1e308, 1.75e308, INFINITY},
                    Move{"a_limit_past_the_largest_double",
                         {largest_double, 0},
                         1.0,
                         largest_double,
                         largest_double},
                    Move{"infinite_steps", {0, 0}, INFINITY, 3, INFINITY},
                    Move{"infinite_steps_backwards", {0, 0}, -INFINITY, 3, -INFINITY}),
    [](const auto& tested) { return std::string(tested.param.name); });

// Steps of every size, among them those whose sums fall half way between two doubles.
double draw_step(std::mt19937& random, double size) {
    switch (random() % 4) {
        case 0:
            return std::ldexp(1.0 + static_cast<double>(random() % 8) / 8, std::ilogb(size));
        case 1:
            return std::nextafter(size, 0.0) * 1.5;
        default:
            return size * (1.0 + static_cast<double>(random()) / 4e9);
    }
}

TEST(nmk2dSearchGoalMovingXLine, stops_to_the_last_bit_where_the_plain_walk_stops) {
    const unsigned seed = 20261122;
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    int long_walks = 0;
    for (int turn = 0; turn < 3000; ++turn) {
        const double scale = std::ldexp(1.0, static_cast<int>(random() % 80) - 40);
        const double from = (static_cast<double>(random() % 2001) - 1000.0) * scale;
        // The step is rounded in most sums once x is 2^40 and more times as large.
        const double base =
            random() % 2 == 0 ? 0.0 : std::ldexp(scale, 30 + static_cast<int>(random() % 22));
        const double x = from + base;
        const double step = draw_step(random, scale / static_cast<double>(1 + random() % 50));
        const double travel = step * static_cast<double>(random() % 3000);
        nmk2dSearchGoalMovingXLine goal(giPoint2(x, 0), 1.0);
        if (!goal.overshoot_goal(node_at(x, travel), nmk2dSearchNodeGenerator(step, 1))) continue;
        const double expected = x_of_the_plain_walk(x, step, x + travel);
        ASSERT_TRUE(goal.contains(node_at(expected, 0)))
            << std::hexfloat << "turn " << turn << ", x " << x << ", step " << step << ", travel "
            << travel << ", expected " << expected;
        long_walks += expected > x + 1000 * step ? 1 : 0;
    }
    EXPECT_GT(long_walks, 1000);
}

TEST(nmk2dSearchGoalMovingXLine, a_gradient_of_zero_leaves_the_target_where_it_is) {
    nmk2dSearchGoalMovingXLine goal(giPoint2(10, 0), 0.0);
    EXPECT_FALSE(goal.overshoot_goal(node_at(6, 3), nmk2dSearchNodeGenerator(1, 1)));
}

TEST(nmk2dSearchGoalMovingXLine, an_unset_target_loses_its_y_as_it_moves) {
    constexpr double largest = std::numeric_limits<double>::max();
    nmk2dSearchGoalMovingXLine goal(giPoint2(-largest, 0), 0.5);
    EXPECT_TRUE(goal.overshoot_goal(node_at(-largest, 3), nmk2dSearchNodeGenerator(1, 1)));
    EXPECT_TRUE(goal.contains(node_at(-largest, largest)));
}

TEST(nmk2dSearchGoalMovingXLine, an_unset_target_that_moves_on_loses_its_y_too) {
    constexpr double largest = std::numeric_limits<double>::max();
    const nmk2dSearchNodeGenerator generator(1e305, 1);
    nmk2dSearchGoalMovingXLine goal(giPoint2(-largest, 0), 2e-305);
    EXPECT_TRUE(goal.overshoot_goal(node_at(-largest, 3), generator));  // needs 1.5e305
    EXPECT_TRUE(goal.contains(node_at(-largest + 1e305 + 1e305, largest)));
}

TEST(nmk2dSearchGoalMovingXLine, a_node_of_another_class_throws) {
    nmk2dSearchGoalMovingXLine goal(giPoint2(10, 0), 0.5);
    EXPECT_THROW(goal.overshoot_goal(Other(), nmk2dSearchNodeGenerator(1, 1)), std::bad_cast);
}

}  // namespace

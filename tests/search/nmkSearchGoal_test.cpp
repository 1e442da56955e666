#include <gtest/gtest.h>

#include "search/plane_nodes_for_tests.h"

namespace {

using namespace nmk_search::plane;

class Nowhere : public nmkSearchGoal {
  public:
    bool contains(const nmkSearchNode&) const override { return false; }
};

TEST(nmkSearchGoal, costs_nothing_and_never_moves_unless_a_derived_class_overrides_that) {
    Nowhere goal;
    EXPECT_EQ(node_at(3, 4).min_cost(static_cast<const nmkSearchGoal&>(goal)), 0.0);
    EXPECT_FALSE(goal.overshoot_goal(node_at(3, 4), nmk2dSearchNodeGenerator(1, 1)));
}

}  // namespace

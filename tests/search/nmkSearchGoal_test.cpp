#include <gtest/gtest.h>

#include "search/plane_nodes_for_tests.h"

namespace {

using namespace nmk_search::plane;

class Nowhere : public nmkSearchGoal {
  public:
    bool contains(const nmkSearchNode&) const override { return false; }
};

TEST(nmkSearchGoal, is_at_no_cost_and_stays_where_it_is_unless_it_says_otherwise) {
    Nowhere goal;
    EXPECT_EQ(node_at(3, 4).min_cost(static_cast<const nmkSearchGoal&>(goal)), 0.0);
    EXPECT_FALSE(goal.overshoot_goal(node_at(3, 4), nmk2dSearchNodeGenerator(1, 1)));
}

}  // namespace

#include <gtest/gtest.h>

#include "search/recording_space.h"

#include <algorithm>
#include <stdexcept>

namespace {

using nmk_search::recording::Log;
using nmk_search::recording::Space;

TEST(nmkAStarSearch, a_start_inside_the_goal_is_the_whole_route_and_is_not_expanded) {
    Space space;
    auto search = space.search(space.node("goal"));
    EXPECT_EQ(Space::route_of(search), "goal");
    EXPECT_EQ(space.log, (Log{"h goal", "overshoot goal", "verify none>goal", "goal goal"}));
}

TEST(nmkAStarSearch, makes_its_calls_in_the_specified_order) {
    Space space;
    space.generator->neighbours["a"] = {space.node("b"), space.node("goal")};
    auto search = space.search(space.node("a"));
    EXPECT_EQ(Space::route_of(search), "a goal");
    const Log expected{
        "h a",     "overshoot a",   "verify none>a", "goal a",   "expand a",       "a==b",
        "h b",     "step a>b",      "a==goal",       "h goal",   "step a>goal",    "overshoot b",
        "a==b",    "verify a>b",    "goal b",        "expand b", "overshoot goal", "a==goal",
        "b==goal", "verify a>goal", "goal goal"};
    EXPECT_EQ(space.log, expected);
}

TEST(nmkAStarSearch, of_two_records_of_equal_cost_the_older_is_popped_first) {
    Space space;
    space.generator->neighbours["a"] = {space.node("late", 2.0), space.node("first", 1.0),
                                        space.node("second", 1.0)};
    auto search = space.search(space.node("a"));
    EXPECT_EQ(Space::route_of(search), "");
    Log popped;
    for (const std::string& call : space.log) {
        if (call.starts_with("overshoot ")) popped.push_back(call.substr(10));
    }
    EXPECT_EQ(popped, (Log{"a", "first", "second", "late"}));
}

TEST(nmkAStarSearch, a_node_with_two_parents_is_reached_through_the_cheaper_record) {
    Space space;
    space.generator->neighbours["a"] = {space.node("dear", 0.0, 5.0), space.node("cheap")};
    space.generator->neighbours["dear"] = {space.node("goal")};
    space.generator->neighbours["cheap"] = {space.node("goal", 0.0, 7.0)};
    auto search = space.search(space.node("a"));
    EXPECT_EQ(Space::route_of(search), "a dear goal");
}

TEST(nmkAStarSearch, the_second_record_of_a_closed_node_is_dropped_unverified) {
    Space space;
    space.generator->neighbours["a"] = {space.node("b"), space.node("b")};
    auto search = space.search(space.node("a"));
    EXPECT_EQ(Space::route_of(search), "");
    EXPECT_EQ(std::count(space.log.begin(), space.log.end(), "verify a>b"), 1);
    EXPECT_EQ(std::count(space.log.begin(), space.log.end(), "overshoot b"), 2);
}

TEST(nmkAStarSearch, a_node_refused_for_one_parent_stays_open_to_another) {
    for (const int verdict : {2, 3, -1}) {
        Space space;
        space.generator->neighbours["a"] = {space.node("b"), space.node("goal")};
        space.generator->neighbours["b"] = {space.node("goal")};
        space.verifier->verdicts["a>goal"] = verdict;
        auto search = space.search(space.node("a"));
        EXPECT_EQ(Space::route_of(search), "a b goal") << verdict;
    }
}

TEST(nmkAStarSearch, a_node_refused_for_good_is_never_tried_again) {
    Space space;
    space.generator->neighbours["a"] = {space.node("goal"), space.node("b", 1.0)};
    space.generator->neighbours["b"] = {space.node("goal")};
    space.verifier->verdicts["a>goal"] = 1;
    auto search = space.search(space.node("a"));
    EXPECT_EQ(Space::route_of(search), "");
}

TEST(nmkAStarSearch, the_record_already_chosen_is_returned_when_the_goal_moves) {
    Space space;
    const auto b = space.node("b", 1.0);
    const auto c = space.node("c", 2.0);
    space.generator->neighbours["a"] = {b, c};
    space.goal->on_overshoot = [&](const std::string& popped) {
        if (popped != "b") return false;
        b->h = 9.0;  // would now come after c
        return true;
    };
    auto search = space.search(space.node("a"));
    EXPECT_EQ(Space::route_of(search), "");
    const auto at = std::find(space.log.begin(), space.log.end(), "overshoot b");
    ASSERT_NE(at, space.log.end());
    // Every h of the open list is computed again, also that of the chosen record, and no g.
    EXPECT_EQ(Log(at, at + 5), (Log{"overshoot b", "h b", "h c", "a==b", "verify a>b"}));
}

TEST(nmkAStarSearch, a_goal_that_changed_but_returned_false_keeps_its_old_scores) {
    Space space;
    const auto b = space.node("b", 1.0);
    const auto c = space.node("c", 2.0);
    const auto d = space.node("d", 3.0);
    space.generator->neighbours["a"] = {b, c, d};
    space.goal->on_overshoot = [&](const std::string& popped) {
        if (popped == "b") c->h = 9.0;
        return false;
    };
    auto search = space.search(space.node("a"));
    EXPECT_EQ(Space::route_of(search), "");
    const auto popped_c = std::find(space.log.begin(), space.log.end(), "overshoot c");
    const auto popped_d = std::find(space.log.begin(), space.log.end(), "overshoot d");
    EXPECT_LT(popped_c, popped_d);
}

TEST(nmkAStarSearch, a_new_start_never_enters_nodes_that_an_earlier_run_closed) {
    Space space;
    space.generator->neighbours["a"] = {space.node("b")};
    space.generator->neighbours["n"] = {space.node("b"), space.node("c", 9.0)};
    space.generator->neighbours["b"] = {};
    space.generator->neighbours["c"] = {space.node("goal")};
    auto search = space.search(space.node("a"));
    EXPECT_EQ(Space::route_of(search), "");  // closes a and b
    search.set_start(space.node("n"));
    space.log.clear();
    EXPECT_EQ(Space::route_of(search), "n c goal");
    EXPECT_EQ(std::count(space.log.begin(), space.log.end(), "verify n>b"), 0);
}

TEST(nmkAStarSearch, a_start_that_is_closed_yields_no_route) {
    Space space;
    auto search = space.search(space.node("goal"));
    EXPECT_EQ(Space::route_of(search), "goal");
    search.set_start(space.node("goal"));
    EXPECT_EQ(Space::route_of(search), "");
}

TEST(nmkAStarSearch, performing_with_an_empty_open_list_returns_at_once) {
    Space space;
    auto search = space.search(space.node("a"));
    EXPECT_EQ(Space::route_of(search), "");
    space.log.clear();
    EXPECT_EQ(Space::route_of(search), "");
    EXPECT_TRUE(space.log.empty());
}

TEST(nmkAStarSearch, a_refused_root_ends_the_search_with_no_route) {
    Space space;
    space.verifier->verdicts["none>goal"] = 1;
    auto search = space.search(space.node("goal"));
    EXPECT_EQ(Space::route_of(search), "");
}

TEST(nmkAStarSearch, exceptions_of_a_collaborator_pass_through) {
    Space space;
    space.goal->on_overshoot = [](const std::string&) -> bool { throw std::runtime_error("stop"); };
    auto search = space.search(space.node("a"));
    EXPECT_THROW(Space::route_of(search), std::runtime_error);
}

TEST(nmkAStarSearch, never_asks_whether_a_node_is_in_bounds) {
    Space space;
    space.generator->neighbours["a"] = {space.node("goal")};
    auto search = space.search(space.node("a"));
    EXPECT_EQ(Space::route_of(search), "a goal");
    EXPECT_EQ(std::count(space.log.begin(), space.log.end(), "in bounds"), 0);
}

// Makes public what a derived record may call and override.
class ShownRecord : public nmkAStarSearchNode {
  public:
    using nmkAStarSearchNode::calculate_g;
    using nmkAStarSearchNode::nmkAStarSearchNode;

  protected:
    void set_h(double h) override { nmkAStarSearchNode::set_h(10.0 * h); }
};

TEST(nmkAStarSearchNode, scores_itself_by_its_node_its_goal_and_its_parent) {
    Space space;
    const auto root =
        std::make_shared<nmkAStarSearchNode>(space.node("a", 3.0), nullptr, *space.goal);
    EXPECT_EQ(root->h(), 3.0);
    EXPECT_EQ(root->f(), 3.0);
    EXPECT_EQ(root->parent(), nullptr);
    const nmkAStarSearchNode child(space.node("b", 2.0, 7.0), root, *space.goal);
    EXPECT_EQ(child.h(), 2.0);
    EXPECT_EQ(child.f(), 9.0);
    EXPECT_EQ(child.parent(), root);
    EXPECT_EQ(space.log, (Log{"h a", "h b", "step a>b"}));
}

TEST(nmkAStarSearchNode, passes_each_new_h_to_the_set_h_of_a_derived_record) {
    Space space;
    const auto root = std::make_shared<nmkAStarSearchNode>(space.node("a"), nullptr, *space.goal);
    const auto node = std::make_shared<nmk_search::recording::NamedNode>("b", 2.0, &space.log);
    ShownRecord record(node, root, *space.goal);
    EXPECT_EQ(record.h(), 2.0);  // a constructor does not call the overrides of derived classes
    record.calculate_h(*space.goal);
    EXPECT_EQ(record.h(), 20.0);
    EXPECT_EQ(record.f(), 21.0);
    node->step = 5.0;
    EXPECT_EQ(record.f(), 21.0);  // g is unchanged
    record.calculate_g();
    EXPECT_EQ(record.f(), 25.0);
}

TEST(nmkAStarSearchNode, frees_a_chain_of_a_million_parents_without_deep_recursion) {
    Space space;
    const auto node = space.node("a");
    std::shared_ptr<const nmkAStarSearchNode> last;
    std::weak_ptr<const nmkAStarSearchNode> root;
    for (int i = 0; i < 1'000'000; ++i) {
        last = std::make_shared<nmkAStarSearchNode>(node, last, *space.goal);
        if (i == 0) root = last;
        space.log.clear();
    }
    EXPECT_DOUBLE_EQ(last->f(), 999'999.0);
    EXPECT_FALSE(root.expired());
    last.reset();
    EXPECT_TRUE(root.expired());
}

}  // namespace

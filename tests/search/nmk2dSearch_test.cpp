// The plane: nodes, goals, generators and verifiers, and whole searches beside a Dijkstra of the
// test's own on the same neighbour rule.
#include <gtest/gtest.h>
#include <nmktoolbox/search.h>

#include <cmath>
#include <functional>
#include <limits>
#include <map>
#include <queue>
#include <random>
#include <typeinfo>
#include <utility>
#include <vector>

namespace {

using Node_ptr = std::shared_ptr<const nmkSearchNode>;
using Points = std::vector<std::pair<double, double>>;

nmk2dSearchNode node_at(double x, double y) { return nmk2dSearchNode(giPoint2(x, y)); }
Node_ptr shared_node(double x, double y) {
    return std::make_shared<nmk2dSearchNode>(giPoint2(x, y));
}

Points points_of(const std::vector<Node_ptr>& nodes) {
    Points points;
    for (const Node_ptr& node : nodes) {
        const giPoint2& point = static_cast<const nmk2dSearchNode&>(*node).point();
        points.emplace_back(point.x, point.y);
    }
    return points;
}

Points neighbours(const nmkSearchNodeGenerator& generator, double x, double y) {
    std::vector<Node_ptr> nodes;
    generator.expand_node(node_at(x, y), coiFiller_from_container(nodes));
    return points_of(nodes);
}

Points route(std::shared_ptr<nmkSearchNodeGenerator> generator,
             std::shared_ptr<nmkSearchNodeVerifier> verifier, Node_ptr start,
             std::shared_ptr<nmkSearchGoal> goal) {
    nmkAStarSearch search(generator, verifier, start, goal);
    std::vector<Node_ptr> nodes;
    search.perform(coiFiller_from_container(nodes));
    return points_of(nodes);
}

// A cursor over a list of nodes.
class List_cursor : public coiAbsCloneableIterator<Node_ptr> {
  public:
    explicit List_cursor(std::shared_ptr<const std::vector<Node_ptr>> nodes) : nodes_(nodes) {}
    bool undefined() const override { return at_ < 0; }
    void reset() override { at_ = -1; }
    bool operator++() override {
        if (at_ + 1 >= static_cast<int>(nodes_->size())) return false;
        ++at_;
        return true;
    }
    const Node_ptr& operator()() const override { return (*nodes_)[static_cast<std::size_t>(at_)]; }
    std::unique_ptr<coiAbsCloneableIterator<Node_ptr>> clone() const override {
        return std::make_unique<List_cursor>(*this);
    }

  private:
    std::shared_ptr<const std::vector<Node_ptr>> nodes_;
    int at_ = -1;
};

coiIterator<Node_ptr> cursor_over(std::vector<Node_ptr> nodes) {
    return coiIterator<Node_ptr>(std::make_unique<List_cursor>(
        std::make_shared<const std::vector<Node_ptr>>(std::move(nodes))));
}

// --- nodes ---------------------------------------------------------------------------------------

TEST(nmk2dSearchNode, nodes_are_one_place_up_to_a_circle_of_the_tolerance) {
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

TEST(nmk2dSearchNode, a_node_of_another_kind_is_another_place) {
    class Other : public nmkSearchNode {
      public:
        double min_cost(const nmkSearchNode&) const override { return 0; }
        double min_cost(const nmkSearchGoal&) const override { return 0; }

      protected:
        bool is_equal(const nmkSearchNode&) const override { return true; }
    };
    EXPECT_FALSE(node_at(0, 0) == Other());
    EXPECT_TRUE(Other() == node_at(0, 0));  // equality need not be symmetric
}

TEST(nmk2dSearchNode, the_cost_of_a_step_is_its_length) {
    EXPECT_EQ(node_at(1, 1).min_cost(static_cast<const nmkSearchNode&>(node_at(4, 5))), 5.0);
}

// --- goals ---------------------------------------------------------------------------------------

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

TEST(nmk2dSearchGoalMovingXLine, a_node_of_another_kind_throws) {
    class Other : public nmkSearchNode {
      public:
        double min_cost(const nmkSearchNode&) const override { return 0; }
        double min_cost(const nmkSearchGoal&) const override { return 0; }

      protected:
        bool is_equal(const nmkSearchNode&) const override { return true; }
    };
    nmk2dSearchGoalMovingXLine goal(giPoint2(10, 0), 0.5);
    EXPECT_THROW(goal.overshoot_goal(Other(), nmk2dSearchNodeGenerator(1, 1)), std::bad_cast);
}

// --- generators ----------------------------------------------------------------------------------

TEST(nmk2dSearchNodeGenerator, makes_the_eight_neighbours_in_order) {
    const Points expected{{5, 9}, {5, 5}, {6, 7}, {6, 9}, {6, 5}, {4, 7}, {4, 9}, {4, 5}};
    EXPECT_EQ(neighbours(nmk2dSearchNodeGenerator(1, 2), 5, 7), expected);
}

TEST(nmk2dSearchNodeGenerator, a_step_of_zero_in_y_gives_each_neighbour_three_times) {
    const Points expected{{6, 7}, {6, 7}, {6, 7}, {4, 7}, {4, 7}, {4, 7}};
    EXPECT_EQ(neighbours(nmk2dSearchNodeGenerator(1, 0), 5, 7), expected);
}

TEST(nmk2dSearchNodeGenerator, neighbours_nearer_than_the_tolerance_are_made_all_the_same) {
    EXPECT_EQ(neighbours(nmk2dSearchNodeGenerator(1e-6, 1e-6), 0, 0).size(), 8u);
}

TEST(nmkForward2dSearchNodeGenerator, makes_the_three_neighbours_ahead_in_order) {
    const Points expected{{6, 7}, {6, 9}, {6, 5}};
    EXPECT_EQ(neighbours(nmkForward2dSearchNodeGenerator(1, 2), 5, 7), expected);
    EXPECT_EQ(nmkForward2dSearchNodeGenerator(1, 2).find_x_value(5), 6.0);
}

// --- verifiers -----------------------------------------------------------------------------------

TEST(nmk2dSearchNodeVerifierBlocked, refuses_for_good_what_is_out_of_bounds_or_blocked) {
    const nmk2dSearchNodeVerifierBlocked verifier(giBox2(giPoint2(0, 0), giPoint2(9, 9)),
                                                  cursor_over({shared_node(3, 3)}));
    using enum nmkSearchNodeVerifierResult;
    const auto parent = node_at(0, 0);
    EXPECT_EQ(verifier.verify(parent, node_at(9, 9)), accepted);
    EXPECT_EQ(verifier.verify(parent, node_at(9.5, 9)), refused_for_good);
    EXPECT_EQ(verifier.verify(parent, node_at(3, 3 + 9e-6)), refused_for_good);
    EXPECT_EQ(verifier.verify(parent, node_at(3, 3 + 2e-5)), accepted);
    EXPECT_EQ(verifier.verify(parent, node_at(3, 3)), refused_for_good);  // asked a second time
}

// --- whole searches ------------------------------------------------------------------------------

TEST(nmk2dSearch, with_the_forward_generator_a_goal_behind_is_never_reached) {
    const auto bounds =
        std::make_shared<nmk2dSearchNodeVerifier>(giBox2(giPoint2(0, 0), giPoint2(8, 8)));
    EXPECT_TRUE(route(std::make_shared<nmkForward2dSearchNodeGenerator>(1, 1), bounds,
                      shared_node(4, 4), std::make_shared<nmk2dSearchGoalPoint>(giPoint2(2, 4)))
                    .empty());
}

TEST(nmk2dSearch, a_line_off_the_lattice_is_never_reached) {
    const auto bounds =
        std::make_shared<nmk2dSearchNodeVerifier>(giBox2(giPoint2(0, 0), giPoint2(8, 8)));
    EXPECT_TRUE(route(std::make_shared<nmk2dSearchNodeGenerator>(1, 1), bounds, shared_node(0, 0),
                      std::make_shared<nmk2dSearchGoalXLine>(giPoint2(5, 2.5)))
                    .empty());
}

double length_of(const Points& points) {
    double length = 0.0;
    for (std::size_t i = 1; i < points.size(); ++i) {
        length += std::hypot(points[i].first - points[i - 1].first,
                             points[i].second - points[i - 1].second);
    }
    return length;
}

using Cell = std::pair<int, int>;

// The shortest length from `start` to `goal` on a square of `size` by 8 neighbours; infinite when
// there is none.
double dijkstra(int size, const std::vector<bool>& blocked, Cell start, Cell goal) {
    std::map<Cell, double> best{{start, 0.0}};
    using Entry = std::pair<double, Cell>;
    std::priority_queue<Entry, std::vector<Entry>, std::greater<>> open;
    open.push({0.0, start});
    while (!open.empty()) {
        const auto [cost, at] = open.top();
        open.pop();
        if (cost > best[at]) continue;
        if (at == goal) return cost;
        for (int dx = -1; dx <= 1; ++dx) {
            for (int dy = -1; dy <= 1; ++dy) {
                const Cell to{at.first + dx, at.second + dy};
                if (to.first < 0 || to.second < 0 || to.first >= size || to.second >= size ||
                    blocked[static_cast<std::size_t>(to.first * size + to.second)]) {
                    continue;
                }
                const double further = cost + std::hypot(dx, dy);
                const auto known = best.find(to);
                if (known != best.end() && known->second <= further) continue;
                best[to] = further;
                open.push({further, to});
            }
        }
    }
    return std::numeric_limits<double>::infinity();
}

TEST(nmk2dSearch, routes_are_as_short_as_an_independent_search_finds_them) {
    constexpr int size = 12;
    const unsigned seed = 20;
    std::mt19937 random(seed);
    int with_route = 0;
    for (int turn = 0; turn < 60; ++turn) {
        SCOPED_TRACE("seed " + std::to_string(seed) + ", turn " + std::to_string(turn));
        std::vector<bool> blocked(size * size);
        std::vector<Node_ptr> blocked_nodes;
        for (int cell = 1; cell < size * size - 1; ++cell) {
            if (random() % 100 >= 35) continue;
            blocked[static_cast<std::size_t>(cell)] = true;
            blocked_nodes.push_back(shared_node(cell / size, cell % size));
        }
        const auto verifier = std::make_shared<nmk2dSearchNodeVerifierBlocked>(
            giBox2(giPoint2(0, 0), giPoint2(size - 1, size - 1)), cursor_over(blocked_nodes));
        const Points found =
            route(std::make_shared<nmk2dSearchNodeGenerator>(1, 1), verifier, shared_node(0, 0),
                  std::make_shared<nmk2dSearchGoalPoint>(giPoint2(size - 1, size - 1)));
        const double shortest = dijkstra(size, blocked, {0, 0}, {size - 1, size - 1});
        if (found.empty()) {
            EXPECT_EQ(shortest, std::numeric_limits<double>::infinity());
            continue;
        }
        ++with_route;
        EXPECT_NEAR(length_of(found), shortest, 1e-9);  // sums in another order
        for (std::size_t i = 1; i < found.size(); ++i) {
            EXPECT_LT(std::hypot(found[i].first - found[i - 1].first,
                                 found[i].second - found[i - 1].second),
                      1.5);
        }
    }
    EXPECT_GT(with_route, 10);
    EXPECT_LT(with_route, 60);
}

TEST(nmk2dSearch, a_moving_line_is_met_within_the_gradient) {
    const auto bounds =
        std::make_shared<nmk2dSearchNodeVerifier>(giBox2(giPoint2(0, 0), giPoint2(40, 5)));
    const Points found =
        route(std::make_shared<nmkForward2dSearchNodeGenerator>(2, 1), bounds, shared_node(0, 4),
              std::make_shared<nmk2dSearchGoalMovingXLine>(giPoint2(2, 0), 0.5));
    ASSERT_FALSE(found.empty());
    EXPECT_EQ(found.front(), (std::pair<double, double>(0, 4)));
    EXPECT_EQ(found.back().second, 0.0);
    EXPECT_GE(found.back().first, 8.0);  // 4 down at a slope of a half
}

}  // namespace

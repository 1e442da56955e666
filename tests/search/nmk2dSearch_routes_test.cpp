// Whole searches of the plane, beside a Dijkstra of the test's own on the same neighbour rule.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <map>
#include <queue>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "search/plane_nodes_for_tests.h"

namespace {

using namespace nmk_search::plane;

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

TEST(nmk2dSearch, lattice_points_within_the_tolerance_are_closed_as_one_node) {
    class Counting : public nmk2dSearchNodeVerifier {
      public:
        Counting() : nmk2dSearchNodeVerifier(giBox2(giPoint2(-1, -1), giPoint2(1, 1))) {}
        nmkSearchNodeVerifierResult verify(const nmkSearchNode& parent,
                                           const nmkSearchNode& node) const override {
            ++asked;
            return nmk2dSearchNodeVerifier::verify(parent, node);
        }
        mutable int asked = 0;
    };
    const auto verifier = std::make_shared<Counting>();
    constexpr double step = 4e-6;  // the eight neighbours are made, and all are equal to the start
    EXPECT_TRUE(route(std::make_shared<nmk2dSearchNodeGenerator>(step, step), verifier,
                      shared_node(0, 0), std::make_shared<nmk2dSearchGoalPoint>(giPoint2(step, 0)))
                    .empty());
    EXPECT_EQ(verifier->asked, 1);
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

std::size_t index_of(Cell cell, int size) {
    return static_cast<std::size_t>(cell.first) * static_cast<std::size_t>(size) +
           static_cast<std::size_t>(cell.second);
}

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
                    blocked[index_of(to, size)]) {
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
        std::vector<NodePointer> blocked_nodes;
        for (int cell = 1; cell < size * size - 1; ++cell) {
            if (random() % 100 >= 35) continue;
            blocked[static_cast<std::size_t>(cell)] = true;
            const int x = cell / size;
            const int y = cell % size;
            blocked_nodes.push_back(shared_node(x, y));
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

// Every call that the search makes, in its order, beside the plain lists on spaces drawn from
// seeds.
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>

#include "search/generated_space.h"
#include "search/plain_search.h"

namespace {

namespace plain = nmk_search::plain;

using namespace nmk_search::generated;

// A run that starts at node 0, then twice from another node; exceptions and routes are recorded
// among the calls.
template <class Search>
class Walk {
  public:
    Walk(const Traits& traits, unsigned seed)
        : maze(traits, seed),
          search(std::make_shared<Generator>(maze), std::make_shared<Verifier>(maze), node(0),
                 std::make_shared<Goal>(maze)) {}

    Log whole() {
        perform();
        search.set_start(node(1));
        perform();
        maze.goal_node = maze.h.size();  // nowhere: everything that is open is popped
        perform();
        return maze.log;
    }

  private:
    NodePointer node(std::size_t number) { return std::make_shared<MazeNode>(maze, number); }

    void perform() {
        for (int turn = 0; turn < 40; ++turn) {
            std::vector<NodePointer> route;
            try {
                search.perform(coiFiller_from_container(route));
            } catch (const std::runtime_error&) {
                maze.write("thrown");
                continue;
            }
            std::string found = "route";
            for (const NodePointer& node : route) found += " " + std::to_string(number_of(*node));
            return maze.write(found);
        }
    }

    Maze maze;
    Search search;
};

// Keeps the records that it made, and scores some of them again without the search's knowledge.
template <class Search>
class Meddling : public Search {
  public:
    using Search::Search;

  protected:
    std::shared_ptr<nmkAStarSearchNode> generate_node(
        NodePointer node, std::shared_ptr<const nmkAStarSearchNode> parent) const override {
        auto& maze = static_cast<const MazeNode&>(*node).maze;
        if (!m_kept.empty() && maze.percent(10)) return m_kept[maze.draw(m_kept.size())];
        m_kept.push_back(Search::generate_node(std::move(node), std::move(parent)));
        return m_kept.back();
    }
    bool is_goal(const nmkAStarSearchNode& record) const override {
        auto& maze = static_cast<const MazeNode&>(*record.node()).maze;
        if (!m_kept.empty() && maze.percent(30)) {
            maze.move_goal();
            m_kept[maze.draw(m_kept.size())]->calculate_h(m_goal);
        }
        return Search::is_goal(record);
    }

  private:
    class UnreachableGoal : public nmkSearchGoal {
        bool contains(const nmkSearchNode&) const override { return false; }
    };
    UnreachableGoal m_goal;
    mutable std::vector<std::shared_ptr<nmkAStarSearchNode>> m_kept;
};

// Uses the protected operations: asks what is closed, scores the open list, and records the route
// to each node that it expands.
template <class Search>
class Curious : public Search {
  public:
    using Search::Search;

  protected:
    void expand_node(std::shared_ptr<const nmkAStarSearchNode> record) override {
        auto& maze = static_cast<const MazeNode&>(*record->node()).maze;
        const MazeNode other(maze, maze.draw(maze.h.size()));
        maze.write(this->is_in_visited(other) ? "closed" : "not closed");
        std::string route = "route";
        this->reconstuct_route(record, coiFiller_from_function<NodePointer>([&](NodePointer node) {
                                   route += " " + std::to_string(number_of(*node));
                               }));
        maze.write(route);
        if (maze.percent(20)) {
            maze.move_goal();
            this->update_goal();
        }
        Search::expand_node(record);
    }
};

class Calls : public testing::TestWithParam<Traits> {};

TEST_P(Calls, are_those_of_the_plain_lists) {
    std::size_t calls = 0;
    for (unsigned seed = 1; seed <= 60; ++seed) {
        const Log ours = Walk<nmkAStarSearch>(GetParam(), seed).whole();
        const Log expected = Walk<plain::Search>(GetParam(), seed).whole();
        ASSERT_EQ(ours, expected) << "seed " << seed;
        calls += ours.size();
    }
    EXPECT_GT(calls, 6000u);  // the spaces were worth the walk
}

TEST_P(Calls, are_those_of_the_plain_lists_when_records_are_scored_again_from_outside) {
    for (unsigned seed = 1; seed <= 60; ++seed) {
        const Log ours = Walk<Meddling<nmkAStarSearch>>(GetParam(), seed).whole();
        const Log expected = Walk<Meddling<plain::Search>>(GetParam(), seed).whole();
        ASSERT_EQ(ours, expected) << "seed " << seed;
    }
}

TEST_P(Calls, are_those_of_the_plain_lists_when_a_derived_search_asks_and_scores) {
    for (unsigned seed = 1; seed <= 60; ++seed) {
        const Log ours = Walk<Curious<nmkAStarSearch>>(GetParam(), seed).whole();
        const Log expected = Walk<Curious<plain::Search>>(GetParam(), seed).whole();
        ASSERT_EQ(ours, expected) << "seed " << seed;
        ASSERT_NE(std::count(ours.begin(), ours.end(), "not closed"), 0);
    }
}

INSTANTIATE_TEST_SUITE_P(
    nmkAStarSearch, Calls,
    testing::Values(Traits{.name = "many_ties"}, Traits{.name = "all_tied", .costs = 1},
                    Traits{.name = "large_costs", .costs = 1000},
                    Traits{.name = "many_nodes", .nodes = 70, .branches = 5},
                    Traits{.name = "scores_that_are_nan", .not_numbers = 20},
                    Traits{.name = "loose_equality", .loose_equality = 30},
                    Traits{.name = "all_refused_for_one_parent", .refused = 0, .refused_once = 60},
                    Traits{.name = "a_moving_goal", .costs = 6, .moves = 30},
                    Traits{.name = "a_goal_that_moves_unreported", .costs = 6, .silent_moves = 30},
                    Traits{.name = "a_goal_that_throws", .throws = 5},
                    Traits{.name = "everything_at_once",
                           .costs = 5,
                           .not_numbers = 10,
                           .loose_equality = 10,
                           .moves = 10,
                           .silent_moves = 10,
                           .throws = 3}),
    [](const auto& traits) { return std::string(traits.param.name); });

}  // namespace

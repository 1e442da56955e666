// Searches by the library's own generators and goals, compared with the plain lists: lattices of
// every step and origin, those that a search leaves in the middle, and classes derived by a caller.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <set>
#include <stdexcept>
#include <string>

#include "search/generated_plane.h"
#include "search/plain_search.h"

namespace {

namespace plain = nmk_search::plain;

using nmk_search::generated_plane::Log;
using nmk_search::generated_plane::NodePointer;
using nmk_search::generated_plane::text_of;

enum class GoalKind { point, line, line_with_gradient, moving_line };

struct LatticeCase {
    const char* name;
    giPoint2 start{0, 0};
    giPoint2 step{1, 1};
    GoalKind goal = GoalKind::point;
    double gradient = 0.5;
    giPoint2 goal_steps{5, 3};  // from the start
    bool only_forward = false;
    int columns = 7;  // that may be walked, to either side
    int rows = 7;
};

std::ostream& operator<<(std::ostream& out, const LatticeCase& tested) {
    return out << tested.name;
}

giPoint2 target_of(const LatticeCase& tested) {
    return {tested.start.x + tested.goal_steps.x * tested.step.x,
            tested.start.y + tested.goal_steps.y * tested.step.y};
}

std::shared_ptr<nmkSearchGoal> goal_of(const LatticeCase& tested) {
    const giPoint2 target = target_of(tested);
    switch (tested.goal) {
        case GoalKind::line:
            return std::make_shared<nmk2dSearchGoalXLine>(target);
        case GoalKind::line_with_gradient:
            return std::make_shared<nmk2dSearchGoalXLineWithGrad>(target, tested.gradient);
        case GoalKind::moving_line:
            return std::make_shared<nmk2dSearchGoalMovingXLine>(target, tested.gradient);
        default:
            return std::make_shared<nmk2dSearchGoalPoint>(target);
    }
}

std::shared_ptr<nmkSearchNodeGenerator> generator_of(const LatticeCase& tested) {
    const giPoint2& step = tested.step;
    if (tested.only_forward) {
        return std::make_shared<nmkForward2dSearchNodeGenerator>(step.x, step.y);
    }
    return std::make_shared<nmk2dSearchNodeGenerator>(step.x, step.y);
}

struct Interrupted : std::runtime_error {
    Interrupted() : std::runtime_error("interrupted") {}
};

// Draws its verdicts, records the calls, and keeps the nodes that it accepted.
class DrawingVerifier : public nmkSearchNodeVerifier {
  public:
    DrawingVerifier(const LatticeCase& its_case, unsigned seed) : tested(its_case), random(seed) {}

    nmkSearchNodeVerifierResult verify(const nmkSearchNode& parent,
                                       const nmkSearchNode& node) const override {
        log.push_back(text_of(parent) + ">" + text_of(node));
        if (++calls == throw_at) throw Interrupted();
        if (calls == 1) first = &node;
        if (text_of(parent) != "none") {
            EXPECT_EQ(accepted.count(&parent), 1u) << "the parent is not a node that was accepted";
        }
        if (!is_in_bounds(node)) return nmkSearchNodeVerifierResult::refused_for_good;
        const auto draw = calls == 1 ? 99 : random() % 100;
        if (draw < 12) return nmkSearchNodeVerifierResult::refused_for_good;
        if (draw < 24) return nmkSearchNodeVerifierResult::refused_for_this_parent;
        if (draw < 27) return static_cast<nmkSearchNodeVerifierResult>(-7);
        accepted.insert(&node);
        return nmkSearchNodeVerifierResult::accepted;
    }

    bool is_in_bounds(const nmkSearchNode& node) const override {
        const auto* plane_node = dynamic_cast<const nmk2dSearchNode*>(&node);
        if (plane_node == nullptr) return false;
        const double columns = (plane_node->point().x - tested.start.x) / tested.step.x;
        const double rows = (plane_node->point().y - tested.start.y) / tested.step.y;
        return std::abs(columns) < tested.columns + 0.5 && std::abs(rows) < tested.rows + 0.5;
    }

    const LatticeCase& tested;
    mutable std::mt19937 random;
    mutable Log log;
    mutable std::set<const nmkSearchNode*> accepted;
    mutable const nmkSearchNode* first = nullptr;
    mutable int calls = 0;
    int throw_at = 0;  // never
};

// Records all calls of the verifier and the routes, to the last bit.
template <class Search>
class Watched {
  public:
    Watched(const LatticeCase& tested, unsigned seed)
        : verifier(std::make_shared<DrawingVerifier>(tested, seed)),
          start(std::make_shared<nmk2dSearchNode>(tested.start)),
          search(generator_of(tested), verifier, start, goal_of(tested)) {}

    void perform() {
        route.clear();
        verifier->log.push_back("perform");
        search.perform(coiFiller_from_container(route));
        for (const NodePointer& node : route) {
            verifier->log.push_back("route " + text_of(*node));
            EXPECT_EQ(verifier->accepted.count(node.get()), 1u) << "not the node that was verified";
        }
    }

    void restart_from(giPoint2 plane_node) {
        search.set_start(std::make_shared<nmk2dSearchNode>(plane_node));
        perform();
    }

    const Log& log() const { return verifier->log; }

    std::shared_ptr<DrawingVerifier> verifier;
    NodePointer start;
    Search search;
    std::vector<NodePointer> route;
};

class Lattice : public testing::TestWithParam<LatticeCase> {};

template <class Search>
Log whole_life(const LatticeCase& tested, unsigned seed) {
    Watched<Search> watched(tested, seed);
    watched.perform();
    EXPECT_TRUE(watched.route.empty() || watched.route.front() == watched.start);
    watched.perform();
    watched.restart_from(target_of(tested));
    watched.restart_from({tested.start.x - 2 * tested.step.x, tested.start.y});
    return watched.log();
}

TEST_P(Lattice, is_walked_as_by_the_plain_lists) {
    for (unsigned seed = 1; seed <= 12; ++seed) {
        const Log ours = whole_life<nmkAStarSearch>(GetParam(), seed);
        ASSERT_EQ(ours, whole_life<plain::Search>(GetParam(), seed)) << "seed " << seed;
        ASSERT_GT(ours.size(), 4u);
    }
}

TEST_P(Lattice, the_first_node_that_is_verified_is_the_start_itself) {
    Watched<nmkAStarSearch> watched(GetParam(), 1);
    watched.perform();
    EXPECT_EQ(watched.verifier->first, watched.start.get());
}

template <class Search>
Log interrupted_life(const LatticeCase& tested, int call) {
    Watched<Search> watched(tested, 77);
    watched.verifier->throw_at = call;
    for (int run = 0; run < 3; ++run) {
        try {
            watched.perform();
        } catch (const Interrupted&) {
            watched.verifier->log.push_back("thrown");
        }
    }
    return watched.log();
}

TEST_P(Lattice, continues_after_an_exception_of_the_verifier) {
    for (const int call : {2, 3, 4, 5, 9, 20, 45}) {
        const Log ours = interrupted_life<nmkAStarSearch>(GetParam(), call);
        ASSERT_EQ(ours, interrupted_life<plain::Search>(GetParam(), call)) << "call " << call;
    }
}

template <class Search>
Log life_with_a_filler_that_throws(const LatticeCase& tested, unsigned seed) {
    Watched<Search> watched(tested, seed);
    Log log;
    try {
        watched.search.perform(coiFiller_from_function<NodePointer>([&](NodePointer node) {
            log.push_back(text_of(*node));
            if (log.size() == 2) throw Interrupted();
        }));
    } catch (const Interrupted&) {
        log.push_back("thrown");
    }
    watched.perform();
    watched.restart_from({tested.start.x - 2 * tested.step.x, tested.start.y});
    log.insert(log.end(), watched.log().begin(), watched.log().end());
    return log;
}

TEST_P(Lattice, continues_after_an_exception_of_the_filler) {
    for (unsigned seed = 1; seed <= 3; ++seed) {
        const Log ours = life_with_a_filler_that_throws<nmkAStarSearch>(GetParam(), seed);
        ASSERT_EQ(ours, life_with_a_filler_that_throws<plain::Search>(GetParam(), seed))
            << "seed " << seed;
    }
}

INSTANTIATE_TEST_SUITE_P(
    nmkAStarSearch, Lattice,
    testing::Values(
        LatticeCase{.name = "of_ones"},
        LatticeCase{.name = "whose_goal_is_the_start", .goal_steps = {0, 0}},
        LatticeCase{.name = "whose_goal_is_off_it", .goal_steps = {2.5, 1}},
        LatticeCase{.name = "of_tenths", .start = {0.05, -0.3}, .step = {0.1, 0.3}},
        LatticeCase{.name = "of_thirds", .start = {-0.0, 1e-7}, .step = {1.0 / 3, 1.0 / 7}},
        LatticeCase{.name = "that_steps_backwards", .step = {-1, -0.7}},
        LatticeCase{.name = "of_steps_forward_only", .only_forward = true},
        LatticeCase{.name = "of_the_least_steps", .step = {1e-4, 1e-4}},
        LatticeCase{.name = "of_steps_below_the_least", .step = {0.9e-4, 1}},
        LatticeCase{.name = "of_steps_within_the_tolerance", .step = {0.6e-5, 0.9e-5}},
        LatticeCase{.name = "of_steps_of_zero_in_y", .step = {1, 0}, .columns = 4},
        LatticeCase{.name = "of_steps_that_are_nan", .step = {1, std::nan("")}},
        LatticeCase{.name = "that_drifts_away",
                    .start = {-9e8, 3},
                    .step = {0.1, 1},
                    .goal_steps = {58, 0},
                    .columns = 60,
                    .rows = 1},
        LatticeCase{.name = "that_grows_past_a_thousand_million", .start = {1e9 - 3, 0}},
        LatticeCase{.name = "of_huge_steps", .step = {3e8, 1e9}},
        LatticeCase{.name = "of_infinite_steps", .step = {INFINITY, 1}},
        LatticeCase{.name = "far_away", .start = {1e12, -1e12}},
        LatticeCase{.name = "where_steps_are_lost", .start = {1e18, 0}},
        LatticeCase{.name = "with_a_line", .goal = GoalKind::line},
        LatticeCase{.name = "with_a_line_within_a_gradient", .goal = GoalKind::line_with_gradient},
        LatticeCase{.name = "with_a_line_without_gradient",
                    .goal = GoalKind::line_with_gradient,
                    .gradient = 0},
        LatticeCase{.name = "with_a_moving_line", .goal = GoalKind::moving_line},
        LatticeCase{.name = "with_a_moving_line_that_is_hard_to_meet",
                    .goal = GoalKind::moving_line,
                    .gradient = 0.1,
                    .columns = 20,
                    .rows = 3},
        LatticeCase{.name = "with_a_line_that_moves_often",
                    .goal = GoalKind::moving_line,
                    .gradient = 0.05,
                    .only_forward = true,
                    .columns = 70,
                    .rows = 4},
        LatticeCase{.name = "with_a_moving_line_without_gradient",
                    .goal = GoalKind::moving_line,
                    .gradient = 0},
        LatticeCase{.name = "with_a_line_within_a_gradient_of_minus_zero",
                    .goal = GoalKind::line_with_gradient,
                    .gradient = -0.0},
        LatticeCase{.name = "with_a_moving_line_within_a_gradient_of_minus_zero",
                    .goal = GoalKind::moving_line,
                    .gradient = -0.0},
        LatticeCase{.name = "with_a_gradient_that_is_nan",
                    .goal = GoalKind::line_with_gradient,
                    .gradient = std::nan("")},
        LatticeCase{.name = "with_an_infinite_gradient_and_a_target_as_far",
                    .goal = GoalKind::line_with_gradient,
                    .gradient = INFINITY,
                    .goal_steps = {2, INFINITY}},
        LatticeCase{.name = "with_a_target_that_is_nan", .goal_steps = {std::nan(""), 1}},
        LatticeCase{
            .name = "with_a_line_at_nan", .goal = GoalKind::line, .goal_steps = {std::nan(""), 3}},
        LatticeCase{.name = "with_a_line_within_a_gradient_at_nan",
                    .goal = GoalKind::line_with_gradient,
                    .goal_steps = {std::nan(""), 3}},
        LatticeCase{.name = "with_a_moving_line_at_infinity",
                    .goal = GoalKind::moving_line,
                    .goal_steps = {-INFINITY, 3}},
        LatticeCase{.name = "whose_first_score_is_nan",
                    .goal = GoalKind::moving_line,
                    .gradient = 0,
                    .goal_steps = {4, 0}}),
    [](const auto& tested) { return std::string(tested.param.name); });

double draw_size(std::mt19937& random, int least_exponent, int exponents) {
    const double size = std::pow(
        10.0, least_exponent + static_cast<int>(random() % static_cast<unsigned>(exponents)));
    const double digits =
        random() % 2 == 0 ? 1.0 : 1.0 + static_cast<double>(random() % 1000) / 999;
    return (random() % 4 == 0 ? -1.0 : 1.0) * size * digits;
}

LatticeCase draw_case(std::mt19937& random) {
    LatticeCase drawn{.name = "drawn"};
    drawn.start = {draw_size(random, -3, 13), draw_size(random, -3, 13)};
    const double step = draw_size(random, -5, 8);
    drawn.step = {step, random() % 2 == 0 ? step : draw_size(random, -5, 8)};
    drawn.goal = static_cast<GoalKind>(random() % 4);
    drawn.gradient = random() % 8 == 0 ? 0.0 : std::abs(draw_size(random, -2, 4));
    drawn.goal_steps = {static_cast<double>(random() % 12) - 3,
                        static_cast<double>(random() % 7) - 3};
    drawn.only_forward = random() % 4 == 0;
    drawn.columns = 2 + static_cast<int>(random() % 10);
    drawn.rows = 1 + static_cast<int>(random() % 5);
    return drawn;
}

TEST(nmkAStarSearch, walks_lattices_of_every_step_and_origin_as_the_plain_lists_do) {
    const unsigned seed = 20261121;
    std::mt19937 random(seed);
    for (unsigned turn = 0; turn < 60; ++turn) {
        const LatticeCase drawn = draw_case(random);
        const Log ours = whole_life<nmkAStarSearch>(drawn, turn);
        ASSERT_EQ(ours, whole_life<plain::Search>(drawn, turn))
            << "seed " << seed << ", turn " << turn << ", step " << drawn.step.x << ", start "
            << drawn.start.x;
    }
}

// Sets another start as soon as the filler receives the first node of the route.
template <class Search>
std::vector<std::string> route_of_a_filler_that_sets_a_start() {
    const LatticeCase tested{.name = "small"};
    auto search = std::make_unique<Watched<Search>>(tested, 3);
    std::vector<std::string> route;
    search->search.perform(coiFiller_from_function<NodePointer>([&](NodePointer node) {
        if (route.empty()) search->search.set_start(node);
        route.push_back(text_of(*node));
    }));
    search->perform();
    for (const NodePointer& node : search->route) route.push_back(text_of(*node));
    return route;
}

TEST(nmkAStarSearch, on_a_lattice_lets_the_filler_set_another_start) {
    const auto ours = route_of_a_filler_that_sets_a_start<nmkAStarSearch>();
    EXPECT_GT(ours.size(), 4u);
    EXPECT_EQ(ours, route_of_a_filler_that_sets_a_start<plain::Search>());
}

// Classes that a caller derived from the library's: the operations that they override are called.

using Points = std::vector<giPoint2>;

template <class Search>
class DiagonalArrival : public Search {
  public:
    using Search::Search;

  protected:
    bool is_goal(const nmkAStarSearchNode& record) const override {
        const auto& point = static_cast<const nmk2dSearchNode&>(*record.node()).point();
        return point.x + point.y == 6.0;
    }
};

class SkewedGoal : public nmk2dSearchGoalPoint {
  public:
    using nmk2dSearchGoalPoint::nmk2dSearchGoalPoint;
    double min_cost(const nmk2dSearchNode& node) const override {
        return 3.0 * nmk2dSearchGoalPoint::min_cost(node) + node.point().y * node.point().y;
    }
};

class UnevenStepGenerator : public nmk2dSearchNodeGenerator {
  public:
    UnevenStepGenerator() : nmk2dSearchNodeGenerator(1, 1) {}

  protected:
    void create_x_values(const nmk2dSearchNode& node, coiFiller<double> filler) const override {
        filler.add(node.point().x + 1);
        filler.add(node.point().x - 2);
    }
};

class ColumnNode : public nmk2dSearchNode {
  public:
    using nmk2dSearchNode::nmk2dSearchNode;

  protected:
    bool is_equal(const nmkSearchNode& other) const override {
        const auto* plane_node = dynamic_cast<const nmk2dSearchNode*>(&other);
        return plane_node != nullptr && plane_node->point().x == point().x;
    }
};

template <class Search>
Points route_on_board(std::shared_ptr<nmkSearchNodeGenerator> generator,
                      std::shared_ptr<nmkSearchGoal> goal, NodePointer start) {
    Search search(
        std::move(generator),
        std::make_shared<nmk2dSearchNodeVerifier>(giBox2(giPoint2(-8, -8), giPoint2(8, 8))),
        std::move(start), std::move(goal));
    std::vector<NodePointer> nodes;
    search.perform(coiFiller_from_container(nodes));
    Points points;
    for (const NodePointer& node : nodes) {
        points.push_back(static_cast<const nmk2dSearchNode&>(*node).point());
    }
    return points;
}

const auto library_generator = std::make_shared<nmk2dSearchNodeGenerator>(1, 1);
const auto library_goal = std::make_shared<nmk2dSearchGoalPoint>(giPoint2(5, 3));
const auto library_start = std::make_shared<nmk2dSearchNode>(giPoint2(0, 0));

TEST(nmkAStarSearch, on_a_lattice_asks_a_derived_search_for_the_arrival) {
    const Points ours = route_on_board<DiagonalArrival<nmkAStarSearch>>(
        library_generator, library_goal, library_start);
    ASSERT_FALSE(ours.empty());
    EXPECT_EQ(ours.back().x + ours.back().y, 6.0);
    EXPECT_EQ(ours, route_on_board<DiagonalArrival<plain::Search>>(library_generator, library_goal,
                                                                   library_start));
}

TEST(nmkAStarSearch, on_a_lattice_asks_a_derived_goal_for_its_cost) {
    const auto goal = std::make_shared<SkewedGoal>(giPoint2(5, 0));
    const auto start = std::make_shared<nmk2dSearchNode>(giPoint2(0, 5));
    const Points ours = route_on_board<nmkAStarSearch>(library_generator, goal, start);
    EXPECT_FALSE(ours.empty());
    EXPECT_EQ(ours, route_on_board<plain::Search>(library_generator, goal, start));
}

TEST(nmkAStarSearch, on_a_lattice_asks_a_derived_generator_for_the_neighbours) {
    const auto generator = std::make_shared<UnevenStepGenerator>();
    const Points ours = route_on_board<nmkAStarSearch>(generator, library_goal, library_start);
    ASSERT_GT(ours.size(), 1u);
    EXPECT_NE(ours[1].x, 0.0);
    EXPECT_EQ(ours, route_on_board<plain::Search>(generator, library_goal, library_start));
}

TEST(nmkAStarSearch, on_a_lattice_asks_a_derived_start_whether_it_is_equal) {
    const auto start = std::make_shared<ColumnNode>(giPoint2(0, 0));
    const auto goal = std::make_shared<nmk2dSearchGoalPoint>(giPoint2(1, 5));
    const Points ours = route_on_board<nmkAStarSearch>(library_generator, goal, start);
    ASSERT_GT(ours.size(), 1u);
    EXPECT_NE(ours[1].x, 0.0);  // its whole column is closed with it
    EXPECT_EQ(ours, route_on_board<plain::Search>(library_generator, goal, start));
}

}  // namespace

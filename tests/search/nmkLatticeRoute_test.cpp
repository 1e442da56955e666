// Routes by cell, beside the plain lists over nodes of the same lattice.
#include <gtest/gtest.h>
#include <nmktoolbox/search.h>

#include <cmath>
#include <limits>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include "search/plain_search.h"

namespace {

namespace plain = nmk_search::plain;

using Log = std::vector<std::string>;
using Cells = std::vector<nmkLatticeCell>;

std::string text_of(nmkLatticeCell cell) {
    return std::to_string(cell.column) + "," + std::to_string(cell.row);
}

// A lattice of (2 * columns + 1) by (2 * rows + 1) cells with drawn verdicts.
struct Scene {
    unsigned seed = 0;
    nmkLattice lattice{{0, 0}, {1, 1}};
    nmkLatticeCell goal_cell;
    int goal_kind = 0;
    double gradient = 0.5;
    int columns = 8;
    int rows = 8;

    std::shared_ptr<nmk2dSearchGoal> goal() const {
        const giPoint2 target = lattice.point(goal_cell);
        switch (goal_kind) {
            case 1:
                return std::make_shared<nmk2dSearchGoalXLine>(target);
            case 2:
                return std::make_shared<nmk2dSearchGoalXLineWithGrad>(target, gradient);
            case 3:
                return std::make_shared<nmk2dSearchGoalMovingXLine>(target, gradient);
            default:
                return std::make_shared<nmk2dSearchGoalPoint>(target);
        }
    }

    // The same for the same step, however often it is asked.
    nmkSearchNodeVerifierResult verdict(const nmkLatticeCell* parent, nmkLatticeCell cell) const {
        if (std::abs(cell.column) > columns || std::abs(cell.row) > rows) {
            return nmkSearchNodeVerifierResult::refused_for_good;
        }
        if (parent == nullptr) return nmkSearchNodeVerifierResult::accepted;
        std::seed_seq of_cell{static_cast<int>(seed), cell.column, cell.row};
        if (std::minstd_rand(of_cell)() % 100 < 20) {
            return nmkSearchNodeVerifierResult::refused_for_good;
        }
        std::seed_seq of_step{static_cast<int>(seed), cell.column, cell.row, parent->column,
                              parent->row};
        const auto drawn = std::minstd_rand(of_step)() % 100;
        if (drawn < 12) return nmkSearchNodeVerifierResult::refused_for_this_parent;
        return static_cast<nmkSearchNodeVerifierResult>(drawn < 15 ? -7 : 0);
    }

    nmkSearchNodeVerifierResult verify(const nmkLatticeCell* parent, nmkLatticeCell cell,
                                       Log& log) const {
        log.push_back((parent == nullptr ? "start" : text_of(*parent)) + ">" + text_of(cell));
        const auto result = verdict(parent, cell);
        if (result == nmkSearchNodeVerifierResult::accepted) log.push_back(text_of(cell));
        return result;
    }
};

class CellVerifier : public nmkLatticeVerifier {
  public:
    explicit CellVerifier(const Scene& scene) : m_scene(scene) {}
    nmkSearchNodeVerifierResult verify(const nmkLatticeCell* parent,
                                       nmkLatticeCell cell) const override {
        return m_scene.verify(parent, cell, log);
    }
    mutable Log log;

  private:
    const Scene& m_scene;
};

class NodeVerifier : public nmkSearchNodeVerifier {
  public:
    explicit NodeVerifier(const Scene& scene) : m_scene(scene) {}
    nmkSearchNodeVerifierResult verify(const nmkSearchNode& parent,
                                       const nmkSearchNode& node) const override {
        const auto* from = dynamic_cast<const nmk2dSearchNode*>(&parent);
        if (from == nullptr) return m_scene.verify(nullptr, cell_of(node), log);
        const nmkLatticeCell parent_cell = cell_of(parent);
        return m_scene.verify(&parent_cell, cell_of(node), log);
    }
    bool is_in_bounds(const nmkSearchNode&) const override { return true; }

    nmkLatticeCell cell_of(const nmkSearchNode& node) const {
        const giPoint2& point = static_cast<const nmk2dSearchNode&>(node).point();
        const nmkLattice& lattice = m_scene.lattice;
        return {static_cast<int>((point.x - lattice.origin.x) / lattice.step.x),
                static_cast<int>((point.y - lattice.origin.y) / lattice.step.y)};
    }
    mutable Log log;

  private:
    const Scene& m_scene;
};

// Everything that the verifier is asked, what is closed, and the route.
Log calls_by_cell(const Scene& scene) {
    const CellVerifier verifier(scene);
    const nmkLatticeRoute route =
        nmk_find_lattice_route(scene.lattice, {0, 0}, *scene.goal(), verifier);
    Log log = verifier.log;
    EXPECT_EQ(route.stop_reason == nmkLatticeStopReason::arrived, !route.cells.empty());
    for (const nmkLatticeCell cell : route.cells) log.push_back("route " + text_of(cell));
    return log;
}

Log calls_by_node(const Scene& scene) {
    const auto verifier = std::make_shared<NodeVerifier>(scene);
    const giPoint2 step = scene.lattice.step;
    std::shared_ptr<nmkSearchNodeGenerator> generator =
        std::make_shared<nmk2dSearchNodeGenerator>(step.x, step.y);
    if (scene.lattice.forward_only) {
        generator = std::make_shared<nmkForward2dSearchNodeGenerator>(step.x, step.y);
    }
    plain::Search search(generator, verifier,
                         std::make_shared<nmk2dSearchNode>(scene.lattice.point({0, 0})),
                         scene.goal());
    std::vector<plain::NodePointer> route;
    search.perform(coiFiller_from_container(route));
    Log log = verifier->log;
    for (const auto& node : route) log.push_back("route " + text_of(verifier->cell_of(*node)));
    return log;
}

// Steps, origins and targets of few binary digits: no coordinate rounds.
Scene draw_scene(unsigned seed, std::mt19937& random) {
    static constexpr double steps[] = {1.0, 0.25, 3.0, -0.5, 0x1.8p-15};
    Scene scene;
    scene.seed = seed;
    scene.lattice = {{static_cast<double>(random() % 9) - 4.0, static_cast<double>(random() % 3)},
                     {steps[random() % 5], steps[random() % 5]},
                     random() % 4 == 0};
    scene.goal_kind = static_cast<int>(random() % 4);
    scene.gradient = 0.125 * static_cast<double>(1 + random() % 16);
    scene.goal_cell = {static_cast<int>(random() % 14) - 4, static_cast<int>(random() % 11) - 5};
    return scene;
}

TEST(nmkLatticeRoute, asks_and_finds_what_the_plain_lists_do_where_no_coordinate_rounds) {
    const unsigned first_seed = 20261122;
    std::mt19937 random(first_seed);
    int found = 0;
    int missing = 0;
    for (unsigned turn = 0; turn < 250; ++turn) {
        const Scene scene = draw_scene(turn, random);
        const Log ours = calls_by_cell(scene);
        ASSERT_EQ(ours, calls_by_node(scene)) << "seed " << first_seed << ", turn " << turn;
        (ours.back().starts_with("route") ? found : missing) += 1;
    }
    EXPECT_GT(found, 50);
    EXPECT_GT(missing, 20);
}

// Accepts every cell within a distance of the origin in columns and rows.
class Square : public nmkLatticeVerifier {
  public:
    explicit Square(int half_side) : m_half_side(half_side) {}
    nmkSearchNodeVerifierResult verify(const nmkLatticeCell*, nmkLatticeCell cell) const override {
        ++asked;
        const bool is_inside =
            std::abs(cell.column) <= m_half_side && std::abs(cell.row) <= m_half_side;
        return is_inside ? nmkSearchNodeVerifierResult::accepted
                         : nmkSearchNodeVerifierResult::refused_for_good;
    }
    mutable int asked = 0;

  private:
    int m_half_side;
};

class ClosedCells : public nmkLatticeObserver {
  public:
    explicit ClosedCells(std::size_t stop_at = SIZE_MAX) : m_stop_at(stop_at) {}
    bool cell_closed(nmkLatticeCell cell) override {
        cells.push_back(cell);
        return cells.size() < m_stop_at;
    }
    Cells cells;

  private:
    std::size_t m_stop_at;
};

const nmkLattice unit_lattice{{0, 0}, {1, 1}};

TEST(nmkLatticeRoute, a_start_at_the_goal_is_the_whole_route) {
    nmk2dSearchGoalPoint goal(giPoint2(2, 1));
    const Square square(5);
    ClosedCells closed;
    const auto route = nmk_find_lattice_route(unit_lattice, {2, 1}, goal, square, &closed);
    EXPECT_EQ(route.stop_reason, nmkLatticeStopReason::arrived);
    EXPECT_EQ(route.cells, (Cells{{2, 1}}));
    EXPECT_EQ(closed.cells, route.cells);
    EXPECT_EQ(square.asked, 1);
}

TEST(nmkLatticeRoute, a_start_that_is_refused_has_no_route) {
    nmk2dSearchGoalPoint goal(giPoint2(2, 1));
    const auto route = nmk_find_lattice_route(unit_lattice, {9, 9}, goal, Square(5));
    EXPECT_EQ(route.stop_reason, nmkLatticeStopReason::no_route);
    EXPECT_TRUE(route.cells.empty());
}

TEST(nmkLatticeRoute, reports_each_closed_cell_once_and_the_arrival_last) {
    nmk2dSearchGoalPoint goal(giPoint2(3, 1));
    ClosedCells closed;
    const auto route = nmk_find_lattice_route(unit_lattice, {0, 0}, goal, Square(5), &closed);
    EXPECT_EQ(route.cells, (Cells{{0, 0}, {1, 0}, {2, 0}, {3, 1}}));
    EXPECT_EQ(closed.cells.front(), (nmkLatticeCell{0, 0}));
    EXPECT_EQ(closed.cells.back(), (nmkLatticeCell{3, 1}));
    nmk2dSearchGoalPoint off_the_lattice(giPoint2(0.5, 0.5));
    ClosedCells all;
    nmk_find_lattice_route(unit_lattice, {0, 0}, off_the_lattice, Square(5), &all);
    EXPECT_EQ(all.cells.size(), 121U);
}

TEST(nmkLatticeRoute, stops_at_the_cell_where_the_observer_says_so) {
    nmk2dSearchGoalPoint goal(giPoint2(3, 3));
    for (const std::size_t stop_at : {1U, 2U, 4U}) {  // 4: the arrival itself
        const Square square(5);
        ClosedCells closed(stop_at);
        const auto route = nmk_find_lattice_route(unit_lattice, {0, 0}, goal, square, &closed);
        EXPECT_EQ(route.stop_reason, nmkLatticeStopReason::stopped) << stop_at;
        EXPECT_TRUE(route.cells.empty());
        EXPECT_EQ(closed.cells.size(), stop_at);
        EXPECT_EQ(square.asked, static_cast<int>(stop_at));
    }
}

TEST(nmkLatticeRoute, meets_a_goal_exactly_however_its_coordinates_round) {
    const nmkLattice tenths{{0.05, -0.3}, {0.1, 0.7}};
    nmk2dSearchGoalPoint goal(tenths.point({700, -45}));
    const auto route = nmk_find_lattice_route(tenths, {-10, 5}, goal, Square(1000));
    ASSERT_EQ(route.stop_reason, nmkLatticeStopReason::arrived);
    EXPECT_EQ(route.cells.size(), 711U);
    EXPECT_EQ(route.cells.back(), (nmkLatticeCell{700, -45}));
}

TEST(nmkLatticeRoute, a_cost_that_is_not_a_number_is_taken_as_infinite) {
    // 0 / 0 at the height of the target, infinite everywhere else.
    nmk2dSearchGoalXLineWithGrad goal(giPoint2(3, 0), 0.0);
    ClosedCells closed;
    const auto route = nmk_find_lattice_route(unit_lattice, {0, 0}, goal, Square(4), &closed);
    EXPECT_EQ(route.stop_reason, nmkLatticeStopReason::no_route);
    EXPECT_EQ(closed.cells.size(), 81U);
}

TEST(nmkLatticeRoute, opens_no_cell_beyond_the_last_column_and_row) {
    constexpr std::int32_t last = 1 << 30;
    class Everywhere : public nmkLatticeVerifier {
      public:
        nmkSearchNodeVerifierResult verify(const nmkLatticeCell*, nmkLatticeCell) const override {
            return nmkSearchNodeVerifierResult::accepted;
        }
    };
    const nmkLattice forward{{0, 0}, {1, 1}, true};
    nmk2dSearchGoalPoint goal(giPoint2(0.5, 0));
    constexpr std::int32_t largest = std::numeric_limits<std::int32_t>::max();
    for (const nmkLatticeCell start : {nmkLatticeCell{last, 0}, {largest, 0}, {0, -largest - 1}}) {
        ClosedCells closed;
        const auto route = nmk_find_lattice_route(forward, start, goal, Everywhere(), &closed);
        EXPECT_EQ(route.stop_reason, nmkLatticeStopReason::no_route);
        EXPECT_EQ(closed.cells, (Cells{start}));
    }
    ClosedCells closed;
    nmk_find_lattice_route(forward, {last - 1, last}, goal, Everywhere(), &closed);
    EXPECT_EQ(closed.cells, (Cells{{last - 1, last}, {last, last - 1}, {last, last}}));
}

// A caller's own goal, which moves one row up when it is first asked.
class RisingGoal : public nmk2dSearchGoal {
  public:
    double min_cost(const nmk2dSearchNode& node) const override {
        return node.point().distance(target);
    }
    bool overshoot_goal(const nmkSearchNode&, const nmkSearchNodeGenerator& generator) override {
        x_after_two = generator.find_x_value(2.0);
        if (++asked > 1) return false;
        target.y += 1.0;
        return true;
    }
    giPoint2 target{3, 0};
    int asked = 0;
    double x_after_two = 0.0;
};

TEST(nmkLatticeRoute, asks_a_goal_of_a_callers_own_class_for_each_popped_cell_whether_it_moves) {
    RisingGoal goal;
    const Square square(5);
    const auto route = nmk_find_lattice_route(unit_lattice, {0, 0}, goal, square);
    EXPECT_EQ(route.cells.back(), (nmkLatticeCell{3, 1}));
    EXPECT_GE(goal.asked, square.asked);
    EXPECT_EQ(goal.x_after_two, 3.0);
}

TEST(nmkLatticeRoute, exceptions_of_verifier_and_observer_pass_through) {
    class Thrower : public nmkLatticeVerifier, public nmkLatticeObserver {
      public:
        nmkSearchNodeVerifierResult verify(const nmkLatticeCell*, nmkLatticeCell) const override {
            throw std::runtime_error("verifier");
        }
        bool cell_closed(nmkLatticeCell) override { throw std::runtime_error("observer"); }
    };
    Thrower thrower;
    nmk2dSearchGoalPoint goal(giPoint2(3, 3));
    EXPECT_THROW(nmk_find_lattice_route(unit_lattice, {0, 0}, goal, thrower), std::runtime_error);
    EXPECT_THROW(nmk_find_lattice_route(unit_lattice, {0, 0}, goal, Square(3), &thrower),
                 std::runtime_error);
}

}  // namespace

// find_route: routes over maps and lists, compared with a plain Dijkstra on the same steps.

#include "commands/route/find_route.h"

#include <gtest/gtest.h>
#include <nmkprogressbreak/nmkProgressBreak.h>

#include <filesystem>
#include <random>
#include <sstream>

#include "app/commands/route/plain_grid.h"
#include "app/formats/job/job_fixtures.h"
#include "formats/octile/map_reader.h"
#include "real_inputs.h"

namespace nmk_route {
namespace {

nmk_lattice::RoutePlane plane_of(const PlainGrid& grid, giPoint2 anchor = {0.0, 0.0}) {
    nmk_lattice::RoutePlane plane(anchor, {0, 0}, {grid.step_x, grid.step_y}, grid.width,
                                  grid.height);
    for (int y = 0; y < grid.height; ++y) {
        for (int x = 0; x < grid.width; ++x) {
            if (!grid.is_free(x, y)) plane.block({x, y});
        }
    }
    return plane;
}

RouteRequest request_of(const nmk_lattice::RoutePlane& plane, nmk_lattice::GridCell from,
                        nmk_lattice::GridCell to) {
    RouteRequest request;
    request.start = plane.at(from);
    request.goal = plane.at(to);
    return request;
}

/// Every step goes to a neighbour and is allowed, and the steps add up to the length.
void expect_walkable(const PlainGrid& grid, const nmk_lattice::RoutePlane& plane,
                     const FoundRoute& route) {
    double length = 0.0;
    for (std::size_t i = 1; i < route.nodes.size(); ++i) {
        const nmk_lattice::GridCell from = route.nodes[i - 1];
        const nmk_lattice::GridCell to = route.nodes[i];
        const int dx = to.column - from.column;
        const int dy = to.row - from.row;
        ASSERT_LE(std::abs(dx), 1);
        ASSERT_LE(std::abs(dy), 1);
        ASSERT_TRUE(grid.is_free(to.column, to.row));
        ASSERT_TRUE(!grid.forward || dx == 1);
        if (!grid.cut_corners) {
            ASSERT_TRUE(grid.is_free(to.column, from.row) && grid.is_free(from.column, to.row));
        }
        length += plane.at(from).distance(plane.at(to));
    }
    EXPECT_DOUBLE_EQ(length, route.length);
}

PlainGrid random_grid(std::mt19937& random) {
    PlainGrid grid;
    grid.width = 2 + static_cast<int>(random() % 24);
    grid.height = 2 + static_cast<int>(random() % 24);
    for (int i = 0; i < grid.width * grid.height; ++i) grid.blocked.push_back(random() % 10 < 3);
    grid.step_x = random() % 2 == 0 ? 1.0 : 0.1;
    grid.step_y = random() % 2 == 0 ? 1.0 : 0.3;
    grid.cut_corners = random() % 2 == 0;
    grid.forward = random() % 4 == 0;
    return grid;
}

TEST(find_route, lengths_are_those_of_dijkstra_with_any_steps_and_corner_rule) {
    constexpr unsigned seed = 20;
    std::mt19937 random(seed);
    int found = 0;
    int missing = 0;
    for (int round = 0; round < 400; ++round) {
        PlainGrid grid = random_grid(random);
        const nmk_lattice::GridCell from{
            static_cast<int>(random() % static_cast<unsigned>(grid.width)),
            static_cast<int>(random() % static_cast<unsigned>(grid.height))};
        const nmk_lattice::GridCell to{
            static_cast<int>(random() % static_cast<unsigned>(grid.width)),
            static_cast<int>(random() % static_cast<unsigned>(grid.height))};
        grid.blocked[grid.index(from.column, from.row)] = false;
        grid.blocked[grid.index(to.column, to.row)] = false;
        const nmk_lattice::RoutePlane plane = plane_of(grid, {-3.7, 1234.5});
        RouteRequest request = request_of(plane, from, to);
        request.cut_corners = grid.cut_corners;
        request.forward = grid.forward;
        ASSERT_EQ(check_request(plane, request), "") << "seed " << seed << " round " << round;
        const FoundRoute route = find_route(plane, request, nullptr);
        const double best = grid.lengths_from(from.column, from.row)[grid.index(to.column, to.row)];
        ASSERT_EQ(route.is_found(), best != PlainGrid::unreachable)
            << "seed " << seed << " round " << round;
        if (route.is_found()) {
            ++found;
            EXPECT_NEAR(route.length, best, 1e-6) << "seed " << seed << " round " << round;
            EXPECT_EQ(route.nodes.front(), from);
            EXPECT_EQ(route.nodes.back(), to);
            expect_walkable(grid, plane, route);
        } else {
            ++missing;
        }
    }
    EXPECT_GT(found, 100);
    EXPECT_GT(missing, 50);
}

TEST(find_route, closes_every_reachable_cell_if_there_is_no_route) {
    const PlainGrid grid = PlainGrid::of_rows({"..@..", "..@..", "@@@..", "....."});
    const nmk_lattice::RoutePlane plane = plane_of(grid);
    const FoundRoute route = find_route(plane, request_of(plane, {0, 0}, {4, 1}), nullptr);
    EXPECT_FALSE(route.is_found());
    EXPECT_EQ(route.closed.size(), 4U);
    EXPECT_EQ(route.expanded, 4U);
    EXPECT_EQ(route.nearest, (nmk_lattice::GridCell{1, 1}));
    EXPECT_EQ(route.short_of_goal, 3.0);
}

TEST(find_route, a_start_that_is_the_goal_is_a_route_of_one_node) {
    const nmk_lattice::RoutePlane plane = plane_of(PlainGrid::of_rows({"..", ".."}));
    const FoundRoute route = find_route(plane, request_of(plane, {1, 0}, {1, 0}), nullptr);
    ASSERT_EQ(route.nodes.size(), 1U);
    EXPECT_EQ(route.length, 0.0);
    EXPECT_EQ(route.expanded, 0U);
}

TEST(find_route, corners_are_cut_only_on_request) {
    const nmk_lattice::RoutePlane plane = plane_of(PlainGrid::of_rows({".@", "@."}));
    RouteRequest request = request_of(plane, {0, 0}, {1, 1});
    EXPECT_FALSE(find_route(plane, request, nullptr).is_found());
    request.cut_corners = true;
    EXPECT_TRUE(find_route(plane, request, nullptr).is_found());
}

TEST(find_route, forward_steps_never_reach_a_goal_behind_the_start) {
    const nmk_lattice::RoutePlane plane = plane_of(PlainGrid::of_rows({".....", "....."}));
    RouteRequest request = request_of(plane, {3, 0}, {1, 0});
    request.forward = true;
    const FoundRoute route = find_route(plane, request, nullptr);
    EXPECT_FALSE(route.is_found());
    EXPECT_EQ(route.closed.size(), 3U);
}

TEST(find_route, a_line_may_be_reached_past_its_beginning) {
    const nmk_lattice::RoutePlane plane =
        plane_of(PlainGrid::of_rows({".....@.", "...@@@.", "......."}));
    RouteRequest request = request_of(plane, {0, 2}, {3, 1});
    request.kind = GoalKind::line;
    const FoundRoute route = find_route(plane, request, nullptr);
    ASSERT_TRUE(route.is_found());
    EXPECT_EQ(route.nodes.back(), (nmk_lattice::GridCell{6, 1}));
    request.goal.x = 2.5;  // a line may begin between two cells
    EXPECT_EQ(check_request(plane, request), "");
    EXPECT_TRUE(find_route(plane, request, nullptr).is_found());
}

TEST(find_route, a_moving_line_moves_on_along_the_lattice) {
    PlainGrid grid = PlainGrid::of_rows(std::vector<std::string>(9, std::string(40, '.')));
    for (int y = 0; y < 8; ++y) grid.blocked[grid.index(6, y)] = true;
    const nmk_lattice::RoutePlane plane = plane_of(grid);
    RouteRequest request = request_of(plane, {0, 4}, {8, 4});
    request.kind = GoalKind::moving_line;
    request.gradient = 0.5;
    const FoundRoute route = find_route(plane, request, nullptr);
    ASSERT_TRUE(route.is_found());
    EXPECT_GT(route.goal.x, 8.0);
    EXPECT_EQ(plane.at(route.nodes.back()), route.goal);
    request.kind = GoalKind::line_with_gradient;
    EXPECT_EQ(find_route(plane, request, nullptr).goal, request.goal);
}

TEST(find_route, check_request_reports_requests_that_cannot_be_searched) {
    const nmk_lattice::RoutePlane plane = plane_of(PlainGrid::of_rows({".@.", "...", "..."}));
    const auto problem = [&](giPoint2 start, giPoint2 goal, GoalKind kind, double gradient = 1.0) {
        RouteRequest request;
        request.start = start;
        request.goal = goal;
        request.kind = kind;
        request.gradient = gradient;
        return check_request(plane, request);
    };
    EXPECT_EQ(problem({3, 0}, {0, 1}, GoalKind::point),
              "the start (3, 0) is outside; the cells go from (0, 0) to (2, 2)");
    EXPECT_EQ(problem({0, 0.5}, {0, 1}, GoalKind::point),
              "the start (0, 0.5) is off the lattice; the nearest cell is (0, 0)");
    EXPECT_EQ(problem({1, 0}, {0, 1}, GoalKind::point), "the start (1, 0) is blocked");
    EXPECT_EQ(problem({0, 0}, {1, 0}, GoalKind::point), "the goal (1, 0) is blocked");
    EXPECT_EQ(problem({0, 0}, {0, -1}, GoalKind::point),
              "the goal (0, -1) is outside; the cells go from (0, 0) to (2, 2)");
    EXPECT_EQ(problem({0, 0}, {1.5, 1}, GoalKind::moving_line),
              "the goal (1.5, 1) is off the lattice; the nearest cell is (2, 1)");
    EXPECT_EQ(problem({0, 0}, {1.5, 1}, GoalKind::line), "");
    EXPECT_NE(problem({0, 0}, {1, 1.5}, GoalKind::line), "");
    EXPECT_EQ(problem({0, 0}, {1, 0}, GoalKind::line), "");
    EXPECT_EQ(problem({0, 0}, {2, 2}, GoalKind::moving_line, 1e-7),
              "the gradient 0.0000001 is too small; crossing the plane in y would take more than "
              "4194304 steps in x");
}

class StopAtOnce : public nmkProgressBreak {
  public:
    int jump_to(double) override { return 1; }
};

TEST(find_route, stops_on_request) {
    const nmk_lattice::RoutePlane plane =
        plane_of(PlainGrid::of_rows(std::vector<std::string>(60, std::string(60, '.'))));
    RouteRequest request = request_of(plane, {30, 30}, {59, 59});
    request.kind = GoalKind::moving_line;
    request.gradient = 0.01;
    StopAtOnce stop;
    const FoundRoute route = find_route(plane, request, &stop);
    EXPECT_TRUE(route.stopped);
    EXPECT_FALSE(route.is_found());
}

/// One line of a file of scenarios: two cells, and the length of the shortest path that keeps
/// corners clear.
struct Scenario {
    nmk_lattice::GridCell from, to;
    double length;
};

std::vector<Scenario> scenarios_of(const std::string& text) {
    std::vector<Scenario> result;
    std::istringstream lines(text);
    std::string line;
    std::getline(lines, line);
    while (std::getline(lines, line)) {
        std::istringstream words(line);
        std::string bucket, map, width, height;
        Scenario scenario{};
        words >> bucket >> map >> width >> height >> scenario.from.column >> scenario.from.row >>
            scenario.to.column >> scenario.to.row >> scenario.length;
        result.push_back(scenario);
    }
    return result;
}

/// The number of scenarios of each map that are tested, from the shortest to the longest.
constexpr std::size_t tested_scenarios = 4;

TEST(find_route, real_maps_have_the_lengths_of_their_scenarios_and_of_dijkstra) {
    if (const auto missing = real_inputs::missing("maps")) GTEST_SKIP() << *missing;
    const std::string directory = real_inputs::path("maps/");
    for (const std::string name : {"maze512-32-0.map", "random512-10-0.map"}) {
        const std::string text = nmk_job::bytes_of_file(directory + name);
        auto read = nmk_octile::read_octile_map(name, text);
        ASSERT_TRUE(bool(read)) << read.error().text();
        const nmk_lattice::RoutePlane& plane = *read;
        const PlainGrid grid = PlainGrid::of_map(text);
        const std::vector<Scenario> all =
            scenarios_of(nmk_job::bytes_of_file(directory + name + ".scen"));
        ASSERT_GT(all.size(), tested_scenarios) << name;
        for (std::size_t k = 0; k < tested_scenarios; ++k) {
            const Scenario& scenario = all[k * (all.size() - 1) / (tested_scenarios - 1)];
            const FoundRoute route =
                find_route(plane, request_of(plane, scenario.from, scenario.to), nullptr);
            ASSERT_TRUE(route.is_found()) << name << " scenario of length " << scenario.length;
            EXPECT_NEAR(route.length, scenario.length, 5e-3) << name;
            expect_walkable(grid, plane, route);
            const auto lengths = grid.lengths_from(scenario.from.column, scenario.from.row);
            EXPECT_NEAR(route.length, lengths[grid.index(scenario.to.column, scenario.to.row)],
                        1e-6);
        }
    }
}

}  // namespace
}  // namespace nmk_route

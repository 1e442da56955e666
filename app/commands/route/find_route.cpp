// find_route: finds the shortest route over a lattice with the search of the library.

#include "commands/route/find_route.h"

#include <nmkprogressbreak/nmkProgressBreak.h>
#include <nmktoolbox/search.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <memory>
#include <utility>

#include "commands/route/closing_observer.h"
#include "commands/route/plane_verifier.h"

namespace nmk_route {

namespace {

// In the order of GoalKind.
constexpr nmk_shell::Choice<GoalKind> kinds[] = {
    {"point", GoalKind::point, "the goal itself"},
    {"line", GoalKind::line, "the goal or any cell past it in x, with its y"},
    {"line-with-gradient", GoalKind::line_with_gradient,
     "the same, approached within the gradient"},
    {"moving-line", GoalKind::moving_line,
     "a goal that moves on in x while it cannot be reached within the gradient"},
};

std::unique_ptr<nmk2dSearchGoal> make_goal(const nmk_lattice::RoutePlane& plane,
                                           const RouteRequest& request) {
    const giPoint2 target = plane.search_point(request.goal);
    switch (request.kind) {
        case GoalKind::line:
            return std::make_unique<nmk2dSearchGoalXLine>(target);
        case GoalKind::line_with_gradient:
            return std::make_unique<nmk2dSearchGoalXLineWithGrad>(target, request.gradient);
        case GoalKind::moving_line:
            return std::make_unique<nmk2dSearchGoalMovingXLine>(target, request.gradient);
        case GoalKind::point:
            break;
    }
    return std::make_unique<nmk2dSearchGoalPoint>(target);
}

double length_of(const nmk_lattice::RoutePlane& plane,
                 const std::vector<nmk_lattice::GridCell>& nodes) {
    double length = 0.0;
    for (std::size_t i = 1; i < nodes.size(); ++i) {
        length += plane.at(nodes[i - 1]).distance(plane.at(nodes[i]));
    }
    return length;
}

/// Finds the first of the closed cells from which the goal, where it is now, is cheapest.
void find_nearest(const nmk_lattice::RoutePlane& plane, const nmk2dSearchGoal& goal,
                  FoundRoute& route) {
    const nmkLattice lattice = plane.search_lattice(false);
    for (std::size_t i = 0; i < route.closed.size(); ++i) {
        const nmk2dSearchNode node(lattice.point(route.closed[i]));
        const double cost = goal.min_cost(node);
        if (i == 0 || cost < route.short_of_goal) {
            route.nearest = route.closed[i];
            route.short_of_goal = cost;
        }
    }
}

/// The goal after the search. A moving line moves in x only, and never back over column 0, so its x
/// is its distance from column 0 at its own height.
giPoint2 goal_now(const nmk_lattice::RoutePlane& plane, const RouteRequest& request,
                  const nmk2dSearchGoal& goal) {
    if (request.kind != GoalKind::moving_line) {
        return request.goal;
    }
    const giPoint2 before = plane.search_point(request.goal);
    const double x = goal.min_cost(nmk2dSearchNode({0.0, before.y}));
    const double steps = std::nearbyint((x - before.x) / plane.search_steps().x);
    return {request.goal.x + steps * plane.steps().x, request.goal.y};
}

}  // namespace

std::string goal_kind_name(GoalKind kind) {
    return std::string(kinds[static_cast<std::size_t>(kind)].name);
}

std::span<const nmk_shell::Choice<GoalKind>> goal_kinds() { return kinds; }

bool needs_gradient(GoalKind kind) {
    return kind == GoalKind::line_with_gradient || kind == GoalKind::moving_line;
}

FoundRoute find_route(const nmk_lattice::RoutePlane& plane, const RouteRequest& request,
                      nmkProgressBreak* progress) {
    const std::unique_ptr<nmk2dSearchGoal> goal = make_goal(plane, request);
    const PlaneVerifier verifier(plane, request.cut_corners);
    ClosingObserver observer(progress);
    if (progress != nullptr) {
        progress->send_progress_bar_to_0("Searching");
        progress->set_range(static_cast<double>(plane.cell_count() - plane.blocked_count()));
    }
    nmkLatticeRoute found =
        nmk_find_lattice_route(plane.search_lattice(request.forward), *plane.cell_at(request.start),
                               *goal, verifier, &observer);
    if (progress != nullptr) {
        progress->send_progress_bar_to_100();
    }
    FoundRoute route;
    route.nodes = std::move(found.cells);
    route.closed = std::move(observer.cells);
    route.stopped = found.stop_reason == nmkLatticeStopReason::stopped;
    route.expanded = route.closed.size() - (route.is_found() ? 1U : 0U);
    route.length = length_of(plane, route.nodes);
    route.goal = goal_now(plane, request, *goal);
    if (!route.is_found()) {
        find_nearest(plane, *goal, route);
    }
    return route;
}

}  // namespace nmk_route

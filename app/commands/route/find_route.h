// find_route.h: finds the shortest route over a lattice with the search of the library.
//
// Steps go to the eight neighbours of a cell, or to the three ahead in x. Costs are lengths. The
// search stays on the lattice, so it always ends.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "formats/lattice/route_plane.h"
#include "shell/option_values.h"

class nmkProgressBreak;

namespace nmk_route {

enum class GoalKind { point, line, line_with_gradient, moving_line };

/// "point", "line", "line-with-gradient", "moving-line".
std::string goal_kind_name(GoalKind kind);

/// All kinds with their names and what they mean.
std::span<const nmk_shell::Choice<GoalKind>> goal_kinds();
bool needs_gradient(GoalKind kind);

struct RouteRequest {
    giPoint2 start;
    giPoint2 goal;
    GoalKind kind = GoalKind::point;
    double gradient = 0.0;     // for the kinds that need one
    bool forward = false;      // only steps ahead in x
    bool cut_corners = false;  // a diagonal step may pass beside a blocked cell
};

struct FoundRoute {
    std::vector<nmk_lattice::GridCell> nodes;  // in the order of travel; empty if there is no route
    std::vector<nmk_lattice::GridCell> closed;  // in the order of closing
    std::size_t expanded = 0;                   // number of closed cells without the goal
    double length = 0.0;
    nmk_lattice::GridCell nearest;  // without a route: the closed cell nearest to the goal
    double short_of_goal = 0.0;     // what it then had before it; of a line as the goal counts it
    giPoint2 goal;                  // after the search; a moving line has moved on
    bool stopped = false;

    bool is_found() const { return !nodes.empty(); }
};

/// The problem of a request that cannot be searched, in one line; otherwise empty.
std::string check_request(const nmk_lattice::RoutePlane& plane, const RouteRequest& request);

/// The route of a request that check_request accepts. `progress` is borrowed and may be null.
FoundRoute find_route(const nmk_lattice::RoutePlane& plane, const RouteRequest& request,
                      nmkProgressBreak* progress);

}  // namespace nmk_route

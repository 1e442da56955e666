// find_route_check: checks a request before the search.

#include <algorithm>
#include <cmath>

#include "commands/route/find_route.h"
#include "commands/route/point_text.h"

namespace nmk_route {

namespace {

bool is_inside(const nmk_lattice::RoutePlane& plane, const giPoint2& point) {
    const giPoint2 first = plane.at({0, 0});
    const giPoint2 last = plane.at({plane.columns() - 1, plane.rows() - 1});
    return point.x >= first.x - nmk_lattice::min_step &&
           point.x <= last.x + nmk_lattice::min_step &&
           point.y >= first.y - nmk_lattice::min_step && point.y <= last.y + nmk_lattice::min_step;
}

std::string check_point(const nmk_lattice::RoutePlane& plane, const giPoint2& point,
                        const std::string& name) {
    if (!is_inside(plane, point)) {
        const giPoint2 first = plane.at({0, 0});
        const giPoint2 last = plane.at({plane.columns() - 1, plane.rows() - 1});
        return "the " + name + " " + point_text(point) + " is outside; the cells go from " +
               point_text(first) + " to " + point_text(last);
    }
    if (!plane.cell_at(point)) {
        return "the " + name + " " + point_text(point) +
               " is off the lattice; the nearest cell is " + point_text(plane.nearest_point(point));
    }
    return {};
}

/// A line is reached anywhere from its beginning on, so only its y must be on the lattice.
std::string check_goal(const nmk_lattice::RoutePlane& plane, const RouteRequest& request) {
    const bool is_line =
        request.kind == GoalKind::line || request.kind == GoalKind::line_with_gradient;
    giPoint2 point = request.goal;
    if (is_line) {
        if (!is_inside(plane, point)) {
            return check_point(plane, point, "goal");
        }
        point.x = plane.nearest_point(point).x;
    }
    if (std::string problem = check_point(plane, point, "goal"); !problem.empty()) {
        return problem;
    }
    if (request.kind == GoalKind::point && plane.is_blocked(*plane.cell_at(point))) {
        return "the goal " + point_text(point) + " is blocked";
    }
    return {};
}

/// With a smaller gradient the line would move on by more steps than any lattice has.
std::string check_gradient(const nmk_lattice::RoutePlane& plane, const RouteRequest& request) {
    if (!needs_gradient(request.kind)) {
        return {};
    }
    const double travel = plane.rows() * plane.steps().y / request.gradient;
    if (!(travel / plane.steps().x <= static_cast<double>(nmk_lattice::max_cells))) {
        return "the gradient " + nmk_text::short_number(request.gradient, 12) +
               " is too small; crossing the plane in y would take more than " +
               std::to_string(nmk_lattice::max_cells) + " steps in x";
    }
    return {};
}

}  // namespace

std::string check_request(const nmk_lattice::RoutePlane& plane, const RouteRequest& request) {
    if (std::string problem = check_point(plane, request.start, "start"); !problem.empty()) {
        return problem;
    }
    if (plane.is_blocked(*plane.cell_at(request.start))) {
        return "the start " + point_text(request.start) + " is blocked";
    }
    if (std::string problem = check_goal(plane, request); !problem.empty()) {
        return problem;
    }
    return check_gradient(plane, request);
}

}  // namespace nmk_route

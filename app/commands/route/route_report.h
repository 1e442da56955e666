// route_report.h: the report of one run of `nmk route`, as text, JSON and CSV.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "commands/route/find_route.h"
#include "commands/route/route_options.h"

namespace nmk_route {

/// Everything that is reported; all but the notes are borrowed.
struct RouteReport {
    const RouteOptions& options;
    const RouteRequest& request;
    const nmk_lattice::RoutePlane& plane;
    const FoundRoute& route;
    std::vector<std::string> notes;

    bool has_moved_goal() const { return !(route.goal == request.goal); }

    /// True if the route ends on a line, past its beginning.
    bool arrives_elsewhere() const {
        return route.is_found() && plane.cell_at(route.goal) != route.nodes.back();
    }
};

/// "64 x 40 cells, 612 blocked; corners kept clear"
std::string plane_summary(const RouteReport& report);

/// "route of 78 nodes, length 92.3848, from (3, 4) to (58, 35)", or "no route from ...".
std::string route_summary(const RouteReport& report);

/// "no route from (3, 4) to (58, 35); the nearest of 1380 visited cells is (20, 9), 46 short of the
/// goal"
std::string no_route_line(const RouteReport& report);

/// Names and values of the figures, for a person.
std::vector<std::pair<std::string, std::string>> route_figures(const RouteReport& report);

/// Figures, nodes and notes, in lines that each end with a line feed.
std::string route_text(const RouteReport& report);

/// One JSON object.
std::string route_json(const RouteReport& report);

/// A row for each node: x, y, and the length of the route so far. Without a route, the heading
/// alone.
std::string route_csv(const RouteReport& report);

}  // namespace nmk_route

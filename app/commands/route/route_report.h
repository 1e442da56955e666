// route_report.h: what is told of one run of `nmk route`, as text, JSON and CSV.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "commands/route/find_route.h"
#include "commands/route/route_options.h"

namespace nmk_route {

/// Everything that is reported; plane and route are borrowed.
struct RouteReport {
    const RouteOptions& options;
    const RouteRequest& request;
    const nmk_lattice::RoutePlane& plane;
    const FoundRoute& route;
    std::vector<std::string> notes;

    bool has_moved_goal() const { return !(route.goal == request.goal); }

    /// The route ends on a line, past where that begins.
    bool arrives_elsewhere() const {
        return route.is_found() && plane.cell_at(route.goal) != route.nodes.back();
    }
};

/// "64 x 40 places, 612 blocked; corners kept clear"
std::string plane_summary(const RouteReport& report);

/// "route of 78 nodes, length 92.3848, from (3, 4) to (58, 35)", or that there is none.
std::string route_summary(const RouteReport& report);

/// "no route from (3, 4) to (58, 35); of 1380 places closed (20, 9) is nearest to the goal, 46
/// short of it"
std::string no_route_line(const RouteReport& report);

/// Names and values of the figures, for a person.
std::vector<std::pair<std::string, std::string>> route_figures(const RouteReport& report);

/// Figures, nodes and notes, in lines that each end with a line feed.
std::string route_text(const RouteReport& report);

/// One JSON object.
std::string route_json(const RouteReport& report);

/// A row for each node: x, y, and the length of the way so far. Only the heading without a route.
std::string route_csv(const RouteReport& report);

}  // namespace nmk_route

// route_report_json: the report of one run of `nmk route` as one JSON object.

#include "commands/route/point_text.h"
#include "commands/route/route_report.h"
#include "text/escaped_text.h"

namespace nmk_route {

namespace {

std::string boolean(bool value) { return value ? "true" : "false"; }

std::string goal_json(const RouteRequest& request, const FoundRoute& route) {
    std::string text = "{\"kind\": " + nmk_text::json_text(goal_kind_name(request.kind)) +
                       ", \"at\": " + point_json(request.goal);
    if (needs_gradient(request.kind)) {
        text += ", \"gradient\": " + route_number(request.gradient);
    }
    if (request.kind == GoalKind::moving_line) {
        text += ", \"moved_to\": " + point_json(route.goal);
    }
    return text + "}";
}

std::string route_part(const RouteReport& report) {
    const FoundRoute& route = report.route;
    if (!route.is_found()) {
        return "null,\n  \"nearest\": {\"at\": " + point_json(report.plane.at(route.nearest)) +
               ", \"short\": " + route_number(route.short_of_goal) + "}";
    }
    std::string nodes;
    for (const nmk_lattice::GridCell& cell : route.nodes) {
        nodes += (nodes.empty() ? "" : ", ") + point_json(report.plane.at(cell));
    }
    return "{\"length\": " + route_number(route.length) + ", \"nodes\": [" + nodes + "]}";
}

}  // namespace

std::string route_json(const RouteReport& report) {
    const nmk_lattice::RoutePlane& plane = report.plane;
    const giPoint2 steps = plane.steps();
    std::string text = "{\n  \"file\": " + nmk_text::json_text(report.options.file_name);
    text += ",\n  \"columns\": " + std::to_string(plane.columns());
    text += ",\n  \"rows\": " + std::to_string(plane.rows());
    text += ",\n  \"steps\": " + point_json(steps);
    text += ",\n  \"blocked\": " + std::to_string(plane.blocked_count());
    text += ",\n  \"start\": " + point_json(report.request.start);
    text += ",\n  \"goal\": " + goal_json(report.request, report.route);
    text += ",\n  \"forward\": " + boolean(report.request.forward);
    text += ",\n  \"cut_corners\": " + boolean(report.request.cut_corners);
    text += ",\n  \"route\": " + route_part(report);
    text += ",\n  \"expanded\": " + std::to_string(report.route.expanded);
    text += ",\n  \"notes\": [";
    for (std::size_t i = 0; i < report.notes.size(); ++i) {
        text += (i == 0 ? "" : ", ") + nmk_text::json_text(report.notes[i]);
    }
    return text + "]\n}\n";
}

}  // namespace nmk_route

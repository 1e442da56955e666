// route_report_json: the report of one run of `nmk route` as one JSON object.

#include <nlohmann/json.hpp>

#include "commands/route/route_report.h"
#include "text/json_document.h"

namespace nmk_route {

namespace {

using nmk_text::Json;

constexpr int schema = 1;

Json point_json(const giPoint2& point) { return Json::array({point.x, point.y}); }

Json goal_json(const RouteRequest& request, const FoundRoute& route) {
    Json goal = {{"kind", goal_kind_name(request.kind)}, {"at", point_json(request.goal)}};
    if (needs_gradient(request.kind)) {
        goal["gradient"] = request.gradient;
    }
    if (request.kind == GoalKind::moving_line) {
        goal["moved_to"] = point_json(route.goal);
    }
    return goal;
}

/// The members "route", and "nearest" if there is no route.
void add_route(Json& document, const RouteReport& report) {
    const FoundRoute& route = report.route;
    if (!route.is_found()) {
        document["route"] = nullptr;
        document["nearest"] = {{"at", point_json(report.plane.at(route.nearest))},
                               {"short", route.short_of_goal}};
        return;
    }
    Json nodes = Json::array();
    for (const nmk_lattice::GridCell& cell : route.nodes) {
        nodes.push_back(point_json(report.plane.at(cell)));
    }
    document["route"] = {{"length", route.length}, {"nodes", std::move(nodes)}};
}

}  // namespace

std::string route_json(const RouteReport& report) {
    const nmk_lattice::RoutePlane& plane = report.plane;
    Json document = {{"schema", schema},
                     {"file", report.options.file_name},
                     {"columns", plane.columns()},
                     {"rows", plane.rows()},
                     {"steps", point_json(plane.steps())},
                     {"blocked", plane.blocked_count()},
                     {"start", point_json(report.request.start)},
                     {"goal", goal_json(report.request, report.route)},
                     {"forward", report.request.forward},
                     {"cut_corners", report.request.cut_corners}};
    add_route(document, report);
    document["expanded"] = report.route.expanded;
    document["notes"] = report.notes;
    return nmk_text::json_document(document);
}

}  // namespace nmk_route

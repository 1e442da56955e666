// route_report: the report of one run of `nmk route`, as text and CSV.

#include "commands/route/route_report.h"

#include <algorithm>

#include "commands/route/point_text.h"
#include "text/escaped_text.h"
#include "text/number_format.h"
#include "text/wrapped_text.h"

namespace nmk_route {

namespace {

constexpr std::size_t line_width = nmk_text::terminal_columns;  // of the list of nodes

std::string goal_text(const RouteReport& report) {
    const RouteRequest& request = report.request;
    std::string point = point_text(request.goal);
    if (request.kind == GoalKind::point) {
        return point;
    }
    const std::string kind = request.kind == GoalKind::moving_line ? "the moving line"
                             : request.kind == GoalKind::line      ? "the line"
                                                                   : "the line with gradient";
    return kind + " from " + point;
}

std::string node_list(const RouteReport& report) {
    std::string text;
    std::string line = " ";
    for (const nmk_lattice::GridCell& cell : report.route.nodes) {
        const std::string node = point_text(report.plane.at(cell));
        if (line.size() + 1 + node.size() > line_width) {
            text += line + "\n";
            line = " ";
        }
        line += " " + node;
    }
    return text + line + "\n";
}

}  // namespace

std::string plane_summary(const RouteReport& report) {
    const nmk_lattice::RoutePlane& plane = report.plane;
    return std::to_string(plane.columns()) + " x " + std::to_string(plane.rows()) + " cells, " +
           std::to_string(plane.blocked_count()) + " blocked; corners " +
           (report.request.cut_corners ? "may be cut" : "kept clear") +
           (report.request.forward ? "; forward only" : "");
}

std::string route_summary(const RouteReport& report) {
    if (!report.route.is_found()) {
        return "no route from " + point_text(report.request.start) + " to " + goal_text(report);
    }
    const std::size_t nodes = report.route.nodes.size();
    return "route of " + std::to_string(nodes) + (nodes == 1 ? " node" : " nodes") + ", length " +
           nmk_text::short_number(report.route.length, 4) + ", from " +
           point_text(report.request.start) + " to " +
           point_text(report.plane.at(report.route.nodes.back()));
}

std::string no_route_line(const RouteReport& report) {
    const std::size_t closed = report.route.closed.size();
    return route_summary(report) + "; the nearest of " + std::to_string(closed) +
           (closed == 1 ? " visited cell" : " visited cells") + " is " +
           point_text(report.plane.at(report.route.nearest)) + ", " +
           route_number(report.route.short_of_goal) + " short of the goal" +
           (report.has_moved_goal() ? ", which has moved to " + point_text(report.route.goal) : "");
}

std::vector<std::pair<std::string, std::string>> route_figures(const RouteReport& report) {
    const FoundRoute& route = report.route;
    std::vector<std::pair<std::string, std::string>> figures = {
        {"Start", point_text(report.request.start)}, {"Goal", goal_text(report)}};
    if (needs_gradient(report.request.kind)) {
        figures.emplace_back("Gradient", route_number(report.request.gradient));
    }
    if (report.has_moved_goal()) {
        figures.emplace_back("Goal moved to", point_text(route.goal));
    }
    if (route.is_found()) {
        figures.emplace_back("Arrival", point_text(report.plane.at(route.nodes.back())));
        figures.emplace_back("Length", route_number(route.length));
        figures.emplace_back("Nodes", std::to_string(route.nodes.size()));
    } else {
        figures.emplace_back("Route", "none");
        figures.emplace_back("Nearest cell", point_text(report.plane.at(route.nearest)) + ", " +
                                                 route_number(route.short_of_goal) +
                                                 " short of the goal");
    }
    figures.emplace_back("Nodes expanded", std::to_string(route.expanded));
    return figures;
}

std::string route_text(const RouteReport& report) {
    std::string text =
        nmk_text::line_text(report.options.file_name) + ": " + plane_summary(report) + "\n\n";
    for (const auto& [name, value] : route_figures(report)) {
        text += name + std::string(16 - std::min<std::size_t>(name.size(), 15), ' ') + value + "\n";
    }
    if (report.route.is_found()) {
        text += "\nRoute:\n" + node_list(report);
    }
    for (const std::string& note : report.notes) {
        text += nmk_text::line_text(note) + ".\n";
    }
    return text;
}

std::string route_csv(const RouteReport& report) {
    std::string text = "x,y,length\n";
    const auto exact = [](double value) { return nmk_text::readable_number(value); };
    double length = 0.0;
    giPoint2 last = report.request.start;
    for (const nmk_lattice::GridCell& cell : report.route.nodes) {
        const giPoint2 point = report.plane.at(cell);
        length += last.distance(point);
        last = point;
        text += exact(point.x) + "," + exact(point.y) + "," + exact(length) + "\n";
    }
    return text;
}

}  // namespace nmk_route

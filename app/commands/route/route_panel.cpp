// route_panel: the cells of a lattice, the route and its marks above them, and coordinates.

#include "commands/route/route_panel.h"

#include <algorithm>
#include <string>

#include "commands/route/route_cells.h"
#include "commands/route/route_ticks.h"
#include "draw/end_marks.h"
#include "draw/mark_group.h"
#include "text/number_format.h"

namespace nmk_route {

namespace {

using nmk_draw::SvgDocument;
using nmk_draw::SvgPoint;

constexpr double mark_size = 6.0;

/// True if the step to node i has the direction of the step before it.
bool is_straight_on(const std::vector<nmk_lattice::GridCell>& nodes, std::size_t i) {
    return i >= 2 &&
           nodes[i].column - nodes[i - 1].column == nodes[i - 1].column - nodes[i - 2].column &&
           nodes[i].row - nodes[i - 1].row == nodes[i - 1].row - nodes[i - 2].row;
}

/// One line for all steps in one direction.
std::vector<SvgPoint> route_pairs(const GridView& view, const RouteReport& report) {
    const std::vector<nmk_lattice::GridCell>& nodes = report.route.nodes;
    std::vector<SvgPoint> pairs;
    for (std::size_t i = 1; i < nodes.size(); ++i) {
        if (is_straight_on(nodes, i)) {
            pairs.back() = view.middle(nodes[i]);
        } else {
            pairs.insert(pairs.end(), {view.middle(nodes[i - 1]), view.middle(nodes[i])});
        }
    }
    return pairs;
}

/// The route and the lines of its goal.
void draw_lines(SvgDocument& svg, const GridView& view, const RouteReport& report, SvgPoint goal) {
    if (shows_goal_movement(report)) {
        draw_goal_movement(svg, view.at(report.plane, report.request.goal), goal);
    } else if (shows_goal_line(report)) {
        draw_goal_line(svg, goal, {view.right(), goal.y});
    }
    const std::vector<SvgPoint> pairs = route_pairs(view, report);
    if (!pairs.empty()) {
        const double cell = std::min(view.cell_width, view.cell_height);
        svg.open_group("class=\"after-all\"");
        draw_route_line(svg, pairs, std::clamp(cell * 0.3, 2.0, 5.0));
        svg.close_group();
    }
}

/// The start, the goal, and the end of the route or the cell nearest to the goal.
void draw_marks(SvgDocument& svg, const GridView& view, const RouteReport& report, SvgPoint goal) {
    const auto mark = [&](SvgPoint at, void (*draw)(SvgDocument&, SvgPoint)) {
        nmk_draw::draw_mark(svg, at, "", [&] { draw(svg, {}); });
    };
    if (shows_goal(view, report)) {
        mark(goal, draw_goal_mark);
    }
    if (report.has_moved_goal()) {
        mark(view.at(report.plane, report.request.goal), draw_first_goal_mark);
    }
    if (!report.route.is_found()) {
        mark(view.middle(report.route.nearest), draw_nearest_mark);
    } else if (report.arrives_elsewhere()) {
        mark(view.middle(report.route.nodes.back()), nmk_draw::draw_end_mark);
    }
    mark(view.middle(*report.plane.cell_at(report.request.start)), nmk_draw::draw_start_mark);
}

/// Two lines, of which the lower one is lighter and wider.
void draw_dashed_line(SvgDocument& svg, SvgPoint from, SvgPoint to, const std::string& name,
                      const std::string& dashes) {
    svg.open_group("class=\"" + name + "\"");
    svg.line(from, to, "stroke=\"#ffffff\" stroke-opacity=\"0.6\" stroke-width=\"4\"");
    svg.line(from, to, "stroke=\"#202124\" stroke-width=\"2\" stroke-dasharray=\"" + dashes + "\"");
    svg.close_group();
}

}  // namespace

void draw_panel(SvgDocument& svg, const GridView& view, const RouteReport& report) {
    svg.rectangle({view.corner.x - 1, view.corner.y - 1}, view.width() + 2, view.height() + 2,
                  "fill=\"#ffffff\" stroke=\"#8b97a4\"");
    draw_cells(svg, view, report);
    draw_ticks(svg, view, report.plane);
    SvgPoint goal = view.at(report.plane, report.route.goal);
    goal.x = std::min(goal.x, view.right());  // a moving goal may have left the plane
    draw_lines(svg, view, report, goal);
    draw_marks(svg, view, report, goal);
}

bool shows_goal(const GridView& view, const RouteReport& report) {
    return view.at(report.plane, report.route.goal).x <= view.right();
}

bool shows_goal_line(const RouteReport& report) {
    return report.request.kind == GoalKind::line ||
           report.request.kind == GoalKind::line_with_gradient;
}

bool shows_goal_movement(const RouteReport& report) {
    return report.request.kind == GoalKind::moving_line && report.has_moved_goal();
}

void draw_route_line(SvgDocument& svg, const std::vector<SvgPoint>& pairs, double width) {
    const auto stroke = [](const char* colour, double w) {
        return "fill=\"none\" stroke-linejoin=\"round\" stroke-linecap=\"round\" stroke=\"" +
               std::string(colour) + "\" stroke-width=\"" + nmk_text::short_number(w, 2) + "\"";
    };
    svg.open_group("class=\"route\"");
    svg.separate_lines(pairs, stroke("#ffffff", width + 2.4) + " stroke-opacity=\"0.9\"");
    svg.separate_lines(pairs, stroke("#c4144b", width));
    svg.close_group();
}

void draw_goal_mark(SvgDocument& svg, SvgPoint at) {
    svg.circle(at, mark_size + 3.0, "fill=\"#ffffff\" stroke=\"#202124\" stroke-width=\"1.5\"");
    svg.circle(at, mark_size - 2.0, "fill=\"#202124\"");
}

void draw_first_goal_mark(SvgDocument& svg, SvgPoint at) {
    svg.circle(at, mark_size, "fill=\"#ffffff\" stroke=\"#202124\" stroke-width=\"1.5\"");
}

void draw_goal_line(SvgDocument& svg, SvgPoint from, SvgPoint to) {
    draw_dashed_line(svg, from, to, "goal-line", "7 5");
}

void draw_goal_movement(SvgDocument& svg, SvgPoint from, SvgPoint to) {
    draw_dashed_line(svg, from, to, "goal-movement", "2 4");
}

void draw_nearest_mark(SvgDocument& svg, SvgPoint at) {
    svg.circle(at, mark_size + 2.0, "fill=\"none\" stroke=\"#ffffff\" stroke-width=\"6\"");
    svg.circle(at, mark_size + 2.0, "fill=\"none\" stroke=\"#e26d00\" stroke-width=\"3\"");
}

}  // namespace nmk_route

// route_panel: the cells of a lattice, and the route and its marks above them.

#include "commands/route/route_panel.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "draw/colour_scale.h"
#include "draw/end_marks.h"
#include "text/number_format.h"

namespace nmk_route {

namespace {

// Kinds of cells by colour: 0 free, 1 blocked, then the closed ones from first to last.
constexpr std::size_t blocked_kind = 1;
constexpr std::size_t first_closed_kind = 2;
constexpr std::size_t shades = 40;
constexpr std::size_t kinds = first_closed_kind + shades;

constexpr double min_cell_with_lines = 7.0;  // pixels; grid lines would hide smaller cells
constexpr double mark_size = 6.0;

std::vector<std::uint8_t> cell_kinds(const RouteReport& report) {
    const nmk_lattice::RoutePlane& plane = report.plane;
    std::vector<std::uint8_t> cells(plane.cell_count(), 0);
    const auto cell = [&](nmk_lattice::GridCell at) -> std::uint8_t& {
        return cells[static_cast<std::size_t>(at.row) * static_cast<std::size_t>(plane.columns()) +
                     static_cast<std::size_t>(at.column)];
    };
    for (int row = 0; row < plane.rows(); ++row) {
        for (int column = 0; column < plane.columns(); ++column) {
            if (plane.is_blocked({column, row})) {
                cell({column, row}) = blocked_kind;
            }
        }
    }
    const std::vector<nmk_lattice::GridCell>& closed = report.route.closed;
    for (std::size_t i = 0; i < closed.size(); ++i) {
        cell(closed[i]) = static_cast<std::uint8_t>(first_closed_kind + i * shades / closed.size());
    }
    return cells;
}

/// One path for each kind: its runs of cells, row by row, as rectangles in units of cells.
std::array<std::string, kinds> run_paths(const GridView& view,
                                         const std::vector<std::uint8_t>& cells) {
    std::array<std::string, kinds> paths;
    for (int row = 0; row < view.rows; ++row) {
        const std::uint8_t* const in_row =
            cells.data() + static_cast<std::ptrdiff_t>(row) * view.columns;
        const std::string y = std::to_string(view.drawn_row(row));
        for (int from = 0; from < view.columns;) {
            int to = from + 1;
            while (to < view.columns && in_row[to] == in_row[from]) {
                ++to;
            }
            const std::string length = std::to_string(to - from);
            paths[in_row[from]] +=
                "M" + std::to_string(from) + " " + y + "h" + length + "v1h-" + length + "z";
            from = to;
        }
    }
    return paths;
}

std::string colour_of(std::size_t kind) {
    if (kind == blocked_kind) {
        return blocked_colour;
    }
    return nmk_draw::closing_colour(static_cast<double>(kind - first_closed_kind) /
                                    double{shades - 1});
}

void draw_grid_lines(nmk_draw::SvgDocument& svg, const GridView& view) {
    if (std::min(view.cell_width, view.cell_height) < min_cell_with_lines) {
        return;
    }
    std::vector<nmk_draw::SvgPoint> pairs;
    const double right = view.corner.x + view.width();
    const double bottom = view.corner.y + view.height();
    for (int column = 1; column < view.columns; ++column) {
        const double x = view.corner.x + column * view.cell_width;
        pairs.insert(pairs.end(), {{x, view.corner.y}, {x, bottom}});
    }
    for (int row = 1; row < view.rows; ++row) {
        const double y = view.corner.y + row * view.cell_height;
        pairs.insert(pairs.end(), {{view.corner.x, y}, {right, y}});
    }
    svg.separate_lines(pairs,
                       "fill=\"none\" stroke=\"#1f2933\" stroke-opacity=\"0.08\" "
                       "stroke-width=\"1\"");
}

/// The position in the drawing of a point that need not be on the lattice.
nmk_draw::SvgPoint middle_of_point(const GridView& view, const nmk_lattice::RoutePlane& plane,
                                   const giPoint2& point) {
    const giPoint2 searched = plane.search_point(point);
    const giPoint2 steps = plane.search_steps();
    const double row = searched.y / steps.y;
    const double drawn = view.downwards ? row : view.rows - 1 - row;
    return {view.corner.x + (searched.x / steps.x + 0.5) * view.cell_width,
            view.corner.y + (drawn + 0.5) * view.cell_height};
}

/// For a line, the part that may be reached; for a moving line, its movement.
void draw_goal_lines(nmk_draw::SvgDocument& svg, const GridView& view, const RouteReport& report,
                     nmk_draw::SvgPoint goal) {
    if (report.request.kind == GoalKind::moving_line) {
        draw_goal_line(svg, middle_of_point(view, report.plane, report.request.goal), goal);
    } else if (report.request.kind != GoalKind::point) {
        draw_goal_line(svg, goal, {view.corner.x + view.width(), goal.y});
    }
}

}  // namespace

void draw_route_line(nmk_draw::SvgDocument& svg, const std::vector<nmk_draw::SvgPoint>& pairs,
                     double width) {
    const auto stroke = [](const char* colour, double w) {
        return "fill=\"none\" stroke-linejoin=\"round\" stroke-linecap=\"round\" stroke=\"" +
               std::string(colour) + "\" stroke-width=\"" + nmk_text::short_number(w, 2) + "\"";
    };
    svg.separate_lines(pairs, stroke("#ffffff", width + 2.4) + " stroke-opacity=\"0.9\"");
    svg.separate_lines(pairs, stroke("#c4144b", width));
}

void draw_goal_mark(nmk_draw::SvgDocument& svg, nmk_draw::SvgPoint at) {
    svg.circle(at, mark_size + 3.0, "fill=\"#ffffff\" stroke=\"#202124\" stroke-width=\"1.5\"");
    svg.circle(at, mark_size - 2.0, "fill=\"#202124\"");
}

void draw_first_goal_mark(nmk_draw::SvgDocument& svg, nmk_draw::SvgPoint at) {
    svg.circle(at, mark_size, "fill=\"#ffffff\" stroke=\"#202124\" stroke-width=\"1.5\"");
}

void draw_goal_line(nmk_draw::SvgDocument& svg, nmk_draw::SvgPoint from, nmk_draw::SvgPoint to) {
    svg.line(from, to, "stroke=\"#ffffff\" stroke-opacity=\"0.6\" stroke-width=\"4\"");
    svg.line(from, to, "stroke=\"#202124\" stroke-width=\"2\" stroke-dasharray=\"7 5\"");
}

void draw_nearest_mark(nmk_draw::SvgDocument& svg, nmk_draw::SvgPoint at) {
    svg.circle(at, mark_size + 2.0, "fill=\"none\" stroke=\"#ffffff\" stroke-width=\"6\"");
    svg.circle(at, mark_size + 2.0, "fill=\"none\" stroke=\"#e26d00\" stroke-width=\"3\"");
}

void draw_cells(nmk_draw::SvgDocument& svg, const GridView& view, const RouteReport& report) {
    const auto number = [](double value) { return nmk_text::short_number(value, 6); };
    svg.open_group("shape-rendering=\"crispEdges\" transform=\"translate(" + number(view.corner.x) +
                   " " + number(view.corner.y) + ") scale(" + number(view.cell_width) + " " +
                   number(view.cell_height) + ")\"");
    const std::array<std::string, kinds> paths = run_paths(view, cell_kinds(report));
    for (std::size_t kind = blocked_kind; kind < kinds; ++kind) {
        if (!paths[kind].empty()) {
            svg.raw("<path d=\"" + paths[kind] + "\" fill=\"" + colour_of(kind) + "\"/>\n");
        }
    }
    svg.close_group();
    draw_grid_lines(svg, view);
}

void draw_route(nmk_draw::SvgDocument& svg, const GridView& view, const RouteReport& report) {
    nmk_draw::SvgPoint goal = middle_of_point(view, report.plane, report.route.goal);
    const double right = view.corner.x + view.width();
    const bool is_in_sight = goal.x <= right;  // a moving goal may have left the plane
    goal.x = std::min(goal.x, right);
    draw_goal_lines(svg, view, report, goal);
    const std::vector<nmk_lattice::GridCell>& nodes = report.route.nodes;
    std::vector<nmk_draw::SvgPoint> pairs;
    for (std::size_t i = 1; i < nodes.size(); ++i) {
        pairs.insert(pairs.end(), {view.middle(nodes[i - 1]), view.middle(nodes[i])});
    }
    const double cell = std::min(view.cell_width, view.cell_height);
    if (!pairs.empty()) {
        draw_route_line(svg, pairs, std::clamp(cell * 0.3, 2.0, 5.0));
    }
    if (is_in_sight) {
        draw_goal_mark(svg, goal);
    }
    if (report.has_moved_goal()) {
        draw_first_goal_mark(svg, middle_of_point(view, report.plane, report.request.goal));
    }
    if (!report.route.is_found()) {
        draw_nearest_mark(svg, view.middle(report.route.nearest));
    } else if (report.arrives_elsewhere()) {
        nmk_draw::draw_end_mark(svg, view.middle(nodes.back()));
    }
    nmk_draw::draw_start_mark(svg, view.middle(*report.plane.cell_at(report.request.start)));
}

}  // namespace nmk_route

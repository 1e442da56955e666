// route_panel.h: the cells of a lattice, and the route and its marks above them.
//
// Rows of a map run downwards, as in its file; those of a list of points upwards.
#pragma once

#include "commands/route/route_report.h"
#include "draw/svg_document.h"

namespace nmk_route {

/// The position of the cells in the drawing, in pixels.
struct GridView {
    nmk_draw::SvgPoint corner;  // upper left
    double cell_width = 1.0;
    double cell_height = 1.0;
    int columns = 1;
    int rows = 1;
    bool downwards = true;

    double width() const { return cell_width * columns; }
    double height() const { return cell_height * rows; }
    int drawn_row(int row) const { return downwards ? row : rows - 1 - row; }
    nmk_draw::SvgPoint middle(nmk_lattice::GridCell cell) const {
        return {corner.x + (cell.column + 0.5) * cell_width,
                corner.y + (drawn_row(cell.row) + 0.5) * cell_height};
    }
};

/// Blocked and closed cells, and grid lines if the cells are large enough.
void draw_cells(nmk_draw::SvgDocument& svg, const GridView& view, const RouteReport& report);

/// The goal, and the route with its start and end or the cell nearest to the goal.
void draw_route(nmk_draw::SvgDocument& svg, const GridView& view, const RouteReport& report);

/// The marks of the panel, also for the legend.
void draw_route_line(nmk_draw::SvgDocument& svg, const std::vector<nmk_draw::SvgPoint>& pairs,
                     double width);
void draw_goal_mark(nmk_draw::SvgDocument& svg, nmk_draw::SvgPoint at);
void draw_first_goal_mark(nmk_draw::SvgDocument& svg, nmk_draw::SvgPoint at);
void draw_goal_line(nmk_draw::SvgDocument& svg, nmk_draw::SvgPoint from, nmk_draw::SvgPoint to);
void draw_nearest_mark(nmk_draw::SvgDocument& svg, nmk_draw::SvgPoint at);

inline constexpr const char* blocked_colour = "#46505c";

}  // namespace nmk_route

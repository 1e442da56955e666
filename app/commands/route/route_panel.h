// route_panel.h: the cells of a lattice, the route and its marks above them, and coordinates.
#pragma once

#include <vector>

#include "commands/route/grid_view.h"
#include "commands/route/route_report.h"
#include "draw/svg_document.h"

namespace nmk_route {

void draw_panel(nmk_draw::SvgDocument& svg, const GridView& view, const RouteReport& report);

/// Which lines and marks the panel has.
bool shows_goal(const GridView& view, const RouteReport& report);
bool shows_goal_line(const RouteReport& report);
bool shows_goal_movement(const RouteReport& report);

/// The lines and marks of the panel, also for the legend.
void draw_route_line(nmk_draw::SvgDocument& svg, const std::vector<nmk_draw::SvgPoint>& pairs,
                     double width);
void draw_goal_mark(nmk_draw::SvgDocument& svg, nmk_draw::SvgPoint at);
void draw_first_goal_mark(nmk_draw::SvgDocument& svg, nmk_draw::SvgPoint at);
void draw_goal_line(nmk_draw::SvgDocument& svg, nmk_draw::SvgPoint from, nmk_draw::SvgPoint to);
void draw_goal_movement(nmk_draw::SvgDocument& svg, nmk_draw::SvgPoint from, nmk_draw::SvgPoint to);
void draw_nearest_mark(nmk_draw::SvgDocument& svg, nmk_draw::SvgPoint at);

}  // namespace nmk_route

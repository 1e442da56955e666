// route_cells.h: the cells of a lattice: blocked ones, and visited ones coloured by their order.
#pragma once

#include "commands/route/grid_view.h"
#include "commands/route/route_report.h"
#include "draw/svg_document.h"

namespace nmk_route {

/// Blocked and closed cells, the closed ones in their order, and their borders if the cells are
/// large enough.
void draw_cells(nmk_draw::SvgDocument& svg, const GridView& view, const RouteReport& report);

/// 3 if only one in three columns and rows of cells is drawn: there are more than can be seen.
int every_cell(const GridView& view);

inline constexpr const char* blocked_colour = "#46505c";

}  // namespace nmk_route

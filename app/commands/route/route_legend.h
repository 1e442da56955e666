// route_legend.h: what the cells, lines and marks of a route's panel mean, only those that are
// drawn.
#pragma once

#include "commands/route/route_panel.h"
#include "draw/legend.h"

namespace nmk_route {

nmk_draw::LegendEntries route_legend(const GridView& view, const RouteReport& report);

}  // namespace nmk_route

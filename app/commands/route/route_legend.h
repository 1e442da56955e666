// route_legend.h: what the cells, lines and marks of a route's panel mean, only those that are
// drawn.
#pragma once

#include <string>

#include "commands/route/route_panel.h"
#include "draw/legend.h"

namespace nmk_route {

/// Which cells are left out, as a sentence; empty if all are drawn.
std::string omission_note(const GridView& view);

nmk_draw::LegendEntries route_legend(const GridView& view, const RouteReport& report);

}  // namespace nmk_route

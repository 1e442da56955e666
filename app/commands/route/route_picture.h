// route_picture.h: the map, the cells that a search visited in their order, and the route.
#pragma once

#include <string>

#include "commands/route/grid_view.h"
#include "commands/route/route_report.h"

namespace nmk_route {

/// The picture as an SVG document, with a legend.
std::string route_picture(const RouteReport& report);

/// The cells in the largest size that a picture has room for, the upper left one at `corner`.
GridView grid_view(const RouteReport& report, nmk_draw::SvgPoint corner);

}  // namespace nmk_route

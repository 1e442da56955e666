// route_picture.h: the map, the cells that a search visited in their order, and the route.
#pragma once

#include <string>

#include "commands/route/route_report.h"

namespace nmk_route {

/// The picture as an SVG document, with a legend.
std::string route_picture(const RouteReport& report);

}  // namespace nmk_route

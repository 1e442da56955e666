// route_page.h: one self-contained HTML page with the picture and the figures of a route.
#pragma once

#include <string>

#include "commands/route/route_report.h"

namespace nmk_route {

std::string route_page(const RouteReport& report);

}  // namespace nmk_route

// route_ticks.h: round coordinates along the left and the lower side of a route's panel.
#pragma once

#include "commands/route/grid_view.h"

namespace nmk_route {

/// Room for the numbers below the cells, and to the left of cells of this height; in pixels.
inline constexpr double numbers_height = 26.0;
double numbers_width(const nmk_lattice::RoutePlane& plane, double height);

void draw_ticks(nmk_draw::SvgDocument& svg, const GridView& view,
                const nmk_lattice::RoutePlane& plane);

}  // namespace nmk_route

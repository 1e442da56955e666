// colour_scale.h: colour scales for an order, for visited cells and for tools, on white.
#pragma once

#include <cstddef>
#include <string>

namespace nmk_draw {

/// From blue at 0 through teal and orange to crimson at 1, as "#rrggbb"; values outside are
/// clamped.
std::string order_colour(double fraction);

/// From pale yellow at 0 to a medium blue at 1, for areas below other marks; otherwise the same.
std::string closing_colour(double fraction);

/// A light fill for the tool at this position; after twenty tools the colours repeat.
std::string tool_colour(std::size_t tool);

/// The same, dark enough for a dot without a rim.
std::string tool_dot_colour(std::size_t tool);

}  // namespace nmk_draw

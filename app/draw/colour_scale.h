// colour_scale.h: colours that tell first from last, and tool from tool, on a white ground.
#pragma once

#include <cstddef>
#include <string>

namespace nmk_draw {

/// Blue at 0 by way of teal and orange to crimson at 1; "#rrggbb". Values outside are brought in.
std::string order_colour(double fraction);

/// Pale at 0 to a middling blue at 1, for areas that lie below other marks. The same form.
std::string closing_colour(double fraction);

/// A light filling for the tool at this place; after eight the colours come again.
std::string tool_colour(std::size_t tool);

}  // namespace nmk_draw

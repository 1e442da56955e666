// end_marks.h: the marks at the start and the end of a run or a route.
#pragma once

#include "draw/svg_document.h"

namespace nmk_draw {

/// Half the size of a mark, in pixels.
inline constexpr double end_mark_radius = 5.5;

/// A green disc.
void draw_start_mark(SvgDocument& svg, SvgPoint at);

/// A dark square.
void draw_end_mark(SvgDocument& svg, SvgPoint at);

}  // namespace nmk_draw

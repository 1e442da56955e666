// mark_group.h: marks that a page keeps at one size however far it zooms.
#pragma once

#include <string>

#include "draw/svg_document.h"

namespace nmk_draw {

/// Calls `draw` in a group whose origin is at `at`: coordinates there are from the mark. The
/// attributes may be empty.
template <class Draw>
void draw_mark(SvgDocument& svg, SvgPoint at, const std::string& attributes, Draw draw) {
    svg.open_group(attributes + (attributes.empty() ? "" : " ") + moved_to(at));
    svg.open_group("class=\"mark\"");
    draw();
    svg.close_group();
    svg.close_group();
}

}  // namespace nmk_draw

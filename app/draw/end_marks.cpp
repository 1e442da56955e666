// end_marks: the marks at the start and the end of a run or a route.

#include "draw/end_marks.h"

namespace nmk_draw {

void draw_start_mark(SvgDocument& svg, SvgPoint at) {
    svg.circle(at, end_mark_radius, "fill=\"#1e8e3e\" stroke=\"#ffffff\" stroke-width=\"1.5\"");
}

void draw_end_mark(SvgDocument& svg, SvgPoint at) {
    svg.rectangle({at.x - end_mark_radius, at.y - end_mark_radius}, 2 * end_mark_radius,
                  2 * end_mark_radius, "fill=\"#202124\" stroke=\"#ffffff\" stroke-width=\"1.5\"");
}

}  // namespace nmk_draw

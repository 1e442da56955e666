// keep_out_marks.h: keep-outs in the drawing: the shapes, and around them their clearances.
#pragma once

#include "commands/order/avoided.h"
#include "commands/order/part_view.h"
#include "draw/svg_document.h"

namespace nmk_order {

void draw_keep_outs(nmk_draw::SvgDocument& svg, const PartView& view, const Avoided& avoided);

/// A sample for the legend, 22 by 14 pixels.
void draw_keep_out_sample(nmk_draw::SvgDocument& svg, nmk_draw::SvgPoint at);

}  // namespace nmk_order

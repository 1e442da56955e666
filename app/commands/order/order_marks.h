// order_marks.h: where each tool starts and ends, the longest move, and their labels.
//
// Labels overlap neither each other nor a mark nor the longest move. Some dozens of tools have
// labels; more have small marks alone.
#pragma once

#include "commands/order/order_travel.h"
#include "draw/label_places.h"

namespace nmk_order {

/// `panel` is where labels may be.
void draw_marks(nmk_draw::SvgDocument& svg, const nmk_draw::LabelBox& panel,
                const TravelRuns& runs);

}  // namespace nmk_order

// order_panel.h: one half of the picture: the cuts of a part and the way of the cutter between
// them.
//
// Cuts are solid: holes as circles of the tool's diameter, slots as thick lines. Travel is dashed
// and coloured by order over all runs, first to last. Start and end of each run are marked, and the
// longest move of all.
#pragma once

#include <vector>

#include "commands/order/part_view.h"
#include "draw/label_places.h"
#include "draw/svg_document.h"
#include "formats/job/machining_job.h"

namespace nmk_order {

/// The holes and slots, filled in the colour of their tool.
void draw_cuts(nmk_draw::SvgDocument& svg, const PartView& view,
               const std::vector<nmk_job::JobTool>& tools);

/// Travel and marks of the runs, above the cuts; labels stay inside the panel, which is wider than
/// the view where the part is narrow.
void draw_travel(nmk_draw::SvgDocument& svg, const PartView& view, const nmk_draw::LabelBox& panel,
                 const std::vector<nmk_job::JobTool>& runs);

/// The mark of the longest move, also for the legend.
void draw_longest_mark(nmk_draw::SvgDocument& svg, nmk_draw::SvgPoint from, nmk_draw::SvgPoint to);

}  // namespace nmk_order

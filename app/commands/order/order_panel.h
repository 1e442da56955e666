// order_panel.h: one half of the picture: the cuts of a part and the travel between them.
//
// Cuts are solid: holes are circles with the diameter of the tool, slots thick lines. Travel is
// dashed and coloured by order over all runs, first to last. The start and end of each run are
// marked, and the longest move of all.
#pragma once

#include <vector>

#include "commands/order/order_job.h"
#include "commands/order/part_view.h"
#include "draw/label_places.h"
#include "draw/svg_document.h"
#include "formats/job/machining_job.h"

namespace nmk_order {

/// Runs of cuts in one order; all borrowed.
struct TravelRuns {
    const std::vector<nmk_job::JobItem>& items;
    const std::vector<OrderRun>& runs;
    const nmk_job::JobOrder& order;
};

/// The holes and slots, filled in the colour of their tool.
void draw_cuts(nmk_draw::SvgDocument& svg, const PartView& view, const nmk_job::MachiningJob& job);

/// Travel and marks of the runs, above the cuts; labels stay inside the panel, which is wider than
/// the view if the part is narrow.
void draw_travel(nmk_draw::SvgDocument& svg, const PartView& view, const nmk_draw::LabelBox& panel,
                 const TravelRuns& runs);

/// The mark of the longest move, also for the legend.
void draw_longest_mark(nmk_draw::SvgDocument& svg, nmk_draw::SvgPoint from, nmk_draw::SvgPoint to);

}  // namespace nmk_order

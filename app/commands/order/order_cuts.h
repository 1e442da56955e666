// order_cuts.h: the cuts of a part: holes as circles with the diameter of their tool, slots as
// thick lines, filled in the colour of the tool.
#pragma once

#include "commands/order/drawing_plan.h"
#include "commands/order/part_view.h"
#include "draw/svg_document.h"
#include "formats/job/machining_job.h"

namespace nmk_order {

void draw_cuts(nmk_draw::SvgDocument& svg, const PartView& view, const DrawingPlan& plan,
               const nmk_job::MachiningJob& job);

/// The fill of the cuts of this group; those of the tools without a group of their own are grey.
std::string group_colour(const ToolGroups& tools, std::size_t group);

}  // namespace nmk_order

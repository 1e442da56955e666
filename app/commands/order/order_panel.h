// order_panel.h: one half of the picture: the cuts of a part and the travel between them.
//
// Cuts are solid, travel is dashed and above them, marks and labels are above all.
#pragma once

#include "commands/order/drawing_plan.h"
#include "commands/order/order_report.h"
#include "commands/order/part_view.h"
#include "draw/label_places.h"
#include "draw/legend.h"
#include "draw/svg_document.h"

namespace nmk_order {

/// What both panels show, and how.
struct OrderDrawing {
    const nmk_job::MachiningJob& job;
    const OrderedJob& ordered;
    PartView view;  // of the left panel, centred in it
    DrawingPlan plan;
    nmk_draw::LabelBox panel;  // the left one; wider than the view if the part is narrow
};

/// The drawing with its left panel at `corner`.
OrderDrawing order_drawing(const nmk_job::MachiningJob& job, const OrderedJob& ordered,
                           const OrderReport& report, nmk_draw::SvgPoint corner);

/// The panel of one order, `right` pixels to the right of the left one.
void draw_panel(nmk_draw::SvgDocument& svg, const OrderDrawing& drawing,
                const nmk_job::JobOrder& order, double right);

}  // namespace nmk_order

// order_panel: one half of the picture: the cuts of a part and the travel between them.

#include "commands/order/order_panel.h"

#include <algorithm>

#include "commands/order/keep_out_marks.h"
#include "commands/order/order_cuts.h"
#include "commands/order/order_marks.h"
#include "commands/order/order_travel.h"

namespace nmk_order {

namespace {

// The size of a panel, in pixels.
constexpr double max_width = 690.0;
constexpr double max_height = 640.0;
constexpr double min_width = 450.0;  // for headings and legend

}  // namespace

OrderDrawing order_drawing(const nmk_job::MachiningJob& job, const OrderedJob& ordered,
                           const OrderReport& report, nmk_draw::SvgPoint corner) {
    PartView view;
    view.extent = part_extent(job, ordered.runs);
    view.scale = std::min(max_width / view.extent.width(), max_height / view.extent.height());
    const double width = std::max(view.width(), min_width);
    view.corner = {corner.x + (width - view.width()) / 2, corner.y};
    const DrawingPlan plan = drawing_plan(job, ordered, report.request.across_tools, view);
    return {job, ordered, view, plan, {corner.x, corner.y, width, view.height()}};
}

void draw_panel(nmk_draw::SvgDocument& svg, const OrderDrawing& drawing,
                const nmk_job::JobOrder& order, double right) {
    nmk_draw::LabelBox panel = drawing.panel;
    panel.left += right;
    PartView view = drawing.view;
    view.corner.x += right;
    svg.rectangle({panel.left, panel.top}, panel.width, panel.height,
                  "rx=\"6\" fill=\"#fbfcfd\" stroke=\"#c5ccd4\"");
    const TravelRuns runs{drawing.job.items, drawing.ordered.runs, order, view,
                          drawing.plan,      drawing.job.units};
    if (const Avoided* avoided = avoided_by(drawing.ordered.runs)) {
        draw_keep_outs(svg, view, *avoided);
    }
    draw_cuts(svg, view, drawing.plan, drawing.job);
    draw_moves(svg, runs);
    draw_marks(svg, panel, runs);
}

}  // namespace nmk_order

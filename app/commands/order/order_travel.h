// order_travel.h: the moves between the cuts, dashed, coloured from first to last anew for each
// tool; and the longest of them.
#pragma once

#include <vector>

#include "commands/order/drawing_plan.h"
#include "commands/order/order_job.h"
#include "commands/order/part_view.h"
#include "draw/svg_document.h"

namespace nmk_order {

/// Runs of cuts in one order, as they are drawn; all borrowed.
struct TravelRuns {
    const std::vector<nmk_job::JobItem>& items;
    const std::vector<OrderRun>& runs;
    const nmk_job::JobOrder& order;
    const PartView& view;
    const DrawingPlan& plan;
    nmk_job::JobUnits units = nmk_job::JobUnits::millimetres;  // of the file

    nmk_draw::SvgPoint entry_at(const nmk_job::JobCut& cut) const {
        return view.at(nmk_job::entry_of(items[cut.item], cut.reversed));
    }
    nmk_draw::SvgPoint exit_at(const nmk_job::JobCut& cut) const {
        return view.at(nmk_job::exit_of(items[cut.item], cut.reversed));
    }
    /// The group of the drawing to which the travel of a run belongs.
    std::size_t group_of(std::size_t run) const {
        return plan.across_tools ? 0 : plan.tools.of(run);
    }
};

void draw_moves(nmk_draw::SvgDocument& svg, const TravelRuns& runs);

struct LongestMove {
    std::vector<nmk_draw::SvgPoint> places;  // from its beginning over its bends to its end
    double length = 0.0;                     // mm; 0 if there is no move
    std::size_t group = 0;                   // of its tool

    /// The piece in the middle, beside which it is labelled.
    nmk_draw::SvgPoint from() const { return places[(places.size() - 1) / 2]; }
    nmk_draw::SvgPoint to() const { return places[(places.size() - 1) / 2 + 1]; }
};

LongestMove longest_move(const TravelRuns& runs);

/// The mark of the longest move, also for the legend.
void draw_longest_mark(nmk_draw::SvgDocument& svg, const std::vector<nmk_draw::SvgPoint>& places);

/// The attributes of a line of travel, without its colour.
std::string travel_style(const DrawingPlan& plan);

}  // namespace nmk_order

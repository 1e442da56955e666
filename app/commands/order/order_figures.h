// order_figures.h: the travel of the cutter between cuts, and the time that it takes.
//
// Travel is movement without cutting within one run: from the start place to the first item, from
// the end of each item to the beginning of the next, and to the end place. A start or an end that
// is free has no move. Lengths are millimetres, times seconds.
#pragma once

#include <geometry/giPoint3.h>

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "commands/order/order_job.h"
#include "commands/order/travel_measure.h"
#include "formats/job/job_order.h"

namespace nmk_order {

/// The moves of one run, or of several together.
struct TravelFigures {
    double travel = 0.0;                   // mm, along straight lines and around keep-outs
    double per_axis = 0.0;                 // mm, each move as its longest component (Chebyshev)
    double seconds = 0.0;                  // of the moves as rapid moves
    std::size_t bent_moves = 0;            // moves that bend around keep-outs
    double start_leg = 0.0;                // mm, of travel: from the start place to the first item
    double end_leg = 0.0;                  // mm, likewise: from the last item to the end
    double longest = 0.0;                  // mm; 0 if there is no move
    giPoint3 longest_from{0.0, 0.0, 0.0};  // the ends of that move
    giPoint3 longest_to{0.0, 0.0, 0.0};
};

/// One row of the table.
struct ToolFigures {
    std::string name;
    std::optional<double> diameter;
    std::size_t items = 0;
    TravelFigures before;
    TravelFigures after;
};

/// A row for each run, and their sum.
struct OrderFigures {
    std::vector<ToolFigures> tools;
    ToolFigures total;
};

TravelFigures measure_travel(const std::vector<nmk_job::JobItem>& items,
                             std::span<const nmk_job::JobCut> cuts, const TravelEnds& ends = {},
                             const RapidMoves& rapids = {});

OrderFigures measure_order(const nmk_job::MachiningJob& job, const OrderedJob& ordered,
                           const RapidMoves& rapids = {});

/// The figures by this measure: travel, per_axis or seconds.
double travel_by(const TravelFigures& figures, nmkTravelMeasure kind);

/// The saving in percent of `before`; 0 if nothing was travelled before.
double saved_percent(double before, double after);
double saved_percent(const ToolFigures& row, nmkTravelMeasure kind);

}  // namespace nmk_order

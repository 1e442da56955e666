// order_figures.h: how far the cutter travels between cuts, and how long that takes.
//
// Travel is what the cutter moves without cutting inside one tool's run: from the end of each item
// to the beginning of the next, first item to last. The way to the first item and the way back
// after the last are not counted, since a tool change lies between. Lengths are millimetres.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "formats/job/machining_job.h"

namespace nmk_order {

/// The moves of one run, or of several together.
struct TravelFigures {
    double travel = 0.0;            // mm, along straight lines
    double per_axis = 0.0;          // mm, each move as its longest component (Chebyshev)
    double longest = 0.0;           // mm; 0 where there is no move
    std::size_t longest_after = 0;  // the longest move leaves the item at this position
};

/// One row of the table.
struct ToolFigures {
    std::string name;
    std::optional<double> diameter;
    std::size_t items = 0;
    TravelFigures before;
    TravelFigures after;
};

/// A row for each tool, and their sum.
struct OrderFigures {
    std::vector<ToolFigures> tools;
    ToolFigures total;
};

TravelFigures measure_travel(const std::vector<nmk_job::JobItem>& items);

/// Rows of the tools of `before`, which `after` has at the same places.
OrderFigures measure_order(const std::vector<nmk_job::JobTool>& before,
                           const std::vector<nmk_job::JobTool>& after);

/// What was saved, in percent of what was; 0 where nothing was travelled before.
double saved_percent(double before, double after);

/// Seconds for a length at a constant rapid rate, without acceleration.
double rapid_seconds(double length, double mm_per_minute);

}  // namespace nmk_order

// order_report.h: everything that is reported of one run of `nmk order`.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "commands/order/job_time.h"
#include "commands/order/order_figures.h"
#include "commands/order/order_options.h"

namespace nmk_order {

/// A move of the new order that bends around keep-outs.
struct BentMove {
    std::size_t run;
    std::vector<giPoint3> places;  // mm; from its beginning over its bends to its end
};

struct OrderReport {
    OrderOptions options;
    OrderRequest request;
    nmk_job::JobUnits file_units = nmk_job::JobUnits::millimetres;
    OrderFigures figures;
    std::size_t tool_changes_before = 0;
    std::size_t tool_changes_after = 0;
    bool stopped = false;
    std::vector<BentMove> bent_moves;
    std::vector<std::size_t> left_out;  // numbers of items, from 0 in the order of the file
    std::vector<std::string> notes;
    std::optional<JobTimes> job_times;  // where the options of the machining are given
};

/// The notes are those of the ordering, then those of the job.
OrderReport report_of(const OrderOptions& options, const OrderRequest& request,
                      const nmk_job::MachiningJob& job, const OrderedJob& ordered);

/// "402 items, 4 tools, sorted by shortest from (0, 0) mm"
std::string report_summary(const OrderReport& report);

/// The line that reports on standard error, at the end, that Ctrl-C ended the work early.
std::string stopped_line(OrderType type);

/// "Rapids at 10000 mm/min ..." with the seconds before and after.
std::string rapid_summary(const OrderReport& report);

/// The length that is reported as the travel, in mm: for the measure chebyshev that of the longest
/// axis, else that of the straight lines.
double shown_travel(const TravelFigures& figures, nmkTravelMeasure kind);

}  // namespace nmk_order

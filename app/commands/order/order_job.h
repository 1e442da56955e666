// order_job.h: orders the items of a job.
//
// Each tool is ordered by itself, from the start place to the end place: a tool change costs more
// than any travel, and the machine chooses where it takes place. Whatever happens, a stop included,
// every item is in the order exactly once.
#pragma once

#include <geometry/giPoint3.h>
#include <nmkprogressbreak/nmkProgressBreak.h>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "commands/order/sort_type_names.h"
#include "commands/order/travel_ends.h"
#include "commands/order/travel_measure.h"
#include "formats/job/job_order.h"

namespace nmk_order {

struct OrderRequest {
    OrderType type = best_order;
    bool across_tools = false;                            // one order of all items, tools mixed
    TravelEnds ends{giPoint3(0.0, 0.0, 0.0), {}, false};  // of each run; across tools of the whole
    TravelMeasure measure;                                // of the type best, and for the times
    double tolerance = 0.0;                               // mm
    std::vector<bool> left_out;          // by item: not in any order; empty where all are
    std::optional<std::int64_t> effort;  // steps of the search for each item; empty: the default

    using Clock = std::chrono::steady_clock;
    std::optional<Clock::time_point> deadline;  // of all searches together
};

/// Cuts that are ordered together: those of one tool, or all of them across tools.
struct OrderRun {
    std::string name;                // of the tool; "all" across tools
    std::optional<double> diameter;  // mm
    std::size_t begin = 0;           // position of its first cut, before as after
    std::size_t count = 0;
    TravelEnds ends = {};

    std::span<const nmk_job::JobCut> of(const nmk_job::JobOrder& order) const {
        return std::span(order).subspan(begin, count);
    }
};

/// The keep-outs that the runs avoid; null for none.
inline const Avoided* avoided_by(const std::vector<OrderRun>& runs) {
    return runs.empty() ? nullptr : runs.front().ends.avoided.get();
}

/// Two complete orders of a job, divided into the same runs.
struct OrderedJob {
    std::vector<OrderRun> runs;           // one for each tool; across tools one between two fences
    nmk_job::JobOrder before;             // each run in the order of the file
    nmk_job::JobOrder after;              // each run in its new order
    std::size_t tool_changes_before = 0;  // in the order of the file, whatever the runs
    std::size_t tool_changes_after = 0;
    bool stopped = false;            // a stop was requested; the rest is in the order of the file
    std::vector<std::string> notes;  // remarks for a person, a sentence each without its full stop
};

/// Called at the first request to stop, with the run that is being ordered; may be empty.
using OnStop = std::function<void(const OrderRun& run)>;

/// What a request to stop does with the run that is being ordered.
enum class StopEffect {
    keeps_done,  // the items that are ordered come first, the others in the order of the file
    keeps_best,  // the best order so far
    finishes     // the run is ordered to its end
};

StopEffect stop_effect(OrderType type);

/// Orders the job. `progress` may be null; a result of its increment other than 0 requests a stop.
OrderedJob order_job(const nmk_job::MachiningJob& job, const OrderRequest& request,
                     nmkProgressBreak* progress, const OnStop& on_stop = {});

// The same in steps, for workers that order the runs of several jobs.

/// A run in its new order.
struct OrderedRun {
    nmk_job::JobOrder after;
    bool stopped = false;
    std::vector<std::string> notes;
};

/// The job with all runs in the order of the file.
OrderedJob unordered_job(const nmk_job::MachiningJob& job, const OrderRequest& request);

/// Orders one run of it. `time_share` is the part of the time until the deadline that the search
/// may take.
OrderedRun order_run(const nmk_job::MachiningJob& job, const OrderRequest& request,
                     const OrderedJob& unordered, std::size_t run, nmkProgressBreak* progress,
                     double time_share = 1.0);

/// A run that is left in the order of the file because of a stop.
OrderedRun skipped_run(const OrderedJob& unordered, std::size_t run);

/// Puts all runs of an unordered job in their new orders.
OrderedJob joined_job(const nmk_job::MachiningJob& job, OrderedJob unordered,
                      const std::vector<OrderedRun>& runs);

}  // namespace nmk_order

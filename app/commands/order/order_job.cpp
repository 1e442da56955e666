// order_job: orders the items of a job, run by run.

#include "commands/order/order_job.h"

#include <nmktoolbox/runtime/nmkVersion.h>

#include <algorithm>
#include <utility>

#include "commands/order/best_run.h"
#include "commands/order/order_figures.h"
#include "commands/order/sorted_run.h"
#include "shell/progress_relay.h"

namespace nmk_order {

namespace {

using Items = std::vector<nmk_job::JobItem>;

// The number of temperatures that annealing is expected to pass, for the progress bar: measured
// with random holes, 20,400 for 100 of them, 26,700 for 1,000, 77,400 for 10,000 and 249,000 for
// 30,000. The range that the library announces is up to four times as large.
constexpr double expected_steps = 21000.0;
constexpr double expected_steps_for_each_item = 7.5;

constexpr const char* not_ordered = "not ordered; its items are in the order of the file";

/// Orders the runs of `result.after`, which begin in the order of the file.
class RunOrderer {
  public:
    RunOrderer(const nmk_job::MachiningJob& job, const OrderRequest& request,
               nmkProgressBreak* progress, const OnStop& on_stop, OrderedJob& result)
        : m_items(job.items),
          m_request(request),
          m_relay(progress, [this] { report_stop(); }),
          m_on_stop(on_stop),
          m_progress(progress == nullptr ? nullptr : &m_relay),
          m_result(result) {}

    /// `time_share` is the part of the time until the deadline that the search may take.
    void order(const OrderRun& run, double time_share) {
        if (m_relay.stop_requested()) {
            m_result.stopped = true;
            add_note(run, not_ordered);
            return;
        }
        m_run = &run;
        const std::span<nmk_job::JobCut> cuts =
            std::span(m_result.after).subspan(run.begin, run.count);
        const nmk_job::JobOrder order = m_request.type ? sorted(run, cuts, *m_request.type)
                                                       : best(run, cuts, limits(time_share));
        std::copy(order.begin(), order.end(), cuts.begin());
    }

  private:
    SearchLimits limits(double time_share) const {
        SearchLimits limits;
        limits.effort = m_request.effort;
        if (m_request.deadline) {
            const std::chrono::duration<double> left =
                *m_request.deadline - OrderRequest::Clock::now();
            limits.seconds = left.count() * time_share;
        }
        return limits;
    }

    nmk_job::JobOrder best(const OrderRun& run, std::span<const nmk_job::JobCut> cuts,
                           const SearchLimits& limits) {
        BestCuts best = best_cuts(m_items, cuts, run.ends, m_request.measure, limits, m_progress);
        if (best.end == SearchEnd::stopped) {
            m_result.stopped = true;
            add_note(run, "stopped; its order is the best so far");
        } else if (best.end == SearchEnd::time_limit) {
            add_note(run, "the search ended at the time limit");
        }
        return std::move(best.cuts);
    }

    nmk_job::JobOrder sorted(const OrderRun& run, std::span<const nmk_job::JobCut> cuts,
                             nmkSortType type) {
        if (stop_effect(type) == StopEffect::finishes) {
            m_relay.set_expected_range(expected_steps + expected_steps_for_each_item *
                                                            static_cast<double>(run.count));
        }
        const giPoint3 start = m_request.ends.start.value_or(giPoint3(0.0, 0.0, 0.0));
        SortedCuts sorted =
            sorted_cuts(m_items, cuts, type, start, m_request.tolerance, m_progress);
        if (sorted.stopped) {
            m_result.stopped = true;
            add_note(run, "stopped; the rest of its items follow in the order of the file");
        } else if (anneals(type)) {
            open_ring(m_items, run.ends, sorted.cuts);
            keep_shorter(run, cuts, sorted.cuts);
        }
        return std::move(sorted.cuts);
    }

    /// Keeps the order of the file, with a note, if that is shorter.
    void keep_shorter(const OrderRun& run, std::span<const nmk_job::JobCut> of_file,
                      nmk_job::JobOrder& cuts) {
        const double travel = measure_travel(m_items, of_file, run.ends).travel;
        if (measure_travel(m_items, cuts, run.ends).travel > travel) {
            add_note(run, "the order of the file is shorter and was kept");
            cuts.assign(of_file.begin(), of_file.end());
        }
    }

    void report_stop() const {
        if (m_on_stop) {
            m_on_stop(*m_run);
        }
    }

    void add_note(const OrderRun& run, const std::string& note) {
        m_result.notes.push_back(run.name + ": " + note);
    }

    const Items& m_items;
    const OrderRequest& m_request;
    nmk_shell::ProgressRelay m_relay;
    const OnStop& m_on_stop;
    const OrderRun* m_run = nullptr;  // that is being ordered
    nmkProgressBreak* m_progress;
    OrderedJob& m_result;
};

/// One run for the items between two fences. The cutter goes on from one to the next: the way from
/// the start belongs to the first, the way to the end to the last.
std::vector<OrderRun> runs_across_tools(const nmk_job::MachiningJob& job, std::size_t count,
                                        const TravelEnds& ends) {
    std::vector<OrderRun> runs;
    std::size_t begin = 0;
    for (const std::size_t fence : job.fences) {
        runs.push_back({"all", std::nullopt, begin, fence - begin, {}});
        begin = fence;
    }
    if (begin < count || runs.empty()) {
        runs.push_back({"all", std::nullopt, begin, count - begin, {}});
    }
    runs.front().ends.start = ends.start;
    runs.back().ends.end = ends.end;
    for (OrderRun& run : runs) {
        run.ends.is_closed = ends.is_closed;
        run.ends.avoided = ends.avoided;
    }
    return runs;
}

/// The runs of an order that has the items of `order`.
std::vector<OrderRun> runs_of(const nmk_job::MachiningJob& job, const nmk_job::JobOrder& order,
                              const OrderRequest& request) {
    if (request.across_tools) {
        return runs_across_tools(job, order.size(), request.ends);
    }
    std::vector<OrderRun> runs;
    for (const nmk_job::JobTool& tool : job.tools) {
        runs.push_back({tool.name, tool.diameter, 0, 0, request.ends});
    }
    for (const nmk_job::JobCut& cut : order) {
        ++runs[job.items[cut.item].tool].count;
    }
    for (std::size_t i = 1; i < runs.size(); ++i) {
        runs[i].begin = runs[i - 1].begin + runs[i - 1].count;
    }
    return runs;
}

nmk_job::JobOrder without(nmk_job::JobOrder order, const std::vector<bool>& left_out) {
    if (!left_out.empty()) {
        const auto is_left_out = [&](const nmk_job::JobCut& cut) { return left_out[cut.item]; };
        order.erase(std::remove_if(order.begin(), order.end(), is_left_out), order.end());
    }
    return order;
}

std::size_t tool_changes(const nmk_job::MachiningJob& job, const nmk_job::JobOrder& order) {
    std::size_t changes = 0;
    for (std::size_t i = 1; i < order.size(); ++i) {
        changes += job.items[order[i].item].tool != job.items[order[i - 1].item].tool ? 1U : 0U;
    }
    return changes;
}

}  // namespace

StopEffect stop_effect(OrderType type) {
    if (!type) {
        return StopEffect::keeps_best;
    }
    // At level 0 the sorter is the older method, which stops at once.
    const bool is_older = nmkVersion::get_from_manager("itemsorter").get_level() == 0;
    return anneals(type) && !is_older ? StopEffect::finishes : StopEffect::keeps_done;
}

OrderedJob unordered_job(const nmk_job::MachiningJob& job, const OrderRequest& request) {
    OrderedJob result;
    result.notes = job.notes;
    result.before = without(nmk_job::order_of_file(job), request.left_out);
    result.runs = runs_of(job, result.before, request);
    result.tool_changes_before = tool_changes(job, result.before);
    if (!request.across_tools) {
        result.before = without(nmk_job::order_by_tool(job), request.left_out);
    }
    result.after = result.before;
    return result;
}

OrderedRun order_run(const nmk_job::MachiningJob& job, const OrderRequest& request,
                     const OrderedJob& unordered, std::size_t run, nmkProgressBreak* progress,
                     double time_share) {
    const OrderRun& whole = unordered.runs[run];
    OrderedJob part;
    part.runs = {{whole.name, whole.diameter, 0, whole.count, whole.ends}};
    const std::span<const nmk_job::JobCut> cuts = whole.of(unordered.before);
    part.before.assign(cuts.begin(), cuts.end());
    part.after = part.before;
    RunOrderer(job, request, progress, {}, part).order(part.runs.front(), time_share);
    return {std::move(part.after), part.stopped, std::move(part.notes)};
}

OrderedRun skipped_run(const OrderedJob& unordered, std::size_t run) {
    const std::span<const nmk_job::JobCut> cuts = unordered.runs[run].of(unordered.before);
    return {{cuts.begin(), cuts.end()}, true, {unordered.runs[run].name + ": " + not_ordered}};
}

OrderedJob joined_job(const nmk_job::MachiningJob& job, OrderedJob unordered,
                      const std::vector<OrderedRun>& runs) {
    OrderedJob result = std::move(unordered);
    for (std::size_t i = 0; i < runs.size(); ++i) {
        std::copy(runs[i].after.begin(), runs[i].after.end(),
                  result.after.begin() + static_cast<std::ptrdiff_t>(result.runs[i].begin));
        result.stopped = result.stopped || runs[i].stopped;
        result.notes.insert(result.notes.end(), runs[i].notes.begin(), runs[i].notes.end());
    }
    result.tool_changes_after = tool_changes(job, result.after);
    return result;
}

OrderedJob order_job(const nmk_job::MachiningJob& job, const OrderRequest& request,
                     nmkProgressBreak* progress, const OnStop& on_stop) {
    OrderedJob result = unordered_job(job, request);
    RunOrderer orderer(job, request, progress, on_stop, result);
    std::size_t items_left = job.items.size();
    for (const OrderRun& run : result.runs) {
        const double share = static_cast<double>(run.count) / static_cast<double>(items_left);
        orderer.order(run, share);
        items_left -= run.count;
    }
    result.tool_changes_after = tool_changes(job, result.after);
    return result;
}

}  // namespace nmk_order

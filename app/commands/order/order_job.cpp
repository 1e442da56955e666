// order_job: orders the items of a job with the library's sorters.

#include "commands/order/order_job.h"

#include <nmktoolbox/ordering/nmkPointSorter.h>
#include <nmktoolbox/ordering/nmkSortItemLine.h>
#include <nmktoolbox/runtime/nmkVersion.h>

#include <algorithm>
#include <deque>
#include <utility>

#include "commands/order/order_figures.h"
#include "shell/progress_relay.h"

namespace nmk_order {

namespace {

using Items = std::vector<nmk_job::JobItem>;

// The number of temperatures that annealing is expected to pass, for the progress bar: measured
// with random holes, 20,400 for 100 of them, 26,700 for 1,000, 77,400 for 10,000 and 249,000 for
// 30,000. The range that the library announces is up to four times as large.
constexpr double expected_steps = 21000.0;
constexpr double expected_steps_for_each_item = 7.5;

bool has_slots(const Items& items, std::span<const nmk_job::JobCut> cuts) {
    return std::any_of(cuts.begin(), cuts.end(),
                       [&](const nmk_job::JobCut& cut) { return items[cut.item].end.has_value(); });
}

/// One library item for each cut, with the position of the cut as its index. A deque, since the
/// library borrows the items.
///
/// The sorters need an end on all items or on none: beside slots, a hole is a line of no length.
std::deque<nmkSortItemLine> library_items(const Items& items,
                                          std::span<const nmk_job::JobCut> cuts) {
    const bool are_lines = has_slots(items, cuts);
    const giPoint3 no_end;  // unset, which the sorters read as a point without an end
    std::deque<nmkSortItemLine> result;
    for (const nmk_job::JobCut& cut : cuts) {
        const nmk_job::JobItem& item = items[cut.item];
        const giPoint3& end = are_lines ? item.end.value_or(item.start) : no_end;
        result.emplace_back(item.start, end).set_index(static_cast<int>(result.size()) - 1);
    }
    return result;
}

struct SortedCuts {
    nmk_job::JobOrder cuts;
    bool stopped = false;  // a stop left cuts undone; they follow in the order that they had
};

SortedCuts sorted_cuts(const Items& items, std::span<const nmk_job::JobCut> cuts,
                       const OrderRequest& request, nmkProgressBreak* progress) {
    std::deque<nmkSortItemLine> lines = library_items(items, cuts);
    nmkPointSorter sorter(request.type);
    for (nmkSortItemLine& line : lines) {
        sorter.add_item(nmkSortItemPrf(&line));
    }
    nmkSortList& sorted = sorter.sort(request.tolerance, request.start, progress);
    SortedCuts result;
    result.cuts.reserve(cuts.size());
    std::vector<bool> taken(cuts.size(), false);
    sorted.reset();
    while (sorted.forwards() != 0) {
        const auto i = static_cast<std::size_t>(sorted.read()->index());
        if (!taken[i]) {
            taken[i] = true;
            const bool is_slot = items[cuts[i].item].end.has_value();
            result.cuts.push_back({cuts[i].item, is_slot && lines[i].reversed() != 0});
        }
    }
    result.stopped = result.cuts.size() < cuts.size();
    for (std::size_t i = 0; i < cuts.size(); ++i) {
        if (!taken[i]) {
            result.cuts.push_back(cuts[i]);
        }
    }
    return result;
}

bool finds_shortest(nmkSortType type) {
    return type == nmkSortTypeShortest || type == nmkSortTypeShortestOneWay;
}

/// The library orders lines around a ring, which has no first item: cuts the ring open at its
/// longest move, which is then not travelled. The order around the ring does not change.
void open_ring_at_longest_move(const Items& items, nmk_job::JobOrder& cuts) {
    const nmk_job::JobCut& first = cuts.front();
    const nmk_job::JobCut& last = cuts.back();
    const double closing = nmk_job::exit_of(items[last.item], last.reversed)
                               .distance(nmk_job::entry_of(items[first.item], first.reversed));
    const TravelFigures open = measure_travel(items, cuts);
    if (open.longest > closing) {
        const auto begin = static_cast<std::ptrdiff_t>(open.longest_after) + 1;
        std::rotate(cuts.begin(), cuts.begin() + begin, cuts.end());
    }
}

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

    void order(const OrderRun& run) {
        if (m_relay.stop_requested()) {
            m_result.stopped = true;
            add_note(run, not_ordered);
            return;
        }
        const std::span<nmk_job::JobCut> cuts =
            std::span(m_result.after).subspan(run.begin, run.count);
        m_run = &run;
        if (finishes_run_at_hand(m_request.type)) {
            m_relay.set_expected_range(expected_steps + expected_steps_for_each_item *
                                                            static_cast<double>(run.count));
        }
        SortedCuts sorted = sorted_cuts(m_items, cuts, m_request, m_progress);
        if (sorted.stopped) {
            m_result.stopped = true;
            add_note(run, "stopped; the rest of its items follow in the order of the file");
        } else if (finds_shortest(m_request.type) && !shorten(run, sorted.cuts)) {
            return;
        }
        std::copy(sorted.cuts.begin(), sorted.cuts.end(), cuts.begin());
    }

  private:
    /// Opens a ring of slots; returns false, with a note, if the order of the file is shorter.
    bool shorten(const OrderRun& run, nmk_job::JobOrder& cuts) {
        if (cuts.size() > 2 && has_slots(m_items, cuts)) {
            open_ring_at_longest_move(m_items, cuts);
        }
        const double of_file = measure_travel(m_items, run.of(m_result.before)).travel;
        if (measure_travel(m_items, cuts).travel > of_file) {
            add_note(run, "the order of the file is shorter and was kept");
            return false;
        }
        return true;
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

std::vector<OrderRun> runs_of(const nmk_job::MachiningJob& job, bool across_tools) {
    std::vector<OrderRun> runs;
    if (across_tools) {
        std::size_t begin = 0;
        for (const std::size_t fence : job.fences) {
            runs.push_back({"all", std::nullopt, begin, fence - begin});
            begin = fence;
        }
        if (begin < job.items.size() || runs.empty()) {
            runs.push_back({"all", std::nullopt, begin, job.items.size() - begin});
        }
        return runs;
    }
    for (const nmk_job::JobTool& tool : job.tools) {
        runs.push_back({tool.name, tool.diameter, 0, 0});
    }
    for (const nmk_job::JobItem& item : job.items) {
        ++runs[item.tool].count;
    }
    for (std::size_t i = 1; i < runs.size(); ++i) {
        runs[i].begin = runs[i - 1].begin + runs[i - 1].count;
    }
    return runs;
}

std::size_t tool_changes(const nmk_job::MachiningJob& job, const nmk_job::JobOrder& order) {
    std::size_t changes = 0;
    for (std::size_t i = 1; i < order.size(); ++i) {
        changes += job.items[order[i].item].tool != job.items[order[i - 1].item].tool ? 1U : 0U;
    }
    return changes;
}

}  // namespace

bool finishes_run_at_hand(nmkSortType type) {
    // At level 0 the sorter is the older method, which stops at once.
    return finds_shortest(type) && nmkVersion::get_from_manager("itemsorter").get_level() != 0;
}

OrderedJob unordered_job(const nmk_job::MachiningJob& job, const OrderRequest& request) {
    OrderedJob result;
    result.notes = job.notes;
    result.runs = runs_of(job, request.across_tools);
    result.before = nmk_job::order_of_file(job);
    result.tool_changes_before = tool_changes(job, result.before);
    if (!request.across_tools) {
        result.before = nmk_job::order_by_tool(job);
    }
    result.after = result.before;
    return result;
}

OrderedRun order_run(const nmk_job::MachiningJob& job, const OrderRequest& request,
                     const OrderedJob& unordered, std::size_t run, nmkProgressBreak* progress) {
    const OrderRun& whole = unordered.runs[run];
    OrderedJob part;
    part.runs = {{whole.name, whole.diameter, 0, whole.count}};
    const std::span<const nmk_job::JobCut> cuts = whole.of(unordered.before);
    part.before.assign(cuts.begin(), cuts.end());
    part.after = part.before;
    RunOrderer(job, request, progress, {}, part).order(part.runs.front());
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
    for (const OrderRun& run : result.runs) {
        orderer.order(run);
    }
    result.tool_changes_after = tool_changes(job, result.after);
    return result;
}

}  // namespace nmk_order

// order_job: puts the items of a job in the order that the library finds.

#include "commands/order/order_job.h"

#include <nmktoolbox/ordering/nmkPointSorter.h>
#include <nmktoolbox/ordering/nmkSortItemLine.h>

#include <algorithm>
#include <deque>

#include "commands/order/order_figures.h"
#include "shell/progress_relay.h"

namespace nmk_order {

namespace {

bool has_end(const nmk_job::JobItem& item) { return item.end.has_value(); }

/// One library item for each of ours, numbered. A deque, since the library borrows them.
std::deque<nmkSortItemLine> library_items(const std::vector<nmk_job::JobItem>& items) {
    const bool lines = std::any_of(items.begin(), items.end(), has_end);
    const giPoint3 no_end;  // unset, which the sorters take for none
    std::deque<nmkSortItemLine> result;
    for (const nmk_job::JobItem& item : items) {
        const giPoint3& end = lines ? item.end.value_or(item.start) : no_end;
        result.emplace_back(item.start, end).set_index(static_cast<int>(result.size()) - 1);
    }
    return result;
}

/// Appends the items that a broken off sort did not come to, in the order in which they came.
void append_missing(std::vector<nmk_job::JobItem>& result,
                    const std::vector<nmk_job::JobItem>& items, const std::vector<bool>& taken) {
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (!taken[i]) {
            result.push_back(items[i]);
        }
    }
}

/// The items of one run in the library's order; `stopped` is set when a break left some undone.
///
/// Where some items have two points and some one, a hole counts as a line of no length, because the
/// sorters want either all items with an end or none.
std::vector<nmk_job::JobItem> sorted_items(const std::vector<nmk_job::JobItem>& items,
                                           const OrderRequest& request, nmkProgressBreak* progress,
                                           bool& stopped) {
    std::deque<nmkSortItemLine> lines = library_items(items);
    nmkPointSorter sorter(request.type);
    for (nmkSortItemLine& line : lines) {
        sorter.add_item(nmkSortItemPrf(&line));
    }
    nmkSortList& sorted = sorter.sort(request.tolerance, request.start, progress);
    std::vector<nmk_job::JobItem> result;
    result.reserve(items.size());
    std::vector<bool> taken(items.size(), false);
    sorted.reset();
    while (sorted.forwards() != 0) {
        const auto i = static_cast<std::size_t>(sorted.read()->index());
        if (!taken[i]) {
            taken[i] = true;
            result.push_back(items[i]);
            result.back().reversed = has_end(items[i]) && lines[i].reversed() != 0;
        }
    }
    stopped = result.size() < items.size();
    append_missing(result, items, taken);
    return result;
}

bool finds_shortest(nmkSortType type) {
    return type == nmkSortTypeShortest || type == nmkSortTypeShortestOneWay;
}

/// The library orders lines around a ring, which has no first item: cut it at its longest move, so
/// that this move is not travelled. The order around the ring stays as it is.
void cut_ring_at_longest_move(std::vector<nmk_job::JobItem>& items) {
    const double closing = items.back().exit().distance(items.front().entry());
    const TravelFigures open = measure_travel(items);
    if (open.longest > closing) {
        const auto first = static_cast<std::ptrdiff_t>(open.longest_after) + 1;
        std::rotate(items.begin(), items.begin() + first, items.end());
    }
}

struct Orderer {
    const OrderRequest& request;
    nmk_shell::ProgressRelay& breaks;
    nmkProgressBreak* progress;
    OrderedJob& result;

    std::vector<nmk_job::JobItem> order_run(const nmk_job::JobTool& run) {
        if (breaks.stop_requested()) {
            result.stopped = true;
            result.notes.push_back(run.name + ": not begun, left in the order of the file");
            return run.items;
        }
        bool stopped = false;
        std::vector<nmk_job::JobItem> items = sorted_items(run.items, request, progress, stopped);
        if (stopped) {
            result.stopped = true;
            result.notes.push_back(run.name +
                                   ": stopped; what was not yet ordered follows as in the file");
            return items;
        }
        return finds_shortest(request.type) ? shortest(run, std::move(items)) : items;
    }

    /// Cuts the ring of lines, and never answers an order longer than the file's.
    std::vector<nmk_job::JobItem> shortest(const nmk_job::JobTool& run,
                                           std::vector<nmk_job::JobItem> items) {
        if (items.size() > 2 && std::any_of(items.begin(), items.end(), has_end)) {
            cut_ring_at_longest_move(items);
        }
        if (measure_travel(items).travel > measure_travel(run.items).travel) {
            result.notes.push_back(run.name + ": the order of the file is shorter and was kept");
            return run.items;
        }
        return items;
    }
};

/// All items of all tools as they stand in the file, and for each the place of its tool.
nmk_job::JobTool all_items(const nmk_job::MachiningJob& job,
                           std::vector<std::size_t>& tool_of_source) {
    nmk_job::JobTool all{"all", std::nullopt, {}};
    for (std::size_t tool = 0; tool < job.tools.size(); ++tool) {
        for (const nmk_job::JobItem& item : job.tools[tool].items) {
            tool_of_source.resize(std::max(tool_of_source.size(), item.source_index + 1));
            tool_of_source[item.source_index] = tool;
            all.items.push_back(item);
        }
    }
    std::sort(all.items.begin(), all.items.end(),
              [](const nmk_job::JobItem& a, const nmk_job::JobItem& b) {
                  return a.source_index < b.source_index;
              });
    return all;
}

/// Cuts an order of all items into runs of one tool each.
std::vector<nmk_job::JobTool> runs_of_one_tool(const std::vector<nmk_job::JobItem>& items,
                                               const nmk_job::MachiningJob& job,
                                               const std::vector<std::size_t>& tool_of_source) {
    std::vector<nmk_job::JobTool> runs;
    std::size_t last_tool = job.tools.size();
    for (const nmk_job::JobItem& item : items) {
        const std::size_t tool = tool_of_source[item.source_index];
        if (tool != last_tool) {
            runs.push_back({job.tools[tool].name, job.tools[tool].diameter, {}});
            last_tool = tool;
        }
        runs.back().items.push_back(item);
    }
    return runs;
}

std::size_t changes(std::size_t runs) { return runs == 0 ? 0 : runs - 1; }

}  // namespace

OrderedJob order_job(const nmk_job::MachiningJob& job, const OrderRequest& request,
                     nmkProgressBreak* progress) {
    OrderedJob result;
    result.job = job;
    std::vector<std::size_t> tool_of_source;
    const nmk_job::JobTool all = all_items(job, tool_of_source);
    result.tool_changes_before = changes(runs_of_one_tool(all.items, job, tool_of_source).size());
    result.before = request.across_tools ? std::vector<nmk_job::JobTool>{all} : job.tools;
    nmk_shell::ProgressRelay breaks(progress);
    Orderer orderer{request, breaks, progress == nullptr ? nullptr : &breaks, result};
    for (const nmk_job::JobTool& run : result.before) {
        result.after.push_back({run.name, run.diameter, orderer.order_run(run)});
    }
    result.job.tools = request.across_tools
                           ? runs_of_one_tool(result.after.front().items, job, tool_of_source)
                           : result.after;
    result.tool_changes_after = changes(result.job.tools.size());
    return result;
}

}  // namespace nmk_order

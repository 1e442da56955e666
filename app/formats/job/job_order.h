// job_order.h: an order of the items of a job: a permutation of their numbers, with directions.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "formats/job/machining_job.h"

namespace nmk_job {

/// One cut: an item, and the direction in which it is cut.
struct JobCut {
    std::uint32_t item = 0;  // position in MachiningJob::items
    bool reversed = false;   // from end to start; only ever set for an item with an end
};

/// The cuts one after the other. An order is complete when every item of the job is in it once.
using JobOrder = std::vector<JobCut>;

/// Where the cutter enters and leaves an item.
inline const giPoint3& entry_of(const JobItem& item, bool reversed) {
    return reversed ? *item.end : item.start;
}
inline const giPoint3& exit_of(const JobItem& item, bool reversed) {
    return item.end && !reversed ? *item.end : item.start;
}

/// All items in the order of the file.
JobOrder order_of_file(const MachiningJob& job);

/// The items of the first tool, those of the second and so on, each in the order of the file.
JobOrder order_by_tool(const MachiningJob& job);

/// Calls `visit(tool, cuts)` for each run of consecutive cuts of one tool, in their order: the
/// position of the tool in MachiningJob::tools, and the cuts as a span.
template <class Visit>
void each_tool_run(const MachiningJob& job, std::span<const JobCut> order, Visit visit) {
    for (std::size_t begin = 0; begin < order.size();) {
        const std::uint32_t tool = job.items[order[begin].item].tool;
        std::size_t end = begin + 1;
        while (end < order.size() && job.items[order[end].item].tool == tool) {
            ++end;
        }
        visit(std::size_t{tool}, order.subspan(begin, end - begin));
        begin = end;
    }
}

}  // namespace nmk_job

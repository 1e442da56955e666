// job_order.cpp: see job_order.h.

#include "formats/job/job_order.h"

namespace nmk_job {

JobOrder order_of_file(const MachiningJob& job) {
    JobOrder order(job.items.size());
    for (std::size_t i = 0; i < order.size(); ++i) {
        order[i].item = static_cast<std::uint32_t>(i);
    }
    return order;
}

JobOrder order_by_tool(const MachiningJob& job) {
    std::vector<std::size_t> next(job.tools.size() + 1, 0);  // position of the tool's next cut
    for (const JobItem& item : job.items) {
        ++next[item.tool + 1];
    }
    for (std::size_t tool = 1; tool < next.size(); ++tool) {
        next[tool] += next[tool - 1];
    }
    JobOrder order(job.items.size());
    for (std::size_t i = 0; i < order.size(); ++i) {
        order[next[job.items[i].tool]++].item = static_cast<std::uint32_t>(i);
    }
    return order;
}

}  // namespace nmk_job

// order_job.h: puts the items of a job in the order that the library finds.
//
// Each tool is ordered by itself, as if the cutter stood at `start`: between two tools stands a
// tool change, which costs more than any travel and happens at a place of the machine's own.
// Whatever happens, a break included, every item comes out exactly once.
#pragma once

#include <geometry/giPoint3.h>
#include <nmkprogressbreak/nmkProgressBreak.h>
#include <nmktoolbox/ordering/nmkSortType.h>

#include <cstddef>
#include <string>
#include <vector>

#include "formats/job/machining_job.h"

namespace nmk_order {

struct OrderRequest {
    nmkSortType type = nmkSortTypeShortest;
    bool across_tools = false;      // one order of all items, tools mixed
    giPoint3 start{0.0, 0.0, 0.0};  // mm
    double tolerance = 0.0;         // mm
};

/// A job in its new order, and what is compared.
struct OrderedJob {
    nmk_job::MachiningJob job;  // a tool for each run: a tool may come back when tools are mixed
    std::vector<nmk_job::JobTool>
        before;  // runs in the order of the file; one run, "all", across tools
    std::vector<nmk_job::JobTool> after;  // the same runs in their new order
    std::size_t tool_changes_before = 0;
    std::size_t tool_changes_after = 0;
    bool stopped = false;            // a break was asked for; what was not done stays in file order
    std::vector<std::string> notes;  // what a person should know, a sentence each
};

/// Orders the job. `progress` may be null; a non-zero answer of its increment asks for a break.
OrderedJob order_job(const nmk_job::MachiningJob& job, const OrderRequest& request,
                     nmkProgressBreak* progress);

}  // namespace nmk_order

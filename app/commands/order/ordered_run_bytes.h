// ordered_run_bytes.h: ordered runs as bytes, on their way from a worker.
#pragma once

#include <string>
#include <vector>

#include "commands/order/order_job.h"

namespace nmk_order {

/// The runs, one after the other.
std::string bytes_of_runs(const std::vector<OrderedRun>& runs);

/// The runs of these bytes; fewer if the bytes end too early.
std::vector<OrderedRun> runs_of_bytes(const std::string& bytes);

}  // namespace nmk_order

// order_outputs.h: the files that `nmk order` writes, all of them or none.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "order/machining_job.h"
#include "order/order_job.h"
#include "order/order_table.h"

namespace nmk_app {

/// Writes every file that the options name, and adds their names to `written`. Answers one line
/// when one cannot be written; files that this run made new are then gone again.
std::optional<std::string> write_order_outputs(const MachiningJob& job, const OrderedJob& ordered,
                                               const OrderReport& report,
                                               std::vector<std::string>& written);

}  // namespace nmk_app

// order_outputs.h: the files that `nmk order` writes, all of them or none.
#pragma once

#include <optional>
#include <string>

#include "commands/order/order_job.h"
#include "commands/order/order_table.h"
#include "files/write_all_files.h"
#include "formats/job/machining_job.h"

namespace nmk_order {

/// Writes every file that the options name. Answers one line when one cannot be written; files that
/// this run made new are then gone again.
std::optional<std::string> write_order_outputs(const nmk_job::MachiningJob& job,
                                               const OrderedJob& ordered, const OrderReport& report,
                                               nmk_files::WrittenFiles& written);

}  // namespace nmk_order

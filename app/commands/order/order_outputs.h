// order_outputs.h: the files that `nmk order` writes, all of them or none.
#pragma once

#include <vector>

#include "commands/order/order_report.h"
#include "files/write_all_files.h"
#include "text/result.h"

namespace nmk_order {

/// The names and texts of all files that the options name. All texts are made before the first file
/// is written: a job that cannot be written leaves no file.
nmk_text::Result<std::vector<nmk_files::OutputFile>> order_outputs(const nmk_job::MachiningJob& job,
                                                                   const OrderedJob& ordered,
                                                                   const OrderReport& report);

}  // namespace nmk_order

// order_outputs.h: the files that `nmk order` writes, all of them or none.
#pragma once

#include "commands/order/order_report.h"
#include "files/write_all_files.h"
#include "text/result.h"

namespace nmk_order {

/// Writes every file that the options name. If one of them cannot be written, new files are removed
/// and replaced ones restored.
nmk_text::Result<nmk_files::WrittenFiles> write_order_outputs(const nmk_job::MachiningJob& job,
                                                              const OrderedJob& ordered,
                                                              const OrderReport& report);

}  // namespace nmk_order

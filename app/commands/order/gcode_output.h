// gcode_output.h: the ordered items as a program for a mill or a drilling machine.
#pragma once

#include <string>

#include "commands/order/order_job.h"
#include "commands/order/order_options.h"
#include "formats/job/machining_job.h"
#include "text/result.h"

namespace nmk_order {

/// Whether the output file of these options gets G-code: by its extension, or by --gcode. A file
/// with the extension of the input gets the format that was read.
bool writes_gcode(const OrderOptions& options);

/// What is missing or contradicts where G-code is written, or where options for it are given.
nmk_shell::Problem check_gcode(const OrderOptions& options);

/// "parts/plate.nc" of "parts/plate.drl".
std::string gcode_name(const std::string& file_name);

/// The program, with the bends around keep-outs; or an Error for what the items do not allow.
nmk_text::Result<std::string> gcode_text(const nmk_job::MachiningJob& job,
                                         const OrderedJob& ordered, const OrderRequest& request,
                                         const OrderOptions& options);

}  // namespace nmk_order

// excellon_order_check.h: what is checked before and after a drill program is written in an order.
#pragma once

#include <span>
#include <string_view>

#include "formats/excellon/excellon_program.h"
#include "formats/job/job_order.h"
#include "text/result.h"

namespace nmk_excellon {

/// An Error unless every item of the job is in the order once, or at most once where items may be
/// left out, and only slots are reversed.
nmk_text::Result<void> check_order(const nmk_job::MachiningJob& job,
                                   std::span<const nmk_job::JobCut> order, bool may_leave_out);

/// Parses the written text: an Error unless it cuts the items of the job in this order, with the
/// tools and diameters of the program. The order was checked by check_order.
nmk_text::Result<void> check_written_program(const nmk_job::MachiningJob& job,
                                             const ExcellonProgram& program,
                                             std::span<const nmk_job::JobCut> order,
                                             std::string_view text);

}  // namespace nmk_excellon

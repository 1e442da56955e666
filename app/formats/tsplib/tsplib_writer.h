// tsplib_writer.h: writes a TSPLIB instance again with its nodes in another order.
#pragma once

#include <span>
#include <string>

#include "formats/job/job_order.h"

namespace nmk_tsplib {

/// The text of the instance of a job that read_tsplib returned: the lines of the nodes in the new
/// order, each as it was read and with its number, all other lines as they are and where they are.
/// `order` is a complete order of the job.
std::string write_tsplib(const nmk_job::MachiningJob& job, std::span<const nmk_job::JobCut> order);

}  // namespace nmk_tsplib

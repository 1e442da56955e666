// write_job.h: an ordered job as the text of a drill, CSV or JSON file.
#pragma once

#include <span>
#include <string>

#include "formats/job/job_order.h"
#include "text/result.h"

namespace nmk_job_files {

/// The text of a file of this name, whose ending chooses the format: those of names_drill_program,
/// ".csv" or ".json". An Error for any other ending, and for a drill file of a job that was not
/// read from one. `order` is a complete order of the job.
nmk_text::Result<std::string> job_text(const nmk_job::MachiningJob& job,
                                       std::span<const nmk_job::JobCut> order,
                                       const std::string& file_name);

}  // namespace nmk_job_files

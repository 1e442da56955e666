// write_job.h: writes an ordered job as .drl, .csv or .json, told by the name of the file.
#pragma once

#include <optional>
#include <string>
#include <variant>

#include "order/machining_job.h"

namespace nmk_app {

/// The text that write_job_file would write for a file of this name, or why there is none (a .drl
/// can only be made of a job that was read from a drill file).
std::variant<std::string, JobError> job_text(const MachiningJob& ordered,
                                             const std::string& file_name);

/// Writes the job: beside, flushed, checked, then renamed, so that no half file is ever left.
std::optional<JobError> write_job_file(const MachiningJob& ordered, const std::string& file_name);

}  // namespace nmk_app

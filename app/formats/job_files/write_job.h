// write_job.h: an ordered job as the text of a .drl, .csv or .json, told by the name of the file.
#pragma once

#include <string>
#include <variant>

#include "formats/job/machining_job.h"

namespace nmk_app {

/// The text of a file of this name, or why there is none (a .drl can only be made of a job that was
/// read from a drill file).
std::variant<std::string, JobError> job_text(const MachiningJob& ordered,
                                             const std::string& file_name);

}  // namespace nmk_app

// write_job.h: an ordered job as the text of a .drl, .csv or .json, told by the name of the file.
#pragma once

#include <string>

#include "formats/job/machining_job.h"
#include "text/result.h"

namespace nmk_job_files {

/// The text of a file of this name, or why there is none (a .drl can only be made of a job that was
/// read from a drill file).
nmk_text::Result<std::string> job_text(const nmk_job::MachiningJob& ordered,
                                       const std::string& file_name);

}  // namespace nmk_job_files

// write_job.h: an ordered job as the text of a drill, CSV or JSON file.
#pragma once

#include <span>
#include <string>

#include "formats/job/job_order.h"
#include "text/result.h"

namespace nmk_job_files {

/// True if job_text can write a file of this name for a job that was read from `input`.
bool names_output(const std::string& file_name, const std::string& input);

/// The text of a file of this name, whose ending chooses the format: ".csv", ".json", or the format
/// of the file that was read for ".tsp", for the endings of names_drill_program and for the ending
/// of that file, which may be none. An Error for any other ending, and for a drill program or a
/// TSPLIB instance of a job that was not read from one. `order` is a complete order of the job, or
/// a part of one where `is_part` is true; an Error for a part of a format that has to be whole.
nmk_text::Result<std::string> job_text(const nmk_job::MachiningJob& job,
                                       std::span<const nmk_job::JobCut> order,
                                       const std::string& file_name, bool is_part = false);

/// The text in the format that was read.
nmk_text::Result<std::string> text_as_read(const nmk_job::MachiningJob& job,
                                           std::span<const nmk_job::JobCut> order,
                                           bool is_part = false);

}  // namespace nmk_job_files

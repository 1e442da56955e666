// read_job.h: reads a file of holes and slots, whatever its format.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "formats/job/machining_job.h"
#include "text/result.h"

namespace nmk_job_files {

/// Reads the file; the format is told by its content and name. `units` is used where the file does
/// not tell its own. Nothing is thrown: a file that cannot be read returns an Error.
nmk_text::Result<nmk_job::MachiningJob> read_job_file(const std::string& file_name,
                                                      std::optional<nmk_job::JobUnits> units);

/// The same for text that is in memory; `file_name` is for messages and for telling the format.
nmk_text::Result<nmk_job::MachiningJob> read_job_text(const std::string& file_name,
                                                      std::string text,
                                                      std::optional<nmk_job::JobUnits> units);

}  // namespace nmk_job_files

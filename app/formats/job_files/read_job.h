// read_job.h: reads a file of holes and slots of any format.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "formats/job/machining_job.h"
#include "text/result.h"

namespace nmk_job_files {

/// Reads the file, or standard input for "-". The format is recognised by the content; where that
/// leaves it open it is `format` or, without one, that of the name. `units` applies if the file
/// does not state its own. An Error if it cannot be read; nothing is thrown.
nmk_text::Result<nmk_job::MachiningJob> read_job_file(
    const std::string& file_name, std::optional<nmk_job::JobUnits> units,
    std::optional<nmk_job::JobFormat> format = {});

/// The same for a text in memory; `file_name` is for messages and for recognising the format.
nmk_text::Result<nmk_job::MachiningJob> read_job_text(
    const std::string& file_name, std::string text, std::optional<nmk_job::JobUnits> units,
    std::optional<nmk_job::JobFormat> format = {});

}  // namespace nmk_job_files

// job_format.h: tells the format of a file of holes.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "formats/job/machining_job.h"

namespace nmk_job_files {

/// What the content says, and where it says nothing, the name: M48, tools or coordinates in letters
/// are a drill program, NODE_COORD_SECTION or DIMENSION a TSPLIB instance, rows of numbers a table.
/// Empty where neither says anything.
std::optional<nmk_job::JobFormat> format_of(const std::string& file_name, std::string_view text);

/// The ending of the name in lower case without its point, "drl"; empty where it has none.
std::string name_ending(const std::string& file_name);

/// A name that ends as drill programs do: .drl, .drd, .exc, .ncd, .xln, .tap, .txt.
bool names_drill_program(const std::string& file_name);

}  // namespace nmk_job_files

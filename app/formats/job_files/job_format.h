// job_format.h: recognises the format of a file of holes.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "formats/job/machining_job.h"

namespace nmk_job_files {

/// The format by the content, and if the content does not decide `otherwise`, then by the name:
/// M48, T1 or X1Y1 begin a drill program, NODE_COORD_SECTION or DIMENSION a TSPLIB instance, rows
/// of numbers a table. Empty if nothing decides.
std::optional<nmk_job::JobFormat> format_of(const std::string& file_name, std::string_view text,
                                            std::optional<nmk_job::JobFormat> otherwise = {});

/// The extension of the name in lower case without its point, "drl"; empty if it has none.
std::string name_ending(const std::string& file_name);

/// True for a name with an extension of G-code alone: .nc, .ngc, .gcode.
bool names_gcode_program(const std::string& file_name);

/// True for a name with an extension of drill programs: .drl, .drd, .exc, .ncd, .xln, .tap, .txt.
bool names_drill_program(const std::string& file_name);

}  // namespace nmk_job_files

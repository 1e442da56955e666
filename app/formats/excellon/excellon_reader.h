// excellon_reader.h: reads a drill program as a machining job. See excellon_parser.h for the words
// that are understood and excellon_state.h for the defaults.
#pragma once

#include <optional>
#include <string>

#include "formats/job/machining_job.h"
#include "text/result.h"

namespace nmk_excellon {

/// The job of a drill program, with an ExcellonProgram as its source. The tools are in the order of
/// their first cut and named "T1" whatever the leading zeros in the file; a tool that cuts nothing
/// is left out. A routed path or a pattern is a fence of the job, and a tool that cuts on both
/// sides of it is listed twice.
nmk_text::Result<nmk_job::MachiningJob> read_excellon(
    const std::string& file_name, std::string text,
    std::optional<nmk_job::JobUnits> units_if_unstated);

/// The point in millimetres; drill files are flat, z is zero.
giPoint3 excellon_point(const struct ExcellonPoint& point, nmk_job::JobUnits units);

}  // namespace nmk_excellon

// tool_numbers.h: the numbers of the tools of a program.
#pragma once

#include <vector>

#include "formats/job/machining_job.h"

namespace nmk_gcode {

/// By tool of the job: the numbers of their names, "T3" and "T12", where all tools have such names
/// and each another number from 1 to 9999; from 1 in the order of the tools otherwise.
std::vector<int> tool_numbers(const std::vector<nmk_job::JobTool>& tools);

}  // namespace nmk_gcode

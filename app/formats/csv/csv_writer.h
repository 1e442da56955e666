// csv_writer.h: writes a job as a table of points or lines, in the order of cutting.
//
// A job that was read from a table keeps its header and the letters of its rows; a line that is cut
// the other way has its two points exchanged. Any other job becomes a table in millimetres, x,y,z
// or x,y,z,x2,y2,z2 where there are slots (a hole then leaves the last three columns empty), with a
// remark (#) above the holes of each tool.
#pragma once

#include <string>

#include "formats/job/machining_job.h"

namespace nmk_csv {

std::string write_csv(const nmk_job::MachiningJob& ordered);

}  // namespace nmk_csv

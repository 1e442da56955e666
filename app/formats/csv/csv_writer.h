// csv_writer.h: writes a job as a table of points or lines, in the order of cutting.
//
// A job that was read from a table keeps its header and the digits of its rows; a reversed line has
// its two points exchanged. Any other job becomes a table in millimetres with the columns x,y,z, or
// x,y,z,x2,y2,z2 when it has slots (the last three cells of a hole are then empty), and for a drill
// program the columns tool and diameter, which csv_reader reads back.
#pragma once

#include <span>
#include <string>

#include "formats/job/job_order.h"

namespace nmk_csv {

/// The text of the table. `order` is a complete order of the job.
std::string write_csv(const nmk_job::MachiningJob& job, std::span<const nmk_job::JobCut> order);

}  // namespace nmk_csv

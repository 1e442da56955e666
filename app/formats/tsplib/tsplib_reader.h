// tsplib_reader.h: reads the points of a TSPLIB instance with EDGE_WEIGHT_TYPE EUC_2D or CEIL_2D.
//
// Keywords may have blanks before the colon or no colon at all. The instance must have as many
// nodes as its DIMENSION says, each number from 1 to DIMENSION once; nothing is set aside on the
// word of DIMENSION alone. Lengths are taken as they stand: ordering rounds nothing.
#pragma once

#include <optional>
#include <string>

#include "formats/job/machining_job.h"
#include "text/result.h"

namespace nmk_tsplib {

/// The job of the instance: one tool "all", or none for an instance without nodes. Lengths are in
/// the given unit; millimetres where none is given.
nmk_text::Result<nmk_job::MachiningJob> read_tsplib(const std::string& file_name, std::string text,
                                                    std::optional<nmk_job::JobUnits> units);

}  // namespace nmk_tsplib

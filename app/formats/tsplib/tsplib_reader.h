// tsplib_reader.h: reads the points of a TSPLIB instance with EDGE_WEIGHT_TYPE EUC_2D or CEIL_2D.
//
// Keywords may have blanks before the colon, or no colon. The instance must have DIMENSION nodes,
// with each number from 1 to DIMENSION once; no memory is allocated for a DIMENSION without its
// nodes. Lengths are not rounded.
#pragma once

#include <optional>
#include <string>

#include "formats/job/machining_job.h"
#include "text/result.h"

namespace nmk_tsplib {

/// The job of the instance, with one tool "all", or none for an instance without nodes. Lengths are
/// in `units`, by default millimetres.
nmk_text::Result<nmk_job::MachiningJob> read_tsplib(const std::string& file_name, std::string text,
                                                    std::optional<nmk_job::JobUnits> units);

}  // namespace nmk_tsplib

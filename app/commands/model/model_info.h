// model_info.h: `nmk model info`: prints the figures of models.
#pragma once

#include <ostream>

#include "commands/model/model_options.h"

class nmkProgressBreak;

namespace nmk_model {

/// Prints the figures of all files that can be read.
///
///   out      a list for one file, a table for several, or JSON
///   err      a line for each file that cannot be read
///   returns  0; 2 if a file could not be read or standard output not be written; 1, with nothing
///            printed, after a request to stop
int print_info(const ModelOptions& options, nmkProgressBreak& progress, std::ostream& out,
               std::ostream& err);

}  // namespace nmk_model

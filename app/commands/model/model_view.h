// model_view.h: `nmk model view`: draws a model as a picture and as a page.
#pragma once

#include <ostream>

#include "commands/model/model_options.h"

class nmkProgressBreak;

namespace nmk_model {

/// Reads the file of the options and writes the picture and the page that they name.
///
///   out      a line about the model, or an output "-"
///   err      one line if there is an error; that line about the model for an output "-"
///   returns  0; 1, with nothing written, for a model without triangles and after a request to
///            stop; 2 for bad input or an output that cannot be written
int view_model(const ModelOptions& options, nmkProgressBreak& progress, std::ostream& out,
               std::ostream& err);

}  // namespace nmk_model

// model_convert.h: `nmk model convert`: writes a model in another format.
#pragma once

#include <optional>
#include <ostream>
#include <string>

#include "commands/model/model_options.h"
#include "commands/model/write_model.h"

class nmkProgressBreak;

namespace nmk_model {

/// Reads the first file of the options and writes the second.
///
///   out      a line about the model, or the bytes of an output "-"
///   err      one line if there is an error; that line about the model for an output "-"
///   returns  0; 1, with nothing written, for a model without triangles and after a request to
///            stop; 2 for bad input or an output that cannot be written
int convert_model(const ModelOptions& options, nmkProgressBreak& progress, std::ostream& out,
                  std::ostream& err);

/// The format of an output by its name: STL for ".stl" and "-", NMT for ".nmt" and ".nmlmt";
/// nothing for another name.
std::optional<OutputFormat> output_format(const std::string& file_name);

}  // namespace nmk_model

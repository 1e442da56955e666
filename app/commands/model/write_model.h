// write_model.h: a triangle model as the bytes of a file.
#pragma once

#include <string>

#include "commands/model/read_model.h"

class nmkProgressBreak;

namespace nmk_model {

enum class OutputFormat { binary_stl, nmt };

/// What became of the writing.
struct ModelOutput {
    bool is_stopped = false;
    bool is_too_large = false;  // for the counts of the format
    std::string bytes = {};     // otherwise
};

/// The model as a binary STL, in millimetres, with a unit normal for each triangle (zero for one
/// without area); or as an NMT in millimetres, with the normals of blocks that have as many as
/// nodes, and with the colours of blocks.
///
///   progress  receives the number of triangles and nodes that are written; may request a stop
ModelOutput write_model(const Model& model, OutputFormat format, nmkProgressBreak& progress);

}  // namespace nmk_model

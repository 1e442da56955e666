// read_model.h: reads a triangle model of any format into blocks in millimetres.
#pragma once

#include <geometry/giTriBlock.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "commands/model/model_format.h"
#include "text/result.h"

class nmkProgressBreak;

namespace nmk_model {

enum class ModelUnits { millimetres, inches };

constexpr double mm_per_inch = 25.4;

/// Largest absolute value of a coordinate in millimetres: squares and cubes of sums are far from
/// overflow.
constexpr double max_model_coordinate = 1e9;

struct ReadingOptions {
    FormatChoice format = FormatChoice::automatic;
    ModelUnits units = ModelUnits::millimetres;  // of the formats that do not state them
};

/// A model that was read. The corners of its triangles are in its blocks, at finite places.
struct Model {
    std::string name;  // what messages call the file
    ModelFormat format = ModelFormat::binary_stl;
    ModelUnits file_units = ModelUnits::millimetres;
    std::vector<std::unique_ptr<giTriBlock>> blocks;  // in millimetres, those with nodes
    std::int64_t invalid_triangles = 0;               // that were left out

    std::int64_t triangle_count() const;
};

/// Why no model was read.
struct ReadingFailure {
    bool is_stopped = false;  // the progress reporter requested it
    nmk_text::Error error;    // otherwise
};

/// Reads the file, or standard input for "-".
///
///   progress  receives percentages, and may request a stop
///   failure   is set if nothing is returned
///
/// Triangles with a corner that is not a number, infinite or beyond max_model_coordinate are left
/// out and counted. Memory is not allocated ahead of what the file can hold. Only regular files are
/// opened: a pipe is read as standard input.
std::unique_ptr<Model> read_model(const std::string& file_name, const ReadingOptions& options,
                                  nmkProgressBreak& progress, ReadingFailure& failure);

}  // namespace nmk_model

// model_figures.h: the figures of a triangle model: its size, and whether it is a closed solid.
#pragma once

#include <geometry/giBox3.h>

#include <cstdint>
#include <optional>
#include <string>

#include "commands/model/read_model.h"
#include "commands/model/welded_mesh.h"

namespace nmk_model {

/// Lengths are in millimetres. Edges and shells are those of the welded mesh.
struct ModelFigures {
    std::string name;
    ModelFormat format = ModelFormat::binary_stl;
    ModelUnits file_units = ModelUnits::millimetres;
    std::int64_t blocks = 0;
    std::int64_t triangles = 0;
    std::int64_t invalid_triangles = 0;  // that were left out, see read_model
    std::int64_t stored_nodes = 0;       // in the file: three for each triangle, or those of blocks
    std::int64_t welded_nodes = 0;       // different places of corners
    giBox3 box;                          // of the triangles; empty without triangles
    double area = 0.0;
    std::optional<double> volume;           // of a closed model; below 0 if it is inside out
    std::int64_t free_edges = 0;            // of one triangle
    std::int64_t crowded_edges = 0;         // of more than two triangles
    std::int64_t opposed_edges = 0;         // of two triangles that are not wound alike
    std::int64_t degenerate_triangles = 0;  // without area
    std::int64_t shells = 0;                // sets of triangles that edges join

    /// True if there are triangles, and every edge is passed as often in one direction as in the
    /// other: then the volume does not depend on the origin.
    bool is_closed() const { return volume.has_value(); }
};

/// Formula of the volume: the sum of the signed tetrahedra from each triangle to one point; Zhang
/// and Chen, Efficient feature extraction for 2D/3D objects in mesh representation, 2001.
ModelFigures model_figures(const Model& model, const WeldedMesh& mesh);

}  // namespace nmk_model

// reduced_mesh.h: a mesh with few enough triangles for a page.
#pragma once

#include <nmkprogressbreak/nmkProgressBreak.h>

#include <cstddef>
#include <optional>

#include "commands/model/welded_mesh.h"

namespace nmk_model {

/// The mesh itself if it has at most `max_triangles`; else its nodes joined in the cells of a grid,
/// as fine as the limit allows, without the triangles that become degenerate. Each cell keeps the
/// mean of its nodes.
/// Method: Rossignac and Borrel, Multi-resolution 3D approximations for rendering complex scenes,
/// 1993. Empty after a request to stop; each trial of a grid is reported.
std::optional<WeldedMesh> reduced_mesh(const WeldedMesh& mesh, std::size_t max_triangles,
                                       nmkProgressBreak& progress);

}  // namespace nmk_model

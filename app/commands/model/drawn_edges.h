// drawn_edges.h: the edges that a view of a model draws as lines.
#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include "commands/model/welded_mesh.h"

namespace nmk_model {

/// The nodes at the ends of an edge.
using EdgeEnds = std::pair<std::uint32_t, std::uint32_t>;

struct DrawnEdges {
    std::vector<EdgeEnds> free;   // of one triangle
    std::vector<EdgeEnds> sharp;  // of two triangles that meet at 30 degrees or more
};

DrawnEdges drawn_edges(const WeldedMesh& mesh);

}  // namespace nmk_model

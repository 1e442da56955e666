// drawn_edges: the edges that a view of a model draws as lines.

#include "commands/model/drawn_edges.h"

#include <cmath>

#include "commands/model/mesh_edges.h"

namespace nmk_model {

namespace {

// The cosine of 30 degrees, compared with that of the angle between two normals: below, the edge is
// sharp.
constexpr double cosine_of_sharp = 0.8660254037844387;

/// False for triangles without area, whose normals have no direction.
bool is_sharp(const giVector3& a, const giVector3& b) {
    const double lengths = std::sqrt(a.dot(a)) * std::sqrt(b.dot(b));
    return lengths > 0.0 && a.dot(b) < cosine_of_sharp * lengths;
}

}  // namespace

DrawnEdges drawn_edges(const WeldedMesh& mesh) {
    DrawnEdges drawn;
    MeshEdges(mesh).for_each([&](const MeshEdge& edge) {
        if (edge.is_free()) {
            drawn.free.emplace_back(edge.low, edge.high);
        } else if (edge.uses.size() == 2 && is_sharp(mesh.normal(edge.uses[0].triangle),
                                                     mesh.normal(edge.uses[1].triangle))) {
            drawn.sharp.emplace_back(edge.low, edge.high);
        }
    });
    return drawn;
}

}  // namespace nmk_model

// mesh_edges.h: walks the edges of a welded mesh, each once with the triangles that use it.
//
// The uses of all edges are sorted by their lower node with one count and one pass, then by their
// higher node among the few of that node. Triangles with two corners at one node have no edges.
#pragma once

#include <algorithm>
#include <cstdint>
#include <span>
#include <vector>

#include "commands/model/welded_mesh.h"

namespace nmk_model {

/// One triangle beside an edge.
struct EdgeUse {
    std::uint32_t high;      // the higher node of the edge
    std::uint32_t triangle;  // its index
    bool is_upwards;         // the triangle passes from the lower to the higher node
};

/// An edge and all its triangles.
struct MeshEdge {
    std::uint32_t low, high;  // its nodes
    std::span<const EdgeUse> uses;

    bool is_free() const { return uses.size() == 1; }

    /// True where as many triangles pass in one direction as in the other.
    bool is_balanced() const {
        const auto upwards = std::count_if(uses.begin(), uses.end(),
                                           [](const EdgeUse& use) { return use.is_upwards; });
        return 2 * static_cast<std::size_t>(upwards) == uses.size();
    }
};

class MeshEdges {
  public:
    explicit MeshEdges(const WeldedMesh& mesh);

    /// Calls `visit` with each MeshEdge, by lower and then by higher node.
    template <class Visit>
    void for_each(Visit visit) const {
        for (std::uint32_t low = 0; low + 1 < m_first.size(); ++low) {
            const EdgeUse* use = m_uses.data() + m_first[low];
            const EdgeUse* const end = m_uses.data() + m_first[low + 1];
            while (use != end) {
                const EdgeUse* const first = use;
                while (use != end && use->high == first->high) ++use;
                visit(MeshEdge{low, first->high, {first, use}});
            }
        }
    }

  private:
    std::vector<std::size_t> m_first;  // for each node the first of its uses, and the end
    std::vector<EdgeUse> m_uses;
};

/// True where two corners of the triangle are one node.
inline bool has_repeated_node(const MeshTriangle& triangle) {
    return triangle[0] == triangle[1] || triangle[1] == triangle[2] || triangle[2] == triangle[0];
}

}  // namespace nmk_model

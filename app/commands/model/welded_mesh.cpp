// welded_mesh: all triangles of a model with the nodes that they share.

#include "commands/model/welded_mesh.h"

#include <nmktoolbox/trifile/nmkNodeUnduplicator.h>

#include <utility>

namespace nmk_model {

namespace {

constexpr std::uint32_t no_node = UINT32_MAX;

/// Adds the triangles of one block after another.
class Welder {
  public:
    explicit Welder(WeldedMesh& mesh) : m_mesh(mesh) { m_places.clear(); }

    void add(const giTriBlock& block) {
        giNodeXYZ nodes;
        giTriArrcoFeature triangles;
        if (block.get(nodes) == 0 || block.get(triangles) == 0) return;
        m_of_block.assign(static_cast<std::size_t>(nodes->size()), no_node);
        for (const giTriangle& triangle : std::as_const(*triangles)) {
            m_mesh.triangles.push_back(
                {node(*nodes, triangle[0]), node(*nodes, triangle[1]), node(*nodes, triangle[2])});
        }
    }

  private:
    std::uint32_t node(const giBoxArrPoint3& nodes, std::int32_t index) {
        std::uint32_t& known = m_of_block[static_cast<std::size_t>(index)];
        if (known != no_node) return known;
        const giPoint3& point = nodes[index];
        const auto next = static_cast<long long>(m_mesh.nodes.size());
        const long long found = m_places.node_index(point, next);
        if (found == next) m_mesh.nodes.push_back(point);
        known = static_cast<std::uint32_t>(found);
        return known;
    }

    WeldedMesh& m_mesh;
    nmkNodeUnduplicator m_places;
    std::vector<std::uint32_t> m_of_block;  // the mesh's node for each node of the block
};

}  // namespace

WeldedMesh welded_mesh(const Model& model) {
    WeldedMesh mesh;
    mesh.triangles.reserve(static_cast<std::size_t>(model.triangle_count()));
    Welder welder(mesh);
    for (const auto& block : model.blocks) welder.add(*block);
    return mesh;
}

}  // namespace nmk_model

// mesh_edges: walks the edges of a welded mesh, each once with the triangles that use it.

#include "commands/model/mesh_edges.h"

#include <tuple>

namespace nmk_model {

namespace {

/// Calls `visit` with triangle, from and to of each edge of each triangle.
template <class Visit>
void for_each_side(const WeldedMesh& mesh, Visit visit) {
    for (std::size_t i = 0; i < mesh.triangles.size(); ++i) {
        const MeshTriangle& triangle = mesh.triangles[i];
        if (has_repeated_node(triangle)) continue;
        for (std::size_t k = 0; k < 3; ++k) {
            visit(static_cast<std::uint32_t>(i), triangle[k], triangle[(k + 1) % 3]);
        }
    }
}

}  // namespace

MeshEdges::MeshEdges(const WeldedMesh& mesh) : m_first(mesh.nodes.size() + 1) {
    for_each_side(mesh, [&](std::uint32_t, std::uint32_t from, std::uint32_t to) {
        ++m_first[std::min(from, to) + 1];
    });
    for (std::size_t i = 1; i < m_first.size(); ++i) m_first[i] += m_first[i - 1];
    m_uses.resize(m_first.back());
    std::vector<std::size_t> next(m_first);
    for_each_side(mesh, [&](std::uint32_t triangle, std::uint32_t from, std::uint32_t to) {
        m_uses[next[std::min(from, to)]++] = {std::max(from, to), triangle, from < to};
    });
    for (std::size_t i = 0; i + 1 < m_first.size(); ++i) {
        std::sort(m_uses.begin() + static_cast<std::ptrdiff_t>(m_first[i]),
                  m_uses.begin() + static_cast<std::ptrdiff_t>(m_first[i + 1]),
                  [](const EdgeUse& a, const EdgeUse& b) {
                      return std::tie(a.high, a.triangle, a.is_upwards) <
                             std::tie(b.high, b.triangle, b.is_upwards);
                  });
    }
}

}  // namespace nmk_model

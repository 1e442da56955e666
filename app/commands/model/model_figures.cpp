// model_figures: the figures of a triangle model: its size, and whether it is a closed solid.

#include "commands/model/model_figures.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <vector>

#include "commands/model/mesh_edges.h"

namespace nmk_model {

namespace {

/// Sets of triangles that are joined one pair at a time.
/// Method: union by path halving; Tarjan and van Leeuwen, Worst-case analysis of set union
/// algorithms, 1984.
class JoinedTriangles {
  public:
    explicit JoinedTriangles(std::size_t count) : m_parent(count) {
        std::iota(m_parent.begin(), m_parent.end(), 0U);
    }

    /// True if they were in different sets.
    bool join(std::uint32_t a, std::uint32_t b) {
        a = root(a);
        b = root(b);
        m_parent[std::max(a, b)] = std::min(a, b);
        return a != b;
    }

  private:
    std::uint32_t root(std::uint32_t triangle) {
        while (m_parent[triangle] != triangle) {
            m_parent[triangle] = m_parent[m_parent[triangle]];
            triangle = m_parent[triangle];
        }
        return triangle;
    }

    std::vector<std::uint32_t> m_parent;
};

std::int64_t stored_nodes(const Model& model) {
    if (has_separate_corners(model.format)) return 3 * model.triangle_count();
    std::int64_t count = 0;
    for (const auto& block : model.blocks) {
        giNodeXYZ nodes;
        if (block->get(nodes) != 0) count += nodes->size();
    }
    return count;
}

/// Counts edges and shells; returns whether the mesh is closed.
bool count_edges(ModelFigures& figures, const WeldedMesh& mesh) {
    JoinedTriangles joined(mesh.triangles.size());
    for (const MeshTriangle& triangle : mesh.triangles) {
        figures.shells += has_repeated_node(triangle) ? 0 : 1;
    }
    bool is_closed = figures.shells > 0;
    MeshEdges(mesh).for_each([&](const MeshEdge& edge) {
        is_closed = is_closed && edge.is_balanced();
        figures.free_edges += edge.is_free() ? 1 : 0;
        figures.crowded_edges += edge.uses.size() > 2 ? 1 : 0;
        figures.opposed_edges += edge.uses.size() == 2 && !edge.is_balanced() ? 1 : 0;
        for (const EdgeUse& use : edge.uses) {
            figures.shells -= joined.join(edge.uses.front().triangle, use.triangle) ? 1 : 0;
        }
    });
    return is_closed;
}

giPoint3 middle(const giBox3& box) {
    return {(box.min().x + box.max().x) / 2, (box.min().y + box.max().y) / 2,
            (box.min().z + box.max().z) / 2};
}

/// The volume that a closed mesh encloses. The point of the sum is near, so that digits are kept
/// where the model is far from the origin.
double enclosed_volume(const WeldedMesh& mesh, const giPoint3& near) {
    double sum = 0.0;
    for (std::size_t i = 0; i < mesh.triangles.size(); ++i) {
        sum += (mesh.corner(i, 0) - near).dot(mesh.normal(i));
    }
    return sum / 6.0;
}

}  // namespace

ModelFigures model_figures(const Model& model, const WeldedMesh& mesh) {
    ModelFigures figures;
    figures.name = model.name;
    figures.format = model.format;
    figures.file_units = model.file_units;
    figures.blocks = static_cast<std::int64_t>(model.blocks.size());
    figures.triangles = static_cast<std::int64_t>(mesh.triangles.size());
    figures.invalid_triangles = model.invalid_triangles;
    figures.stored_nodes = stored_nodes(model);
    figures.welded_nodes = static_cast<std::int64_t>(mesh.nodes.size());
    for (const giPoint3& node : mesh.nodes) figures.box.add(node);
    for (std::size_t i = 0; i < mesh.triangles.size(); ++i) {
        const giVector3 normal = mesh.normal(i);
        figures.area += std::sqrt(normal.dot(normal)) / 2.0;
        figures.degenerate_triangles += normal == giVector3() ? 1 : 0;
    }
    if (count_edges(figures, mesh)) figures.volume = enclosed_volume(mesh, middle(figures.box));
    return figures;
}

}  // namespace nmk_model

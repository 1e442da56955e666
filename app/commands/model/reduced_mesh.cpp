// reduced_mesh: a mesh with few enough triangles for a page.

#include "commands/model/reduced_mesh.h"

#include <geometry/giBox3.h>
#include <nmkprogressbreak/nmkProgressBreak.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <unordered_map>
#include <utility>
#include <vector>

#include "commands/model/mesh_edges.h"

namespace nmk_model {

namespace {

// The finest grid: a cell's number has 20 bits along each axis.
constexpr double max_cells = 1 << 20;

// The search ends where the next finer grid is at most so many times as fine.
constexpr double finest_step = 1.06;

// For the progress bar: each trial halves the logarithm of the range, and 8 lead from max_cells to
// below finest_step.
constexpr double expected_trials = 8.0;

/// Joins the nodes in the cells of a grid with so many cells along the longest side.
class Clusters {
  public:
    Clusters(const WeldedMesh& mesh, double cells) : m_mesh(mesh) {
        for (const giPoint3& node : mesh.nodes) m_box.add(node);
        const giVector3 size = m_box.max() - m_box.min();
        m_cell = std::max({size.x, size.y, size.z}) / cells;
        std::unordered_map<std::uint64_t, std::uint32_t> known;
        for (const giPoint3& node : mesh.nodes) {
            const auto next = static_cast<std::uint32_t>(m_sums.size());
            const std::uint32_t cluster = known.emplace(key_of(node), next).first->second;
            if (cluster == next) m_sums.emplace_back();
            m_sums[cluster].add(node);
            m_of_node.push_back(cluster);
        }
    }

    WeldedMesh mesh() const {
        WeldedMesh reduced;
        for (const Sum& sum : m_sums) reduced.nodes.push_back(sum.mean());
        for (const MeshTriangle& triangle : m_mesh.triangles) {
            const MeshTriangle moved = {m_of_node[triangle[0]], m_of_node[triangle[1]],
                                        m_of_node[triangle[2]]};
            if (!has_repeated_node(moved)) reduced.triangles.push_back(moved);
        }
        remove_repeated(reduced.triangles);
        return reduced;
    }

  private:
    /// Removes triangles with the same nodes in the same sense.
    static void remove_repeated(std::vector<MeshTriangle>& triangles) {
        for (MeshTriangle& triangle : triangles) {
            std::rotate(triangle.begin(), std::min_element(triangle.begin(), triangle.end()),
                        triangle.end());
        }
        std::sort(triangles.begin(), triangles.end());
        triangles.erase(std::unique(triangles.begin(), triangles.end()), triangles.end());
    }

    struct Sum {
        giVector3 total;
        double count = 0.0;

        void add(const giPoint3& node) {
            total = total + giVector3(node.x, node.y, node.z);
            count += 1.0;
        }
        giPoint3 mean() const { return {total.x / count, total.y / count, total.z / count}; }
    };

    std::uint64_t key_of(const giPoint3& node) const {
        const auto along = [&](double from, double to) {
            return static_cast<std::uint64_t>(m_cell > 0.0 ? (to - from) / m_cell : 0.0);
        };
        const giPoint3& low = m_box.min();
        return (along(low.x, node.x) << 42U) | (along(low.y, node.y) << 21U) | along(low.z, node.z);
    }

    const WeldedMesh& m_mesh;
    giBox3 m_box;
    double m_cell = 0.0;
    std::vector<Sum> m_sums;
    std::vector<std::uint32_t> m_of_node;
};

}  // namespace

std::optional<WeldedMesh> reduced_mesh(const WeldedMesh& mesh, std::size_t max_triangles,
                                       nmkProgressBreak& progress) {
    if (mesh.triangles.size() <= max_triangles) return mesh;
    WeldedMesh best;
    double low = 1.0;
    double high = max_cells;
    progress.send_progress_bar_to_0("Reducing");
    progress.set_range(expected_trials);
    double trials = 0.0;
    while (high / low > finest_step) {
        if (progress.jump_to(trials++) != 0) return std::nullopt;
        const double cells = std::floor(std::sqrt(low * high));
        if (cells == low) break;
        WeldedMesh reduced = Clusters(mesh, cells).mesh();
        const bool fits = reduced.triangles.size() <= max_triangles;
        if (fits) best = std::move(reduced);
        (fits ? low : high) = cells;
    }
    progress.send_progress_bar_to_100();
    return best;
}

}  // namespace nmk_model

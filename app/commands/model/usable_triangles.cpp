// usable_triangles: removes from a block what has no place: triangles and nodes.

#include "commands/model/usable_triangles.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace nmk_model {

namespace {

constexpr std::int32_t removed_node = -1;

bool is_usable(const giPoint3& point, double limit) {
    return std::abs(point.x) <= limit && std::abs(point.y) <= limit && std::abs(point.z) <= limit;
}

/// The new index of each node, removed_node for one that goes; empty if all stay.
std::vector<std::int32_t> kept_indices(const giBoxArrPoint3& nodes, double limit) {
    std::vector<std::int32_t> indices;
    std::int32_t kept = 0;
    for (const giPoint3& node : nodes) {
        indices.push_back(is_usable(node, limit) ? kept++ : removed_node);
    }
    if (kept == nodes.size()) indices.clear();
    return indices;
}

/// Moves the nodes, and the normals where there are as many, to their new indices.
void keep_nodes(giTriBlock& block, const std::vector<std::int32_t>& indices) {
    giNodeXYZ nodes;
    giNormArrcoFeature normals;
    block.get(nodes);
    const bool has_normals = block.get(normals) != 0 && normals->size() == nodes->size();
    giBoxArrPoint3 kept;
    for (std::size_t i = 0; i < indices.size(); ++i) {
        const int from = static_cast<int>(i);
        if (indices[i] == removed_node) continue;
        kept.add(std::as_const(*nodes)[from]);
        if (has_normals) (*normals)[indices[i]] = giVector3(std::as_const(*normals)[from]);
    }
    *nodes = kept;
    if (has_normals) normals->clear(kept.size());
}

bool is_kept(const giTriangle& triangle) {
    return std::min({triangle[0], triangle[1], triangle[2]}) != removed_node;
}

}  // namespace

std::int64_t remove_unusable(giTriBlock& block, double limit) {
    giNodeXYZ nodes;
    giTriArrcoFeature triangles;
    if (block.get(nodes) == 0 || block.get(triangles) == 0) return 0;
    const std::vector<std::int32_t> indices = kept_indices(*nodes, limit);
    if (indices.empty()) return 0;
    const auto index = [&](std::int32_t node) { return indices[static_cast<std::size_t>(node)]; };
    int kept = 0;
    for (int i = 0; i < triangles->size(); ++i) {
        const giTriangle triangle = std::as_const(*triangles)[i];
        const giTriangle moved(index(triangle[0]), index(triangle[1]), index(triangle[2]));
        if (is_kept(moved)) (*triangles)[kept++] = moved;
    }
    const std::int64_t removed = triangles->size() - kept;
    triangles->clear(kept);
    keep_nodes(block, indices);
    return removed;
}

}  // namespace nmk_model

// plain_adjacency.h: the neighbours of triangles, found by comparing every edge with every other.
#pragma once

#include <geometry/giTriBlock.h>

#include <vector>

namespace plain {

/// The number of the first node at most `tolerance` away that belongs to none before; by index the
/// node itself.
inline std::vector<int> places(const std::vector<giPoint3>& nodes, bool by_index,
                               double tolerance) {
    std::vector<int> ids;
    for (int i = 0; i < static_cast<int>(nodes.size()); ++i) {
        int id = i;
        for (int j = 0; j < i && id == i && !by_index; ++j) {
            const auto at = static_cast<std::size_t>(j);
            const giPoint3& point = nodes[static_cast<std::size_t>(i)];
            const bool is_same = nodes[at] == point;
            const bool is_near =
                ids[at] == j && tolerance > 0.0 && nodes[at].coincident(point, tolerance) != 0;
            if (is_same || is_near) id = ids[at];
        }
        ids.push_back(id);
    }
    return ids;
}

/// Links of a block in which no edge is shared by more than two triangles.
inline std::vector<giLink> links(const std::vector<giTriangle>& triangles,
                                 const std::vector<int>& ids) {
    const auto end_of = [&](std::size_t triangle, int corner) {
        return ids[static_cast<std::size_t>(triangles[triangle][corner % 3])];
    };
    std::vector<giLink> all(triangles.size());
    for (std::size_t i = 0; i < triangles.size(); ++i) {
        for (std::size_t j = 0; j < triangles.size(); ++j) {
            for (int edge = 0; edge < 9; ++edge) {
                const int k = edge / 3;
                const int l = edge % 3;
                if (end_of(i, k) == end_of(j, l + 1) && end_of(i, k + 1) == end_of(j, l)) {
                    all[i][k] = static_cast<int>(j);
                }
            }
        }
    }
    return all;
}

}  // namespace plain

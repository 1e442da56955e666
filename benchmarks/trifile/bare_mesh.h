// bare_mesh.h: nodes and triangles in flat arrays, the peer of a block with shared nodes.
#pragma once

#include <geometry/giTriBlock.h>

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace bare {

/// Shared nodes: a plain hash over the 24 bytes of a point, in open addressing.
class Mesh {
  public:
    using Node = std::array<double, 3>;
    using Triangle = std::array<std::int32_t, 3>;

    void add_triangle(const double* corners) {
        triangles.push_back({index_of({corners[0], corners[1], corners[2]}),
                             index_of({corners[3], corners[4], corners[5]}),
                             index_of({corners[6], corners[7], corners[8]})});
    }

    std::int32_t index_of(const Node& node) {
        std::size_t at = slot_of(node);
        while (m_slots[at] >= 0 && nodes[static_cast<std::size_t>(m_slots[at])] != node) {
            at = (at + 1) & (m_slots.size() - 1);
        }
        if (m_slots[at] >= 0) return m_slots[at];
        const auto index = static_cast<std::int32_t>(nodes.size());
        m_slots[at] = index;
        nodes.push_back(node);
        if (nodes.size() * 2 > m_slots.size()) grow();
        return index;
    }

    std::vector<Node> nodes;
    std::vector<Triangle> triangles;

  private:
    std::size_t slot_of(const Node& node) const {
        std::uint64_t hash = 0;
        for (const double coordinate : node) {
            hash = (hash ^ std::bit_cast<std::uint64_t>(coordinate)) * 0x9E3779B97F4A7C15U;
            hash ^= hash >> 32;
        }
        return hash & (m_slots.size() - 1);
    }

    void grow() {
        m_slots.assign(m_slots.size() * 2, -1);
        for (std::size_t i = 0; i < nodes.size(); ++i) {
            std::size_t at = slot_of(nodes[i]);
            while (m_slots[at] >= 0) at = (at + 1) & (m_slots.size() - 1);
            m_slots[at] = static_cast<std::int32_t>(i);
        }
    }

    std::vector<std::int32_t> m_slots = std::vector<std::int32_t>(1024, -1);
};

/// What the library has read.
struct Block {
    std::unique_ptr<giTriBlock> block;
};

/// Whether nodes and triangles are the same, in the same order.
inline bool operator==(const Block& ours, const Mesh& mesh) {
    giNodeXYZ nodes;
    giTriArrcoFeature triangles;
    if (!ours.block || ours.block->get(nodes) == 0 || ours.block->get(triangles) == 0) return false;
    const giTriArr& all = *triangles;
    if (nodes->size() != static_cast<int>(mesh.nodes.size()) ||
        all.size() != static_cast<int>(mesh.triangles.size())) {
        return false;
    }
    for (int i = 0; i < nodes->size(); ++i) {
        const Mesh::Node& node = mesh.nodes[static_cast<std::size_t>(i)];
        if (!((*nodes)[i] == giPoint3(node[0], node[1], node[2]))) return false;
    }
    for (int i = 0; i < all.size(); ++i) {
        const Mesh::Triangle& triangle = mesh.triangles[static_cast<std::size_t>(i)];
        if (!(all[i] == giTriangle(triangle[0], triangle[1], triangle[2]))) return false;
    }
    return true;
}

}  // namespace bare

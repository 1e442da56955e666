// model_samples.h: triangle models for tests, as corners, blocks and bytes of files.
#pragma once

#include <geometry/giTriBlock.h>
#include <mfc/CMemFile.h>
#include <nmknmt/nmkNMTFileMFC.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace model_samples {

/// x y z of three corners.
using Corners = std::array<double, 9>;

/// A tetrahedron, its triangles counter-clockwise seen from outside.
inline std::vector<Corners> tetrahedron() {
    return {{0, 0, 0, 0, 1, 0, 1, 0, 0},
            {0, 0, 0, 1, 0, 0, 0, 0, 1},
            {0, 0, 0, 0, 0, 1, 0, 1, 0},
            {1, 0, 0, 0, 1, 0, 0, 0, 1}};
}

/// A flat grid of `side` * `side` squares, two triangles each.
inline std::vector<Corners> grid(int side) {
    std::vector<Corners> triangles;
    for (int i = 0; i < side; ++i) {
        for (int j = 0; j < side; ++j) {
            const double x = i;
            const double y = j;
            triangles.push_back({x, y, 0, x + 1, y, 0, x + 1, y + 1, 0});
            triangles.push_back({x, y, 0, x + 1, y + 1, 0, x, y + 1, 0});
        }
    }
    return triangles;
}

/// Appends the bytes of a number.
template <class Number>
void put(std::string& bytes, Number value) {
    char raw[sizeof value];
    std::memcpy(raw, &value, sizeof value);
    bytes.append(raw, sizeof value);
}

/// The facets of a binary STL or, without normal and attribute, the records of a TTR.
inline void put_facets(std::string& bytes, const std::vector<Corners>& triangles, bool is_stl) {
    for (const Corners& corners : triangles) {
        for (int i = 0; is_stl && i < 3; ++i) put(bytes, 0.0F);
        for (const double value : corners) put(bytes, static_cast<float>(value));
        if (is_stl) put(bytes, std::uint16_t{0});
    }
}

/// A binary STL; `count` is what its header says.
inline std::string binary_stl(const std::vector<Corners>& triangles, std::uint32_t count,
                              const std::string& header = "made by a test") {
    std::string bytes = header;
    bytes.resize(80);
    put(bytes, count);
    put_facets(bytes, triangles, true);
    return bytes;
}

inline std::string binary_stl(const std::vector<Corners>& triangles) {
    return binary_stl(triangles, static_cast<std::uint32_t>(triangles.size()));
}

/// A text STL with one solid.
inline std::string text_stl(const std::vector<Corners>& triangles,
                            const std::string& name = "sample") {
    std::string text = "solid " + name + "\n";
    for (const Corners& corners : triangles) {
        text += "  facet normal 0 0 0\n    outer loop\n";
        for (std::size_t i = 0; i < 9; i += 3) {
            text += "      vertex " + std::to_string(corners[i]) + " " +
                    std::to_string(corners[i + 1]) + " " + std::to_string(corners[i + 2]) + "\n";
        }
        text += "    endloop\n  endfacet\n";
    }
    return text + "endsolid " + name + "\n";
}

/// A TTR file; `count` is what its header says.
inline std::string ttr(const std::vector<Corners>& triangles, std::uint32_t count) {
    std::string bytes(84, '\0');
    put(bytes, count);
    bytes.resize(120);
    put_facets(bytes, triangles, false);
    return bytes;
}

inline std::string ttr(const std::vector<Corners>& triangles) {
    return ttr(triangles, static_cast<std::uint32_t>(triangles.size()));
}

/// A file object over a copy of the bytes, in a buffer of exactly their size.
class MemoryFile : public nmkNMTFileMFC {
  public:
    explicit MemoryFile(std::string_view bytes) : MemoryFile(copy_of(bytes), bytes.size()) {}

  private:
    using Buffer = std::unique_ptr<unsigned char[]>;

    static Buffer copy_of(std::string_view bytes) {
        Buffer buffer(new unsigned char[bytes.size()]);
        if (!bytes.empty()) std::memcpy(buffer.get(), bytes.data(), bytes.size());
        return buffer;
    }

    MemoryFile(Buffer buffer, std::size_t size)
        : nmkNMTFileMFC(CFilecoPrf(new CMemFile(std::span(buffer.get(), size)))),
          m_buffer(std::move(buffer)) {}

    Buffer m_buffer;
};

/// The nodes of a block; empty without the feature.
inline std::vector<giPoint3> nodes_of(const giTriBlock& block) {
    giNodeXYZ nodes;
    if (block.get(nodes) == 0) return {};
    return {nodes->begin(), nodes->end()};
}

inline std::vector<giTriangle> triangles_of(const giTriBlock& block) {
    giTriArrcoFeature triangles;
    if (block.get(triangles) == 0) return {};
    return {triangles->begin(), triangles->end()};
}

inline std::vector<giVector3> normals_of(const giTriBlock& block) {
    giNormArrcoFeature normals;
    if (block.get(normals) == 0) return {};
    return {normals->begin(), normals->end()};
}

inline bool has_normals(const giTriBlock& block) {
    giNormArrcoFeature normals;
    return block.get(normals) != 0;
}

/// The corners of the triangles of a block.
inline std::vector<Corners> corners_of(const giTriBlock& block) {
    const std::vector<giPoint3> nodes = nodes_of(block);
    std::vector<Corners> all;
    for (const giTriangle& triangle : triangles_of(block)) {
        Corners corners{};
        for (int k = 0; k < 3; ++k) {
            const giPoint3& node = nodes.at(static_cast<std::size_t>(triangle[k]));
            const std::size_t at = 3 * static_cast<std::size_t>(k);
            corners[at] = node.x;
            corners[at + 1] = node.y;
            corners[at + 2] = node.z;
        }
        all.push_back(corners);
    }
    return all;
}

/// Appends a node, or a triangle.
inline void add_node(giTriBlock& block, const giPoint3& node) {
    giNodeXYZ nodes;
    block.add(nodes);
    nodes->add(node);
}

inline void add_triangle(giTriBlock& block, const giTriangle& triangle) {
    giTriArrcoFeature triangles;
    block.add(triangles);
    triangles->add(triangle);
}

/// A block whose triangles have nodes of their own.
inline void fill_unshared(giTriBlock& block, const std::vector<Corners>& triangles) {
    giNodeXYZ nodes;
    block.add(nodes);
    for (const Corners& corners : triangles) {
        const std::int32_t first = nodes->size();
        for (std::size_t i = 0; i < 9; i += 3) {
            nodes->add({corners[i], corners[i + 1], corners[i + 2]});
        }
        add_triangle(block, {first, first + 1, first + 2});
    }
}

/// The numbers that counts of forged files have.
inline constexpr std::uint32_t forged_counts[] = {0, 1, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF};

}  // namespace model_samples

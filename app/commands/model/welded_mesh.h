// welded_mesh.h: all triangles of a model with the nodes that they share.
#pragma once

#include <geometry/giPoint3.h>
#include <geometry/giVector3.h>

#include <array>
#include <cstdint>
#include <vector>

#include "commands/model/read_model.h"

namespace nmk_model {

/// The indices of the three nodes, counter-clockwise seen from outside.
using MeshTriangle = std::array<std::uint32_t, 3>;

/// Triangles of all blocks in their order. Corners at exactly the same place are one node, across
/// blocks too; 0 and -0 are equal. There is no tolerance.
struct WeldedMesh {
    std::vector<giPoint3> nodes;  // in the order in which triangles first use them
    std::vector<MeshTriangle> triangles;

    const giPoint3& corner(std::size_t triangle, std::size_t corner) const {
        return nodes[triangles[triangle][corner]];
    }

    /// Normal to the triangle, twice as long as the triangle is large; zero if it is degenerate.
    giVector3 normal(std::size_t triangle) const {
        const giPoint3& first = corner(triangle, 0);
        return (corner(triangle, 1) - first).cross(corner(triangle, 2) - first);
    }
};

WeldedMesh welded_mesh(const Model& model);

}  // namespace nmk_model

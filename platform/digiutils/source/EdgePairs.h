// EdgePairs.h: which edges of triangles belong together where many meet.
#pragma once

#include <geometry/giPoint3.h>

#include <cstdint>
#include <vector>

namespace nmk_digiutils {

/// One edge of one triangle.
struct EdgeOfTriangle {
    std::int32_t other;      // the node with the higher number
    std::int32_t triangle;   // its index
    std::int8_t edge;        // 0 to 2
    std::int8_t is_forward;  // 1 where it goes from the lower to the higher number
};

/// A triangle about an edge that more than two share.
struct Leaf {
    double angle;  // of the half-plane from the edge to the third node, radians, 0 to 2 pi
    int index;     // in the list of the edges
    bool is_forward;
};

/// Two edges that belong together, by their indices in the list.
struct EdgePair {
    int first;
    int second;
};

/// Pairs leaves: first those that continue each other within `angle` radians, a forward one and the
/// backward one that is nearest, in the order of the list; then each backward one with the next
/// forward one in the sense of the angle, as around the solid between them.
std::vector<EdgePair> pair_leaves(std::vector<Leaf> leaves, double angle);

/// The angle of the half-plane from the edge `low` to `high` through `third`; 0 where that is not
/// defined.
double angle_about_edge(const giPoint3& low, const giPoint3& high, const giPoint3& third);

}  // namespace nmk_digiutils

// plane_nodes.h: when nodes of the plane are equal, and for which nodes this is known without
// asking them.
#pragma once

#include <nmktoolbox/search/nmk2dSearchNode.h>

#include <typeinfo>

namespace nmk_search {

// Two nodes whose distance is at most this are equal.
constexpr double node_tolerance = 1e-5;

/// The equality of two nodes whose class is nmk2dSearchNode itself.
inline bool points_coincide(const giPoint2& point, const giPoint2& other) {
    return point.coincident(other, node_tolerance) != 0;
}

/// Whether `node` is a node of the plane and nothing derived from it, whose equality a caller may
/// have replaced.
inline bool is_plain_plane_node(const nmkSearchNode& node) {
    return typeid(node) == typeid(nmk2dSearchNode);
}

/// `node` as a node of the plane; null for any other.
inline const nmk2dSearchNode* as_plane_node(const nmkSearchNode& node) {
    if (is_plain_plane_node(node)) return static_cast<const nmk2dSearchNode*>(&node);
    return dynamic_cast<const nmk2dSearchNode*>(&node);
}

}  // namespace nmk_search

// plane_nodes.h: when nodes of the plane are one place, and which nodes are known to be compared
// so.
#pragma once

#include <nmktoolbox/search/nmk2dSearchNode.h>

#include <typeinfo>

namespace nmk_search {

// Compared with the distance of two nodes; at most this far apart they are one place.
constexpr double node_tolerance = 1e-5;

/// What nmk2dSearchNode answers for two nodes of its very kind.
inline bool points_coincide(const giPoint2& place, const giPoint2& other) {
    return place.coincident(other, node_tolerance) != 0;
}

/// Whether `node` is a node of the plane and nothing derived from it, whose equality a caller may
/// have replaced.
inline bool is_plain_plane_node(const nmkSearchNode& node) {
    return typeid(node) == typeid(nmk2dSearchNode);
}

/// `node` as a node of the plane, or nothing.
inline const nmk2dSearchNode* as_plane_node(const nmkSearchNode& node) {
    if (is_plain_plane_node(node)) return static_cast<const nmk2dSearchNode*>(&node);
    return dynamic_cast<const nmk2dSearchNode*>(&node);
}

}  // namespace nmk_search

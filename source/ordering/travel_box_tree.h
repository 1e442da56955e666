// travel_box_tree.h: boxes of the plane as a tree, so that a line or a place is compared with few
// of many.
#pragma once

#include <cstddef>
#include <vector>

#include "travel_polygon.h"

namespace nmk_ordering {

class TravelBoxTree {
  public:
    TravelBoxTree() = default;
    explicit TravelBoxTree(const std::vector<PlaneBox>& boxes);

    /// Calls visit(number) for the boxes that the line from a to b may meet, in no particular
    /// order, until one returns true. Those left out are apart from the line for certain: nothing
    /// is rounded.
    template <class Visit>
    void visit(const PlanePoint& a, const PlanePoint& b, const Visit& visit) const {
        const PlaneBox line = box_of(a, b);
        const auto meets = [&](const PlaneBox& box) {
            return !box.is_apart(line) && !is_beside(box, a, b);
        };
        visit_where(meets, visit);
    }

    /// The same for the boxes for which `meets` is true; it has to be true of a box around one for
    /// which it is. Boxes beside these may be visited, too.
    template <class Meets, class Visit>
    void visit_where(const Meets& meets, const Visit& visit) const {
        if (!m_nodes.empty()) visit_below(0, meets, visit);
    }

  private:
    struct Node {
        PlaneBox box;
        std::size_t first;      // of the numbers below
        std::size_t count;      // of them
        std::size_t right = 0;  // the second child, the first is the next node; 0 for a leaf
    };

    std::size_t add_node(const std::vector<PlaneBox>& boxes, std::size_t first, std::size_t count);

    template <class Meets, class Visit>
    bool visit_below(std::size_t index, const Meets& meets, const Visit& visit) const {
        const Node& node = m_nodes[index];
        if (!meets(node.box)) return false;
        if (node.right != 0) {
            return visit_below(index + 1, meets, visit) || visit_below(node.right, meets, visit);
        }
        for (std::size_t i = node.first; i < node.first + node.count; ++i) {
            if (visit(m_numbers[i])) return true;
        }
        return false;
    }

    std::vector<Node> m_nodes;  // each before its children
    std::vector<std::size_t> m_numbers;
};

}  // namespace nmk_ordering

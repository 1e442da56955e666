// travel_box_tree.h: boxes of the plane as a tree, so that a line is compared with few of many.
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
        if (!m_nodes.empty()) visit_below(0, a, b, box_of(a, b), visit);
    }

  private:
    struct Node {
        PlaneBox box;
        std::size_t first;      // of the numbers below
        std::size_t count;      // of them
        std::size_t right = 0;  // the second child, the first is the next node; 0 for a leaf
    };

    std::size_t add_node(const std::vector<PlaneBox>& boxes, std::size_t first, std::size_t count);

    template <class Visit>
    bool visit_below(std::size_t index, const PlanePoint& a, const PlanePoint& b,
                     const PlaneBox& line, const Visit& visit) const {
        const Node& node = m_nodes[index];
        if (node.box.is_apart(line) || is_beside(node.box, a, b)) return false;
        if (node.right != 0) {
            return visit_below(index + 1, a, b, line, visit) ||
                   visit_below(node.right, a, b, line, visit);
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

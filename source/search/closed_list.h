// closed_list.h: the nodes that a search has closed, in the order of closing.
//
// The answer of contains, and every comparison that a caller's own nodes see, are those of a scan
// from the front that asks each closed node whether it equals the new one and stops at the first
// that does. Nodes of the plane are found by their place instead, since nobody can see them being
// asked; of any other kind nothing is known but its operator==, and those are asked one by one.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "search/point_index.h"

class nmkSearchNode;

namespace nmk_search {

class ClosedList {
  public:
    bool is_empty() const { return m_nodes.empty(); }
    void add(std::shared_ptr<const nmkSearchNode> node);
    bool contains(const nmkSearchNode& node) const;

  private:
    bool is_among_all(const nmkSearchNode& node) const;

    std::vector<std::shared_ptr<const nmkSearchNode>> m_nodes;
    PointIndex m_plane_nodes;
    std::vector<std::uint32_t>
        m_other_nodes;  // positions of the nodes that the index cannot stand for
};

}  // namespace nmk_search

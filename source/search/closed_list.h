// closed_list.h: the nodes that a search has closed, in the order of closing.
//
// contains returns, and compares of a caller's own nodes, what a scan from the front does that asks
// each closed node whether it equals the new one and stops at the first that does. Nodes of the
// plane are looked up by their points instead, since no caller can observe their comparison; nodes
// of any other class are compared with operator== one by one.
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
    std::vector<std::uint32_t> m_other_nodes;  // positions of the nodes of other classes
};

}  // namespace nmk_search

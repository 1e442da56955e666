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

#include "search/place_index.h"

class nmkSearchNode;

namespace nmk_search {

class Closed_list {
  public:
    /// A node to be looked up.
    struct Sought {
        const nmkSearchNode* node = nullptr;
        bool is_of_the_plane = false;
        Place_index::Sought place;  // of a node of the plane
    };

    void add(std::shared_ptr<const nmkSearchNode> node);
    bool contains(const nmkSearchNode& node) const { return contains(seek(node)); }

    /// Look-ups that are prepared together are faster. Nodes may be added in between.
    Sought seek(const nmkSearchNode& node) const;
    bool contains(const Sought& sought) const;

  private:
    bool is_among_all(const Sought& sought) const;

    std::vector<std::shared_ptr<const nmkSearchNode>> m_nodes;
    Place_index m_of_the_plane;
    std::vector<std::uint32_t> m_others;  // positions of the nodes that the index cannot stand for
};

}  // namespace nmk_search

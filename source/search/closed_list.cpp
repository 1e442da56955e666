#include "search/closed_list.h"

#include <utility>

#include "search/plane_nodes.h"

namespace nmk_search {

void ClosedList::add(std::shared_ptr<const nmkSearchNode> node) {
    const auto position = static_cast<std::uint32_t>(m_nodes.size());
    m_nodes.push_back(std::move(node));
    const nmkSearchNode& added = *m_nodes.back();
    if (is_plain_plane_node(added)) {
        m_plane_nodes.add(static_cast<const nmk2dSearchNode&>(added).point(), position);
    } else {
        m_other_nodes.push_back(position);
    }
}

bool ClosedList::contains(const nmkSearchNode& node) const {
    if (!m_other_nodes.empty()) return is_among_all(node);
    const nmk2dSearchNode* plane_node = as_plane_node(node);
    return plane_node != nullptr && m_plane_nodes.contains(plane_node->point());
}

bool ClosedList::is_among_all(const nmkSearchNode& node) const {
    const nmk2dSearchNode* plane_node = as_plane_node(node);
    const std::uint32_t first_equal =
        plane_node != nullptr ? m_plane_nodes.first_at(plane_node->point()) : PointIndex::none;
    for (const std::uint32_t position : m_other_nodes) {
        if (position > first_equal) break;
        if (*m_nodes[position] == node) return true;
    }
    return first_equal != PointIndex::none;
}

}  // namespace nmk_search

#include "search/closed_list.h"

#include <utility>

#include "search/plane_places.h"

namespace nmk_search {

void Closed_list::add(std::shared_ptr<const nmkSearchNode> node) {
    const auto position = static_cast<std::uint32_t>(m_nodes.size());
    m_nodes.push_back(std::move(node));
    const nmkSearchNode& added = *m_nodes.back();
    if (is_plain_place(added)) {
        m_of_the_plane.add(static_cast<const nmk2dSearchNode&>(added).point(), position);
    } else {
        m_others.push_back(position);
    }
}

bool Closed_list::contains(const nmkSearchNode& node) const {
    if (!m_others.empty()) return is_among_all(node);
    const nmk2dSearchNode* place = as_place(node);
    return place != nullptr && m_of_the_plane.contains(place->point());
}

bool Closed_list::is_among_all(const nmkSearchNode& node) const {
    const nmk2dSearchNode* place = as_place(node);
    const std::uint32_t of_the_plane =
        place != nullptr ? m_of_the_plane.first_at(place->point()) : Place_index::none;
    for (const std::uint32_t position : m_others) {
        if (position > of_the_plane) break;
        if (*m_nodes[position] == node) return true;
    }
    return of_the_plane != Place_index::none;
}

}  // namespace nmk_search

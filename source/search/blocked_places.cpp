#include "search/blocked_places.h"

#include "search/plane_places.h"

namespace nmk_search {

Blocked_places::Blocked_places(const std::vector<std::shared_ptr<const nmkSearchNode>>& nodes) {
    for (const auto& node : nodes) {
        const nmk2dSearchNode* place = as_place(*node);
        if (place == nullptr) continue;
        m_index.add(place->point(), static_cast<std::uint32_t>(m_points.size()));
        m_points.push_back(place->point());
    }
}

bool Blocked_places::contain(const giPoint2& point) const {
    const auto is_match = [&](std::uint32_t i) { return are_one_place(point, m_points[i]); };
    return m_index.first_match(point, is_match) != Place_index::none;
}

}  // namespace nmk_search

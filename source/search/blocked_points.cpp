#include "search/blocked_points.h"

#include "search/plane_nodes.h"

namespace nmk_search {

BlockedPoints::BlockedPoints(const std::vector<std::shared_ptr<const nmkSearchNode>>& nodes) {
    for (const auto& node : nodes) {
        // Only contains is asked of the index, so all points may have the same position.
        const nmk2dSearchNode* plane_node = as_plane_node(*node);
        if (plane_node != nullptr) m_index.add(plane_node->point(), 0);
    }
}

bool BlockedPoints::contains(const giPoint2& point) const { return m_index.contains(point); }

}  // namespace nmk_search

#include "search/blocked_points.h"

#include "search/plane_nodes.h"

namespace nmk_search {

BlockedPoints::BlockedPoints(const std::vector<std::shared_ptr<const nmkSearchNode>>& nodes) {
    for (const auto& node : nodes) {
        // Which of them a place is equal to does not matter.
        if (const nmk2dSearchNode* place = as_plane_node(*node)) m_index.add(place->point(), 0);
    }
}

bool BlockedPoints::contain(const giPoint2& point) const { return m_index.contains(point); }

}  // namespace nmk_search

#include "search/blocked_places.h"

#include "search/plane_places.h"

namespace nmk_search {

Blocked_places::Blocked_places(const std::vector<std::shared_ptr<const nmkSearchNode>>& nodes) {
    for (const auto& node : nodes) {
        // Which of them a place is equal to does not matter.
        if (const nmk2dSearchNode* place = as_place(*node)) m_index.add(place->point(), 0);
    }
}

bool Blocked_places::contain(const giPoint2& point) const { return m_index.contains(point); }

}  // namespace nmk_search

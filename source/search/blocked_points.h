// blocked_points.h: points that a route may not enter, looked up in an index.
//
// A node of the plane is equal to those of the given nodes that are of the plane too, at most the
// tolerance away, and to no other; so only the points of those are kept.
#pragma once

#include <memory>
#include <vector>

#include "search/point_index.h"

class nmkSearchNode;

namespace nmk_search {

class BlockedPoints {
  public:
    explicit BlockedPoints(const std::vector<std::shared_ptr<const nmkSearchNode>>& nodes);

    /// Whether one of the blocked points is within the tolerance of `point`.
    bool contains(const giPoint2& point) const;

  private:
    PointIndex m_index;
};

}  // namespace nmk_search

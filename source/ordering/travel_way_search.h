// travel_way_search.h: the space in which a way around obstacles is searched.
#pragma once

#include <vector>

#include "travel_ways.h"

namespace nmk_ordering {

/// The corners on the shortest way, and whether there is one.
struct CornersOfWay {
    bool exists = false;
    std::vector<int> corners;
};

/// Searches from `from` to `to`, of which no straight line leads to the other; `seen_from` and
/// `seen_to` are the corners that can be seen from each.
CornersOfWay search_corners(TravelWays& ways, const PlanePoint& from, const PlanePoint& to,
                            const std::vector<int>& seen_from, const std::vector<int>& seen_to);

}  // namespace nmk_ordering

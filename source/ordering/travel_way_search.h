// travel_way_search.h: the space in which a way around obstacles is searched.
//
// The search is that of the whole space, node by node, but for what it would never come to: nodes
// beyond the limit, and nodes to which a way as short is known already.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "travel_orientation.h"

namespace nmk_ordering {

class TravelWays;

/// The corners that can be seen from a place, as far as it was looked.
struct SeenCorners {
    std::vector<int> corners;  // ascending
    double reach = -1.0;       // by the metric
    bool is_all = false;       // none is beyond
};

/// The corners on the shortest way, and whether there is one.
struct CornersOfWay {
    bool exists = false;
    bool is_cut = false;  // none exists within the limit, but there may be one beyond
    std::vector<int> corners;
};

/// What a search knows of each node. One object serves many searches, without being cleared.
class WayScratch {
  public:
    explicit WayScratch(std::size_t nodes = 0) : m_marks(nodes) {}

    void begin_search() { ++m_search; }
    /// True, and noted, if a way to the node of this length is shorter than those before, and the
    /// node was not expanded.
    bool improves(std::size_t node, double length) {
        Mark& mark = m_marks[node];
        if (mark.search == m_search && !(length < mark.least)) return false;
        mark = {m_search, length};
        return true;
    }
    /// No way to the node improves it from here on.
    void close(std::size_t node) { m_marks[node] = {m_search, -1.0}; }

  private:
    struct Mark {
        std::int64_t search = 0;
        double least = 0.0;
    };

    std::vector<Mark> m_marks;
    std::int64_t m_search = 0;
};

/// Searches from `from` to `to`, of which no straight line leads to the other, a way of at most
/// `limit`; `seen_from` and `seen_to` are the corners that can be seen from each within it.
/// `scratch` has a node for each corner, and one more.
CornersOfWay search_corners(TravelWays& ways, const PlanePoint& from, const PlanePoint& to,
                            const SeenCorners& seen_from, const SeenCorners& seen_to, double limit,
                            WayScratch& scratch);

}  // namespace nmk_ordering

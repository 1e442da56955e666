// travel_exchange.h: what a ring of nodes becomes when some of its edges are exchanged.
//
// An exchange is given as Lin and Kernighan write it: nodes t0 t1 t2 ... of which each pair
// (t0, t1), (t2, t3) ... is an edge that leaves the ring, and each pair (t1, t2), (t3, t4) ...,
// with (last, t0), an edge that enters it. The edges that leave cut the ring into segments; the
// exchange is possible if those that enter join all segments to one ring.
#pragma once

#include <array>

namespace nmk_ordering {

/// Most edges that one exchange removes.
constexpr int max_exchange_edges = 5;

/// The segments of a ring in the order of the new ring. Segment i ends at cut i, and segment 0
/// begins after the last cut.
struct SegmentOrder {
    int count = 0;
    std::array<int, max_exchange_edges> cuts{};  // positions before the edges, ascending
    std::array<int, max_exchange_edges> segments{};
    std::array<bool, max_exchange_edges> is_reversed{};
};

/// One removed edge: its position, and whether the first of its two nodes is the one before it.
struct RemovedEdge {
    int cut = 0;
    bool first_is_before = false;
};

/// Follows the new edges through the segments; false if they do not join all of them.
bool order_segments(const std::array<RemovedEdge, max_exchange_edges>& removed, int count,
                    SegmentOrder& order);

}  // namespace nmk_ordering

// ring_pull: how strongly the items pull at each point of the elastic ring.
//
// For item i and ring point j the pull is the difference of the two in the plan, times the weight
// of j for i, over the sum of the weights of i; the pulls at j are summed over the items in their
// order. There are two ways to the same sums, to the last bit:
//
// - by the operations of the items, which a caller's class may override;
// - in one pass over flat arrays, where every item is exactly an nmkSortItemLine.
//
// The pass over arrays skips weights that are exactly zero. They would add a zero to a sum that is
// never minus zero, which changes nothing.
#pragma once

#include <geometry/giPoint3Arrays.h>
#include <nmktoolbox/ordering/nmkSortItemWithPoint.h>
#include <nmktoolbox/ordering/nmkSortPointList.h>

#include <vector>

namespace nmk_ordering {

/// Sums of pulls, one for each ring point.
struct RingPull {
    std::vector<double> x;
    std::vector<double> y;
};

/// Computes the pulls of the items at the ring, and stores the weights in the items.
class RingPuller {
  public:
    /// All of `items` must be items with points.
    RingPuller(nmkSortPointList& items, giPoint3coDynArr& ring, double k);

    /// The pulls at the present ring points.
    const RingPull& pull();

  private:
    bool all_plain() const;
    void pull_by_items();
    void pull_by_arrays();
    double weigh(nmkSortItemWithPoint& item);
    void add_pull_of(const nmkSortItemWithPoint& item);

    std::vector<nmkSortItemWithPoint*> m_items;
    giPoint3coDynArr& m_ring;
    double m_k;
    RingPull m_sums;
    std::vector<double> m_ring_x;
    std::vector<double> m_ring_y;
    std::vector<double> m_exponents;
    std::vector<int> m_in_reach;  // ring points that have a weight for the present item
};

}  // namespace nmk_ordering

// ring_pull: how strongly the items pull at each point of the elastic ring.
//
// For item i and ring point j the pull is the difference of the two in the plan, times the weight
// of j for i, over the sum of the weights of i; the pulls at j are summed over the items in their
// order. The sums are the same to the last bit whichever way is taken:
//
// - by asking the items, one after the other, as items of any class may override what they answer;
// - in one sweep over flat arrays, where every item is a plain nmkSortItemLine.
//
// The sweep leaves out weights that are exactly zero. They would add a zero to a sum that is never
// minus zero, which changes nothing.
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

/// Works out the pulls of the items at the ring, and leaves the weights with the items.
class RingPuller {
  public:
    /// All of `items` must be items with points.
    RingPuller(nmkSortPointList& items, giPoint3coDynArr& ring_points, double k);

    /// The pulls at the ring as it stands.
    const RingPull& pull();

  private:
    bool all_plain() const;
    void ask_items();
    void sweep();
    double weigh(nmkSortItemWithPoint& item);
    void add_pull_of(const nmkSortItemWithPoint& item);

    std::vector<nmkSortItemWithPoint*> pulling;
    giPoint3coDynArr& ring;
    double k;
    RingPull sums;
    std::vector<double> ring_x;
    std::vector<double> ring_y;
    std::vector<double> exponents;
    std::vector<int> in_reach;  // ring points that have a weight for the item at hand
};

}  // namespace nmk_ordering

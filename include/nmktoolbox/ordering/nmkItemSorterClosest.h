// nmkItemSorterClosest: always takes the nearest item that is left.
//
// The first item is the nearest to the comparison point that the caller set. The point of each item
// taken becomes the next comparison point: the start of a line, not its end. Ties are broken by the
// previous comparison, and so on back to the order in which the items were added.
//
// "Nearest" is defined by nmkItemComparator's primary comparison. For compare_closest, the usual
// case, a tree of the points gives n log n; any other comparison costs n squared log n.
#pragma once

#include <nmktoolbox/ordering/nmkItemSorter.h>

/// Repeatedly takes the item nearest to the one before.
class NMKTOOLBOX_EXPORT nmkItemSorterClosest : public nmkItemSorter {
  public:
    nmkItemSorterClosest();
    ~nmkItemSorterClosest() override;

    void add_item(nmkSortItemPrf item) override;
    void add_items(nmkSortList& items) override;
    /// Sorts the items that were added and empties the sorter; the tolerance is not used. A
    /// reporter that asks for a stop ends the sort: the list then holds what was taken so far, and
    /// the rest stays with the sorter. At least one item must have been added.
    nmkSortList& sort(double tolerance) override;

  private:
    // Each returns whether the sort ran to its end.
    bool sort_by_distance();
    bool sort_by_any_comparison();
    bool distance_decides();
    bool stopped();
    void take(const nmkSortItemPrf& item);

    nmkSortList result;
    nmkSortList source;
};

// nmkItemSorterClosest: always on to the nearest item that is left.
//
// The first item is the nearest to the comparison point that the caller set. Each one taken becomes
// the next comparison point: the start of a line, not its end. Of items that compare equal the one
// comes first that the comparison before would have taken first, and so on back to the order in
// which they were added.
//
// "Nearest" is whatever nmkItemComparator's primary comparison says. For compare_closest itself,
// the usual case, a tree of places answers in n log n; any other comparison costs n squared log n.
#pragma once

#include <nmktoolbox/ordering/nmkItemSorter.h>

/// Repeatedly takes the item nearest to the one before.
class NMKTOOLBOX_EXPORT nmkItemSorterClosest : public nmkItemSorter {
  public:
    nmkItemSorterClosest();
    ~nmkItemSorterClosest() override;

    void add_item(nmkSortItemPrf item) override;
    void add_items(nmkSortList& items) override;
    /// Sorts and uses up what was added; the tolerance is not used. A reporter that asks for a stop
    /// ends the sort there: the list holds what was taken so far. At least one item must have been
    /// added.
    nmkSortList& sort(double tolerance) override;

  private:
    // Each answers whether the sort ran to its end.
    bool sort_by_distance();
    bool sort_by_any_comparison();
    bool distance_decides();
    bool stopped();
    void take(const nmkSortItemPrf& item);

    nmkSortList result;
    nmkSortList source;
};

// nmkItemSorterShortest: a short route through all items.
//
// There are two algorithms, and the version level "itemsorter" chooses: at level 0 an elastic ring
// is shrunk onto the points, kept so that old results can be reproduced; at any other level the
// order is annealed. Annealing orders points as an open path, reversible lines as a closed tour,
// and one-way lines as either. The same items always give the same order.
//
// Items must all have an end point or all have none.
#pragma once

#include <geometry/giPoint3Arrays.h>
#include <ncamcontainer/builtin_containers.h>
#include <nmktoolbox/ordering/nmkAnnealOrderState.h>
#include <nmktoolbox/ordering/nmkItemSorter.h>
#include <nmktoolbox/ordering/nmkSortPointList.h>

/// Sorts items into a short route.
class NMKTOOLBOX_EXPORT nmkItemSorterShortest : public nmkItemSorter {
  public:
    nmkItemSorterShortest();
    ~nmkItemSorterShortest() override;

    void add_item(nmkSortItemPrf item) override;
    void add_items(nmkSortList& items) override;
    /// The items in order; the tolerance is not used, and the items stay with the sorter. Lines
    /// that are better travelled backwards have been reversed with reverse(). Only the elastic ring
    /// can be stopped by the reporter; it then leaves the list empty. With two items or fewer the
    /// elastic ring leaves the list as it was.
    nmkSortList& sort(double tolerance) override;

    /// Whether lines may be reversed; 1 until set.
    void set_reversible(int flag) { reversible = flag; }
    /// Whether one-way lines are ordered as a closed tour; 1 until set. Only they use it.
    void set_closed(int flag) { closed = flag; }

  private:
    friend class nmkPointSorter;
    struct Route;

    /// Sorts the items of a list that outlives the sort, without a list of its own beside it.
    void lend(nmkSortPointList& items);
    nmkSortPointList& items_to_sort() { return m_lent != nullptr ? *m_lent : source; }

    void sort_old(double tolerance);
    Route find_route();
    Route perform_annealing(nmkAnnealOrderState& state, nmkAnnealOrderState& best);
    void lay_out(const Route& route);
    bool shrink_ring(giPoint3coDynArr& ring);
    double adjust_points(nmkSortPointList& items, giPoint3coDynArr& ring, double k);
    void read_off_ring(giPoint3coDynArr& ring);
    void add_next(nmkSortPointList& group, int& count, intcoDList& nearest, int ring_index);
    void create_test_array(giPoint3coDynArr& ring, int n);
    double check_distance(giPoint3coDynArr& ring, giPoint3coDynArr& points, doublecoDynArr& weights,
                          double k);

    nmkSortPointList result;
    nmkSortPointList source;
    nmkSortPointList* m_lent = nullptr;  // used instead of `source`; not owned
    int reversible = 1;
    int closed = 1;
};

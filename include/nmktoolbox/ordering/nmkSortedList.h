// nmkSortedList: one row of a grid, its items in order.
//
// The row stands for its first item, the representative, when rows are compared with each other.
// Copies share one list. The two containers order by the process-wide nmkItemComparator, so they
// must not be touched while somebody sets another comparison.
#pragma once

#include <ncamcontainer/coPrf.h>
#include <ncamcontainer/coSortedList.h>
#include <nmktoolbox/ordering/nmkSortItemPrf.h>

/// Orders items by nmkItemComparator::compare.
struct NMKTOOLBOX_EXPORT nmkSortItemPrfOrder {
    bool operator()(const nmkSortItemPrf& a, const nmkSortItemPrf& b) const;
};

/// Items in order, equal ones as they came.
using nmkSortItemPrfcoSortedList = coSortedList<nmkSortItemPrf, nmkSortItemPrfOrder>;

/// A row: a reference to its representative, and its items in order.
class NMKTOOLBOX_EXPORT nmkSortedList : public nmkSortItemPrf {
  public:
    nmkSortedList() = default;
    /// An empty row with that representative, which is not added to it.
    explicit nmkSortedList(const nmkSortItemPrf& representative);
    /// Takes over the list.
    nmkSortedList(nmkSortItemPrfcoSortedList* claimed, const nmkSortItemPrf& representative);

    nmkSortItemPrfcoSortedList* operator->() const { return row.get(); }
    nmkSortItemPrfcoSortedList& list() const { return *row.get(); }

    /// A borrowing reference to the representative.
    nmkSortItemPrf sort_value() const;

  private:
    coPrf<nmkSortItemPrfcoSortedList> row;
};

/// Orders rows by nmkItemComparator::second_compare of their representatives.
struct NMKTOOLBOX_EXPORT nmkSortedListOrder {
    bool operator()(const nmkSortedList& a, const nmkSortedList& b) const;
};

/// Rows in order, equal ones as they came.
using nmkSortedListcoSortedList = coSortedList<nmkSortedList, nmkSortedListOrder>;

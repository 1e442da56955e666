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
    using const_iterator = nmkSortItemPrfcoSortedList::const_iterator;

    nmkSortedList() = default;
    /// An empty row with that representative, which is not added to it.
    explicit nmkSortedList(const nmkSortItemPrf& representative);
    /// Takes over the list.
    nmkSortedList(nmkSortItemPrfcoSortedList* claimed, const nmkSortItemPrf& representative);

    nmkSortItemPrfcoSortedList* operator->() const { return row.get(); }
    nmkSortItemPrfcoSortedList& list() const { return *row.get(); }

    /// The items of the row in order; none where the row was made without a list.
    const_iterator begin() const { return row.get() != nullptr ? row->begin() : const_iterator(); }
    const_iterator end() const { return row.get() != nullptr ? row->end() : const_iterator(); }

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

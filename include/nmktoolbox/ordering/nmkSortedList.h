// nmkSortedList: one row of a grid, its items in order.
//
// Rows are compared by their first item, the representative. Copies share one list. The two
// containers order by the process-wide nmkItemComparator, so they must not be used while another
// comparison is being set.
#pragma once

#include <ncamcontainer/coPrf.h>
#include <ncamcontainer/coSortedList.h>
#include <nmktoolbox/ordering/nmkSortItemPrf.h>

/// Orders items by nmkItemComparator::compare.
struct NMKTOOLBOX_EXPORT nmkSortItemPrfOrder {
    bool operator()(const nmkSortItemPrf& a, const nmkSortItemPrf& b) const;
};

/// Items in order, equal ones in the order of insertion.
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

    nmkSortItemPrfcoSortedList* operator->() const { return m_row.get(); }
    nmkSortItemPrfcoSortedList& list() const { return *m_row; }

    /// The items of the row in order; none where the row was made without a list.
    const_iterator begin() const { return m_row ? m_row->begin() : const_iterator(); }
    const_iterator end() const { return m_row ? m_row->end() : const_iterator(); }

    /// A borrowing reference to the representative.
    nmkSortItemPrf sort_value() const;

  private:
    coPrf<nmkSortItemPrfcoSortedList> m_row;
};

/// Orders rows by nmkItemComparator::second_compare of their representatives.
struct NMKTOOLBOX_EXPORT nmkSortedListOrder {
    bool operator()(const nmkSortedList& a, const nmkSortedList& b) const;
};

/// Rows in order, equal ones in the order of insertion.
using nmkSortedListcoSortedList = coSortedList<nmkSortedList, nmkSortedListOrder>;

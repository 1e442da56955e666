// nmkItemSorter: the base of all sorters: items in, a list in order out.
//
// The base itself sorts nothing: it returns the items in the order in which they were added. A
// sorter holds references to the items and owns its lists; the progress reporter is borrowed.
// Sorters read the process-wide nmkItemComparator, so only one may run at a time.
#pragma once

#include <nmkprogressbreak/nmkProgressBreak.h>
#include <nmktoolbox/ordering/nmkSortList.h>

/// Takes items and returns them in an order.
class NMKTOOLBOX_EXPORT nmkItemSorter {
  public:
    nmkItemSorter();
    nmkItemSorter(const nmkItemSorter&) = delete;
    nmkItemSorter& operator=(const nmkItemSorter&) = delete;

    virtual void add_item(nmkSortItemPrf item);
    /// Adds the items of the list, walking it by its cursor.
    virtual void add_items(nmkSortList& items);
    /// The items in order. The list belongs to the sorter and lives as long as the sorter.
    virtual nmkSortList& sort(double tolerance);
    virtual ~nmkItemSorter();

    /// The progress reporter, null for none. It is borrowed and must outlive the sorts.
    void set_progress(nmkProgressBreak* reporter) { progress = reporter; }

  protected:
    nmkSortList sorted;
    nmkProgressBreak* progress = nullptr;
};

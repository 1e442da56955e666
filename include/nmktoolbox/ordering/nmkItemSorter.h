// nmkItemSorter: the base of all sorters: items in, a list in order out.
//
// The base itself sorts nothing: it gives the items back as they came. A sorter holds references to
// the items and owns its lists; the progress reporter stays the caller's. Sorters read the
// process-wide nmkItemComparator, so only one may run at a time.
#pragma once

#include <nmkprogressbreak/nmkProgressBreak.h>
#include <nmktoolbox/ordering/nmkSortList.h>

/// Takes items and gives them back in an order.
class NMKTOOLBOX_EXPORT nmkItemSorter {
  public:
    nmkItemSorter();
    nmkItemSorter(const nmkItemSorter&) = delete;
    nmkItemSorter& operator=(const nmkItemSorter&) = delete;

    virtual void add_item(nmkSortItemPrf item);
    /// Adds what a walk of the list gives.
    virtual void add_items(nmkSortList& items);
    /// The items in order. The list belongs to the sorter and lives as long as it.
    virtual nmkSortList& sort(double tolerance);
    virtual ~nmkItemSorter();

    /// The reporter to tell about progress, null for none. It must outlive the sorts.
    void set_progress(nmkProgressBreak* reporter) { progress = reporter; }

  protected:
    nmkSortList sorted;
    nmkProgressBreak* progress = nullptr;
};

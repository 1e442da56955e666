// nmkPointSorter: the front door of ordering.
//
// Pick a type, add items, sort:
//
//     nmkPointSorter sorter(nmkSortTypeShortest);
//     for (Hole& hole : holes) sorter.add_item(&hole);
//     nmkSortList& order = sorter.sort(0.01, start, nullptr);
//
// A sort sets the process-wide nmkItemComparator, so only one may run at a time in a process. The
// debug geometry channel "nmkPointSorter", at level 2, is sent the points before and after.
#pragma once

#include <geometry/giPoint3.h>
#include <nmkprogressbreak/nmkProgressBreak.h>
#include <nmktoolbox/ordering/nmkItemSorterGrid.h>
#include <nmktoolbox/ordering/nmkSortPointList.h>
#include <nmktoolbox/ordering/nmkSortType.h>

#include <memory>

/// Sorts items by one of the known types.
class NMKTOOLBOX_EXPORT nmkPointSorter {
  public:
    explicit nmkPointSorter(nmkSortType type);
    nmkPointSorter(const nmkPointSorter&) = delete;
    nmkPointSorter& operator=(const nmkPointSorter&) = delete;

    virtual void add_item(nmkSortItemPrf item);
    /// Adds what a walk of the list gives.
    virtual void add_items(nmkSortPointList& items);
    virtual ~nmkPointSorter();

    /// What the sorts so far have given.
    nmkSortList& get_list() { return sorted; }

    /// Sorts everything that was added.
    ///
    ///   tolerance  how far items of one row of a grid may differ, in the unit of the points
    ///   start      where the cutter stands
    ///   progress   reporter, null for none
    ///   answer     get_list(), to which the items were added in order. Type "None" and fewer than
    ///              two items give the list of items as added, and leave get_list() alone; an
    ///              unsupported type gives get_list() as it was
    ///
    /// Two items are always taken nearest first, whatever the type. A sort that the reporter stops
    /// gives what was done so far. A second sort adds all items to get_list() again.
    nmkSortList& sort(double tolerance, const giPoint3& start, nmkProgressBreak* progress);

    /// Whether sort does something sensible for the type; "None" is supported.
    static bool supports_sort_type(nmkSortType type);

  private:
    std::unique_ptr<nmkItemSorter> make_sorter(const giPoint3& start);
    void give_items(nmkItemSorter& sorter);
    void set_directions(const giPoint3& start, nmkItemSorterGrid* grid);

    nmkSortPointList unsorted;
    nmkSortList sorted;
    nmkSortType sort_type;
};

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
    /// Adds the items of the list, walking it by its cursor.
    virtual void add_items(nmkSortPointList& items);
    virtual ~nmkPointSorter();

    /// The items that the sorts so far have returned.
    nmkSortList& get_list() { return sorted; }

    /// Sorts everything that was added.
    ///
    ///   tolerance  how far items of one row of a grid may differ, in the unit of the points
    ///   start      the position of the cutter
    ///   progress   reporter, null for none
    ///   returns    get_list(), to which the items were added in order. For type "None" and for
    ///              fewer than two items it is the list of items as added, and get_list() stays as
    ///              it was; for an unsupported type it is get_list() as it was
    ///
    /// Two items are always taken nearest first, whatever the type. A sort that the reporter stops
    /// returns what was done so far. A second sort adds all items to get_list() again.
    nmkSortList& sort(double tolerance, const giPoint3& start, nmkProgressBreak* progress);

    /// Whether sort handles the type; "None" is supported.
    static bool supports_sort_type(nmkSortType type);

  private:
    std::unique_ptr<nmkItemSorter> make_sorter(const giPoint3& start);
    void give_items(nmkItemSorter& sorter);
    void set_directions(const giPoint3& start, nmkItemSorterGrid* grid);

    nmkSortPointList unsorted;
    nmkSortList sorted;
    nmkSortType sort_type;
};

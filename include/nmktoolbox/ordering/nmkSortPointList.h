// nmkSortPointList: a list of items that all have points.
//
// Adds operations on all points together. They use x and y only, take every item of the list into
// account, and do not use the cursor.
#pragma once

#include <geometry/giBox2.h>
#include <geometry/giPoint3.h>
#include <nmktoolbox/ordering/nmkSortList.h>

/// A list whose items are nmkSortItemWithPoint.
class NMKTOOLBOX_EXPORT nmkSortPointList : public nmkSortList {
  public:
    nmkSortPointList();
    ~nmkSortPointList() override;

    /// Sets the box to the plan box of all points, from least to largest x and y.
    void get_box(giBox2& box);

    /// Position of the item nearest to p in plan, counted from 0 at the head; the lowest of equals,
    /// and 0 for an empty list.
    int get_closest(const giPoint3& p);

    /// Sets the normal point of every item: all of them in the unit square, proportions kept.
    void normalize_points();
};

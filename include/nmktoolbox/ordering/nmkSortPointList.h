// nmkSortPointList: a list of items that all have points.
//
// Adds the operations on the points as a whole. All of them look at the plan view only and at every
// item, wherever the cursor is, and leave the cursor there.
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

    /// Gives every item its normal point: all of them in the unit square, proportions kept.
    void normalize_points();
};

// nmkItemComparator: how items compare, for the whole process.
//
// Three functions and a point. nmkPointSorter sets them, or a caller that runs a sorter itself; the
// sorters and the sorted lists read them. There is one configuration: two sorts must not run at the
// same time. Until something is set, items compare by their distance from the origin.
#pragma once

#include <geometry/giPoint3.h>
#include <nmktoolbox/ordering/nmkSortItemPrf.h>

/// The comparison in force. Static members only.
class NMKTOOLBOX_EXPORT nmkItemComparator {
  public:
    /// Non-zero when the first item sorts before the second, strictly.
    using Comparison = int (*)(nmkSortItemPrf, nmkSortItemPrf, const giPoint3&);
    /// Non-zero when the two items belong to one row, within a tolerance.
    using Equality = int (*)(nmkSortItemPrf, nmkSortItemPrf, const giPoint3&, double);

    static void primary_sort(Comparison comparison);
    static void secondary_sort(Comparison comparison);
    static void equality_method(Equality method);
    static void set_comparison_point(const giPoint3& point);

    /// What was set last.
    static Comparison primary_sort();
    static Comparison secondary_sort();
    static Equality equality_method();
    static const giPoint3& comparison_point();

    /// The primary comparison: the order of the items in a row.
    static int compare(const nmkSortItemPrf& a, const nmkSortItemPrf& b);
    /// The secondary comparison: the order of the rows in a grid.
    static int second_compare(const nmkSortItemPrf& a, const nmkSortItemPrf& b);
    /// Whether two items belong to one row.
    static int equal(const nmkSortItemPrf& a, const nmkSortItemPrf& b, double tolerance);
};

// nmkItemSortMethods: the comparisons that nmkItemComparator can be set to.
//
// Each compare_ member returns 1 when a sorts before b, strictly, and 0 otherwise; each equal_
// member returns 1 when the keys of a and b differ by the tolerance or less. With p the item's
// point and c the comparison point, the keys are
//
//     x  y  z    p.x, p.y, p.z
//     xy         p.y - p.x
//     yx         p.y + p.x, so that xy and yx are diagonals at right angles
//     closest    squared plan distance of p from c
//     radial     atan2(p.x - c.x, p.y - c.y): the angle clockwise from +y
//
// A key that is NaN sorts before no other and equals none.
#pragma once

#include <geometry/giPoint3.h>
#include <nmktoolbox/ordering/nmkSortItemPrf.h>

/// Comparisons of items with points. Static members only.
class NMKTOOLBOX_EXPORT nmkItemSortMethods {
  public:
    nmkItemSortMethods();
    ~nmkItemSortMethods();

    static int compare_x(nmkSortItemPrf a, nmkSortItemPrf b, const giPoint3& c);
    static int compare_y(nmkSortItemPrf a, nmkSortItemPrf b, const giPoint3& c);
    static int compare_z(nmkSortItemPrf a, nmkSortItemPrf b, const giPoint3& c);
    static int compare_xy(nmkSortItemPrf a, nmkSortItemPrf b, const giPoint3& c);
    static int compare_yx(nmkSortItemPrf a, nmkSortItemPrf b, const giPoint3& c);
    static int compare_closest(nmkSortItemPrf a, nmkSortItemPrf b, const giPoint3& c);
    static int compare_radial(nmkSortItemPrf a, nmkSortItemPrf b, const giPoint3& c);

    static int equal_x(nmkSortItemPrf a, nmkSortItemPrf b, const giPoint3& c, double tolerance);
    static int equal_y(nmkSortItemPrf a, nmkSortItemPrf b, const giPoint3& c, double tolerance);
    static int equal_z(nmkSortItemPrf a, nmkSortItemPrf b, const giPoint3& c, double tolerance);
    static int equal_xy(nmkSortItemPrf a, nmkSortItemPrf b, const giPoint3& c, double tolerance);
    static int equal_yx(nmkSortItemPrf a, nmkSortItemPrf b, const giPoint3& c, double tolerance);
    /// Compares the squared distances with tolerance * tolerance * 10.
    static int equal_closest(nmkSortItemPrf a, nmkSortItemPrf b, const giPoint3& c,
                             double tolerance);
    /// Always 1: a radial grid has exactly one row.
    static int equal_radial(nmkSortItemPrf a, nmkSortItemPrf b, const giPoint3& c,
                            double tolerance);
};

// nmkItemSortMethods: each comparison is one key, compared strictly or within a limit.
#include <nmktoolbox/ordering/nmkItemSortMethods.h>

#include <cmath>

#include "point_of_item.h"
#include "sort_keys.h"

using nmk_ordering::point_of_item;

namespace {

namespace sort_keys = nmk_ordering::sort_keys;

int sorts_before(sort_keys::Key key, const nmkSortItemPrf& a, const nmkSortItemPrf& b,
                 const giPoint3& c) {
    return key(point_of_item(a), c) < key(point_of_item(b), c) ? 1 : 0;
}

int differ_by_at_most(double limit, sort_keys::Key key, const nmkSortItemPrf& a,
                      const nmkSortItemPrf& b, const giPoint3& c) {
    return std::fabs(key(point_of_item(a), c) - key(point_of_item(b), c)) <= limit ? 1 : 0;
}

}  // namespace

nmkItemSortMethods::nmkItemSortMethods() = default;
nmkItemSortMethods::~nmkItemSortMethods() = default;

int nmkItemSortMethods::compare_x(nmkSortItemPrf a, nmkSortItemPrf b, const giPoint3& c) {
    return sorts_before(sort_keys::x, a, b, c);
}

int nmkItemSortMethods::compare_y(nmkSortItemPrf a, nmkSortItemPrf b, const giPoint3& c) {
    return sorts_before(sort_keys::y, a, b, c);
}

int nmkItemSortMethods::compare_z(nmkSortItemPrf a, nmkSortItemPrf b, const giPoint3& c) {
    return sorts_before(sort_keys::z, a, b, c);
}

int nmkItemSortMethods::compare_xy(nmkSortItemPrf a, nmkSortItemPrf b, const giPoint3& c) {
    return sorts_before(sort_keys::xy, a, b, c);
}

int nmkItemSortMethods::compare_yx(nmkSortItemPrf a, nmkSortItemPrf b, const giPoint3& c) {
    return sorts_before(sort_keys::yx, a, b, c);
}

int nmkItemSortMethods::compare_closest(nmkSortItemPrf a, nmkSortItemPrf b, const giPoint3& c) {
    return sorts_before(sort_keys::closest, a, b, c);
}

int nmkItemSortMethods::compare_radial(nmkSortItemPrf a, nmkSortItemPrf b, const giPoint3& c) {
    return sorts_before(sort_keys::radial, a, b, c);
}

int nmkItemSortMethods::equal_x(nmkSortItemPrf a, nmkSortItemPrf b, const giPoint3& c,
                                double tolerance) {
    return differ_by_at_most(tolerance, sort_keys::x, a, b, c);
}

int nmkItemSortMethods::equal_y(nmkSortItemPrf a, nmkSortItemPrf b, const giPoint3& c,
                                double tolerance) {
    return differ_by_at_most(tolerance, sort_keys::y, a, b, c);
}

int nmkItemSortMethods::equal_z(nmkSortItemPrf a, nmkSortItemPrf b, const giPoint3& c,
                                double tolerance) {
    return differ_by_at_most(tolerance, sort_keys::z, a, b, c);
}

int nmkItemSortMethods::equal_xy(nmkSortItemPrf a, nmkSortItemPrf b, const giPoint3& c,
                                 double tolerance) {
    return differ_by_at_most(tolerance, sort_keys::xy, a, b, c);
}

int nmkItemSortMethods::equal_yx(nmkSortItemPrf a, nmkSortItemPrf b, const giPoint3& c,
                                 double tolerance) {
    return differ_by_at_most(tolerance, sort_keys::yx, a, b, c);
}

int nmkItemSortMethods::equal_closest(nmkSortItemPrf a, nmkSortItemPrf b, const giPoint3& c,
                                      double tolerance) {
    return differ_by_at_most(sort_keys::closest_limit(tolerance), sort_keys::closest, a, b, c);
}

// Deliberate: all items are in one row, which runs clockwise around the comparison point.
int nmkItemSortMethods::equal_radial(nmkSortItemPrf, nmkSortItemPrf, const giPoint3&, double) {
    return 1;
}

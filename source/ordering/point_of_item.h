// point_of_item.h: the point of the item that a reference refers to.
//
// References travel as nmkSortItem, while every comparison uses points. A reference without an
// item, or to an item without a point, has the unset point, so that a comparison never fails.
#pragma once

#include <geometry/giPoint3.h>
#include <nmktoolbox/ordering/nmkSortItemPrf.h>
#include <nmktoolbox/ordering/nmkSortItemWithPoint.h>

namespace nmk_ordering {

inline const giPoint3& point_of_item(const nmkSortItemPrf& reference) {
    static const giPoint3 unset;
    const auto* item = nmkSortItemWithPoint::ut_dynamic_cast(reference.get());
    return item != nullptr ? item->get_point() : unset;
}

}  // namespace nmk_ordering

// item_point: the place of whatever a reference refers to.
//
// References travel as nmkSortItem, while every comparison is about points. What has no point, or
// is no item at all, counts as standing at the unset point, so that a comparison never fails.
#pragma once

#include <geometry/giPoint3.h>
#include <nmktoolbox/ordering/nmkSortItemPrf.h>
#include <nmktoolbox/ordering/nmkSortItemWithPoint.h>

inline const giPoint3& item_point(const nmkSortItemPrf& reference) {
    static const giPoint3 nowhere;
    const auto* item = nmkSortItemWithPoint::ut_dynamic_cast(reference.get());
    return item != nullptr ? item->get_point() : nowhere;
}

// nmkSortPointList: what the points of a list have in common.
#include <nmktoolbox/ordering/nmkSortPointList.h>

#include <algorithm>
#include <limits>

#include "item_point.h"
#include "sort_keys.h"

nmkSortPointList::nmkSortPointList() = default;
nmkSortPointList::~nmkSortPointList() = default;

void nmkSortPointList::get_box(giBox2& box) {
    box = giBox2();
    for (const nmkSortItemPrf& item : *this) {
        const giPoint3& point = item_point(item);
        box.add(giPoint2(point.x, point.y));
    }
}

int nmkSortPointList::get_closest(const giPoint3& p) {
    int closest = 0;
    int position = 0;
    double least = std::numeric_limits<double>::max();
    for (const nmkSortItemPrf& item : *this) {
        const double d2 = nmk_ordering::sort_keys::closest(item_point(item), p);
        if (d2 < least) {
            least = d2;
            closest = position;
        }
        ++position;
    }
    return closest;
}

void nmkSortPointList::normalize_points() {
    giBox2 box;
    get_box(box);
    const double scale = std::max(box.width(), box.height());
    for (nmkSortItemPrf& reference : *this) {
        auto* item = nmkSortItemWithPoint::ut_dynamic_cast(reference.item());
        if (item != nullptr) item->transform_point(scale, box.min().x, box.min().y);
    }
}

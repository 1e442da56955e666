#include <nmktoolbox/ordering/nmkSortPointList.h>

#include <algorithm>
#include <limits>

#include "point_of_item.h"
#include "sort_keys.h"

using nmk_ordering::point_of_item;

nmkSortPointList::nmkSortPointList() = default;
nmkSortPointList::~nmkSortPointList() = default;

void nmkSortPointList::get_box(giBox2& box) {
    box = giBox2();
    for (const nmkSortItemPrf& item : *this) {
        const giPoint3& point = point_of_item(item);
        box.add(giPoint2(point.x, point.y));
    }
}

int nmkSortPointList::get_closest(const giPoint3& p) {
    int closest = 0;
    int position = 0;
    double least = std::numeric_limits<double>::max();
    for (const nmkSortItemPrf& item : *this) {
        const double d2 = nmk_ordering::sort_keys::closest(point_of_item(item), p);
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

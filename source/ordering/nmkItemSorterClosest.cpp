// nmkItemSorterClosest: two ways to one order.
//
// The general way sorts all items again for each one taken, whatever the comparison is. For the
// squared plan distance a ClosestWalk gives the same order; it reads every point once, at the
// start, and needs finite coordinates.
#include <nmktoolbox/ordering/nmkItemComparator.h>
#include <nmktoolbox/ordering/nmkItemSortMethods.h>
#include <nmktoolbox/ordering/nmkItemSorterClosest.h>
#include <nmktoolbox/ordering/nmkSortedList.h>

#include <cmath>
#include <vector>

#include "closest_walk.h"
#include "point_of_item.h"

namespace {

using nmk_ordering::ClosestWalk;
using nmk_ordering::PlanPoint;
using nmk_ordering::point_of_item;

bool is_finite(const giPoint3& point) { return std::isfinite(point.x) && std::isfinite(point.y); }

PlanPoint plan_point(const giPoint3& point) { return {point.x, point.y}; }

}  // namespace

nmkItemSorterClosest::nmkItemSorterClosest() = default;
nmkItemSorterClosest::~nmkItemSorterClosest() = default;

void nmkItemSorterClosest::add_item(nmkSortItemPrf item) { source.add_item(item); }

void nmkItemSorterClosest::add_items(nmkSortList& items) { source.add_items(items); }

nmkSortList& nmkItemSorterClosest::sort(double) {
    result.clear();
    const int count = source.size();
    if (progress != nullptr) {
        progress->send_progress_bar_to_0("Sorting\n%3d%% completed");
        progress->set_range(count);
    }
    const bool done = distance_decides() ? sort_by_distance() : sort_by_any_comparison();
    if (done && progress != nullptr) progress->send_progress_bar_to_100();
    return result;
}

bool nmkItemSorterClosest::distance_decides() {
    if (nmkItemComparator::primary_sort() != &nmkItemSortMethods::compare_closest) return false;
    bool finite = is_finite(nmkItemComparator::comparison_point());
    while (source.forwards() != 0) finite = is_finite(point_of_item(source.read())) && finite;
    return finite;
}

bool nmkItemSorterClosest::sort_by_distance() {
    std::vector<nmkSortItemPrf> items;
    std::vector<PlanPoint> points;
    while (source.forwards() != 0) {
        items.push_back(source.read());
        points.push_back(plan_point(point_of_item(source.read())));
    }
    source.clear();
    ClosestWalk walk(points, plan_point(nmkItemComparator::comparison_point()));
    for (std::size_t taken = 0; taken < items.size(); ++taken) {
        if (stopped()) {
            for (const int left : walk.left())
                source.add_item(items[static_cast<std::size_t>(left)]);
            return false;
        }
        take(items[static_cast<std::size_t>(walk.next())]);
    }
    return true;
}

bool nmkItemSorterClosest::sort_by_any_comparison() {
    nmkSortedList ordered(source.read_first());
    const int count = source.size();
    for (int taken = 0; taken < count; ++taken) {
        if (stopped()) return false;
        while (source.forwards() != 0) ordered->add(source.read());
        const nmkSortItemPrf first = ordered->read_first();
        ordered->remove_first();
        take(first);
        source.clear();
        for (const nmkSortItemPrf& left : ordered.list()) source.add_item(left);
        ordered->clear();
        source.reset();
    }
    return true;
}

bool nmkItemSorterClosest::stopped() { return progress != nullptr && progress->increment() != 0; }

// Deliberate: the item's point, where a line starts, becomes the next reference, not its end.
void nmkItemSorterClosest::take(const nmkSortItemPrf& item) {
    result.add_item(item);
    nmkItemComparator::set_comparison_point(point_of_item(item));
}

// nmkItemSorterShortest, elastic ring: the older generation.
//
// As many ring points as items start on a small circle in the unit square. In each step every item
// pulls the ring points towards itself, the nearest ones most, while the tension of the ring holds
// it together; the reach of both shrinks with each step. At the end each item belongs to the ring
// point nearest to it, and the items are read off once around the ring. After R. Durbin and D.
// Willshaw, An analogue approach to the travelling salesman problem using an elastic net method,
// Nature 326, 1987.
#include <exactmath/exact_sine.h>
#include <nmktoolbox/ordering/nmkItemComparator.h>
#include <nmktoolbox/ordering/nmkItemSorterClosest.h>
#include <nmktoolbox/ordering/nmkItemSorterShortest.h>
#include <nmktoolbox/ordering/nmkSortedList.h>

#include <algorithm>
#include <cmath>

#include "point_of_item.h"
#include "ring_pull.h"

using nmk_ordering::point_of_item;

namespace {

constexpr double full_turn = 6.283185307179586;
constexpr double ring_radius = 0.2;  // in the unit square
constexpr double ring_centre = 0.5;

constexpr double first_k = 0.2;
constexpr double shrinking_of_k = 0.99;  // with each step
constexpr int max_steps = 500;

// Largest squared movement of a ring point in a step; below, the ring is at rest.
constexpr double movement_at_rest = 1e-08;

// Deliberate: the tension falls with k while the pull of the items does not, so that in the end
// every item has its ring point.
constexpr double weight_of_tension = 0.5;  // times k
constexpr double weight_of_items = 0.2;

void sort_by_comparator(nmkSortPointList& items) {
    nmkSortItemPrfcoSortedList ordered;
    while (items.forwards() != 0) ordered.add(items.read());
    items.clear();
    for (const nmkSortItemPrf& item : ordered) items.add_item(item);
}

double tension(double next, double here, double previous, double k) {
    return ((next - here * 2.0) + previous) * (k * weight_of_tension);
}

int closest_ring_point(const nmkSortItemPrf& reference, giPoint3coDynArr& ring) {
    const auto* item = nmkSortItemWithPoint::ut_dynamic_cast(reference.get());
    return item != nullptr ? item->get_closest(ring) : 0;
}

}  // namespace

void nmkItemSorterShortest::sort_old(double) {
    if (source.size() <= 2) return;
    sort_by_comparator(source);
    result.clear();
    source.normalize_points();
    giPoint3coDynArr ring;
    create_test_array(ring, source.size());
    if (!shrink_ring(ring)) return;
    read_off_ring(ring);
    if (progress != nullptr) progress->send_progress_bar_to_100();
}

void nmkItemSorterShortest::create_test_array(giPoint3coDynArr& ring, int n) {
    for (int i = 0; i < n; ++i) {
        const double angle = i * (full_turn / n);
        const double x = nmk_exact::exact_cos(angle) * ring_radius + ring_centre;
        const double y = nmk_exact::exact_sin(angle) * ring_radius + ring_centre;
        ring.add(giPoint3(x, y, 0.0));
    }
}

// False when the reporter asked for a stop.
bool nmkItemSorterShortest::shrink_ring(giPoint3coDynArr& ring) {
    if (progress != nullptr) {
        progress->send_progress_bar_to_0("Sorting\n%3d%% completed");
        progress->set_range(max_steps);
    }
    double k = first_k;
    for (int step = 0; step < max_steps; ++step) {
        if (progress != nullptr && progress->increment() != 0) return false;
        k = k * shrinking_of_k;
        if (adjust_points(source, ring, k) < movement_at_rest) break;
    }
    return true;
}

double nmkItemSorterShortest::adjust_points(nmkSortPointList& items, giPoint3coDynArr& ring,
                                            double k) {
    nmk_ordering::RingPuller puller(items, ring, k);
    const nmk_ordering::RingPull& pull = puller.pull();
    const int n = ring.size();
    giPoint3coDynArr moved(utCopy(), ring);
    double largest = 0.0;
    for (int j = 0; j < n; ++j) {
        const giPoint3& next = ring[j + 1 == n ? 0 : j + 1];
        const giPoint3& previous = ring[j == 0 ? n - 1 : j - 1];
        const auto at_j = static_cast<std::size_t>(j);
        const double delta_x =
            tension(next.x, ring[j].x, previous.x, k) + pull.x[at_j] * weight_of_items;
        const double delta_y =
            tension(next.y, ring[j].y, previous.y, k) + pull.y[at_j] * weight_of_items;
        largest = std::max(largest, delta_x * delta_x + delta_y * delta_y);
        moved[j].x += delta_x;
        moved[j].y += delta_y;
    }
    ring.become(utCopy(), moved);
    return largest;
}

void nmkItemSorterShortest::read_off_ring(giPoint3coDynArr& ring) {
    intcoDList nearest;
    while (source.forwards() != 0) nearest.insert_last(closest_ring_point(source.read(), ring));
    nmkSortItemPrf last = source[0];
    int ring_index = nearest.read_first() - 1;
    for (int i = 0; i < ring.size(); ++i) {
        ring_index = ring_index + 1 >= ring.size() ? 0 : ring_index + 1;
        nmkSortPointList group;
        int count = 0;
        add_next(group, count, nearest, ring_index);
        nmkItemComparator::set_comparison_point(point_of_item(last));
        if (count == 1) {
            last = group.read_first();
            result.add_item(last);
        } else if (count >= 2) {
            // Deliberate: `last` stays the comparison point for the next group too.
            nmkItemSorterClosest closest;
            closest.add_items(group);
            result.add_items(closest.sort(0.0));
        }
    }
}

void nmkItemSorterShortest::add_next(nmkSortPointList& group, int& count, intcoDList& nearest,
                                     int ring_index) {
    source.reset();
    intcoDList::coIterator entry(nearest);
    while (source.forwards() != 0 && ++entry != 0) {
        if (*entry != ring_index) continue;
        group.add_item(source.read());
        ++count;
    }
}

// Nothing is checked; the distance is always zero.
double nmkItemSorterShortest::check_distance(giPoint3coDynArr&, giPoint3coDynArr&, doublecoDynArr&,
                                             double) {
    return 0.0;
}

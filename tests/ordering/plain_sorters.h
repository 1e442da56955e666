// plain_sorters: the sorters as they are defined, step by step and not optimised.
//
// The results of the library's sorters are compared with these, item by item. They use the
// library's lists, comparator and items, and none of its sorters.
#pragma once

#include <exactmath/exact_sine.h>
#include <nmktoolbox/ordering.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace plain_sorters {

inline const giPoint3& point_of(const nmkSortItemPrf& item) {
    return nmkSortItemWithPoint::ut_dynamic_cast(item.item())->get_point();
}

/// Sorts everything again for each item taken. Empties `source` unless the reporter stops it.
inline void closest(nmkSortList& source, nmkSortList& result, nmkProgressBreak* progress) {
    result.clear();
    nmkSortedList sorted(source.read_first());
    const int n = source.size();
    if (progress != nullptr) {
        progress->send_progress_bar_to_0("Sorting\n%3d%% completed");
        progress->set_range(n);
    }
    for (int i = 0; i < n; ++i) {
        if (progress != nullptr && progress->increment() != 0) return;
        while (source.forwards() != 0) sorted->add(source.read());
        const nmkSortItemPrf head = sorted->read_first();
        sorted->remove_first();
        result.add_item(head);
        nmkItemComparator::set_comparison_point(point_of(head));
        source.clear();
        for (const nmkSortItemPrf& left : sorted.list()) source.add_item(left);
        sorted->clear();
        source.reset();
    }
    if (progress != nullptr) progress->send_progress_bar_to_100();
}

struct Directions {
    int zigzag = 0;
    int reverse_first_row = 0;
    int reverse_rows = 0;
};

/// Compares every pair of items.
inline void grid(nmkSortList& source, nmkSortList& result, double tolerance, Directions flags) {
    result.clear();
    nmkSortedListcoSortedList sorted_rows;
    while (source.forwards() != 0) {
        const nmkSortItemPrf first = source.read_first();
        nmkSortedList row(first);
        row->add(first);
        while (source.forwards() != 0) {
            if (nmkItemComparator::equal(source.read(), first, tolerance) != 0) {
                row->add(source.read());
                source.remove_backwards();
            }
        }
        sorted_rows.add(row);
        source.remove_first();
    }
    std::vector<nmkSortedList> rows(sorted_rows.begin(), sorted_rows.end());
    if (flags.reverse_rows != 0) std::reverse(rows.begin(), rows.end());
    bool backwards = flags.reverse_first_row != 0;
    for (const nmkSortedList& row : rows) {
        std::vector<nmkSortItemPrf> items(row.list().begin(), row.list().end());
        if (backwards) std::reverse(items.begin(), items.end());
        for (const nmkSortItemPrf& item : items) result.add_item(item);
        if (flags.zigzag != 0) backwards = !backwards;
    }
}

/// One step of the elastic ring: calls every item for every ring point.
inline double adjust_points(nmkSortPointList& items, giPoint3coDynArr& ring, double k) {
    while (items.forwards() != 0) {
        nmkSortItemWithPoint::ut_dynamic_cast(items.read().item())->set_distance_array(ring, k);
    }
    const int n = ring.size();
    std::vector<double> deltas_x, deltas_y;
    double largest = 0.0;
    for (int j = 0; j < n; ++j) {
        double sum_x = 0.0, sum_y = 0.0;
        while (items.forwards() != 0) {
            double dx = 0.0, dy = 0.0;
            nmkSortItemWithPoint::ut_dynamic_cast(items.read().item())
                ->get_weighted_distance(dx, dy, j, ring[j]);
            sum_x += dx;
            sum_y += dy;
        }
        const giPoint3& next = ring[(j + 1) % n];
        const giPoint3& prev = ring[(j + n - 1) % n];
        const double delta_x = ((next.x - ring[j].x * 2.0) + prev.x) * (k * 0.5) + sum_x * 0.2;
        const double delta_y = ((next.y - ring[j].y * 2.0) + prev.y) * (k * 0.5) + sum_y * 0.2;
        deltas_x.push_back(delta_x);
        deltas_y.push_back(delta_y);
        largest = std::max(largest, delta_x * delta_x + delta_y * delta_y);
    }
    for (int j = 0; j < n; ++j) {
        ring[j].x += deltas_x[static_cast<std::size_t>(j)];
        ring[j].y += deltas_y[static_cast<std::size_t>(j)];
    }
    return largest;
}

inline giPoint3coDynArr first_ring(int n) {
    giPoint3coDynArr ring;
    for (int i = 0; i < n; ++i) {
        const double angle = i * (6.283185307179586 / n);
        ring.add(giPoint3(nmk_exact::exact_cos(angle) * 0.2 + 0.5,
                          nmk_exact::exact_sin(angle) * 0.2 + 0.5, 0.0));
    }
    return ring;
}

/// Reads the items off the ring, ring point by ring point.
inline void read_off(nmkSortPointList& source, giPoint3coDynArr& ring, nmkSortList& result) {
    const int n = source.size();
    std::vector<int> nearest;
    std::vector<nmkSortItemPrf> items;
    while (source.forwards() != 0) {
        items.push_back(source.read());
        nearest.push_back(
            nmkSortItemWithPoint::ut_dynamic_cast(source.read().item())->get_closest(ring));
    }
    nmkSortItemPrf last = items[0];
    int r = nearest[0] - 1;
    for (int i = 0; i < n; ++i) {
        r = r + 1 == n ? 0 : r + 1;
        nmkSortPointList group;
        for (std::size_t m = 0; m < items.size(); ++m) {
            if (nearest[m] == r) group.add_item(items[m]);
        }
        nmkItemComparator::set_comparison_point(point_of(last));
        if (group.size() == 1) {
            last = group.read_first();
            result.add_item(last);
        } else if (group.size() > 1) {
            nmkSortList ordered;
            closest(group, ordered, nullptr);
            result.add_items(ordered);
        }
    }
}

/// The elastic ring from beginning to end.
inline void elastic(nmkSortPointList& source, nmkSortList& result) {
    if (source.size() <= 2) return;
    nmkSortItemPrfcoSortedList sorted;
    while (source.forwards() != 0) sorted.add(source.read());
    source.clear();
    for (const nmkSortItemPrf& item : sorted) source.add_item(item);
    result.clear();
    source.normalize_points();
    giPoint3coDynArr ring = first_ring(source.size());
    double k = 0.2;
    for (int step = 0; step < 500; ++step) {
        k = k * 0.99;
        if (adjust_points(source, ring, k) < 1e-08) break;
    }
    read_off(source, ring, result);
}

}  // namespace plain_sorters

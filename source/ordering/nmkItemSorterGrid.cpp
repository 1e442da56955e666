// nmkItemSorterGrid: form the rows, then lay them out.
//
// Where all three comparisons are those of nmkItemSortMethods, everything is done on flat arrays of
// keys (grid_rows.h). Any other comparison, and keys that are not finite, take the general way:
// pair by pair, through the sorted lists. Both give the same order.
#include <nmktoolbox/ordering/nmkItemComparator.h>
#include <nmktoolbox/ordering/nmkItemSorterGrid.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "grid_rows.h"
#include "point_of_item.h"
#include "sort_methods.h"

using nmk_ordering::point_of_item;

namespace {

namespace sort_keys = nmk_ordering::sort_keys;

std::vector<giPoint3> points_of(nmkSortList& items) {
    std::vector<giPoint3> points;
    points.reserve(static_cast<std::size_t>(items.size()));
    while (items.forwards() != 0) points.push_back(point_of_item(items.read()));
    return points;
}

std::vector<double> keys_of(const std::vector<giPoint3>& points, sort_keys::Key key) {
    const giPoint3& c = nmkItemComparator::comparison_point();
    std::vector<double> keys;
    keys.reserve(points.size());
    for (const giPoint3& point : points) keys.push_back(key(point, c));
    return keys;
}

bool all_finite(const std::vector<double>& keys) {
    return std::all_of(keys.begin(), keys.end(), [](double key) { return std::isfinite(key); });
}

}  // namespace

nmkItemSorterGrid::nmkItemSorterGrid() = default;
nmkItemSorterGrid::~nmkItemSorterGrid() = default;

void nmkItemSorterGrid::add_item(nmkSortItemPrf item) { source.add_item(item); }

void nmkItemSorterGrid::add_items(nmkSortList& items) { source.add_items(items); }

nmkSortList& nmkItemSorterGrid::sort(double tolerance) {
    result.clear();
    if (sort_by_keys(tolerance)) return result;
    nmkSortedListcoSortedList rows;
    form_rows(tolerance, rows);
    if (reverse_rows == 0) {
        go_forwards(rows, zigzag, reverse_first_row);
    } else {
        go_backwards(rows, zigzag, reverse_first_row);
    }
    return result;
}

void nmkItemSorterGrid::set_sort_directions(int new_zigzag, int new_reverse_first_row,
                                            int new_reverse_rows) {
    zigzag = new_zigzag;
    reverse_first_row = new_reverse_first_row;
    reverse_rows = new_reverse_rows;
}

bool nmkItemSorterGrid::sort_by_keys(double tolerance) {
    const auto rule = nmk_ordering::row_rule_of(nmkItemComparator::equality_method(), tolerance);
    const sort_keys::Key primary = nmk_ordering::key_of(nmkItemComparator::primary_sort());
    const sort_keys::Key secondary = nmk_ordering::key_of(nmkItemComparator::secondary_sort());
    if (!rule.has_value() || primary == nullptr || secondary == nullptr) return false;
    const std::vector<giPoint3> points = points_of(source);
    const std::vector<double> row_keys = keys_of(points, rule->key);
    const std::vector<double> item_keys = keys_of(points, primary);
    const std::vector<double> order_keys = keys_of(points, secondary);
    if (!all_finite(row_keys) || !all_finite(item_keys) || !all_finite(order_keys)) return false;
    auto rows = nmk_ordering::rows_by_key(row_keys, rule->limit);
    nmk_ordering::sort_rows(rows, item_keys, order_keys);
    if (reverse_rows != 0) std::reverse(rows.begin(), rows.end());
    lay_out(rows);
    return true;
}

void nmkItemSorterGrid::lay_out(const std::vector<std::vector<int>>& rows) {
    std::vector<int> positions;
    positions.reserve(static_cast<std::size_t>(source.size()));
    int direction = reverse_first_row;
    for (const std::vector<int>& row : rows) {
        if (direction == 0) {
            positions.insert(positions.end(), row.begin(), row.end());
        } else {
            positions.insert(positions.end(), row.rbegin(), row.rend());
        }
        if (zigzag != 0) direction = direction == 0 ? 1 : 0;
    }
    result.take_items(source, positions);
}

// Deliberate: an item is compared with the first of the row only, so two that are each within the
// tolerance of it share the row even where they are further than that from each other.
void nmkItemSorterGrid::form_rows(double tolerance, nmkSortedListcoSortedList& rows) {
    while (source.forwards() != 0) {
        const nmkSortItemPrf first = source.read_first();
        nmkSortedList row(first);
        row->add(first);
        while (source.forwards() != 0) {
            if (nmkItemComparator::equal(source.read(), first, tolerance) == 0) continue;
            row->add(source.read());
            source.remove_backwards();
        }
        rows.add(row);
        source.remove_first();
    }
}

void nmkItemSorterGrid::go_forwards(const nmkSortedListcoSortedList& rows, int is_zigzag,
                                    int direction) {
    for (auto row = rows.begin(); row != rows.end(); ++row) {
        add_items_from_list(*row, direction);
        if (is_zigzag != 0) direction = direction == 0 ? 1 : 0;
    }
}

void nmkItemSorterGrid::go_backwards(const nmkSortedListcoSortedList& rows, int is_zigzag,
                                     int direction) {
    for (auto row = rows.rbegin(); row != rows.rend(); ++row) {
        add_items_from_list(*row, direction);
        if (is_zigzag != 0) direction = direction == 0 ? 1 : 0;
    }
}

void nmkItemSorterGrid::add_items_from_list(const nmkSortedList& row, int direction) {
    const nmkSortItemPrfcoSortedList& items = row.list();
    if (direction == 0) {
        for (auto item = items.begin(); item != items.end(); ++item) result.add_item(*item);
    } else {
        for (auto item = items.rbegin(); item != items.rend(); ++item) result.add_item(*item);
    }
}

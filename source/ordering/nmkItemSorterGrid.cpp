// nmkItemSorterGrid: form the rows, then lay them out.
//
// For the equalities of nmkItemSortMethods the rows are found by key (grid_rows.h); any other
// equality, and keys that are not finite, are asked pair by pair. Both give the same rows.
#include <nmktoolbox/ordering/nmkItemComparator.h>
#include <nmktoolbox/ordering/nmkItemSortMethods.h>
#include <nmktoolbox/ordering/nmkItemSorterGrid.h>

#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

#include "grid_rows.h"
#include "item_point.h"
#include "sort_keys.h"

namespace {

// What one of the known equalities compares.
struct RowRule {
    sort_keys::Key key;
    double limit;
};

double no_key(const giPoint3&, const giPoint3&) { return 0.0; }

std::optional<RowRule> rule_of(nmkItemComparator::Equality equality, double tolerance) {
    using Methods = nmkItemSortMethods;
    if (equality == &Methods::equal_x) return RowRule{sort_keys::x, tolerance};
    if (equality == &Methods::equal_y) return RowRule{sort_keys::y, tolerance};
    if (equality == &Methods::equal_z) return RowRule{sort_keys::z, tolerance};
    if (equality == &Methods::equal_xy) return RowRule{sort_keys::xy, tolerance};
    if (equality == &Methods::equal_yx) return RowRule{sort_keys::yx, tolerance};
    if (equality == &Methods::equal_closest) {
        return RowRule{sort_keys::closest, sort_keys::closest_limit(tolerance)};
    }
    if (equality == &Methods::equal_radial) return RowRule{no_key, 0.0};
    return std::nullopt;
}

std::vector<double> keys_of(nmkSortList& items, sort_keys::Key key) {
    const giPoint3& c = nmkItemComparator::comparison_point();
    std::vector<double> keys;
    while (items.forwards() != 0) keys.push_back(key(item_point(items.read()), c));
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

void nmkItemSorterGrid::form_rows(double tolerance, nmkSortedListcoSortedList& rows) {
    const auto rule = rule_of(nmkItemComparator::equality_method(), tolerance);
    if (rule.has_value()) {
        const std::vector<double> keys = keys_of(source, rule->key);
        if (all_finite(keys)) {
            take_rows(nmk_ordering::rows_by_key(keys, rule->limit), rows);
            return;
        }
    }
    form_rows_by_any_equality(tolerance, rows);
}

void nmkItemSorterGrid::take_rows(const std::vector<std::vector<int>>& positions,
                                  nmkSortedListcoSortedList& rows) {
    std::vector<nmkSortItemPrf> items;
    while (source.forwards() != 0) items.push_back(source.read());
    for (const std::vector<int>& members : positions) {
        nmkSortedList row(items[static_cast<std::size_t>(members.front())]);
        for (const int member : members) row->add(items[static_cast<std::size_t>(member)]);
        rows.add(row);
    }
    source.clear();
}

// Deliberate: an item is compared with the first of the row only, so two that are each within the
// tolerance of it share the row even where they are further than that from each other.
void nmkItemSorterGrid::form_rows_by_any_equality(double tolerance,
                                                  nmkSortedListcoSortedList& rows) {
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

void nmkItemSorterGrid::go_forwards(const nmkSortedListcoSortedList& rows, int turning,
                                    int direction) {
    for (auto row = rows.begin(); row != rows.end(); ++row) {
        add_items_from_list(*row, direction);
        if (turning != 0) direction = direction == 0 ? 1 : 0;
    }
}

void nmkItemSorterGrid::go_backwards(const nmkSortedListcoSortedList& rows, int turning,
                                     int direction) {
    for (auto row = rows.rbegin(); row != rows.rend(); ++row) {
        add_items_from_list(*row, direction);
        if (turning != 0) direction = direction == 0 ? 1 : 0;
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

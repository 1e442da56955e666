// grid_rows: a sorted array of keys, linked so that items that have a row already are skipped.
#include "grid_rows.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numeric>

namespace nmk_ordering {

namespace {

std::size_t at(int index) { return static_cast<std::size_t>(index); }

class LinkedKeys {
  public:
    LinkedKeys(const std::vector<double>& keys, double limit)
        : m_keys(keys), m_limit(limit), m_below(keys.size(), -1), m_above(keys.size(), -1) {
        std::vector<int> order(keys.size());
        std::iota(order.begin(), order.end(), 0);
        std::stable_sort(order.begin(), order.end(),
                         [&](int a, int b) { return keys[at(a)] < keys[at(b)]; });
        for (std::size_t i = 1; i < order.size(); ++i) link(order[i - 1], order[i]);
    }

    // The row that `first` opens, taken out of the links.
    std::vector<int> take_row(int first) {
        std::vector<int> row = {first};
        int lower = m_below[at(first)];
        for (; belongs(lower, first); lower = m_below[at(lower)]) row.push_back(lower);
        int upper = m_above[at(first)];
        for (; belongs(upper, first); upper = m_above[at(upper)]) row.push_back(upper);
        link(lower, upper);
        std::sort(row.begin(), row.end());
        return row;
    }

  private:
    void link(int lower, int upper) {
        if (lower >= 0) m_above[at(lower)] = upper;
        if (upper >= 0) m_below[at(upper)] = lower;
    }

    bool belongs(int item, int first) const {
        return item >= 0 && std::fabs(m_keys[at(item)] - m_keys[at(first)]) <= m_limit;
    }

    const std::vector<double>& m_keys;
    double m_limit;
    std::vector<int> m_below;  // the neighbour of the next lower key, -1 for none
    std::vector<int> m_above;
};

}  // namespace

std::vector<std::vector<int>> rows_by_key(const std::vector<double>& keys, double limit) {
    LinkedKeys left(keys, limit);
    std::vector<std::vector<int>> rows;
    std::vector<char> has_row(keys.size(), 0);
    for (int item = 0; item < static_cast<int>(keys.size()); ++item) {
        if (has_row[at(item)] != 0) continue;
        rows.push_back(left.take_row(item));
        for (const int member : rows.back()) has_row[at(member)] = 1;
    }
    return rows;
}

void sort_rows(std::vector<std::vector<int>>& rows, const std::vector<double>& item_keys,
               const std::vector<double>& row_keys) {
    // By row first, while the item that opened a row is still the first in it.
    std::stable_sort(rows.begin(), rows.end(), [&](const auto& a, const auto& b) {
        return row_keys[at(a.front())] < row_keys[at(b.front())];
    });
    for (std::vector<int>& row : rows) {
        std::stable_sort(row.begin(), row.end(),
                         [&](int a, int b) { return item_keys[at(a)] < item_keys[at(b)]; });
    }
}

}  // namespace nmk_ordering

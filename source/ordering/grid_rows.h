// grid_rows: which items share a row, found by sorting keys instead of comparing every pair.
//
// The rows are those of a plain scan: the first item left opens a row and takes every item whose
// key differs from its own by the limit or less. Since a rounded difference grows with the true
// one, those keys are neighbours in a sorted array, and n items cost n log n however many rows
// there are.
#pragma once

#include <vector>

namespace nmk_ordering {

/// Groups items by their keys.
///
///   keys     one for each item, in the order of the items; finite
///   limit    largest difference from the key of the row's first item; with NaN every item is a row
///   returns  the rows in the order in which they are opened, each the ascending positions of its
///            items; the first of them opened the row
std::vector<std::vector<int>> rows_by_key(const std::vector<double>& keys, double limit);

/// Puts the items of each row in the order of `item_keys`, and the rows in the order of the
/// `row_keys` of the items that opened them. Equal ones stay as they are; keys must be finite.
void sort_rows(std::vector<std::vector<int>>& rows, const std::vector<double>& item_keys,
               const std::vector<double>& row_keys);

}  // namespace nmk_ordering

// sort_methods.h: the keys behind the comparisons and equalities of nmkItemSortMethods.
//
// The grid sorter looks up what it was configured with, and works on arrays of keys where it knows
// all of it.
#pragma once

#include <nmktoolbox/ordering/nmkItemComparator.h>

#include <optional>

#include "ordering/sort_keys.h"

namespace nmk_ordering {

/// What an equality compares: two items share a row when their keys differ by `limit` or less.
struct RowRule {
    sort_keys::Key key;
    double limit;
};

/// The key of a comparison of nmkItemSortMethods; null for a comparison of a caller's own.
sort_keys::Key key_of(nmkItemComparator::Comparison comparison);

/// The rule of an equality of nmkItemSortMethods at a tolerance; none for a caller's own.
std::optional<RowRule> row_rule_of(nmkItemComparator::Equality equality, double tolerance);

}  // namespace nmk_ordering

// sort_types.h: the one table of the sort types: name, sorter, comparisons and layout of the rows.
#pragma once

#include <nmktoolbox/ordering/nmkItemComparator.h>
#include <nmktoolbox/ordering/nmkSortType.h>

namespace nmk_ordering {

/// The sorter of a type.
enum class SorterKind { none, shortest, shortest_one_way, closest, grid };

/// How the rows of a grid follow from the corner of the items' box that is nearest to the start.
enum class RowLayout {
    fixed,    // they do not
    along_x,  // rows are read along x and stacked in y
    along_y   // rows are read along y and stacked in x
};

/// One sort type. The comparisons are those of a grid; null means "leave what is set".
struct SortType {
    nmkSortType type;
    const char* name;
    bool is_supported;
    SorterKind sorter;
    nmkItemComparator::Comparison primary = nullptr;
    nmkItemComparator::Comparison secondary = nullptr;
    nmkItemComparator::Equality equality = nullptr;
    RowLayout layout = RowLayout::fixed;
    bool is_zigzag = false;
};

/// The row of the table for `type`; null for a value that is not a sort type.
const SortType* find_sort_type(nmkSortType type);

}  // namespace nmk_ordering

#include "ordering/sort_types.h"

#include <nmktoolbox/ordering/nmkItemSortMethods.h>

#include <algorithm>
#include <iterator>

namespace nmk_ordering {
namespace {

using Methods = nmkItemSortMethods;
using enum SorterKind;
using enum RowLayout;

// Deliberate: nmkSortTypeShortestOneWay has no name of its own and is "Invalid" too, though it is
// supported; the name is for display, where it is a "Shortest" with a switch beside it.
// Deliberate: the diagonal grids have a fixed layout, so they start at the same end wherever the
// cutter is.
constexpr SortType sort_types[] = {
    {nmkSortTypeNone, "None", true, none},
    {nmkSortTypeShortest, "Shortest", true, shortest, &Methods::compare_closest},
    {nmkSortTypeClosest, "Closest", true, closest, &Methods::compare_closest},
    {nmkSortTypeConcentric, "Concentric", true, grid, &Methods::compare_radial,
     &Methods::compare_closest, &Methods::equal_closest},
    {nmkSortTypeRadial, "Radial", true, grid, &Methods::compare_radial, &Methods::compare_closest,
     &Methods::equal_radial},
    {nmkSortTypeX, "X", true, grid, &Methods::compare_x, &Methods::compare_y, &Methods::equal_y,
     along_x},
    {nmkSortTypeY, "Y", true, grid, &Methods::compare_y, &Methods::compare_x, &Methods::equal_x,
     along_y},
    {nmkSortTypeDiag1, "DIAG1", true, grid, &Methods::compare_x, &Methods::compare_xy,
     &Methods::equal_xy},
    {nmkSortTypeDiag2, "DIAG2", true, grid, &Methods::compare_y, &Methods::compare_yx,
     &Methods::equal_yx},
    {nmkSortTypeXZ, "XZ", true, grid, &Methods::compare_x, &Methods::compare_y, &Methods::equal_y,
     along_x, true},
    {nmkSortTypeYZ, "YZ", true, grid, &Methods::compare_y, &Methods::compare_x, &Methods::equal_x,
     along_y, true},
    {nmkSortTypeDiag1Z, "DIAG1Z", true, grid, &Methods::compare_x, &Methods::compare_xy,
     &Methods::equal_xy, fixed, true},
    {nmkSortTypeDiag2Z, "DIAG2Z", true, grid, &Methods::compare_y, &Methods::compare_yx,
     &Methods::equal_yx, fixed, true},
    {nmkSortTypeCylinder, "Cylinder", false, none},
    {nmkSortTypeShortestOneWay, "Invalid", true, shortest_one_way, &Methods::compare_closest},
};

}  // namespace

const SortType* find_sort_type(nmkSortType type) {
    const SortType* const found =
        std::find_if(std::begin(sort_types), std::end(sort_types),
                     [type](const SortType& row) { return row.type == type; });
    return found != std::end(sort_types) ? found : nullptr;
}

}  // namespace nmk_ordering

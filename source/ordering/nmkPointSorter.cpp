// nmkPointSorter: a row of the table for each grid type, and the road of one sort.
#include <nmkarcline/nmkDebugGeometry.h>
#include <nmktoolbox/ordering/nmkItemComparator.h>
#include <nmktoolbox/ordering/nmkItemSortMethods.h>
#include <nmktoolbox/ordering/nmkItemSorterClosest.h>
#include <nmktoolbox/ordering/nmkItemSorterGrid.h>
#include <nmktoolbox/ordering/nmkItemSorterShortest.h>
#include <nmktoolbox/ordering/nmkPointSorter.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <memory>

#include "item_point.h"

namespace {

using Methods = nmkItemSortMethods;

// How the types that are laid out as a grid compare. The zigzag types follow their plain ones.
struct GridType {
    nmkSortType type;
    nmkItemComparator::Comparison primary;
    nmkItemComparator::Comparison secondary;
    nmkItemComparator::Equality equality;
};

const GridType grid_types[] = {
    {nmkSortTypeConcentric, &Methods::compare_radial, &Methods::compare_closest,
     &Methods::equal_closest},
    {nmkSortTypeRadial, &Methods::compare_radial, &Methods::compare_closest,
     &Methods::equal_radial},
    {nmkSortTypeX, &Methods::compare_x, &Methods::compare_y, &Methods::equal_y},
    {nmkSortTypeY, &Methods::compare_y, &Methods::compare_x, &Methods::equal_x},
    {nmkSortTypeDiag1, &Methods::compare_x, &Methods::compare_xy, &Methods::equal_xy},
    {nmkSortTypeDiag2, &Methods::compare_y, &Methods::compare_yx, &Methods::equal_yx},
    {nmkSortTypeXZ, &Methods::compare_x, &Methods::compare_y, &Methods::equal_y},
    {nmkSortTypeYZ, &Methods::compare_y, &Methods::compare_x, &Methods::equal_x},
    {nmkSortTypeDiag1Z, &Methods::compare_x, &Methods::compare_xy, &Methods::equal_xy},
    {nmkSortTypeDiag2Z, &Methods::compare_y, &Methods::compare_yx, &Methods::equal_yx},
};

const GridType* grid_type(nmkSortType type) {
    const auto* found = std::find_if(std::begin(grid_types), std::end(grid_types),
                                     [type](const GridType& row) { return row.type == type; });
    return found != std::end(grid_types) ? found : nullptr;
}

bool is_zigzag(nmkSortType type) { return type >= nmkSortTypeXZ && type <= nmkSortTypeDiag2Z; }

// The channel that is sent the points before and after a sort.
constexpr const char* debug_channel = "nmkPointSorter";
constexpr int debug_level = 2;
constexpr double size_in_tolerances = 3.0;
constexpr int cross_colour = 1;
constexpr int cross_weight = 1;

bool drawing() { return nmkDebugGeometry::get_from_manager(debug_channel).on(debug_level) != 0; }

void draw_points(nmkSortList& items, double size, const char* label) {
    nmkDebugGeometry& channel = nmkDebugGeometry::get_from_manager(debug_channel);
    items.reset();
    while (items.forwards() != 0) {
        channel.append_cross_drawing(item_point(items.read()), size, cross_colour, cross_weight,
                                     label, debug_level);
    }
}

void draw_start(const giPoint3& start, double size, const char* label) {
    nmkDebugGeometry::get_from_manager(debug_channel)
        .append_circle_drawing(start, size, giUnitVec3(giAxis::z), label, debug_level);
}

std::unique_ptr<nmkItemSorter> make_closest() {
    nmkItemComparator::primary_sort(&Methods::compare_closest);
    return std::make_unique<nmkItemSorterClosest>();
}

std::unique_ptr<nmkItemSorter> make_shortest(nmkSortType type) {
    nmkItemComparator::primary_sort(&Methods::compare_closest);
    auto shortest = std::make_unique<nmkItemSorterShortest>();
    if (type == nmkSortTypeShortestOneWay) shortest->set_reversible(0);
    return shortest;
}

std::unique_ptr<nmkItemSorterGrid> make_grid(const GridType& type) {
    nmkItemComparator::primary_sort(type.primary);
    nmkItemComparator::secondary_sort(type.secondary);
    nmkItemComparator::equality_method(type.equality);
    return std::make_unique<nmkItemSorterGrid>();
}

}  // namespace

nmkPointSorter::nmkPointSorter(nmkSortType type) : sort_type(type) {}
nmkPointSorter::~nmkPointSorter() = default;

void nmkPointSorter::add_item(nmkSortItemPrf item) { unsorted.add_item(item); }

void nmkPointSorter::add_items(nmkSortPointList& items) { unsorted.add_items(items); }

nmkSortList& nmkPointSorter::sort(double tolerance, const giPoint3& start,
                                  nmkProgressBreak* progress) {
    nmkItemComparator::set_comparison_point(start);
    if (sort_type == nmkSortTypeNone || unsorted.size() < 2) return unsorted;
    const std::unique_ptr<nmkItemSorter> sorter = make_sorter(start);
    if (sorter == nullptr) return sorted;
    nmkItemComparator::set_comparison_point(start);
    give_items(*sorter);
    const double size = tolerance * size_in_tolerances;
    if (drawing()) {
        draw_start(start, size, "unsorted_points");
        draw_points(unsorted, size, "unsorted_points");
    }
    if (progress != nullptr) sorter->set_progress(progress);
    sorted.take_items(sorter->sort(tolerance));
    if (drawing()) draw_points(sorted, size, "sorted_points");
    return sorted;
}

// The sorter that is used for the largest numbers of items does without a copy of the list.
void nmkPointSorter::give_items(nmkItemSorter& sorter) {
    if (auto* shortest = dynamic_cast<nmkItemSorterShortest*>(&sorter)) {
        shortest->lend(unsorted);
        return;
    }
    while (unsorted.forwards() != 0) sorter.add_item(unsorted.read());
}

std::unique_ptr<nmkItemSorter> nmkPointSorter::make_sorter(const giPoint3& start) {
    if (unsorted.size() == 2 || sort_type == nmkSortTypeClosest) return make_closest();
    if (sort_type == nmkSortTypeShortest || sort_type == nmkSortTypeShortestOneWay) {
        return make_shortest(sort_type);
    }
    const GridType* type = grid_type(sort_type);
    if (type == nullptr) return nullptr;
    std::unique_ptr<nmkItemSorterGrid> grid = make_grid(*type);
    if (sort_type >= nmkSortTypeX) set_directions(start, grid.get());
    return grid;
}

void nmkPointSorter::set_directions(const giPoint3& start, nmkItemSorterGrid* grid) {
    const int zigzag = is_zigzag(sort_type) ? 1 : 0;
    giBox2 box;
    unsorted.get_box(box);
    unsorted.reset();  // the rows are those of all items, so a walk that was broken off ends here
    const int near_max_x =
        std::fabs(start.x - box.min().x) > std::fabs(start.x - box.max().x) ? 1 : 0;
    const int near_max_y =
        std::fabs(start.y - box.min().y) > std::fabs(start.y - box.max().y) ? 1 : 0;
    if (sort_type == nmkSortTypeX || sort_type == nmkSortTypeXZ) {
        grid->set_sort_directions(zigzag, near_max_x, near_max_y);
    } else if (sort_type == nmkSortTypeY || sort_type == nmkSortTypeYZ) {
        grid->set_sort_directions(zigzag, near_max_y, near_max_x);
    } else {
        // Deliberate: a diagonal grid starts at the same end wherever the cutter stands.
        grid->set_sort_directions(zigzag, 0, 0);
    }
}

bool nmkPointSorter::supports_sort_type(nmkSortType type) {
    const bool has_sorter = type >= nmkSortTypeNone && type <= nmkSortTypeDiag2Z;
    return has_sorter || type == nmkSortTypeShortestOneWay;
}

// nmkPointSorter: the steps of one sort; what each type means is in sort_types.cpp.
#include <nmkarcline/nmkDebugGeometry.h>
#include <nmktoolbox/ordering/nmkItemComparator.h>
#include <nmktoolbox/ordering/nmkItemSorterClosest.h>
#include <nmktoolbox/ordering/nmkItemSorterGrid.h>
#include <nmktoolbox/ordering/nmkItemSorterShortest.h>
#include <nmktoolbox/ordering/nmkPointSorter.h>

#include <cmath>
#include <memory>

#include "point_of_item.h"
#include "sort_types.h"

using nmk_ordering::point_of_item;

namespace {

using nmk_ordering::RowLayout;
using nmk_ordering::SorterKind;
using nmk_ordering::SortType;

// The debug channel on which the points are drawn before and after a sort.
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
        channel.append_cross_drawing(point_of_item(items.read()), size, cross_colour, cross_weight,
                                     label, debug_level);
    }
}

void draw_start(const giPoint3& start, double size, const char* label) {
    nmkDebugGeometry::get_from_manager(debug_channel)
        .append_circle_drawing(start, size, giUnitVec3(giAxis::z), label, debug_level);
}

void set_comparisons(const SortType& type) {
    if (type.primary != nullptr) nmkItemComparator::primary_sort(type.primary);
    if (type.secondary != nullptr) nmkItemComparator::secondary_sort(type.secondary);
    if (type.equality != nullptr) nmkItemComparator::equality_method(type.equality);
}

std::unique_ptr<nmkItemSorter> make_shortest(bool is_one_way) {
    auto shortest = std::make_unique<nmkItemSorterShortest>();
    if (is_one_way) shortest->set_reversible(0);
    return shortest;
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

// The shortest sorter, which gets the largest numbers of items, does not need a copy of the list.
void nmkPointSorter::give_items(nmkItemSorter& sorter) {
    if (auto* shortest = dynamic_cast<nmkItemSorterShortest*>(&sorter)) {
        shortest->lend(unsorted);
        return;
    }
    while (unsorted.forwards() != 0) sorter.add_item(unsorted.read());
}

std::unique_ptr<nmkItemSorter> nmkPointSorter::make_sorter(const giPoint3& start) {
    const bool is_pair = unsorted.size() == 2;
    const SortType* const type =
        nmk_ordering::find_sort_type(is_pair ? nmkSortTypeClosest : sort_type);
    if (type == nullptr) return nullptr;
    set_comparisons(*type);
    switch (type->sorter) {
        case SorterKind::shortest:
        case SorterKind::shortest_one_way:
            return make_shortest(type->sorter == SorterKind::shortest_one_way);
        case SorterKind::closest:
            return std::make_unique<nmkItemSorterClosest>();
        case SorterKind::grid: {
            auto grid = std::make_unique<nmkItemSorterGrid>();
            if (sort_type >= nmkSortTypeX) set_directions(start, grid.get());
            return grid;
        }
        case SorterKind::none:
            break;
    }
    return nullptr;
}

void nmkPointSorter::set_directions(const giPoint3& start, nmkItemSorterGrid* grid) {
    const SortType& type = *nmk_ordering::find_sort_type(sort_type);
    const int zigzag = type.is_zigzag ? 1 : 0;
    giBox2 box;
    unsorted.get_box(box);
    unsorted.reset();  // the box is that of all items, so all of them are sorted
    const int near_max_x =
        std::fabs(start.x - box.min().x) > std::fabs(start.x - box.max().x) ? 1 : 0;
    const int near_max_y =
        std::fabs(start.y - box.min().y) > std::fabs(start.y - box.max().y) ? 1 : 0;
    switch (type.layout) {
        case RowLayout::along_x:
            return grid->set_sort_directions(zigzag, near_max_x, near_max_y);
        case RowLayout::along_y:
            return grid->set_sort_directions(zigzag, near_max_y, near_max_x);
        case RowLayout::fixed:
            return grid->set_sort_directions(zigzag, 0, 0);
    }
}

bool nmkPointSorter::supports_sort_type(nmkSortType type) {
    const SortType* const row = nmk_ordering::find_sort_type(type);
    return row != nullptr && row->is_supported;
}

// Tests of the point sorter: every type, two items, and what it leaves alone.
#include <gtest/gtest.h>
#include <nmkarcline/nmkDebugGeometry.h>
#include <nmktoolbox/runtime/nmkVersion.h>

#include <algorithm>
#include <sstream>

#include "ordering/plain_sorters.h"
#include "ordering/sort_samples.h"

using namespace sort_samples;
using Methods = nmkItemSortMethods;

namespace {

constexpr int all_types[] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 17};

// Three rows of three, numbered along x and then along y, at (0, 0) to (20, 20).
void fill_three_by_three(Holes& holes) {
    for (const double y : {0.0, 10.0, 20.0}) {
        for (const double x : {0.0, 10.0, 20.0}) holes.add(x, y);
    }
}

std::vector<int> sorted_by(nmkSortType type, Holes& holes, const giPoint3& start,
                           double tolerance = 1.0) {
    nmkPointSorter sorter(type);
    holes.give_to(sorter);
    return indices(sorter.sort(tolerance, start, nullptr));
}

std::vector<int> three_by_three(nmkSortType type, const giPoint3& start) {
    Holes holes;
    fill_three_by_three(holes);
    return sorted_by(type, holes, start);
}

using Order = std::vector<int>;

const giPoint3 at_origin(0, 0, 0);
const giPoint3 beyond_both(30, 40, 0);

}  // namespace

TEST(nmkSortType, has_its_names) {
    const char* const names[] = {"None",    "Shortest", "Closest", "Concentric", "Radial",
                                 "X",       "Y",        "DIAG1",   "DIAG2",      "XZ",
                                 "YZ",      "DIAG1Z",   "DIAG2Z",  "Cylinder",   "Invalid",
                                 "Invalid", "Invalid",  "Invalid", "Invalid"};
    for (int type = 0; type < 19; ++type) {
        EXPECT_STREQ(_nmkSortType_get_str(static_cast<nmkSortType>(type)), names[type]) << type;
    }
    EXPECT_STREQ(_nmkSortType_get_str(static_cast<nmkSortType>(-1)), "Invalid");
}

TEST(nmkSortType, names_the_one_way_shortest_invalid_though_it_is_supported) {
    EXPECT_STREQ(_nmkSortType_get_str(nmkSortTypeShortestOneWay), "Invalid");
    EXPECT_TRUE(nmkPointSorter::supports_sort_type(nmkSortTypeShortestOneWay));
}

TEST(nmkPointSorter, supports_0_to_12_and_17) {
    for (int type = -2; type < 25; ++type) {
        EXPECT_EQ(nmkPointSorter::supports_sort_type(static_cast<nmkSortType>(type)),
                  (type >= 0 && type <= 12) || type == 17)
            << type;
    }
}

TEST(nmkPointSorter, returns_the_input_list_for_none) {
    Holes holes;
    fill_three_by_three(holes);
    nmkPointSorter sorter(nmkSortTypeNone);
    holes.give_to(sorter);
    nmkSortList& order = sorter.sort(1.0, at_origin, nullptr);
    EXPECT_NE(&order, &sorter.get_list());
    EXPECT_EQ(indices(order), (Order{0, 1, 2, 3, 4, 5, 6, 7, 8}));
    EXPECT_EQ(sorter.get_list().size(), 0);
}

TEST(nmkPointSorter, returns_the_input_list_for_one_item_of_any_type) {
    for (const int type : all_types) {
        KeepsComparator keeps;
        Hole hole(3, 4);
        hole.set_index(5);
        nmkPointSorter sorter(static_cast<nmkSortType>(type));
        sorter.add_item(&hole);
        EXPECT_EQ(indices(sorter.sort(1.0, at_origin, nullptr)), Order{5}) << type;
        EXPECT_EQ(sorter.get_list().size(), 0) << type;
    }
}

TEST(nmkPointSorter, sorts_two_items_by_distance_whatever_the_type) {
    for (const int type : {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 15, 17, 99}) {
        KeepsComparator keeps;
        nmkItemComparator::secondary_sort(&Methods::compare_z);
        nmkItemComparator::equality_method(&Methods::equal_z);
        Holes holes;
        holes.add(0.0, 0.0);
        holes.add(8.0, 0.0);
        EXPECT_EQ(sorted_by(static_cast<nmkSortType>(type), holes, giPoint3(5, 0, 0)),
                  (Order{1, 0}))
            << type;
        // No grid is built: the comparisons of a grid are left as they were.
        EXPECT_EQ(nmkItemComparator::primary_sort(), &Methods::compare_closest);
        EXPECT_EQ(nmkItemComparator::secondary_sort(), &Methods::compare_z);
        EXPECT_EQ(nmkItemComparator::equality_method(), &Methods::equal_z);
    }
}

TEST(nmkPointSorter, sets_the_comparison_of_each_type) {
    struct Row {
        int type;
        nmkItemComparator::Comparison primary;
        nmkItemComparator::Comparison secondary;
        nmkItemComparator::Equality equality;
    };
    const Row rows[] = {
        {3, &Methods::compare_radial, &Methods::compare_closest, &Methods::equal_closest},
        {4, &Methods::compare_radial, &Methods::compare_closest, &Methods::equal_radial},
        {5, &Methods::compare_x, &Methods::compare_y, &Methods::equal_y},
        {6, &Methods::compare_y, &Methods::compare_x, &Methods::equal_x},
        {7, &Methods::compare_x, &Methods::compare_xy, &Methods::equal_xy},
        {8, &Methods::compare_y, &Methods::compare_yx, &Methods::equal_yx},
        {9, &Methods::compare_x, &Methods::compare_y, &Methods::equal_y},
        {10, &Methods::compare_y, &Methods::compare_x, &Methods::equal_x},
        {11, &Methods::compare_x, &Methods::compare_xy, &Methods::equal_xy},
        {12, &Methods::compare_y, &Methods::compare_yx, &Methods::equal_yx},
        // Types without a grid leave the comparisons of a grid alone.
        {1, &Methods::compare_closest, &Methods::compare_z, &Methods::equal_z},
        {2, &Methods::compare_closest, &Methods::compare_z, &Methods::equal_z},
        {17, &Methods::compare_closest, &Methods::compare_z, &Methods::equal_z},
        {13, &Methods::compare_z, &Methods::compare_z, &Methods::equal_z},
    };
    for (const Row& row : rows) {
        KeepsComparator keeps;
        nmkItemComparator::primary_sort(&Methods::compare_z);
        nmkItemComparator::secondary_sort(&Methods::compare_z);
        nmkItemComparator::equality_method(&Methods::equal_z);
        three_by_three(static_cast<nmkSortType>(row.type), at_origin);
        EXPECT_EQ(nmkItemComparator::primary_sort(), row.primary) << row.type;
        EXPECT_EQ(nmkItemComparator::secondary_sort(), row.secondary) << row.type;
        EXPECT_EQ(nmkItemComparator::equality_method(), row.equality) << row.type;
    }
}

TEST(nmkPointSorter, gives_every_item_once_for_every_type) {
    for (const int type : all_types) {
        KeepsComparator keeps;
        Holes holes;
        fill(holes, Layout::random, 50, 7);
        Order order = sorted_by(static_cast<nmkSortType>(type), holes, at_origin, 20.0);
        std::sort(order.begin(), order.end());
        ASSERT_EQ(order.size(), 50u) << type;
        for (int i = 0; i < 50; ++i) EXPECT_EQ(order[static_cast<std::size_t>(i)], i) << type;
    }
}

TEST(nmkPointSorter, reads_rows_along_x_or_y) {
    KeepsComparator keeps;
    EXPECT_EQ(three_by_three(nmkSortTypeX, at_origin), (Order{0, 1, 2, 3, 4, 5, 6, 7, 8}));
    EXPECT_EQ(three_by_three(nmkSortTypeY, at_origin), (Order{0, 3, 6, 1, 4, 7, 2, 5, 8}));
}

TEST(nmkPointSorter, starts_in_the_far_corner_when_the_start_is_beyond_it) {
    KeepsComparator keeps;
    EXPECT_EQ(three_by_three(nmkSortTypeX, beyond_both), (Order{8, 7, 6, 5, 4, 3, 2, 1, 0}));
    EXPECT_EQ(three_by_three(nmkSortTypeY, beyond_both), (Order{8, 5, 2, 7, 4, 1, 6, 3, 0}));
    EXPECT_EQ(three_by_three(nmkSortTypeX, giPoint3(30, 0, 0)), (Order{2, 1, 0, 5, 4, 3, 8, 7, 6}));
    EXPECT_EQ(three_by_three(nmkSortTypeY, giPoint3(30, 0, 0)), (Order{2, 5, 8, 1, 4, 7, 0, 3, 6}));
}

TEST(nmkPointSorter, starts_at_the_least_corner_when_no_side_is_nearer) {
    EXPECT_EQ(three_by_three(nmkSortTypeX, giPoint3(10, 10, 0)),
              (Order{0, 1, 2, 3, 4, 5, 6, 7, 8}));
    EXPECT_EQ(three_by_three(nmkSortTypeY, giPoint3(10, 10, 0)),
              (Order{0, 3, 6, 1, 4, 7, 2, 5, 8}));
}

TEST(nmkPointSorter, alternates_the_direction_of_rows_in_zigzag) {
    KeepsComparator keeps;
    EXPECT_EQ(three_by_three(nmkSortTypeXZ, at_origin), (Order{0, 1, 2, 5, 4, 3, 6, 7, 8}));
    EXPECT_EQ(three_by_three(nmkSortTypeYZ, at_origin), (Order{0, 3, 6, 7, 4, 1, 2, 5, 8}));
    EXPECT_EQ(three_by_three(nmkSortTypeXZ, beyond_both), (Order{8, 7, 6, 3, 4, 5, 2, 1, 0}));
}

TEST(nmkPointSorter, starts_diagonals_at_the_same_end_whatever_the_start) {
    KeepsComparator keeps;
    const Order diag_1 = {2, 1, 5, 0, 4, 8, 3, 7, 6};
    const Order diag_2 = {0, 1, 3, 2, 4, 6, 5, 7, 8};
    for (const giPoint3& start : {at_origin, beyond_both, giPoint3(30, 0, 0)}) {
        EXPECT_EQ(three_by_three(nmkSortTypeDiag1, start), diag_1);
        EXPECT_EQ(three_by_three(nmkSortTypeDiag2, start), diag_2);
        EXPECT_EQ(three_by_three(nmkSortTypeDiag1Z, start), (Order{2, 5, 1, 0, 4, 8, 7, 3, 6}));
        EXPECT_EQ(three_by_three(nmkSortTypeDiag2Z, start), (Order{0, 3, 1, 2, 4, 6, 7, 5, 8}));
    }
}

TEST(nmkPointSorter, sorts_concentric_rings_and_one_radial_row) {
    KeepsComparator keeps;
    Holes holes;
    holes.add(0.0, -10.0);
    holes.add(1.0, 0.0);
    holes.add(10.0, 0.0);
    holes.add(0.0, 1.0);
    holes.add(-10.0, 0.0);
    EXPECT_EQ(sorted_by(nmkSortTypeConcentric, holes, at_origin, 0.01), (Order{3, 1, 4, 2, 0}));
    EXPECT_EQ(sorted_by(nmkSortTypeRadial, holes, at_origin, 0.01), (Order{4, 3, 1, 2, 0}));
}

TEST(nmkPointSorter, reverses_lines_for_shortest_and_not_for_its_one_way_form) {
    for (const nmkSortType type : {nmkSortTypeShortest, nmkSortTypeShortestOneWay}) {
        KeepsComparator keeps;
        Lines lines;
        for (int i = 0; i < 12; ++i) {
            const giPoint3 a(i * 10.0, 0, 0), b(i * 10.0 + 9.0, 0, 0);
            i % 2 == 0 ? lines.add(a, b) : lines.add(b, a);
        }
        nmkPointSorter sorter(type);
        lines.give_to(sorter);
        EXPECT_EQ(sorter.sort(1.0, at_origin, nullptr).size(), 12);
        int reversed = 0;
        for (int i = 0; i < 12; ++i) reversed += lines[i].reversed();
        EXPECT_EQ(reversed > 0, type == nmkSortTypeShortest);
    }
}

TEST(nmkPointSorter, leaves_sorted_empty_for_cylinder_which_is_not_supported) {
    KeepsComparator keeps;
    EXPECT_FALSE(nmkPointSorter::supports_sort_type(nmkSortTypeCylinder));
    Holes holes;
    fill_three_by_three(holes);
    nmkPointSorter sorter(nmkSortTypeCylinder);
    holes.give_to(sorter);
    nmkSortList& order = sorter.sort(1.0, at_origin, nullptr);
    EXPECT_EQ(&order, &sorter.get_list());
    EXPECT_EQ(order.size(), 0);
}

TEST(nmkPointSorter, adds_to_sorted_again_with_a_second_sort) {
    KeepsComparator keeps;
    Holes holes;
    for (const double x : {3.0, 1.0, 2.0}) holes.add(x, 0.0);
    nmkPointSorter sorter(nmkSortTypeClosest);
    holes.give_to(sorter);
    sorter.sort(1.0, at_origin, nullptr);
    sorter.sort(1.0, giPoint3(9, 0, 0), nullptr);
    EXPECT_EQ(indices(sorter.get_list()), (Order{1, 2, 0, 0, 2, 1}));
}

TEST(nmkPointSorter, adds_the_items_of_a_list) {
    KeepsComparator keeps;
    Holes holes;
    for (const double x : {3.0, 1.0, 2.0}) holes.add(x, 0.0);
    nmkSortPointList list;
    holes.give_to(list);
    nmkPointSorter sorter(nmkSortTypeClosest);
    sorter.add_items(list);
    EXPECT_EQ(indices(sorter.sort(1.0, at_origin, nullptr)), (Order{1, 2, 0}));
}

TEST(nmkPointSorter, returns_what_was_done_when_the_reporter_stops_it) {
    KeepsComparator keeps;
    Holes holes;
    for (const double x : {3.0, 1.0, 2.0, 4.0}) holes.add(x, 0.0);
    nmkPointSorter sorter(nmkSortTypeClosest);
    holes.give_to(sorter);
    Reporter reporter(3);
    EXPECT_EQ(indices(sorter.sort(1.0, at_origin, &reporter)), (Order{1, 2}));
}

TEST(nmkPointSorter, sorts_the_rest_of_a_list_whose_walk_was_broken_off) {
    KeepsComparator keeps;
    Holes holes;
    for (const double x : {3.0, 1.0, 2.0, 4.0}) holes.add(x, 0.0);
    nmkPointSorter sorter(nmkSortTypeClosest);
    sorter.add_item(&holes[0]);
    nmkSortList& input = sorter.sort(1.0, at_origin, nullptr);
    EXPECT_EQ(input.forwards(), 1);  // and no further
    for (int i = 1; i < 4; ++i) sorter.add_item(&holes[i]);
    EXPECT_EQ(indices(sorter.sort(1.0, at_origin, nullptr)), (Order{1, 2, 3}));
}

// Three holes are left in their order by the annealing, and ordered by the ring.
TEST(nmkPointSorter, sorts_the_rest_of_such_a_list_into_a_short_route_too) {
    KeepsComparator keeps;
    Holes holes;
    for (const double x : {3.0, 1.0, 2.0, 4.0}) holes.add(x, 0.0);
    nmkPointSorter sorter(nmkSortTypeShortest);
    sorter.add_item(&holes[0]);
    EXPECT_EQ(sorter.sort(1.0, at_origin, nullptr).forwards(), 1);
    for (int i = 1; i < 4; ++i) sorter.add_item(&holes[i]);
    EXPECT_EQ(indices(sorter.sort(1.0, at_origin, nullptr)), (Order{1, 2, 3}));
}

TEST(nmkPointSorter, keeps_its_input_for_another_sort_into_a_short_route) {
    KeepsComparator keeps;
    nmkVersion& generation = nmkVersion::get_from_manager("itemsorter");
    for (const int level : {1, 0}) {
        generation.set_level(level);
        Holes holes;
        fill_three_by_three(holes);
        nmkPointSorter sorter(nmkSortTypeShortest);
        holes.give_to(sorter);
        const Order first = indices(sorter.sort(1.0, at_origin, nullptr));
        Order twice = first;
        twice.insert(twice.end(), first.begin(), first.end());
        EXPECT_EQ(first.size(), 9u);
        EXPECT_EQ(indices(sorter.sort(1.0, at_origin, nullptr)), twice) << level;
    }
    generation.set_default();
}

TEST(nmkPointSorter, draws_points_before_and_after_on_its_debug_channel_at_level_2) {
    KeepsComparator keeps;
    nmkDebugGeometry& channel = nmkDebugGeometry::get_from_manager("nmkPointSorter");
    channel.clear();
    channel.switch_on(1);
    three_by_three(nmkSortTypeX, at_origin);
    EXPECT_EQ(channel.size(), 0);
    channel.switch_on(2);
    const Order order = three_by_three(nmkSortTypeX, at_origin);
    channel.switch_off();
    EXPECT_EQ(order, (Order{0, 1, 2, 3, 4, 5, 6, 7, 8}));
    EXPECT_EQ(channel.size(), 1 + 9 + 9);
    std::ostringstream drawing;
    channel.write_svg(drawing);
    EXPECT_NE(drawing.str().find(">unsorted_points<"), std::string::npos);
    EXPECT_NE(drawing.str().find(">sorted_points<"), std::string::npos);
    channel.clear();
}

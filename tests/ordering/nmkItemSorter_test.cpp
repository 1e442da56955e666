// Tests of the comparisons and of the closest and grid sorters; the plain way is the reference.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "ordering/plain_sorters.h"
#include "ordering/sort_samples.h"

using namespace sort_samples;
using Methods = nmkItemSortMethods;

namespace {

constexpr double not_a_number = std::numeric_limits<double>::quiet_NaN();

// A caller's own comparison: by distance along x and y, so no squared distance.
int nearer_by_blocks(nmkSortItemPrf a, nmkSortItemPrf b, const giPoint3& c) {
    const auto blocks = [&c](const nmkSortItemPrf& item) {
        const giPoint3& p = plain_sorters::point_of(item);
        return std::fabs(p.x - c.x) + std::fabs(p.y - c.y);
    };
    return blocks(a) < blocks(b) ? 1 : 0;
}

// A caller's own equality: the same whole number of tens in y.
int same_tens(nmkSortItemPrf a, nmkSortItemPrf b, const giPoint3&, double) {
    const auto tens = [](const nmkSortItemPrf& item) {
        return std::floor(plain_sorters::point_of(item).y / 10.0);
    };
    return tens(a) == tens(b) ? 1 : 0;
}

struct Outcome {
    std::vector<int> order;
    std::vector<std::string> calls;
    bool operator==(const Outcome&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Outcome& outcome) {
    for (const int index : outcome.order) out << index << ' ';
    return out << "after " << outcome.calls.size() << " calls";
}

Outcome plain_closest(Holes& holes, const giPoint3& start, int stop_at) {
    nmkItemComparator::set_comparison_point(start);
    nmkSortList source, result;
    holes.give_to(source);
    Reporter reporter(stop_at);
    plain_sorters::closest(source, result, &reporter);
    Outcome outcome{indices(result), reporter.calls};
    // What a stopped sort has left over is sorted on from where it was.
    if (source.size() != 0) {
        plain_sorters::closest(source, result, nullptr);
        for (const int index : indices(result)) outcome.order.push_back(index);
    }
    EXPECT_EQ(source.size(), 0);
    return outcome;
}

Outcome fast_closest(Holes& holes, const giPoint3& start, int stop_at) {
    nmkItemComparator::set_comparison_point(start);
    nmkItemSorterClosest sorter;
    holes.give_to(sorter);
    Reporter reporter(stop_at);
    sorter.set_progress(&reporter);
    Outcome outcome{indices(sorter.sort(0.0)), reporter.calls};
    if (static_cast<int>(outcome.order.size()) < holes.size()) {
        sorter.set_progress(nullptr);
        for (const int index : indices(sorter.sort(0.0))) outcome.order.push_back(index);
    }
    return outcome;
}

void expect_same_closest(nmkItemComparator::Comparison comparison, int n, int stop_at) {
    nmkItemComparator::primary_sort(comparison);
    for (const Layout layout : layouts) {
        for (std::uint32_t seed = 1; seed <= 6; ++seed) {
            Holes holes;
            fill(holes, layout, n, seed);
            const giPoint3 start(seed % 2 != 0 ? 0.0 : 4.5, seed % 3, 0.0);
            EXPECT_EQ(fast_closest(holes, start, stop_at), plain_closest(holes, start, stop_at))
                << "layout " << static_cast<int>(layout) << ", seed " << seed << ", n " << n;
        }
    }
}

std::vector<int> fast_grid(Holes& holes, double tolerance, plain_sorters::Directions flags) {
    nmkItemSorterGrid sorter;
    holes.give_to(sorter);
    sorter.set_sort_directions(flags.zigzag, flags.reverse_first_row, flags.reverse_rows);
    std::vector<int> order = indices(sorter.sort(tolerance));
    EXPECT_EQ(sorter.sort(tolerance).size(), 0) << "the source is not used up";
    return order;
}

std::vector<int> plain_grid(Holes& holes, double tolerance, plain_sorters::Directions flags) {
    nmkSortList source, result;
    holes.give_to(source);
    plain_sorters::grid(source, result, tolerance, flags);
    return indices(result);
}

struct Equality {
    const char* name;
    nmkItemComparator::Equality method;
};

const Equality equalities[] = {
    {"x", &Methods::equal_x},           {"y", &Methods::equal_y},
    {"z", &Methods::equal_z},           {"xy", &Methods::equal_xy},
    {"yx", &Methods::equal_yx},         {"closest", &Methods::equal_closest},
    {"radial", &Methods::equal_radial}, {"own", &same_tens}};

void expect_same_grid(Holes& holes, double tolerance, const std::string& what) {
    for (int flags = 0; flags < 8; ++flags) {
        const plain_sorters::Directions directions{flags & 1, (flags >> 1) & 1, (flags >> 2) & 1};
        EXPECT_EQ(fast_grid(holes, tolerance, directions), plain_grid(holes, tolerance, directions))
            << what << ", tolerance " << tolerance << ", flags " << flags;
    }
}

}  // namespace

TEST(nmkItemComparator, returns_what_was_set) {
    KeepsComparator keeps;
    nmkItemComparator::primary_sort(&Methods::compare_x);
    nmkItemComparator::secondary_sort(&Methods::compare_y);
    nmkItemComparator::equality_method(&same_tens);
    nmkItemComparator::set_comparison_point(giPoint3(1, 2, 3));
    Hole a(0, 1), b(1, 0);
    EXPECT_NE(nmkItemComparator::compare(&a, &b), 0);
    EXPECT_EQ(nmkItemComparator::second_compare(&a, &b), 0);
    EXPECT_NE(nmkItemComparator::equal(&a, &b, 0.0), 0);
    EXPECT_EQ(nmkItemComparator::comparison_point(), giPoint3(1, 2, 3));
    EXPECT_EQ(nmkItemComparator::primary_sort(), &Methods::compare_x);
}

TEST(nmkItemSortMethods, compares_strictly_by_each_key) {
    const giPoint3 c(1, 1, 0);
    Hole a(1, 5, 9), b(2, 3, 4);
    EXPECT_EQ(Methods::compare_x(&a, &b, c), 1);
    EXPECT_EQ(Methods::compare_y(&a, &b, c), 0);
    EXPECT_EQ(Methods::compare_z(&a, &b, c), 0);
    EXPECT_EQ(Methods::compare_z(&b, &a, c), 1);
    EXPECT_EQ(Methods::compare_closest(&a, &b, c), 0);
    EXPECT_EQ(Methods::compare_closest(&b, &a, c), 1);
    EXPECT_EQ(Methods::compare_x(&a, &a, c), 0);
}

TEST(nmkItemSortMethods, orders_xy_by_y_minus_x_and_yx_by_y_plus_x) {
    const giPoint3 c(0, 0, 0);
    Hole origin(0, 0), up_left(-1, 1), up_right(1, 1);
    EXPECT_EQ(Methods::compare_xy(&origin, &up_left, c), 1);
    EXPECT_EQ(Methods::compare_xy(&origin, &up_right, c), 0);
    EXPECT_EQ(Methods::equal_xy(&origin, &up_right, c, 0.0), 1);
    EXPECT_EQ(Methods::compare_yx(&origin, &up_right, c), 1);
    EXPECT_EQ(Methods::compare_yx(&origin, &up_left, c), 0);
    EXPECT_EQ(Methods::equal_yx(&origin, &up_left, c, 0.0), 1);
}

TEST(nmkItemSortMethods, runs_radially_clockwise_from_plus_y) {
    const giPoint3 c(10, 10, 0);
    Hole up(10, 11), right(11, 10), down_right(11, 9), left(9, 10);
    EXPECT_EQ(Methods::compare_radial(&up, &right, c), 1);
    EXPECT_EQ(Methods::compare_radial(&right, &down_right, c), 1);
    EXPECT_EQ(Methods::compare_radial(&left, &up, c), 1);
}

TEST(nmkItemSortMethods, takes_the_tolerance_inclusively) {
    const giPoint3 c(0, 0, 0);
    Hole a(0, 0), b(0.5, 0.25);
    EXPECT_EQ(Methods::equal_x(&a, &b, c, 0.5), 1);
    EXPECT_EQ(Methods::equal_x(&a, &b, c, 0.4999), 0);
    EXPECT_EQ(Methods::equal_y(&a, &b, c, 0.25), 1);
    EXPECT_EQ(Methods::equal_z(&a, &b, c, 0.0), 1);
}

TEST(nmkItemSortMethods, compares_squared_distances_with_ten_squared_tolerances) {
    const giPoint3 c(0, 0, 0);
    Hole centre(0, 0), at_limit(3, 1), beyond(3, 1.01);  // 3*3 + 1*1 = 1*1*10
    EXPECT_EQ(Methods::equal_closest(&centre, &at_limit, c, 1.0), 1);
    EXPECT_EQ(Methods::equal_closest(&centre, &beyond, c, 1.0), 0);
    EXPECT_EQ(Methods::equal_closest(&centre, &at_limit, c, -1.0), 1);
}

TEST(nmkItemSortMethods, finds_any_pair_radially_equal) {
    Hole a(0, 0), b(1e9, not_a_number);
    EXPECT_EQ(Methods::equal_radial(&a, &b, giPoint3(0, 0, 0), 0.0), 1);
}

TEST(nmkItemSortMethods, does_not_sort_a_nan_key_before_any_other) {
    const giPoint3 c(0, 0, 0);
    Hole odd(not_a_number, 0), even(1, 0);
    EXPECT_EQ(Methods::compare_x(&odd, &even, c), 0);
    EXPECT_EQ(Methods::compare_x(&even, &odd, c), 0);
    EXPECT_EQ(Methods::equal_x(&odd, &odd, c, 1.0), 0);
}

TEST(nmkItemSorter, returns_items_in_the_order_in_which_they_were_added) {
    Holes holes;
    for (const double x : {3.0, 1.0, 2.0}) holes.add(x, 0.0);
    nmkItemSorter sorter;
    holes.give_to(sorter);
    EXPECT_EQ(indices(sorter.sort(0.0)), (std::vector<int>{0, 1, 2}));
}

TEST(nmkItemSorterClosest, begins_nearest_to_the_comparison_point_not_with_the_first_item) {
    KeepsComparator keeps;
    nmkItemComparator::primary_sort(&Methods::compare_closest);
    Holes holes;
    for (const double x : {0.0, 9.0, 5.0, 3.0}) holes.add(x, 0.0);
    nmkItemComparator::set_comparison_point(giPoint3(8, 0, 0));
    nmkItemSorterClosest sorter;
    holes.give_to(sorter);
    EXPECT_EQ(indices(sorter.sort(0.0)), (std::vector<int>{1, 2, 3, 0}));
}

TEST(nmkItemSorterClosest, continues_from_the_start_of_a_line_not_from_its_end) {
    KeepsComparator keeps;
    nmkItemComparator::primary_sort(&Methods::compare_closest);
    nmkItemComparator::set_comparison_point(giPoint3(0, 0, 0));
    Lines lines;
    lines.add(giPoint3(1, 0, 0), giPoint3(10, 0, 0));
    lines.add(giPoint3(10, 0, 0), giPoint3(11, 0, 0));
    lines.add(giPoint3(3, 0, 0), giPoint3(4, 0, 0));
    nmkItemSorterClosest sorter;
    lines.give_to(sorter);
    EXPECT_EQ(indices(sorter.sort(0.0)), (std::vector<int>{0, 2, 1}));
}

TEST(nmkItemSorterClosest, breaks_ties_by_the_order_of_the_pass_before) {
    KeepsComparator keeps;
    nmkItemComparator::primary_sort(&Methods::compare_closest);
    nmkItemComparator::set_comparison_point(giPoint3(0, 1, 0));
    Holes holes;
    holes.add(2.0, -3.0);  // ties with the next one from (2, 0), but was further from the start
    holes.add(2.0, 3.0);
    holes.add(2.0, 0.0);
    nmkItemSorterClosest sorter;
    holes.give_to(sorter);
    EXPECT_EQ(indices(sorter.sort(0.0)), (std::vector<int>{2, 1, 0}));
}

TEST(nmkItemSorterClosest, orders_as_the_plain_way) {
    KeepsComparator keeps;
    for (const int n : {1, 2, 3, 7, 60, 150}) {
        expect_same_closest(&Methods::compare_closest, n, 0);
    }
}

TEST(nmkItemSorterClosest, orders_as_the_plain_way_by_any_other_comparison) {
    KeepsComparator keeps;
    expect_same_closest(&nearer_by_blocks, 60, 0);
    expect_same_closest(&Methods::compare_radial, 40, 0);
    expect_same_closest(&Methods::compare_z, 40, 0);
}

TEST(nmkItemSorterClosest, keeps_the_order_of_what_is_left_when_it_is_stopped) {
    KeepsComparator keeps;
    for (const int stop_at : {1, 2, 17, 60}) {
        expect_same_closest(&Methods::compare_closest, 60, stop_at);
        expect_same_closest(&nearer_by_blocks, 60, stop_at);
    }
}

TEST(nmkItemSorterClosest, leaves_two_items_when_the_third_increment_requests_a_stop) {
    KeepsComparator keeps;
    nmkItemComparator::primary_sort(&Methods::compare_closest);
    nmkItemComparator::set_comparison_point(giPoint3(0, 0, 0));
    Holes holes;
    for (int i = 0; i < 6; ++i) holes.add(double(i), 0.0);
    nmkItemSorterClosest sorter;
    holes.give_to(sorter);
    Reporter reporter(3);
    sorter.set_progress(&reporter);
    EXPECT_EQ(indices(sorter.sort(0.0)), (std::vector<int>{0, 1}));
    EXPECT_EQ(reporter.calls,
              (std::vector<std::string>{"0 Sorting\n%3d%% completed", "range 6.000000", "increment",
                                        "increment", "increment"}));
}

TEST(nmkItemSorterClosest, takes_every_item_once_where_coordinates_are_nan) {
    KeepsComparator keeps;
    nmkItemComparator::primary_sort(&Methods::compare_closest);
    nmkItemComparator::set_comparison_point(giPoint3(0, 0, 0));
    Holes holes;
    for (int i = 0; i < 20; ++i) holes.add(i % 3 == 0 ? not_a_number : 20.0 - i, 0.0);
    nmkItemSorterClosest sorter;
    holes.give_to(sorter);
    std::vector<int> order = indices(sorter.sort(0.0));
    std::sort(order.begin(), order.end());
    ASSERT_EQ(order.size(), 20u);
    for (int i = 0; i < 20; ++i) EXPECT_EQ(order[static_cast<std::size_t>(i)], i);
}

// The first item is read before anything else, which says nothing where there is none.
TEST(nmkItemSorterClosest, returns_an_empty_list_for_an_empty_source) {
    nmkItemSorterClosest sorter;
    EXPECT_EQ(sorter.sort(0.0).size(), 0);
}

TEST(nmkItemSorterGrid, makes_a_single_row_of_equal_radial) {
    KeepsComparator keeps;
    nmkItemComparator::primary_sort(&Methods::compare_radial);
    nmkItemComparator::secondary_sort(&Methods::compare_closest);
    nmkItemComparator::equality_method(&Methods::equal_radial);
    nmkItemComparator::set_comparison_point(giPoint3(0, 0, 0));
    Holes holes;
    for (const auto& [x, y] : {std::pair(0.0, -2.0), {5.0, 1.0}, {-1.0, 1.0}, {1.0, 7.0}}) {
        holes.add(x, y);
    }
    // One row: strictly by angle, and one reversal turns all of it.
    EXPECT_EQ(fast_grid(holes, 0.0, {0, 0, 0}), (std::vector<int>{2, 3, 1, 0}));
    EXPECT_EQ(fast_grid(holes, 0.0, {1, 1, 0}), (std::vector<int>{0, 1, 3, 2}));
}

TEST(nmkItemSorterGrid, flips_the_direction_after_a_row_of_one_item) {
    KeepsComparator keeps;
    nmkItemComparator::primary_sort(&Methods::compare_x);
    nmkItemComparator::secondary_sort(&Methods::compare_y);
    nmkItemComparator::equality_method(&Methods::equal_y);
    Holes holes;
    holes.add(5.0, 0.0);
    for (const double x : {1.0, 2.0, 3.0}) holes.add(x, 1.0);
    EXPECT_EQ(fast_grid(holes, 0.1, {1, 0, 0}), (std::vector<int>{0, 3, 2, 1}));
    EXPECT_EQ(fast_grid(holes, 0.1, {1, 1, 0}), (std::vector<int>{0, 1, 2, 3}));
    EXPECT_EQ(fast_grid(holes, 0.1, {0, 0, 0}), (std::vector<int>{0, 1, 2, 3}));
}

TEST(nmkItemSorterGrid, compares_with_the_first_item_of_the_row_only) {
    KeepsComparator keeps;
    nmkItemComparator::primary_sort(&Methods::compare_x);
    nmkItemComparator::secondary_sort(&Methods::compare_y);
    nmkItemComparator::equality_method(&Methods::equal_y);
    Holes holes;
    holes.add(2.0, 0.0);
    holes.add(1.0, 1.0);  // within 1 of the first, and 2 from the last
    holes.add(0.0, -1.0);
    EXPECT_EQ(fast_grid(holes, 1.0, {0, 0, 0}), (std::vector<int>{2, 1, 0}));
}

TEST(nmkItemSorterGrid, forms_the_rows_of_the_plain_way_by_every_equality) {
    KeepsComparator keeps;
    nmkItemComparator::primary_sort(&Methods::compare_x);
    nmkItemComparator::secondary_sort(&Methods::compare_yx);
    nmkItemComparator::set_comparison_point(giPoint3(3, 2, 0));
    for (const Equality& equality : equalities) {
        nmkItemComparator::equality_method(equality.method);
        for (const Layout layout : layouts) {
            for (const double tolerance : {0.0, 1.0, 40.0, -1.0}) {
                Holes holes;
                fill(holes, layout, 80, 11);
                expect_same_grid(holes, tolerance, equality.name);
            }
        }
    }
}

TEST(nmkItemSorterGrid, orders_as_the_plain_way_by_a_callers_own_comparisons) {
    KeepsComparator keeps;
    nmkItemComparator::set_comparison_point(giPoint3(3, 2, 0));
    for (const Layout layout : layouts) {
        Holes holes;
        fill(holes, layout, 80, 12);
        nmkItemComparator::equality_method(&Methods::equal_y);
        nmkItemComparator::primary_sort(&nearer_by_blocks);
        nmkItemComparator::secondary_sort(&Methods::compare_y);
        expect_same_grid(holes, 1.0, "own primary");
        nmkItemComparator::primary_sort(&Methods::compare_radial);
        nmkItemComparator::secondary_sort(&nearer_by_blocks);
        expect_same_grid(holes, 1.0, "own secondary");
        nmkItemComparator::secondary_sort(&Methods::compare_closest);
        expect_same_grid(holes, 1.0, "radial and closest");
    }
}

TEST(nmkItemSorterGrid, forms_the_rows_of_the_plain_way_where_keys_are_nan_or_infinite) {
    KeepsComparator keeps;
    nmkItemComparator::primary_sort(&Methods::compare_z);
    nmkItemComparator::secondary_sort(&Methods::compare_z);
    constexpr double infinite = std::numeric_limits<double>::infinity();
    Holes holes;
    for (const double x : {1.0, not_a_number, 1.5, infinite, 9.0, infinite, not_a_number, -1.0}) {
        holes.add(x, 0.0, double(holes.size()));
    }
    for (const Equality& equality : equalities) {
        nmkItemComparator::equality_method(equality.method);
        for (const double tolerance : {0.5, infinite, not_a_number}) {
            expect_same_grid(holes, tolerance, equality.name);
        }
    }
}

TEST(nmkItemSorterGrid, returns_an_empty_list_for_an_empty_source) {
    nmkItemSorterGrid sorter;
    EXPECT_EQ(sorter.sort(1.0).size(), 0);
}

// Tests of both generations of the shortest sorter.
#include <gtest/gtest.h>
#include <nmktoolbox/runtime/nmkVersion.h>

#include <algorithm>
#include <limits>
#include <numeric>

#include "ordering/plain_sorters.h"
#include "ordering/sort_samples.h"

using namespace sort_samples;

namespace {

// Chooses the generation for the length of a test.
class ItemSorterLevel {
  public:
    explicit ItemSorterLevel(int level) : m_before(version().get_level()) {
        version().set_level(level);
    }
    ~ItemSorterLevel() { version().set_level(m_before); }
    ItemSorterLevel(const ItemSorterLevel&) = delete;
    ItemSorterLevel& operator=(const ItemSorterLevel&) = delete;

  private:
    static nmkVersion& version() { return nmkVersion::get_from_manager("itemsorter"); }
    int m_before;
};

template <class Items>
std::vector<int> shortest(Items& items, nmkItemSorterShortest& sorter) {
    items.give_to(sorter);
    return indices(sorter.sort(0.0));
}

double plan_length(Lines& lines, const std::vector<int>& order, bool closed) {
    double length = 0.0;
    for (std::size_t k = 0; k + 1 < order.size() + (closed ? 1 : 0); ++k) {
        const giPoint3& from = lines[order[k]].get_end_point();
        const giPoint3& to = lines[order[(k + 1) % order.size()]].get_point();
        length += giPoint2(from.x, from.y).distance(giPoint2(to.x, to.y));
    }
    return length;
}

double least_plan_length(Lines& lines, bool closed) {
    std::vector<int> order(static_cast<std::size_t>(lines.size()));
    std::iota(order.begin(), order.end(), 0);
    double least = std::numeric_limits<double>::max();
    do {
        least = std::min(least, plan_length(lines, order, closed));
    } while (std::next_permutation(order.begin(), order.end()));
    return least;
}

void fill_lines(Lines& lines, int n, std::uint32_t seed) {
    std::mt19937 words(seed);
    const auto ordinate = [&words] { return static_cast<double>(words() % 100); };
    const auto draw = [&ordinate] { return giPoint3(ordinate(), ordinate(), ordinate()); };
    for (int i = 0; i < n; ++i) {
        const giPoint3 start = draw();
        lines.add(start, draw());
    }
}

template <class Items>
void expect_same_ring(Items& items, const std::string& what) {
    ItemSorterLevel old(0);
    nmkItemComparator::primary_sort(&nmkItemSortMethods::compare_closest);
    nmkItemComparator::set_comparison_point(giPoint3(1, 2, 0));
    nmkSortPointList source;
    nmkSortList result;
    items.give_to(source);
    plain_sorters::elastic(source, result);
    nmkItemComparator::set_comparison_point(giPoint3(1, 2, 0));
    nmkItemSorterShortest sorter;
    EXPECT_EQ(shortest(items, sorter), indices(result)) << what;
    EXPECT_EQ(result.size(), items.size());
}

// Lines with an end, or with one of the markers that mean none.
std::vector<int> ordered_with_ends(const giPoint3& end, nmkItemSorterShortest& sorter) {
    Lines lines;
    for (const double x : {0.0, 30.0, 10.0, 20.0, 40.0}) lines.add(giPoint3(x, 0, 0), end);
    return shortest(lines, sorter);
}

}  // namespace

TEST(nmkItemSorterShortest, anneals_points_into_a_short_open_path) {
    Holes holes;
    for (const double x : {0.0, 70.0, 20.0, 50.0, 10.0, 40.0, 60.0, 30.0}) holes.add(x, 0.0);
    nmkItemSorterShortest sorter;
    std::vector<int> order = shortest(holes, sorter);
    double length = 0.0;
    for (std::size_t k = 1; k < order.size(); ++k) {
        length += holes[order[k]].get_point().distance(holes[order[k - 1]].get_point());
    }
    EXPECT_EQ(length, 70.0);
    EXPECT_EQ(order.size(), 8u);
}

TEST(nmkItemSorterShortest, orders_as_the_annealer_does_on_the_same_points) {
    Holes holes;
    fill(holes, Layout::random, 60, 5);
    giPoint3coPageArr points;
    for (int i = 0; i < holes.size(); ++i) points.add(holes[i].get_point());
    nmkAnnealStatePoints state(&points), best(&points);
    nmkAnneal anneal(state, best);
    anneal.simulate();
    intcoFixedArr expected;
    best.get_items(expected);
    nmkItemSorterShortest sorter;
    const std::vector<int> order = shortest(holes, sorter);
    EXPECT_EQ(order, std::vector<int>(expected.begin(), expected.end()));
}

TEST(nmkItemSorterShortest, gives_the_same_order_every_time) {
    Holes holes;
    fill(holes, Layout::random, 40, 3);
    nmkItemSorterShortest first, second;
    const std::vector<int> order = shortest(holes, first);
    EXPECT_EQ(order, shortest(holes, second));
    EXPECT_EQ(order, indices(first.sort(0.0)));  // the items stay with the sorter
}

TEST(nmkItemSorterShortest, leaves_three_points_in_their_order) {
    Holes holes;
    for (const double x : {0.0, 20.0, 10.0}) holes.add(x, 0.0);
    nmkItemSorterShortest sorter;
    EXPECT_EQ(shortest(holes, sorter), (std::vector<int>{0, 1, 2}));
}

TEST(nmkItemSorterShortest, gives_an_empty_result_for_an_empty_source) {
    nmkItemSorterShortest sorter;
    EXPECT_EQ(sorter.sort(0.0).size(), 0);
}

TEST(nmkItemSorterShortest, negates_the_flag_of_a_reversed_line_so_that_two_sorts_can_cancel) {
    Lines lines;
    for (int i = 0; i < 8; ++i) {  // every second line points back
        const giPoint3 a(i * 10.0, 0, 0), b(i * 10.0 + 9.0, 0, 0);
        i % 2 == 0 ? lines.add(a, b) : lines.add(b, a);
    }
    nmkItemSorterShortest first;
    const std::vector<int> order = shortest(lines, first);
    int reversed = 0;
    for (int i = 0; i < 8; ++i) reversed += lines[i].reversed();
    EXPECT_GT(reversed, 0);
    EXPECT_LT(reversed, 8);
    nmkItemSorterShortest second;
    EXPECT_EQ(shortest(lines, second), order);
    for (int i = 0; i < 8; ++i) EXPECT_EQ(lines[i].reversed(), 0);
}

TEST(nmkItemSorterShortest, never_reverses_a_one_way_line) {
    Lines lines;
    fill_lines(lines, 20, 4);
    nmkItemSorterShortest sorter;
    sorter.set_reversible(0);
    EXPECT_EQ(shortest(lines, sorter).size(), 20u);
    for (int i = 0; i < 20; ++i) EXPECT_EQ(lines[i].reversed(), 0);
}

TEST(nmkItemSorterShortest, finds_the_optimum_of_up_to_nine_one_way_lines) {
    for (const int n : {2, 5, 8, 9}) {
        for (const bool closed : {false, true}) {
            Lines lines;
            fill_lines(lines, n, static_cast<std::uint32_t>(n));
            nmkItemSorterShortest sorter;
            sorter.set_reversible(0);
            sorter.set_closed(closed ? 1 : 0);
            const std::vector<int> order = shortest(lines, sorter);
            EXPECT_NEAR(plan_length(lines, order, closed), least_plan_length(lines, closed), 1e-9)
                << n << " lines, closed " << closed;
        }
    }
}

TEST(nmkItemSorterShortest, ignores_closed_where_lines_may_be_reversed) {
    std::vector<int> orders[2];
    for (const int closed : {0, 1}) {
        Lines lines;
        fill_lines(lines, 12, 9);
        nmkItemSorterShortest sorter;
        sorter.set_closed(closed);
        orders[closed] = shortest(lines, sorter);
    }
    EXPECT_EQ(orders[0], orders[1]);
}

TEST(nmkItemSorterShortest, takes_an_end_with_any_coordinate_at_its_marker_as_none) {
    constexpr double most = std::numeric_limits<double>::max();
    nmkItemSorterShortest points;
    Holes holes;
    for (const double x : {0.0, 30.0, 10.0, 20.0, 40.0}) holes.add(x, 0.0);
    const std::vector<int> as_points = shortest(holes, points);
    for (const giPoint3& end : {giPoint3(-most, 0, 0), giPoint3(most, 0, 0), giPoint3(0, most, 0),
                                giPoint3(0, 0, most), giPoint3()}) {
        nmkItemSorterShortest sorter;
        sorter.set_reversible(0);
        EXPECT_EQ(ordered_with_ends(end, sorter), as_points);
    }
}

TEST(nmkItemSorterShortest, shrinks_the_ring_as_the_plain_way_for_lines) {
    KeepsComparator keeps;
    for (const int n : {3, 4, 10, 45}) {
        Lines lines;
        fill_lines(lines, n, static_cast<std::uint32_t>(n));
        expect_same_ring(lines, std::to_string(n) + " lines");
    }
    Lines coincident;
    for (int i = 0; i < 6; ++i) coincident.add(giPoint3(2, 2, 0), giPoint3(2, 2, 0));
    expect_same_ring(coincident, "coincident lines");
}

TEST(nmkItemSorterShortest, shrinks_the_ring_as_the_plain_way_for_a_callers_own_items) {
    KeepsComparator keeps;
    for (const Layout layout : layouts) {
        Holes holes;
        fill(holes, layout, 40, 2);
        expect_same_ring(holes, "layout " + std::to_string(static_cast<int>(layout)));
    }
    Sample<WeakHole> weak;
    std::mt19937 words(8);
    for (int i = 0; i < 30; ++i) weak.add(double(words() % 50), double(words() % 50));
    expect_same_ring(weak, "items that pull weakly");
}

TEST(nmkItemSorterShortest, shrinks_the_ring_as_the_plain_way_for_lines_far_out) {
    KeepsComparator keeps;
    Lines lines;
    for (int i = 0; i < 5; ++i) {
        lines.add(giPoint3(i * i * 1e307, 1e300 * i, 0), giPoint3(0, 0, 0));
    }
    expect_same_ring(lines, "lines near the end of the range");
}

// A hole at the start and a pair of holes in each of two corners, the holes of a pair so close that
// they share a ring point. Seen from the start the second of a pair is nearer; seen from the other
// pair the first is.
TEST(nmkItemSorterShortest, does_not_move_last_for_a_group_of_two) {
    KeepsComparator keeps;
    ItemSorterLevel old(0);
    nmkItemComparator::primary_sort(&nmkItemSortMethods::compare_closest);
    nmkItemComparator::set_comparison_point(giPoint3(0, 0, 0));
    Holes holes;
    holes.add(0.0, 0.0);
    holes.add(100.0, 0.0);
    holes.add(99.99, -0.005);
    holes.add(100.0, 100.0);
    holes.add(99.99, 100.005);
    nmkItemSorterShortest sorter;
    EXPECT_EQ(shortest(holes, sorter), (std::vector<int>{0, 2, 1, 4, 3}));
}

TEST(nmkItemSorterShortest, shrinks_the_ring_as_the_plain_way_for_pairs_on_one_ring_point) {
    KeepsComparator keeps;
    Lines lines;
    for (const auto& [x, y] : {std::pair(0.0, 0.0),
                               {100.0, 0.0},
                               {100.0, 0.0},
                               {100.0, 100.0},
                               {100.0, 100.0},
                               {0.0, 100.0},
                               {50.0, 120.0}}) {
        lines.add(giPoint3(x, y, 0), giPoint3(0, 0, 0));
    }
    expect_same_ring(lines, "pairs in corners");
}

TEST(nmkItemSorterShortest, leaves_the_result_as_it_was_for_two_items_at_level_zero) {
    ItemSorterLevel old(0);
    Holes holes;
    holes.add(5.0, 0.0);
    holes.add(1.0, 0.0);
    nmkItemSorterShortest sorter;
    EXPECT_TRUE(shortest(holes, sorter).empty());
}

TEST(nmkItemSorterShortest, reports_progress_of_the_ring_and_stops_when_asked_to) {
    KeepsComparator keeps;
    ItemSorterLevel old(0);
    nmkItemComparator::primary_sort(&nmkItemSortMethods::compare_closest);
    Holes holes;
    fill(holes, Layout::random, 10, 1);
    nmkItemSorterShortest sorter;
    Reporter stopping(3);
    sorter.set_progress(&stopping);
    EXPECT_TRUE(shortest(holes, sorter).empty());
    EXPECT_EQ(stopping.calls.size(), 5u);
    EXPECT_EQ(stopping.calls.back(), "increment");
    Reporter patient;
    sorter.set_progress(&patient);
    EXPECT_EQ(sorter.sort(0.0).size(), 10);
    EXPECT_EQ(patient.calls[0], "0 Sorting\n%3d%% completed");
    EXPECT_EQ(patient.calls[1], "range 500.000000");
    EXPECT_EQ(patient.calls.back(), "100");
    EXPECT_LE(patient.increments, 500);
}

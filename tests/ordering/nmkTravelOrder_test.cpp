// Tests of nmkTravelOrder as a caller sees it: ends, groups, measures, effort and bad problems.
#include <gtest/gtest.h>
#include <nmktoolbox/ordering/nmkTravelOrder.h>

#include <cmath>
#include <limits>
#include <ostream>
#include <string>
#include <vector>

#include "ordering/plain_travel.h"
#include "ordering/sort_samples.h"

namespace {

using sort_samples::indices;

nmkTravelProblem points_on_a_line(const std::vector<double>& places) {
    nmkTravelProblem problem;
    for (const double x : places) problem.items.push_back(nmkTravelItem::point({x, 0.0, 0.0}));
    return problem;
}

nmkTravelProblem random_points(int n, std::uint32_t seed) {
    nmkTravelProblem problem;
    plain::TravelDraw draw(seed);
    for (int i = 0; i < n; ++i) {
        problem.items.push_back(nmkTravelItem::point(draw.point(100000, false)));
    }
    return problem;
}

// Requests a stop at one of the reports of the position.
class StoppingProgress : public nmkProgressBreak {
  public:
    explicit StoppingProgress(int stop_at) : m_stop_at(stop_at) {}
    int send_progress_bar_to_0(const char*) override { return m_stop_at == 0 ? 1 : 0; }
    void set_range(double range) override { m_range = range; }
    int jump_to(double position) override {
        EXPECT_GE(position, m_position);
        EXPECT_LE(position, m_range);
        m_position = position;
        return ++jumps == m_stop_at ? 1 : 0;
    }
    int send_progress_bar_to_100() override {
        is_complete = true;
        return 0;
    }

    int jumps = 0;
    bool is_complete = false;

  private:
    int m_stop_at;
    double m_range = 0.0;
    double m_position = 0.0;
};

TEST(nmkTravelOrder_default_steps, are_ten_an_item_six_past_20000_one_a_line_and_500_at_least) {
    EXPECT_EQ(nmkTravelOrder::default_steps(0), 500);
    EXPECT_EQ(nmkTravelOrder::default_steps(50), 500);
    EXPECT_EQ(nmkTravelOrder::default_steps(51), 510);
    EXPECT_EQ(nmkTravelOrder::default_steps(20000), 200000);
    EXPECT_EQ(nmkTravelOrder::default_steps(20001), 200006);
    EXPECT_EQ(nmkTravelOrder::default_steps(1000, 1000), 1000);
    EXPECT_EQ(nmkTravelOrder::default_steps(1000, 500), 5500);
    EXPECT_EQ(nmkTravelOrder::default_steps(500, 500), 500);
    EXPECT_EQ(nmkTravelOrder::default_steps(100, 100), 500);
}

TEST(nmkTravelOrder, has_an_empty_order_without_items) {
    nmkTravelProblem problem;
    const nmkTravelResult nothing = nmkTravelOrder(problem).find();
    EXPECT_EQ(nothing.stop_reason, nmkTravelStopReason::finished);
    EXPECT_TRUE(nothing.order.empty());
    EXPECT_EQ(nothing.length, 0.0);
    problem.start = nmkTravelEnd::at_place({0.0, 0.0, 0.0});
    problem.end = nmkTravelEnd::at_place({3.0, 4.0, 0.0});
    EXPECT_EQ(nmkTravelOrder(problem).find().length, 5.0);
    problem.end = nmkTravelEnd::at_start();
    EXPECT_EQ(nmkTravelOrder(problem).find().length, 0.0);
}

TEST(nmkTravelOrder, turns_a_single_line_towards_its_start) {
    nmkTravelProblem problem;
    problem.items = {nmkTravelItem::line({10.0, 0.0, 0.0}, {1.0, 0.0, 0.0})};
    problem.start = nmkTravelEnd::at_place({0.0, 0.0, 0.0});
    const nmkTravelResult result = nmkTravelOrder(problem).find();
    EXPECT_EQ(result.order, std::vector<int>{0});
    EXPECT_TRUE(result.is_reversed[0]);
    EXPECT_EQ(result.length, 1.0);
    problem.items[0].kind = nmkTravelItemKind::one_way_line;
    EXPECT_EQ(nmkTravelOrder(problem).find().length, 10.0);
}

TEST(nmkTravelOrder, walks_along_points_on_a_line) {
    std::vector<double> places;
    for (int i = 0; i < 40; ++i) places.push_back((i * 17) % 40);
    const nmkTravelResult result = nmkTravelOrder(points_on_a_line(places)).find();
    EXPECT_EQ(result.length, 39.0);
    EXPECT_EQ(result.lower_bound, 39.0);
}

TEST(nmkTravelOrder, counts_the_legs_to_given_places) {
    nmkTravelProblem problem = points_on_a_line({5.0, 1.0, 3.0});
    problem.start = nmkTravelEnd::at_place({0.0, 0.0, 0.0});
    problem.end = nmkTravelEnd::at_place({9.0, 0.0, 0.0});
    const nmkTravelResult result = nmkTravelOrder(problem).find();
    EXPECT_EQ(result.order, (std::vector<int>{1, 2, 0}));
    EXPECT_EQ(result.length, 9.0);
}

TEST(nmkTravelOrder, returns_to_the_start_place) {
    nmkTravelProblem problem = points_on_a_line({5.0, 1.0, 3.0});
    problem.start = nmkTravelEnd::at_place({0.0, 0.0, 0.0});
    problem.end = nmkTravelEnd::at_start();
    EXPECT_EQ(nmkTravelOrder(problem).find().length, 10.0);
}

TEST(nmkTravelOrder, begins_and_ends_with_given_items) {
    nmkTravelProblem problem = random_points(60, 5);
    problem.start = nmkTravelEnd::at_item(17);
    problem.end = nmkTravelEnd::at_item(3);
    const nmkTravelResult result = nmkTravelOrder(problem).find();
    EXPECT_EQ(result.order.front(), 17);
    EXPECT_EQ(result.order.back(), 3);
}

TEST(nmkTravelOrder, begins_a_closed_travel_with_the_start_item_or_the_first) {
    nmkTravelProblem problem = random_points(60, 5);
    problem.end = nmkTravelEnd::at_start();
    EXPECT_EQ(nmkTravelOrder(problem).find().order.front(), 0);
    problem.start = nmkTravelEnd::at_item(17);
    EXPECT_EQ(nmkTravelOrder(problem).find().order.front(), 17);
}

TEST(nmkTravelOrder, never_turns_a_one_way_line) {
    nmkTravelProblem problem;
    for (int i = 0; i < 20; ++i) {  // all against the direction in which they lie
        problem.items.push_back(
            nmkTravelItem::one_way_line({10.0 * i + 9.0, 0.0, 0.0}, {10.0 * i, 0.0, 0.0}));
    }
    const nmkTravelResult result = nmkTravelOrder(problem).find();
    EXPECT_EQ(result.length, 19.0);  // from the last to the first
    EXPECT_EQ(result.order.front(), 19);
}

TEST(nmkTravelOrder, keeps_a_group_together_in_its_order) {
    nmkTravelProblem problem = random_points(40, 8);
    problem.groups = {{{30, 2, 25, 7}, true}, {{1, 11, 21, 31}, false}};
    const nmkTravelResult result = nmkTravelOrder(problem).find();
    EXPECT_TRUE(plain::is_allowed(problem, result.order, result.is_reversed));
}

// Two axes of different speeds: the detour along the fast axis takes less time.
TEST(nmkTravelOrder, measures_the_time_of_a_rapid_move) {
    nmkTravelProblem problem = points_on_a_line({0.0, 100.0, 200.0});
    problem.measure = nmkTravelMeasure::time;
    problem.speed = {10.0, 10.0, 10.0};
    problem.acceleration = {5.0, 5.0, 5.0};
    EXPECT_DOUBLE_EQ(nmkTravelOrder(problem).find().length, 2.0 * (100.0 / 10.0 + 10.0 / 5.0));
    problem.items[2] = nmkTravelItem::point({0.0, 5.0, 0.0});  // too short to reach the speed
    problem.items.erase(problem.items.begin() + 1);
    EXPECT_DOUBLE_EQ(nmkTravelOrder(problem).find().length, 2.0 * std::sqrt(5.0 / 5.0));
}

TEST(nmkTravelOrder, takes_no_time_for_no_way_beside_very_large_coordinates) {
    nmkTravelProblem problem;
    problem.measure = nmkTravelMeasure::time;
    problem.speed = {241.0, 241.0, 241.0};
    problem.acceleration = {241.0, 241.0, 241.0};
    const giPoint3 at(241.0, 241.0, 241.0);
    problem.items = {nmkTravelItem::point(at), nmkTravelItem::line(at, giPoint3(0.0, -7e240, 0.0)),
                     nmkTravelItem::point(at)};
    EXPECT_EQ(nmkTravelOrder(problem).find().length, 0.0);
}

TEST(nmkTravelOrder, measures_the_longest_difference) {
    nmkTravelProblem problem;
    problem.items = {nmkTravelItem::point({0.0, 0.0, 0.0}), nmkTravelItem::point({3.0, -4.0, 2.0})};
    problem.measure = nmkTravelMeasure::chebyshev;
    EXPECT_EQ(nmkTravelOrder(problem).find().length, 4.0);
}

TEST(nmkTravelOrder, has_the_same_result_when_it_is_called_again) {
    const nmkTravelOrder order(random_points(200, 2));
    const nmkTravelResult first = order.find();
    const nmkTravelResult second = order.find();
    EXPECT_EQ(first.order, second.order);
    EXPECT_EQ(first.length, second.length);
}

TEST(nmkTravelOrder, is_not_longer_with_more_steps) {
    nmkTravelOrder order(random_points(300, 4));
    double before = std::numeric_limits<double>::infinity();
    for (const std::int64_t steps : {0, 100, 1000, 10000}) {
        order.set_steps(steps);
        const nmkTravelResult result = order.find();
        EXPECT_EQ(result.steps, steps);
        EXPECT_LE(result.length, before * (1.0 + 1e-12));  // one sum may round otherwise
        before = result.length;
    }
}

TEST(nmkTravelOrder, takes_a_negative_effort_as_none) {
    nmkTravelOrder order(random_points(50, 4));
    order.set_steps(-7);
    EXPECT_EQ(order.find().steps, 0);
}

TEST(nmkTravelOrder, keeps_the_best_so_far_when_it_is_stopped) {
    const nmkTravelProblem problem = random_points(500, 6);
    for (const int stop_at : {0, 1, 5, 50}) {
        StoppingProgress progress(stop_at);
        nmkTravelOrder order(problem);
        order.set_progress(&progress);
        const nmkTravelResult result = order.find();
        EXPECT_EQ(result.stop_reason, nmkTravelStopReason::stopped);
        EXPECT_EQ(progress.jumps, stop_at);
        EXPECT_TRUE(plain::is_allowed(problem, result.order, result.is_reversed));
    }
}

TEST(nmkTravelOrder, reports_its_progress_to_the_end) {
    StoppingProgress progress(-1);
    nmkTravelOrder order(random_points(100, 6));
    order.set_progress(&progress);
    EXPECT_EQ(order.find().stop_reason, nmkTravelStopReason::finished);
    EXPECT_TRUE(progress.is_complete);
    EXPECT_GT(progress.jumps, 10);
}

TEST(nmkTravelOrder, ends_at_its_time_limit_with_a_whole_order) {
    const nmkTravelProblem problem = random_points(3000, 6);
    for (const double seconds : {0.0, -1.0, std::nan(""), 0.01}) {
        nmkTravelOrder order(problem);
        order.set_time_limit(seconds);
        const nmkTravelResult result = order.find();
        EXPECT_EQ(result.stop_reason, nmkTravelStopReason::time_limit) << seconds;
        EXPECT_TRUE(plain::is_allowed(problem, result.order, result.is_reversed)) << seconds;
    }
}

TEST(nmkTravelOrder, divides_many_items_into_cells) {
    const nmkTravelProblem problem = random_points(13000, 6);
    nmkTravelOrder order(problem);
    order.set_steps(0);
    const nmkTravelResult result = order.find();
    EXPECT_TRUE(plain::is_allowed(problem, result.order, result.is_reversed));
    EXPECT_LT(result.length, 0.7124 * std::sqrt(13000.0) * 100000.0 * 1.08);
}

TEST(nmkTravelOrder, orders_points_that_are_all_equal) {
    nmkTravelProblem problem = points_on_a_line(std::vector<double>(100, 7.0));
    const nmkTravelResult result = nmkTravelOrder(problem).find();
    EXPECT_EQ(result.length, 0.0);
    EXPECT_TRUE(plain::is_allowed(problem, result.order, result.is_reversed));
}

TEST(nmkTravelOrder, orders_coordinates_whose_squares_overflow) {
    nmkTravelProblem problem;
    for (int i = 0; i < 30; ++i) {
        const double x = (i * 7 % 30 - 15) * 1e307;
        problem.items.push_back(nmkTravelItem::point({x, 0.0, 0.0}));
    }
    const nmkTravelResult result = nmkTravelOrder(problem).find();
    EXPECT_EQ(result.stop_reason, nmkTravelStopReason::finished);
    EXPECT_TRUE(plain::is_allowed(problem, result.order, result.is_reversed));
    for (std::size_t k = 1; k < result.order.size(); ++k) {
        const auto x = [&](std::size_t place) {
            return problem.items[static_cast<std::size_t>(result.order[place])].start.x;
        };
        EXPECT_LT(std::fabs(x(k) - x(k - 1)), 1.5e307);
    }
}

TEST(nmkTravelOrder, scales_by_powers_of_two_without_a_change) {
    nmkTravelProblem problem = random_points(100, 12);
    const nmkTravelResult result = nmkTravelOrder(problem).find();
    for (nmkTravelItem& item : problem.items) {
        item.start = {item.start.x * 0x1p+400, item.start.y * 0x1p+400, 0.0};
    }
    const nmkTravelResult scaled = nmkTravelOrder(problem).find();
    EXPECT_EQ(scaled.order, result.order);
    EXPECT_EQ(scaled.length, result.length * 0x1p+400);
}

struct BadProblem {
    const char* name;
    nmkTravelProblem problem;
    const char* error;
};

std::ostream& operator<<(std::ostream& out, const BadProblem& bad) { return out << bad.name; }

template <class Change>
nmkTravelProblem changed(const Change& change) {
    nmkTravelProblem problem = points_on_a_line({1.0, 2.0, 3.0, 4.0});
    change(problem);
    return problem;
}

using Problem = nmkTravelProblem;

nmkTravelProblem timed(const nmkTravelAxes& speed, const nmkTravelAxes& acceleration) {
    return changed([&](Problem& problem) {
        problem.measure = nmkTravelMeasure::time;
        problem.speed = speed;
        problem.acceleration = acceleration;
    });
}

const BadProblem bad_problems[] = {
    {"a_coordinate_that_is_not_a_number",
     changed([](Problem& p) { p.items[2].start.y = std::nan(""); }),
     "item 2: expected finite coordinates"},
    {"a_coordinate_that_is_infinite", changed([](Problem& p) { p.items[1].start.x = -INFINITY; }),
     "item 1: expected finite coordinates"},
    {"a_point_that_is_unset", changed([](Problem& p) { p.items[0].start = giPoint3(); }),
     "item 0: expected finite coordinates"},
    {"a_line_without_an_end", changed([](Problem& p) {
         p.items[3] = nmkTravelItem::line({0.0, 0.0, 0.0}, giPoint3());
     }),
     "item 3: expected finite coordinates"},
    {"an_unknown_kind",
     changed([](Problem& p) { p.items[1].kind = static_cast<nmkTravelItemKind>(9); }),
     "item 1: unknown kind; expected a point, a line or a one-way line"},
    {"a_start_at_the_start", changed([](Problem& p) { p.start = nmkTravelEnd::at_start(); }),
     "start: expected free, a place or an item"},
    {"a_start_place_that_is_unset",
     changed([](Problem& p) { p.start = nmkTravelEnd::at_place(giPoint3()); }),
     "start: expected finite coordinates"},
    {"an_end_item_that_does_not_exist",
     changed([](Problem& p) { p.end = nmkTravelEnd::at_item(4); }), "end: item 4 does not exist"},
    {"one_item_for_both_ends", changed([](Problem& p) {
         p.start = nmkTravelEnd::at_item(1);
         p.end = nmkTravelEnd::at_item(1);
     }),
     "end: item 1 is the start as well; expected another, or the end at the start"},
    {"an_unknown_measure",
     changed([](Problem& p) { p.measure = static_cast<nmkTravelMeasure>(7); }),
     "measure: unknown; expected length, Chebyshev or time"},
    {"a_speed_below_zero", timed({1.0, -1.0, 1.0}, {1.0, 1.0, 1.0}),
     "speed: expected numbers above 0 for all axes"},
    {"a_speed_that_is_not_a_number", timed({1.0, 1.0, std::nan("")}, {1.0, 1.0, 1.0}),
     "speed: expected numbers above 0 for all axes"},
    {"an_infinite_acceleration", timed({1.0, 1.0, 1.0}, {INFINITY, 1.0, 1.0}),
     "acceleration: expected numbers above 0 for all axes"},
    {"an_acceleration_that_is_not_given", timed({1.0, 1.0, 1.0}, {}),
     "acceleration: expected numbers above 0 for all axes"},
    {"a_move_that_takes_forever", timed({1e-308, 1e-308, 1e-308}, {1e-308, 1e-308, 1e-308}),
     "speed, acceleration: expected moves of a time that is finite"},
    {"a_group_with_an_item_that_does_not_exist", changed([](Problem& p) {
         p.groups = {{{0, -1}, false}};
     }),
     "group 0: item -1 does not exist"},
    {"an_item_in_two_groups", changed([](Problem& p) {
         p.groups = {{{0, 1}, false}, {{2, 1}, true}};
     }),
     "group 1: item 1 is in a group already"},
    {"a_start_inside_a_group_that_keeps_its_order", changed([](Problem& p) {
         p.start = nmkTravelEnd::at_item(1);
         p.groups = {{{0, 1}, true}};
     }),
     "group 0: keeps its order; expected the start item as its first"},
    {"an_end_inside_a_group_that_keeps_its_order", changed([](Problem& p) {
         p.end = nmkTravelEnd::at_item(0);
         p.groups = {{{0, 1}, true}};
     }),
     "group 0: keeps its order; expected the end item as its last"},
    {"both_ends_in_a_group_of_some_items", changed([](Problem& p) {
         p.start = nmkTravelEnd::at_item(0);
         p.end = nmkTravelEnd::at_item(1);
         p.groups = {{{0, 1, 2}, false}};
     }),
     "group 0: has the start item and the end item; expected all other items in it too"},
};

class nmkTravelOrder_bad_problem : public ::testing::TestWithParam<BadProblem> {};

TEST_P(nmkTravelOrder_bad_problem, is_reported_and_nothing_is_ordered) {
    const nmkTravelResult result = nmkTravelOrder(GetParam().problem).find();
    EXPECT_EQ(result.stop_reason, nmkTravelStopReason::bad_problem);
    EXPECT_EQ(result.error, GetParam().error);
    EXPECT_TRUE(result.order.empty());
}

INSTANTIATE_TEST_SUITE_P(table, nmkTravelOrder_bad_problem, ::testing::ValuesIn(bad_problems),
                         [](const auto& tested) { return std::string(tested.param.name); });

TEST(nmkTravelOrder_sort, puts_a_list_into_order) {
    sort_samples::Holes holes;
    for (const double x : {4.0, 1.0, 3.0, 2.0}) holes.add(x, 0.0);
    nmkSortList list;
    holes.give_to(list);
    nmkTravelProblem settings;
    settings.start = nmkTravelEnd::at_place({0.0, 0.0, 0.0});
    const nmkTravelResult result = nmkTravelOrder::sort(list, false, settings);
    EXPECT_EQ(result.length, 4.0);
    EXPECT_EQ(indices(list), (std::vector<int>{1, 3, 2, 0}));
    EXPECT_EQ(result.order, (std::vector<int>{1, 3, 2, 0}));
}

TEST(nmkTravelOrder_sort, reverses_lines_that_are_better_cut_the_other_way) {
    sort_samples::Lines lines;
    lines.add(giPoint3(2.0, 0.0, 0.0), giPoint3(1.0, 0.0, 0.0));
    lines.add(giPoint3(3.0, 0.0, 0.0), giPoint3(4.0, 0.0, 0.0));
    lines.add(giPoint3(5.0, 0.0, 0.0), giPoint3(6.0, 0.0, 0.0)).reverse();  // travelled from 6 to 5
    nmkSortList list;
    lines.give_to(list);
    nmkTravelProblem settings;
    settings.start = nmkTravelEnd::at_place({0.0, 0.0, 0.0});
    const nmkTravelResult result = nmkTravelOrder::sort(list, false, settings);
    EXPECT_EQ(result.length, 3.0);
    EXPECT_EQ(indices(list), (std::vector<int>{0, 1, 2}));
    EXPECT_EQ(lines[0].reversed(), 1);
    EXPECT_EQ(lines[1].reversed(), 0);
    EXPECT_EQ(lines[2].reversed(), 0);
    EXPECT_EQ(result.is_reversed, (std::vector<bool>{true, false, true}));
}

TEST(nmkTravelOrder_sort, leaves_one_way_lines_as_they_are) {
    sort_samples::Lines lines;
    lines.add(giPoint3(2.0, 0.0, 0.0), giPoint3(1.0, 0.0, 0.0));
    lines.add(giPoint3(4.0, 0.0, 0.0), giPoint3(3.0, 0.0, 0.0));
    nmkSortList list;
    lines.give_to(list);
    EXPECT_EQ(nmkTravelOrder::sort(list, true).length, 1.0);
    EXPECT_EQ(indices(list), (std::vector<int>{1, 0}));
    EXPECT_EQ(lines[0].reversed(), 0);
}

TEST(nmkTravelOrder_sort, takes_a_line_without_an_end_as_a_point) {
    sort_samples::Lines lines;
    lines.add(giPoint3(2.0, 0.0, 0.0), giPoint3());
    lines.add(giPoint3(1.0, 0.0, 0.0), giPoint3());
    nmkSortList list;
    lines.give_to(list);
    EXPECT_EQ(nmkTravelOrder::sort(list).length, 1.0);
}

TEST(nmkTravelOrder_sort, leaves_the_list_of_a_bad_problem_as_it_is) {
    sort_samples::Holes holes;
    holes.add(2.0, 0.0);
    holes.add(std::nan(""), 0.0);
    nmkSortList list;
    holes.give_to(list);
    const nmkTravelResult result = nmkTravelOrder::sort(list);
    EXPECT_EQ(result.stop_reason, nmkTravelStopReason::bad_problem);
    EXPECT_EQ(indices(list), (std::vector<int>{0, 1}));
}

}  // namespace

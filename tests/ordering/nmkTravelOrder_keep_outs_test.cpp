// Tests of orders beside keep-outs, against all orders with the plain ways.
#include <gtest/gtest.h>
#include <nmktoolbox/ordering/nmkTravelOrder.h>
#include <nmktoolbox/ordering/nmkTravelWays.h>

#include <string>
#include <vector>

#include "ordering/plain_keep_outs.h"
#include "ordering/travel_families.h"

namespace {

class nmkTravelOrder_keep_outs : public ::testing::TestWithParam<plain::TravelFamily> {};

// The time of a way rounds differently in the two units.
double rounding(double length) { return 1e-11 * length; }

bool is_enclosed(const nmkTravelProblem& problem) {
    nmkTravelOrder order(problem);
    order.set_steps(0);
    return order.find().error.find("enclose") != std::string::npos;
}

TEST_P(nmkTravelOrder_keep_outs, is_as_short_as_the_best_of_all_orders) {
    int longer = 0;
    for (int n = 2; n <= 6; ++n) {
        for (std::uint32_t seed = 1; seed <= 12; ++seed) {
            const auto problem = plain::drawn_travel_beside(n, GetParam().traits, 6, seed);
            if (is_enclosed(problem)) continue;
            const nmkTravelResult result = nmkTravelOrder(problem).find();
            ASSERT_EQ(result.error, "") << n << " " << seed;
            ASSERT_TRUE(plain::is_allowed(problem, result.order, result.is_reversed));
            plain::PlainWays ways(problem);
            const auto leg = [&](const giPoint3& a, const giPoint3& b) {
                return ways.length(a, b);
            };
            const double least = plain::ShortestTravel(problem, leg).length();
            ASSERT_NEAR(result.length, least, rounding(least)) << n << " " << seed;
            ASSERT_NEAR(plain::travel_length(problem, result.order, result.is_reversed, leg), least,
                        rounding(least));
            longer += least > plain::ShortestTravel(problem).length() * 1.000001 ? 1 : 0;
        }
    }
    EXPECT_GT(longer, GetParam().traits.side > 100 ? 5 : -1);
}

TEST_P(nmkTravelOrder_keep_outs, counts_the_ways_of_many_items) {
    for (std::uint32_t seed = 1; seed <= 4; ++seed) {
        nmkTravelProblem problem = plain::drawn_travel_beside(60, GetParam().traits, 15, seed);
        nmkTravelOrder order(problem);
        order.set_steps(300);
        const nmkTravelResult result = order.find();
        if (result.error.find("enclose") != std::string::npos) continue;
        ASSERT_EQ(result.error, "") << seed;
        ASSERT_TRUE(plain::is_allowed(problem, result.order, result.is_reversed)) << seed;
        const nmkTravelWays ways(problem);
        const auto leg = [&](const giPoint3& a, const giPoint3& b) { return ways.length(a, b); };
        const double length = plain::travel_length(problem, result.order, result.is_reversed, leg);
        EXPECT_NEAR(result.length, length, rounding(length)) << seed;
        EXPECT_LE(result.lower_bound, result.length) << seed;
    }
}

INSTANTIATE_TEST_SUITE_P(families, nmkTravelOrder_keep_outs,
                         ::testing::ValuesIn(plain::travel_families),
                         [](const auto& tested) { return std::string(tested.param.name); });

nmkTravelProblem two_rows_with_a_wall_between() {
    nmkTravelProblem problem;
    for (int i = 0; i < 20; ++i) {
        problem.items.push_back(nmkTravelItem::point({10.0 * i, 0.0, 0.0}));
        problem.items.push_back(nmkTravelItem::point({10.0 * i, 6.0, 0.0}));
    }
    problem.keep_outs = {nmkTravelKeepOut::rectangle({-100.0, 2.0}, {185.0, 4.0}, 0.0, 0.1)};
    return problem;
}

TEST(nmkTravelOrder_beside_keep_outs, is_made_for_the_ways_around) {
    const nmkTravelProblem problem = two_rows_with_a_wall_between();
    const nmkTravelResult result = nmkTravelOrder(problem).find();
    // Along one row, up at its right end, and back along the other.
    EXPECT_DOUBLE_EQ(result.length, 2.0 * 190.0 + 6.0);
    nmkTravelProblem open = problem;
    open.keep_outs.clear();
    const nmkTravelResult without = nmkTravelOrder(open).find();
    const nmkTravelWays ways(problem);
    const auto leg = [&](const giPoint3& a, const giPoint3& b) { return ways.length(a, b); };
    EXPECT_GT(plain::travel_length(problem, without.order, without.is_reversed, leg), 1000.0);
}

TEST(nmkTravelOrder_beside_keep_outs, does_not_change_where_none_is_near) {
    nmkTravelProblem problem = plain::drawn_travel(12, {}, 5);
    const nmkTravelResult without = nmkTravelOrder(problem).find();
    problem.keep_outs = {nmkTravelKeepOut::circle({5000.0, 5000.0}, 10.0, 2.0, 0.01)};
    const nmkTravelResult result = nmkTravelOrder(problem).find();
    EXPECT_EQ(result.order, without.order);
    EXPECT_EQ(result.length, without.length);
}

struct BadCase {
    const char* name;
    nmkTravelProblem problem;
    const char* error;
};

std::ostream& operator<<(std::ostream& out, const BadCase& tested) { return out << tested.name; }

class nmkTravelOrder_bad_keep_outs : public ::testing::TestWithParam<BadCase> {};

TEST_P(nmkTravelOrder_bad_keep_outs, is_a_bad_problem) {
    const nmkTravelResult result = nmkTravelOrder(GetParam().problem).find();
    EXPECT_EQ(result.stop_reason, nmkTravelStopReason::bad_problem);
    EXPECT_EQ(result.error, GetParam().error);
    EXPECT_TRUE(result.order.empty());
}

nmkTravelProblem beside_a_clamp(const giPoint3& place) {
    nmkTravelProblem problem;
    problem.items = {nmkTravelItem::point({0.0, 0.0, 0.0}),
                     nmkTravelItem::line({1.0, 0.0, 0.0}, place),
                     nmkTravelItem::point({2.0, 0.0, 0.0})};
    problem.keep_outs = {nmkTravelKeepOut::circle({50.0, 0.0}, 5.0, 1.0, 0.1),
                         nmkTravelKeepOut::circle({80.0, 0.0}, 5.0, 1.0, 0.1)};
    return problem;
}

nmkTravelProblem with_start_in_a_clamp() {
    nmkTravelProblem problem = beside_a_clamp({3.0, 0.0, 0.0});
    problem.start = nmkTravelEnd::at_place({51.0, 0.0, 0.0});
    return problem;
}

nmkTravelProblem enclosed_by_a_ring() {
    nmkTravelProblem problem = beside_a_clamp({30.0, 0.0, 0.0});
    problem.keep_outs = {nmkTravelKeepOut::polygon({{20, -10},
                                                    {40, -10},
                                                    {40, 10},
                                                    {20, 10},
                                                    {20, 1},
                                                    {21, 1},
                                                    {21, 9},
                                                    {39, 9},
                                                    {39, -9},
                                                    {21, -9},
                                                    {21, -1},
                                                    {20, -1}},
                                                   2.0, 0.1)};
    problem.items[2] = nmkTravelItem::point({30.0, 1.0, 0.0});
    return problem;
}

nmkTravelProblem with_large_coordinates() { return beside_a_clamp({1e200, 0.0, 0.0}); }

INSTANTIATE_TEST_SUITE_P(
    cases, nmkTravelOrder_bad_keep_outs,
    ::testing::Values(
        BadCase{"end_of_a_line_inside", beside_a_clamp({82.0, 0.0, 0.0}),
                "item 1: inside keep-out 1; expected a place outside"},
        BadCase{"start_inside", with_start_in_a_clamp(),
                "start: inside keep-out 0; expected a place outside"},
        BadCase{"enclosed_place", enclosed_by_a_ring(),
                "item 1: keep-outs enclose it; expected a place that can be reached from the "
                "others"},
        BadCase{"large_coordinates", with_large_coordinates(),
                "expected coordinates from -1e100 to 1e100 beside keep-outs"}),
    [](const auto& tested) { return std::string(tested.param.name); });

}  // namespace

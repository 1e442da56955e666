// Tests of the limits of a search beside keep-outs: how much is done after the time is over,
// counted in ways that are searched, by a clock of the tests' own.
#include <gtest/gtest.h>
#include <nmktoolbox/ordering/nmkTravelOrder.h>

#include <cstdint>
#include <optional>

#include "ordering/plain_travel.h"
#include "ordering/travel_budget.h"
#include "ordering/travel_check_keep_outs.h"
#include "ordering/travel_search.h"
#include "ordering/travel_start.h"

namespace nmk_ordering {
namespace {

double now = 0.0;        // seconds
double of_a_look = 0.0;  // that pass with each look at the clock

double clock_of_tests() { return now += of_a_look; }

void set_clock(double seconds_of_a_look) {
    now = 0.0;
    of_a_look = seconds_of_a_look;
}

// Holes between the walls of many pockets, each of which is open at one corner.
nmkTravelProblem holes_in_open_pockets(int side) {
    nmkTravelProblem problem;
    for (int row = 0; row < side; ++row) {
        for (int column = 0; column < side; ++column) {
            const double x = 20.0 * column, y = 20.0 * row;
            problem.items.push_back(nmkTravelItem::point({x + 8.0, y + 8.0, 0.0}));
            problem.keep_outs.push_back(
                {{{{x, y}, {x + 16.0, y}, {x + 16.0, y + 1.0}, {x, y + 1.0}},
                  {{x, y}, {x + 1.0, y}, {x + 1.0, y + 16.0}, {x, y + 16.0}},
                  {{x, y + 15.0}, {x + 16.0, y + 15.0}, {x + 16.0, y + 16.0}, {x, y + 16.0}},
                  {{x + 15.0, y}, {x + 16.0, y}, {x + 16.0, y + 14.0}, {x + 15.0, y + 14.0}}}});
        }
    }
    return problem;
}

struct Effort {
    nmkTravelStopReason reason;
    std::int64_t searched;  // ways between items
};

Effort searched_with(const nmkTravelProblem& problem, std::optional<double> seconds) {
    TravelNetwork network(problem);
    TravelBudget budget(200, seconds, nullptr, &clock_of_tests);
    const TravelSequence start = start_sequence(network);
    const std::int64_t of_start = network.legs()->ways().searched();
    const TravelSequence found = search_sequence(network, start, budget);
    EXPECT_TRUE(plain::is_allowed(problem, found.order, found.is_reversed));
    return {budget.stop_reason(), network.legs()->ways().searched() - of_start};
}

TEST(travel_budget, ends_a_search_beside_keep_outs_within_a_few_ways) {
    const nmkTravelProblem problem = holes_in_open_pockets(8);
    set_clock(1.0);
    const Effort whole = searched_with(problem, std::nullopt);
    EXPECT_EQ(whole.reason, nmkTravelStopReason::finished);
    EXPECT_GT(whole.searched, 500);
    set_clock(1.0);
    const Effort cut = searched_with(problem, 2.5);  // at the third look
    EXPECT_EQ(cut.reason, nmkTravelStopReason::time_limit);
    EXPECT_LT(cut.searched, 200);
    EXPECT_GE(cut.searched, 32);
}

TEST(travel_budget, never_looks_at_the_clock_without_a_limit) {
    set_clock(1.0);
    searched_with(holes_in_open_pockets(3), std::nullopt);
    EXPECT_EQ(now, 1.0);  // where it begins
}

TEST(travel_budget, ends_the_check_for_enclosed_places) {
    const nmkTravelProblem problem = holes_in_open_pockets(12);
    const TravelNetwork network(problem);
    set_clock(1.0);
    TravelBudget budget(0, 2.5, nullptr, &clock_of_tests);
    EXPECT_EQ(fault_of_places(network, budget), "");
    EXPECT_TRUE(budget.is_over());
    EXPECT_EQ(now, 4.0);  // nothing looks any more
}

TEST(travel_budget, leaves_an_enclosed_place_unfound_when_it_is_over_but_not_one_inside) {
    nmkTravelProblem problem = holes_in_open_pockets(1);
    problem.items.push_back(nmkTravelItem::point({50.0, 50.0, 0.0}));
    problem.keep_outs[0].parts[3] = {{15.0, 0.0}, {16.0, 0.0}, {16.0, 16.0}, {15.0, 16.0}};
    const auto fault_of = [](const nmkTravelProblem& with, double seconds) {
        const TravelNetwork network(with);
        set_clock(1.0);
        TravelBudget budget(0, seconds, nullptr, &clock_of_tests);
        budget.look();
        return fault_of_places(network, budget);
    };
    EXPECT_EQ(fault_of(problem, 0.5), "");
    EXPECT_EQ(fault_of(problem, 1e9),
              "item 1: keep-outs enclose it; expected a place that can be reached from the others");
    problem.items[1] = nmkTravelItem::point({8.0, 0.5, 0.0});
    EXPECT_EQ(fault_of(problem, 0.5), "item 1: inside keep-out 0; expected a place outside");
}

// The same by the reporter, from outside.
struct StopAtFirstLook : nmkProgressBreak {
    int jump_to(double) override {
        ++looks;
        return 1;
    }
    int looks = 0;
};

TEST(travel_budget, a_stop_is_seen_while_ways_are_searched) {
    StopAtFirstLook stop;
    nmkTravelOrder order(holes_in_open_pockets(6));
    order.set_steps(0);
    order.set_progress(&stop);
    EXPECT_EQ(order.find().stop_reason, nmkTravelStopReason::stopped);
    EXPECT_EQ(stop.looks, 1);
}

}  // namespace
}  // namespace nmk_ordering

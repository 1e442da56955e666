// Tests of the search above the exact size: on small problems against all orders, on larger ones
// against what every result has to keep.
#include <gtest/gtest.h>
#include <nmktoolbox/ordering/nmkTravelOrder.h>

#include <string>

#include "ordering/plain_travel.h"
#include "ordering/travel_families.h"
#include "ordering/travel_search.h"
#include "ordering/travel_start.h"
#include "ordering/travel_turns.h"

namespace {

using nmk_ordering::TravelBudget;
using nmk_ordering::TravelNetwork;
using nmk_ordering::TravelSequence;

TravelSequence searched(const nmkTravelProblem& problem, std::int64_t steps) {
    TravelNetwork network(problem);
    TravelBudget budget(steps, std::nullopt, nullptr);
    const TravelSequence start = nmk_ordering::start_sequence(network);
    network.chain_groups(start);
    TravelSequence sequence = nmk_ordering::search_sequence(network, start, budget);
    nmk_ordering::choose_turns(network, sequence);
    return sequence;
}

class travel_search : public ::testing::TestWithParam<plain::TravelFamily> {};

// The search alone, with no proof: nearly all of the small problems are solved.
TEST_P(travel_search, nearly_always_finds_the_shortest_of_all_orders) {
    int shortest = 0;
    constexpr int problems = 100;
    for (std::uint32_t seed = 1; seed <= problems; ++seed) {
        const int n = 4 + static_cast<int>(seed % 4);
        const nmkTravelProblem problem = plain::drawn_travel(n, GetParam().traits, seed);
        const TravelSequence sequence = searched(problem, 300);
        ASSERT_TRUE(plain::is_allowed(problem, sequence.order, sequence.is_reversed)) << seed;
        const double length = plain::travel_length(problem, sequence.order, sequence.is_reversed);
        const double least = plain::ShortestTravel(problem).length();
        ASSERT_GE(length, least * (1.0 - 1e-12)) << seed;
        shortest += length <= least * (1.0 + 1e-12) ? 1 : 0;
    }
    EXPECT_GE(shortest, 90);
}

TEST_P(travel_search, keeps_what_the_problem_demands) {
    for (std::uint32_t seed = 1; seed <= 30; ++seed) {
        const int n = 13 + static_cast<int>(seed * 7);
        const nmkTravelProblem problem = plain::drawn_travel(n, GetParam().traits, seed);
        nmkTravelOrder order(problem);
        order.set_steps(500);
        const nmkTravelResult result = order.find();
        ASSERT_EQ(result.stop_reason, nmkTravelStopReason::finished) << result.error;
        ASSERT_TRUE(plain::is_allowed(problem, result.order, result.is_reversed)) << seed;
        const double length = plain::travel_length(problem, result.order, result.is_reversed);
        EXPECT_NEAR(result.length, length, 1e-9 * length) << seed;
        EXPECT_LE(result.lower_bound, result.length) << seed;
        EXPECT_EQ(result.steps, 500) << seed;
        const TravelSequence start = nmk_ordering::start_sequence(TravelNetwork(problem));
        EXPECT_LE(length, plain::travel_length(problem, start.order, start.is_reversed)) << seed;
    }
}

INSTANTIATE_TEST_SUITE_P(families, travel_search, ::testing::ValuesIn(plain::travel_families),
                         [](const auto& tested) { return std::string(tested.param.name); });

TEST(travel_search_bound, is_never_above_the_shortest_of_all_orders) {
    for (const plain::TravelFamily& family : plain::travel_families) {
        for (std::uint32_t seed = 1; seed <= 100; ++seed) {
            const nmkTravelProblem problem = plain::drawn_travel(5, family.traits, seed);
            const TravelNetwork network(problem);
            double bound = nmk_ordering::lower_bound(network);
            if (problem.measure != nmkTravelMeasure::time) bound *= network.unit();
            const double least = plain::ShortestTravel(problem).length();
            EXPECT_LE(bound, least * (1.0 + 1e-12)) << family.name << ", seed " << seed;
        }
    }
}

TEST(travel_search_bound, is_near_the_length_of_many_random_points) {
    nmkTravelProblem problem = plain::drawn_travel(1000, {}, 3);
    problem.start = {};
    problem.end = nmkTravelEnd::at_start();
    problem.measure = nmkTravelMeasure::length;
    nmkTravelOrder order(problem);
    order.set_steps(1000);
    const nmkTravelResult result = order.find();
    EXPECT_GT(result.lower_bound, 0.8 * result.length);
    EXPECT_LT(result.lower_bound, result.length);
}

}  // namespace

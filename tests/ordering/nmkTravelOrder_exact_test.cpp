// Tests of the shortest orders of a few items, against all orders.
#include <gtest/gtest.h>
#include <nmktoolbox/ordering/nmkTravelOrder.h>

#include <string>

#include "ordering/plain_travel.h"
#include "ordering/travel_families.h"

namespace {

// All sums have the same terms, but not in the same order.
double rounding(double length) { return 1e-12 * length; }

void expect_shortest(int n, const plain::TravelTraits& traits, std::uint32_t seed) {
    const nmkTravelProblem problem = plain::drawn_travel(n, traits, seed);
    const nmkTravelResult result = nmkTravelOrder(problem).find();
    const std::string what = "n " + std::to_string(n) + ", seed " + std::to_string(seed);
    ASSERT_EQ(result.stop_reason, nmkTravelStopReason::finished) << what << ": " << result.error;
    ASSERT_TRUE(plain::is_allowed(problem, result.order, result.is_reversed)) << what;
    const double least = plain::ShortestTravel(problem).length();
    ASSERT_NEAR(result.length, least, rounding(least)) << what;
    ASSERT_NEAR(plain::travel_length(problem, result.order, result.is_reversed), least,
                rounding(least))
        << what;
    ASSERT_TRUE(result.is_shortest) << what;
    ASSERT_EQ(result.lower_bound, result.length) << what;
}

class nmkTravelOrder_exact : public ::testing::TestWithParam<plain::TravelFamily> {};

TEST_P(nmkTravelOrder_exact, is_as_short_as_the_best_of_all_orders) {
    for (int n = 1; n <= 6; ++n) {
        for (std::uint32_t seed = 1; seed <= 50; ++seed)
            expect_shortest(n, GetParam().traits, seed);
    }
}

#ifdef NDEBUG
TEST_P(nmkTravelOrder_exact, is_as_short_as_the_best_of_all_orders_of_seven_and_eight) {
    for (int n = 7; n <= 8; ++n) {
        for (std::uint32_t seed = 1; seed <= 100; ++seed)
            expect_shortest(n, GetParam().traits, seed);
    }
}
#endif

INSTANTIATE_TEST_SUITE_P(families, nmkTravelOrder_exact,
                         ::testing::ValuesIn(plain::travel_families),
                         [](const auto& tested) { return std::string(tested.param.name); });

}  // namespace

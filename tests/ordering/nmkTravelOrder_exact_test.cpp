// Tests of the shortest orders of a few items, against all orders.
#include <gtest/gtest.h>
#include <nmktoolbox/ordering/nmkTravelOrder.h>

#include <ostream>
#include <string>

#include "ordering/plain_travel.h"

namespace {

struct Family {
    const char* name;
    plain::TravelTraits traits;
};

std::ostream& operator<<(std::ostream& out, const Family& family) { return out << family.name; }

constexpr plain::TravelTraits points{};
constexpr plain::TravelTraits points_in_space{.has_z = true};
constexpr plain::TravelTraits coincident_points{.side = 3};
constexpr plain::TravelTraits lines{.has_lines = true};
constexpr plain::TravelTraits one_way_lines{.has_one_way_lines = true};
constexpr plain::TravelTraits mixed{.has_lines = true, .has_one_way_lines = true, .has_z = true};
constexpr plain::TravelTraits grouped{.has_groups = true};
constexpr plain::TravelTraits mixed_groups{
    .has_lines = true, .has_one_way_lines = true, .has_groups = true};

const Family families[] = {{"points", points},
                           {"points_in_space", points_in_space},
                           {"coincident_points", coincident_points},
                           {"lines", lines},
                           {"one_way_lines", one_way_lines},
                           {"mixed", mixed},
                           {"grouped", grouped},
                           {"mixed_groups", mixed_groups}};

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

class nmkTravelOrder_exact : public ::testing::TestWithParam<Family> {};

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

INSTANTIATE_TEST_SUITE_P(families, nmkTravelOrder_exact, ::testing::ValuesIn(families),
                         [](const auto& tested) { return std::string(tested.param.name); });

}  // namespace

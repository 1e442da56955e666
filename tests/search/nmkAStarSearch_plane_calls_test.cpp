// Every call that the search makes on nodes of the plane, compared with the plain lists.
#include <gtest/gtest.h>

#include <string>

#include "search/generated_plane.h"
#include "search/plain_search.h"

namespace {

namespace plain = nmk_search::plain;

using namespace nmk_search::generated_plane;

template <class Search>
Log calls_of(const Traits& traits, unsigned seed) {
    Scene scene(traits, seed);
    const double base = std::pow(10.0, traits.base_scale);
    const auto start = std::make_shared<nmk2dSearchNode>(giPoint2(base, -base));
    Search search(std::make_shared<Generator>(scene), std::make_shared<Verifier>(scene), start,
                  std::make_shared<Goal>(scene, base));
    std::vector<NodePointer> route;
    search.perform(coiFiller_from_container(route));
    return scene.log;
}

class PlaneCalls : public testing::TestWithParam<Traits> {};

TEST_P(PlaneCalls, are_those_of_the_plain_lists) {
    std::size_t calls = 0;
    for (unsigned seed = 1; seed <= 100; ++seed) {
        const Log ours = calls_of<nmkAStarSearch>(GetParam(), seed);
        ASSERT_EQ(ours, calls_of<plain::Search>(GetParam(), seed)) << "seed " << seed;
        calls += ours.size();
    }
    EXPECT_GT(calls, 5000u);
}

INSTANTIATE_TEST_SUITE_P(
    nmkAStarSearch, PlaneCalls,
    testing::Values(
        Traits{.name = "around_1"}, Traits{.name = "around_1e5", .base_scale = 5},
        Traits{.name = "around_1e10", .base_scale = 10},
        Traits{.name = "around_1e11", .base_scale = 11},
        Traits{.name = "around_1e12", .base_scale = 12},
        Traits{.name = "around_1e18", .extreme = 30, .base_scale = 18},
        Traits{.name = "extreme_coordinates", .extreme = 30},
        Traits{.name = "an_equality_of_their_own", .wide = 20},
        Traits{.name = "nodes_of_another_class", .foreign = 15},
        Traits{.name = "a_moving_goal", .moves = 30},
        Traits{
            .name = "everything_at_once", .wide = 10, .foreign = 10, .extreme = 10, .moves = 10}),
    [](const auto& traits) { return std::string(traits.param.name); });

}  // namespace

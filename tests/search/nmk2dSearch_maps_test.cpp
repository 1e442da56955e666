// Routes over real grid maps: as short as a Dijkstra of the tests' own finds them, and as long as
// the scenarios say.
#include <gtest/gtest.h>

#include <string>

#include "real_inputs.h"
#include "search/grid_search.h"

namespace {

using namespace nmk_search::grid;

class nmk2dSearch_maps : public testing::TestWithParam<const char*> {
  protected:
    std::string path() const { return real_inputs::path(std::string("maps/") + GetParam()); }

    void SetUp() override {
        const auto missing = real_inputs::missing(std::string("maps/") + GetParam());
        if (missing) GTEST_SKIP() << *missing;
        map = read_map(path());
        scenarios = read_scenarios(path() + ".scen");
        ASSERT_EQ(map.rows.size(), 512u);
        ASSERT_GT(scenarios.size(), 100u);
    }

    /// Some scenarios from short to long.
    std::vector<Scenario> some(std::size_t count) const {
        std::vector<Scenario> chosen;
        for (std::size_t i = 1; i <= count; ++i) {
            chosen.push_back(scenarios[i * (scenarios.size() - 1) / count]);
        }
        return chosen;
    }

    Map map;
    std::vector<Scenario> scenarios;
};

TEST_P(nmk2dSearch_maps, routes_that_may_cut_corners_are_as_short_as_dijkstra_finds_them) {
    const auto verifier = cutting_verifier(map);
    const StepRule rule{map, true};
    for (const Scenario& s : some(2)) {
        const auto cells = route(verifier, s.start, s.goal);
        EXPECT_NEAR(length_of(cells, rule), dijkstra(rule, s.start, s.goal), 1e-8);
        EXPECT_LE(length_of(cells, rule), s.length * (1 + 1e-5));
    }
}

TEST_P(nmk2dSearch_maps, routes_that_cut_no_corner_are_as_long_as_the_scenarios_say) {
    const auto verifier = std::make_shared<CornerVerifier>(map);
    const StepRule rule{map, false};
    for (const Scenario& s : some(2)) {
        const double length = length_of(route(verifier, s.start, s.goal), rule);
        EXPECT_NEAR(length, s.length, 1e-5 * s.length);  // given to six digits
        EXPECT_NEAR(length, dijkstra(rule, s.start, s.goal), 1e-8);
    }
}

TEST_P(nmk2dSearch_maps, a_cell_that_is_closed_is_never_reached) {
    const Cell closed = cell_of(*blocked_cells(map).front());
    const auto verifier = cutting_verifier(map);
    EXPECT_TRUE(route(verifier, closed, scenarios.front().goal).empty());
}

INSTANTIATE_TEST_SUITE_P(both_maps, nmk2dSearch_maps,
                         testing::Values("random512-10-0.map", "maze512-32-0.map"),
                         [](const auto& name) { return std::string(name.param).substr(0, 4); });

}  // namespace

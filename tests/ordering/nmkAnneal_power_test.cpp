// nmkAnneal_power_test.cpp: the engine's own exp and pow, and orders that depend on them.

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <iomanip>
#include <limits>
#include <random>
#include <sstream>
#include <string>

#include "ordering/plain_problems.h"
#include "real_inputs.h"

namespace {

using plain::Engine;

struct nmkAnneal_power : ::testing::Test {
    giPoint3coPageArr none;
    nmkAnnealStatePoints state{&none}, best{&none};
    Engine engine{state, best};
};

bool within_one_unit(double a, double b) {
    return a == b || a == std::nextafter(b, 1e300) || a == std::nextafter(b, -1e300);
}

TEST_F(nmkAnneal_power, cools_as_the_rounded_exponential_does) {
    engine.start_temperature = 1.0;
    int differing = 0;
    for (int k = 0; k < 76000; ++k) {
        const double rounded = static_cast<double>(std::exp(static_cast<long double>(k * -0.01)));
        const double ours = engine.temperature(k);
        ASSERT_TRUE(within_one_unit(ours, rounded)) << k << std::hexfloat << ours << rounded;
        if (ours != rounded) ++differing;
    }
    // The wider arithmetic has 11 bits more, so it rounds wrongly once in a thousand or two.
    EXPECT_LT(differing, 76000 / 500);
}

TEST_F(nmkAnneal_power, accepts_as_the_rounded_power_does) {
    std::mt19937 words(41);
    int differing = 0;
    for (int k = 0; k < 20000; ++k) {
        const double rise = std::exp2(static_cast<double>(words()) / 4294967296.0 * 60.0 - 50.0);
        const double base = rise * 0.10000000000000009 / 1.0 + 1.0;
        const double power = static_cast<double>(
            std::pow(static_cast<long double>(base), static_cast<long double>(9.999999999999991)));
        const double ours = Engine::probability(0.0, rise, 1.0);
        // One unit of the power may be two of its reciprocal.
        ASSERT_TRUE(ours == 1.0 / power || ours == 1.0 / std::nextafter(power, 1e300) ||
                    ours == 1.0 / std::nextafter(power, 0.0))
            << std::hexfloat << rise;
        if (ours != 1.0 / power) ++differing;
    }
    EXPECT_LT(differing, 20000 / 100);
}

TEST_F(nmkAnneal_power, handles_infinities_and_nan) {
    const double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(Engine::probability(0.0, infinity, 1.0), 0.0);
    EXPECT_TRUE(std::isnan(Engine::probability(0.0, std::nan(""), 1.0)));
    EXPECT_TRUE(std::isnan(Engine::probability(0.0, 100.0, -1.0)));
    engine.start_temperature = infinity;
    EXPECT_EQ(engine.temperature(3), infinity);
}

struct Golden {
    std::string kind;
    int spread = 0;
    int n = 0;
    std::uint32_t seed = 0;
};

std::vector<int> annealed(nmkAnnealOrderState& state, nmkAnnealOrderState& best) {
    nmkAnneal anneal(state, best);
    anneal.seed(9);
    anneal.simulate();
    return plain::items_of(best);
}

std::vector<int> annealed(const Golden& golden) {
    const auto spread = static_cast<plain::Spread>(golden.spread);
    const giPoint3coPageArr from =
        plain::paged(plain::spread_points(spread, golden.n, golden.seed));
    const giPoint3coPageArr to =
        plain::paged(plain::spread_points(spread, golden.n, golden.seed + 1));
    if (golden.kind == "points") {
        nmkAnnealStatePoints state(&from), best(&from);
        return annealed(state, best);
    }
    if (golden.kind == "reversible") {
        nmkAnnealStateReversibleLines state(from, to), best(from, to);
        return annealed(state, best);
    }
    const int closed = golden.kind == "one_way_closed" ? 1 : 0;
    nmkAnnealStateNonReversible state(from, to, closed), best(from, to, closed);
    return annealed(state, best);
}

// The file holds the orders that every machine must give: kind, spread, n, seed of the points, then
// the order.
TEST(nmkAnneal, gives_the_same_orders_on_every_machine) {
    std::ifstream file(NMK_CASES_DIR "/annealed_orders.txt");
    ASSERT_TRUE(file) << NMK_CASES_DIR;
    int cases = 0;
    for (std::string line; std::getline(file, line);) {
        if (line.empty() || line[0] == '#') continue;
        std::istringstream words(line);
        Golden golden;
        words >> golden.kind >> golden.spread >> golden.n >> golden.seed;
        std::vector<int> expected;
        for (int item; words >> item;) expected.push_back(item);
        const std::vector<int> order = annealed(golden);
        EXPECT_EQ(order, expected) << line << "\nnow: " << ::testing::PrintToString(order);
        ++cases;
    }
    EXPECT_GE(cases, 8);
}

giPoint3coPageArr read_tsp(const std::string& path) {
    giPoint3coPageArr points;
    std::ifstream file(path);
    std::string line;
    while (std::getline(file, line) && line.find("NODE_COORD_SECTION") == std::string::npos) {
    }
    int number = 0;
    double x = 0.0, y = 0.0;
    while (file >> number >> x >> y) points.add(giPoint3(x, y, 0.0));
    return points;
}

TEST(nmkAnneal, orders_a_hundred_real_points_nearly_as_well_as_is_known) {
    if (const auto missing = real_inputs::missing("tsp/kroA100.tsp")) GTEST_SKIP() << *missing;
    const giPoint3coPageArr points = read_tsp(real_inputs::path("tsp/kroA100.tsp"));
    ASSERT_EQ(points.size(), 100);
    nmkAnnealStatePoints state(&points), best(&points);
    const std::vector<int> order = annealed(state, best);
    const double shortest_closed_tour = 21282.0;
    const double path = best.length();
    EXPECT_LT(path, 1.1 * shortest_closed_tour);
    // Lengths are rounded to integers in the known figure.
    EXPECT_GT(path + best.distance(order.back(), order.front()), shortest_closed_tour - 50.0);
}

}  // namespace

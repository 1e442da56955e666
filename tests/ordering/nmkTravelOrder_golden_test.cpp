// The orders that every compiler, level of optimisation and processor has to give.
#include <gtest/gtest.h>
#include <nmktoolbox/ordering/nmkTravelOrder.h>

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "ordering/plain_travel.h"

namespace {

nmkTravelProblem golden_problem(const std::string& kind, int n, std::uint32_t seed) {
    plain::TravelTraits traits;
    traits.has_lines = kind == "lines" || kind == "mixed" || kind == "groups";
    traits.has_one_way_lines = kind == "one_way" || kind == "mixed" || kind == "groups";
    traits.has_groups = kind == "groups";
    traits.has_z = kind == "space";
    return plain::drawn_travel(n, traits, seed);
}

// The items as they are travelled; -1 - item for one that is reversed.
std::vector<int> travelled(const nmkTravelResult& result) {
    std::vector<int> order;
    for (const int item : result.order) {
        order.push_back(result.is_reversed[static_cast<std::size_t>(item)] ? -1 - item : item);
    }
    return order;
}

// The file has kind, number of items, seed, and then the order.
TEST(nmkTravelOrder, gives_the_same_orders_on_every_machine) {
    std::ifstream file(NMK_CASES_DIR "/travel_orders.txt");
    ASSERT_TRUE(file) << NMK_CASES_DIR;
    int cases = 0;
    for (std::string line; std::getline(file, line);) {
        if (line.empty() || line[0] == '#') continue;
        std::istringstream words(line);
        std::string kind;
        int n = 0;
        std::uint32_t seed = 0;
        words >> kind >> n >> seed;
        std::vector<int> expected;
        for (int item; words >> item;) expected.push_back(item);
        nmkTravelOrder travel(golden_problem(kind, n, seed));
        travel.set_steps(200);
        const std::vector<int> order = travelled(travel.find());
        std::ostringstream now;
        for (const int item : order) now << ' ' << item;
        EXPECT_EQ(order, expected) << kind << ' ' << n << ' ' << seed << now.str();
        ++cases;
    }
    EXPECT_GE(cases, 18);
}

}  // namespace

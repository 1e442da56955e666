// The heap of scores, beside an ordered set of the standard library.
#include "search/score_heap.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <limits>
#include <random>
#include <set>
#include <utility>
#include <vector>

namespace {

using nmk_search::ScoreHeap;

std::vector<double> scores_of_every_kind() {
    constexpr double infinity = std::numeric_limits<double>::infinity();
    constexpr double largest = std::numeric_limits<double>::max();
    constexpr double denormal = std::numeric_limits<double>::denorm_min();
    return {0.0,     -0.0,     1.0,      -1.0,      1.0 / 3, -1.0 / 3, 1e-300,   -1e-300,
            largest, -largest, denormal, -denormal, 2.0,     -2.0,     infinity, -infinity};
}

TEST(ScoreHeap, gives_the_smallest_score_and_of_equal_ones_the_smallest_number) {
    const unsigned seed = 90;
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    const std::vector<double> scores = scores_of_every_kind();
    ScoreHeap heap;
    std::set<std::pair<double, std::size_t>> expected;  // zeros of either sign are equal
    std::size_t next = 0;
    for (int turn = 0; turn < 20000; ++turn) {
        if (random() % 2 == 0) {
            const double score = scores[random() % scores.size()];
            // Numbers need not rise.
            const std::size_t number = next++ ^ 5u;
            heap.add(score, number);
            expected.emplace(score, number);
        } else if (!expected.empty()) {
            ASSERT_EQ(heap.first(), expected.begin()->second) << turn;
            heap.drop_first();
            expected.erase(expected.begin());
        }
        ASSERT_EQ(heap.is_empty(), expected.empty());
    }
    ASSERT_EQ(heap.numbers().size(), expected.size());
    heap.clear();
    EXPECT_TRUE(heap.is_empty());
}

}  // namespace

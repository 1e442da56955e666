#include <gtest/gtest.h>
#include <nmktoolbox/curves/nmkPolySplitter.h>

#include <cstdint>
#include <limits>
#include <ostream>
#include <utility>
#include <vector>

// Three numbers of 32 bits, as callers store them.
static_assert(sizeof(nmkPolySplitter) == 3 * sizeof(std::int32_t));

namespace {

using Piece = std::pair<int, int>;

// The pieces, at most a hundred of them.
std::vector<Piece> pieces_of(nmkPolySplitter& splitter) {
    std::vector<Piece> pieces;
    int first = -9;
    int last = -9;
    while (pieces.size() < 100) {
        const int count = splitter.next(first, last);
        if (count == 0) break;
        EXPECT_EQ(count, last - first + 1);
        pieces.emplace_back(first, last);
    }
    return pieces;
}

struct SplitCase {
    const char* name;
    int count;
    int piece;
    std::vector<Piece> expected;

    friend std::ostream& operator<<(std::ostream& out, const SplitCase& c) { return out << c.name; }
};

class nmkPolySplitter_next : public testing::TestWithParam<SplitCase> {};

}  // namespace

TEST_P(nmkPolySplitter_next, gives_pieces_that_share_their_ends) {
    const SplitCase& c = GetParam();
    nmkPolySplitter splitter(c.count, c.piece);
    EXPECT_EQ(splitter.num_seg(), static_cast<int>(c.expected.size()));
    EXPECT_EQ(pieces_of(splitter), c.expected);
    EXPECT_EQ(splitter.num_seg(), static_cast<int>(c.expected.size()));
    splitter.reset(c.count, c.piece);
    EXPECT_EQ(pieces_of(splitter), c.expected);
}

INSTANTIATE_TEST_SUITE_P(
    cases, nmkPolySplitter_next,
    testing::Values(SplitCase{"ten_points_in_fours", 10, 4, {{0, 3}, {3, 6}, {6, 9}}},
                    SplitCase{"a_last_piece_that_is_shorter", 6, 4, {{0, 3}, {3, 5}}},
                    SplitCase{"one_point_gives_nothing", 1, 4, {}},
                    SplitCase{"two_points", 2, 4, {{0, 1}}},
                    SplitCase{"fewer_points_than_a_piece", 3, 4, {{0, 2}}},
                    SplitCase{"pieces_of_two", 4, 2, {{0, 1}, {1, 2}, {2, 3}}},
                    SplitCase{"pieces_of_one_do_not_get_on", 5, 1, {}},
                    SplitCase{"pieces_of_none", 5, 0, {}},
                    SplitCase{"a_negative_piece", 5, std::numeric_limits<int>::min(), {}},
                    SplitCase{"no_points", 0, 4, {}}, SplitCase{"no_points_in_twos", 0, 2, {}},
                    SplitCase{"a_negative_count", std::numeric_limits<int>::min(), 2, {}},
                    SplitCase{"the_largest_piece", 5, std::numeric_limits<int>::max(), {{0, 4}}},
                    SplitCase{"sums_beyond_32_bits",
                              std::numeric_limits<int>::max(),
                              std::numeric_limits<int>::max() - 1,
                              {{0, 2147483645}, {2147483645, 2147483646}}}),
    [](const auto& tested) { return tested.param.name; });

TEST(nmkPolySplitter, a_count_of_0_gives_0_and_minus_1_once) {
    nmkPolySplitter splitter(0, 4);
    int first = 7;
    int last = 7;
    EXPECT_EQ(splitter.next(first, last), 0);
    EXPECT_EQ(first, 0);
    EXPECT_EQ(last, -1);
    EXPECT_EQ(splitter.next(first, last), 0);
    EXPECT_EQ(splitter.num_seg(), 0);
}

TEST(nmkPolySplitter, leaves_the_outputs_as_they_are_at_the_end) {
    nmkPolySplitter splitter(2, 4);
    int first = 0;
    int last = 0;
    EXPECT_EQ(splitter.next(first, last), 2);
    first = last = 8;
    EXPECT_EQ(splitter.next(first, last), 0);
    EXPECT_EQ(first, 8);
    EXPECT_EQ(last, 8);
}

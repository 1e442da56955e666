#include <nmktoolbox/files/nmkindex.h>

#include "files/text_samples.h"

#include <nmktoolbox/files/nmkMultiByteToWideChar.h>

#include <gtest/gtest.h>

#include <limits>

namespace {

constexpr int largest = std::numeric_limits<int>::max();
constexpr int smallest = std::numeric_limits<int>::min();

}  // namespace

TEST(nmkindex, finds_a_byte_by_its_byte_index) {
    EXPECT_EQ(nmkindex("banana", 'a', 0), 1);
    EXPECT_EQ(nmkindex("banana", 'a', 2), 3);
    EXPECT_EQ(nmkindex("banana", 'x', 0), -1);
    EXPECT_EQ(nmkindex(utString(std::string(euro) + "x"), 'x', 0), 3);
    EXPECT_EQ(nmkindex(utString(std::string("a\0b", 3)), 'b', 0), 2);
}

TEST(nmkindex, finds_no_byte_from_a_start_outside_the_text) {
    for (const int start : {6, 7, largest, -1, smallest}) {
        EXPECT_EQ(nmkindex("banana", 'a', start), -1) << start;
    }
    EXPECT_EQ(nmkindex("", 'a', 0), -1);
    EXPECT_EQ(nmkindex(utString(), 'a', 0), -1);
}

TEST(nmkindex, finds_a_text_by_its_index_in_code_units) {
    const utString text(std::string(smiley) + std::string(euro) + "abcabc");
    EXPECT_EQ(nmkindex(text, utString("abc"), 0), 3);
    EXPECT_EQ(nmkindex(text, utString("abc"), 4), 6);
    EXPECT_EQ(nmkindex(text, utString(euro), 0), 2);
    EXPECT_EQ(nmkindex(text, utString("x"), 0), -1);
}

TEST(nmkindex, gives_minus_1_beyond_the_last_possible_match) {
    EXPECT_EQ(nmkindex("abc", utString("abc"), 1), -1);
    EXPECT_EQ(nmkindex("abc", utString("c"), 3), -1);
    EXPECT_EQ(nmkindex("abc", utString("c"), largest), -1);
    EXPECT_EQ(nmkindex("abc", utString("c"), smallest), -1);
}

TEST(nmkindex, finds_the_empty_text_at_the_start) {
    EXPECT_EQ(nmkindex("abc", utString(""), 0), 0);
    EXPECT_EQ(nmkindex("abc", utString(""), 3), 3);
    EXPECT_EQ(nmkindex("abc", utString(""), 4), -1);
    EXPECT_EQ(nmkindex("", utString(""), 0), 0);
}

TEST(nmkindex, finds_nothing_in_and_for_the_null_string) {
    EXPECT_EQ(nmkindex(utString(), utString("a"), 0), -1);
    EXPECT_EQ(nmkindex("a", utString(), 0), -1);
}

TEST(nmkpos, finds_the_same_as_the_wide_search_for_any_bytes) {
    constexpr unsigned seed = 20260730;
    std::mt19937_64 draw(seed);
    for (int round = 0; round < 10000; ++round) {
        const utString text(random_text(draw, 60));
        const utString sub(random_text(draw, round % 10 == 0 ? 40 : 3));
        const int start = static_cast<int>(draw() % 70);
        const std::wstring wide = nmkMultiByteToWideChar::convert(text);
        const std::size_t found =
            wide.find(nmkMultiByteToWideChar::convert(sub), static_cast<std::size_t>(start));
        const int expected = found == std::wstring::npos ? -1 : static_cast<int>(found);
        ASSERT_EQ(nmkpos(text, sub, start), expected) << "seed " << seed << ", round " << round;
        ASSERT_EQ(nmkindex(text, sub, start), expected) << "seed " << seed << ", round " << round;
    }
}

TEST(nmkpos, finds_long_patterns_that_nearly_repeat) {
    const std::string as(3000, 'a');
    const utString text(as + "b" + as + "c");
    EXPECT_EQ(nmkpos(text, utString(as + "c"), 0), 3001);
    EXPECT_EQ(nmkpos(text, utString(as + "b"), 0), 0);
    EXPECT_EQ(nmkpos(text, utString(as + "b"), 1), -1);
    EXPECT_EQ(nmkpos(text, utString(as + "d"), 0), -1);
}

#include <nmktoolbox/files/nmkgsub.h>

#include "files/plain_replace.h"
#include "files/text_samples.h"

#include <gtest/gtest.h>

TEST(nmkgsub, replaces_a_byte_by_a_byte) {
    utString text("banana");
    EXPECT_EQ(nmkgsub(text, 'a', 'o'), 3);
    EXPECT_EQ(text.view(), "bonono");
    EXPECT_EQ(nmkgsub(text, 'x', 'y'), 0);
    EXPECT_EQ(nmkgsub(text, 'o', 'o'), 0);
    EXPECT_EQ(text.view(), "bonono");
}

TEST(nmkgsub, replaces_a_byte_by_a_text) {
    utString text("a.b");
    EXPECT_EQ(nmkgsub(text, '.', utString("::")), 1);
    EXPECT_EQ(text.view(), "a::b");
    EXPECT_EQ(nmkgsub(text, '\0', utString("x")), 0) << "the byte 0 makes an empty text";
    EXPECT_EQ(text.view(), "a::b");
}

TEST(nmkgsub, goes_left_to_right_without_overlap_and_does_not_search_again) {
    utString text("aaaaa");
    EXPECT_EQ(nmkgsub(text, utString("aa"), utString("baa")), 2);
    EXPECT_EQ(text.view(), "baabaaa");
}

TEST(nmkgsub, can_take_everything_out) {
    utString text("xx");
    EXPECT_EQ(nmkgsub(text, utString("x"), utString("")), 2);
    EXPECT_EQ(text, utString(""));
    text = "xyx";
    EXPECT_EQ(nmkgsub(text, utString("x"), utString()), 2);
    EXPECT_EQ(text.view(), "y");
}

TEST(nmkgsub, replaces_nothing_for_an_empty_pattern) {
    utString text("abc");
    EXPECT_EQ(nmkgsub(text, utString(""), utString("x")), 0);
    EXPECT_EQ(nmkgsub(text, utString(), utString("x")), 0);
    EXPECT_EQ(text.view(), "abc");
}

TEST(nmkgsub, leaves_the_null_string_null) {
    utString null;
    EXPECT_EQ(nmkgsub(null, 'a', 'b'), 0);
    EXPECT_EQ(nmkgsub(null, utString("a"), utString("b")), 0);
    EXPECT_TRUE(null.is_null());
}

TEST(nmkgsub, takes_its_own_text_for_an_argument) {
    utString text("abab");
    EXPECT_EQ(nmkgsub(text, utString("b"), text), 2);
    EXPECT_EQ(text.view(), "aababaabab");
    EXPECT_EQ(nmkgsub(text, text, utString("x")), 1);
    EXPECT_EQ(text.view(), "x");
}

TEST(nmkgsub, works_on_bytes_and_not_on_characters) {
    utString text(std::string(euro) + "\xFF");
    EXPECT_EQ(nmkgsub(text, utString("\x82"), utString("\xFE")), 1);
    EXPECT_EQ(text.view(), "\xE2\xFE\xAC\xFF");
}

TEST(nmkgsub, agrees_with_the_plain_reading_for_any_bytes) {
    constexpr unsigned seed = 20260731;
    std::mt19937_64 draw(seed);
    for (int round = 0; round < 20000; ++round) {
        const std::string before = random_text(draw, 40);
        const std::string from = random_text(draw, round % 10 == 0 ? 30 : 2);
        const std::string to = random_bytes(draw, 4);
        int expected_count = 0;
        const std::string expected = plain_replace(before, from, to, expected_count);
        utString text(before);
        ASSERT_EQ(nmkgsub(text, utString(from), utString(to)), expected_count)
            << "seed " << seed << ", round " << round;
        ASSERT_EQ(text.view(), expected) << "seed " << seed << ", round " << round;
    }
}

TEST(nmkgsub, agrees_with_the_plain_reading_for_long_patterns_that_nearly_repeat) {
    constexpr unsigned seed = 20260801;
    std::mt19937_64 draw(seed);
    for (int round = 0; round < 300; ++round) {
        const std::string piece = std::string(20 + draw() % 20, 'a') + "b";
        std::string before;
        for (int i = 0; i < 30; ++i) {
            before += std::string(draw() % 60, 'a') + (draw() % 2 == 0 ? "b" : piece);
        }
        int expected_count = 0;
        const std::string expected = plain_replace(before, piece, std::string("-"), expected_count);
        utString text(before);
        ASSERT_EQ(nmkgsub(text, utString(piece), utString("-")), expected_count)
            << "seed " << seed << ", round " << round;
        ASSERT_EQ(text.view(), expected) << "seed " << seed << ", round " << round;
    }
}

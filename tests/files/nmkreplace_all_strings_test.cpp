#include <nmktoolbox/files/nmkreplace_all_strings.h>

#include "files/plain_replace.h"
#include "files/text_samples.h"

#include <nmktoolbox/files/nmkMultiByteToWideChar.h>
#include <nmktoolbox/files/nmkWideCharToMultiByte.h>

#include <gtest/gtest.h>

namespace {

std::string replaced(const std::string& before, const std::string& from, const std::string& to,
                     int count) {
    utString text(before);
    EXPECT_EQ(nmkreplace_all_strings(text, utString(from), utString(to)), count);
    return std::string(text.view());
}

}  // namespace

TEST(nmkreplace_all_strings, goes_left_to_right_without_overlap_and_does_not_search_again) {
    EXPECT_EQ(replaced("aaaaa", "aa", "baa", 2), "baabaaa");
    EXPECT_EQ(replaced("banana", "ana", "", 1), "bna");
    EXPECT_EQ(replaced("x", "x", "", 1), "");
    EXPECT_EQ(replaced("x", "xx", "y", 0), "x");
}

TEST(nmkreplace_all_strings, leaves_all_unchanged_for_an_empty_pattern) {
    EXPECT_EQ(replaced("abc", "", "x", 0), "abc");
    utString text("abc");
    EXPECT_EQ(nmkreplace_all_strings(text, utString(), utString("x")), 0);
    EXPECT_EQ(text.view(), "abc");
}

TEST(nmkreplace_all_strings, takes_a_null_replacement_for_an_empty_one) {
    utString text("abc");
    EXPECT_EQ(nmkreplace_all_strings(text, utString("b"), utString()), 1);
    EXPECT_EQ(text.view(), "ac");
}

TEST(nmkreplace_all_strings, leaves_null_and_empty_alone) {
    utString null;
    EXPECT_EQ(nmkreplace_all_strings(null, utString("a"), utString("b")), 0);
    EXPECT_TRUE(null.is_null());
    EXPECT_EQ(replaced("", "a", "b", 0), "");
}

TEST(nmkreplace_all_strings, replaces_characters_of_several_bytes_and_units) {
    const std::string pair(smiley);
    EXPECT_EQ(replaced(pair + "x" + pair, pair, std::string(euro), 2),
              std::string(euro) + "x" + std::string(euro));
    EXPECT_EQ(replaced("a" + std::string(euro), std::string(euro), pair, 1), "a" + pair);
}

TEST(nmkreplace_all_strings, brings_ill_formed_bytes_and_nuls_through) {
    EXPECT_EQ(replaced("\xFF"
                       "a\xE2\x82",
                       "a", "b", 1),
              "\xFF"
              "b\xE2\x82");
    EXPECT_EQ(replaced(std::string("a\0a", 3), "a", "b", 2), std::string("b\0b", 3));
    EXPECT_EQ(replaced("xax", "a", "\xFF", 1), "x\xFFx");
}

TEST(nmkreplace_all_strings, compares_an_ill_formed_part_as_the_replacement_character) {
    EXPECT_EQ(replaced("a\xE2\x82z\xFF", std::string(replacement), "?", 2), "a?z?");
    EXPECT_EQ(replaced(std::string(replacement), "\xFF", "?", 1), "?");
}

TEST(nmkreplace_all_strings, takes_its_own_text_for_an_argument) {
    utString text("abab");
    EXPECT_EQ(nmkreplace_all_strings(text, utString("b"), text), 2);
    EXPECT_EQ(text.view(), "aababaabab");
    EXPECT_EQ(nmkreplace_all_strings(text, text, utString("x")), 1);
    EXPECT_EQ(text.view(), "x");
}

TEST(nmkreplace_all_strings, makes_a_text_longer_than_16_bits_count) {
    EXPECT_EQ(replaced(std::string(70000, 'a'), "a", "bcd", 70000).size(), 210000U);
}

TEST(nmkreplace_all_strings, agrees_with_the_plain_reading_on_the_wide_text) {
    constexpr unsigned seed = 20260802;
    std::mt19937_64 draw(seed);
    for (int round = 0; round < 20000; ++round) {
        const utString before(random_text(draw, 40));
        const utString from(random_text(draw, round % 10 == 0 ? 30 : 2));
        const utString to(random_text(draw, 4));
        int expected_count = 0;
        const std::wstring expected = plain_replace(
            nmkMultiByteToWideChar::convert(before), nmkMultiByteToWideChar::convert(from),
            nmkMultiByteToWideChar::convert(to), expected_count);
        utString text = before;
        ASSERT_EQ(nmkreplace_all_strings(text, from, to), expected_count)
            << "seed " << seed << ", round " << round;
        ASSERT_EQ(text.view(), nmkWideCharToMultiByte::convert(expected.c_str()).view())
            << "seed " << seed << ", round " << round;
    }
}

TEST(nmkreplace_all_strings, agrees_with_the_plain_reading_for_any_bytes) {
    constexpr unsigned seed = 20260808;
    std::mt19937_64 draw(seed);
    const std::wstring to = L"#";  // keeps ill-formed parts from growing together
    for (int round = 0; round < 30000; ++round) {
        const utString before(random_bytes(draw, 20) + std::string(replacement) +
                              random_text(draw, 5));
        const utString from(round % 3 == 0 ? std::string(replacement) : random_bytes(draw, 2));
        int expected_count = 0;
        const std::wstring expected =
            plain_replace(nmkMultiByteToWideChar::convert(before),
                          nmkMultiByteToWideChar::convert(from), to, expected_count);
        utString text = before;
        ASSERT_EQ(nmkreplace_all_strings(text, from, "#"), expected_count)
            << "seed " << seed << ", round " << round;
        ASSERT_EQ(nmkMultiByteToWideChar::convert(text), expected)
            << "seed " << seed << ", round " << round;
    }
}

#include <nmktoolbox/files/nmkcompare.h>

#include "files/text_samples.h"

#include <gtest/gtest.h>

TEST(nmkcompare, goes_by_the_first_code_unit_that_differs) {
    EXPECT_EQ(nmkcompare("abc", "abd"), -1);
    EXPECT_EQ(nmkcompare("abd", "abc"), 1);
    EXPECT_EQ(nmkcompare("abc", "abc"), 0);
    EXPECT_EQ(nmkcompare("b", "azzzz"), 1);
}

TEST(nmkcompare, sorts_a_shorter_beginning_first) {
    EXPECT_EQ(nmkcompare("ab", "abc"), -1);
    EXPECT_EQ(nmkcompare("abc", "ab"), 1);
    EXPECT_EQ(nmkcompare("", "a"), -1);
    EXPECT_EQ(nmkcompare("a", "a longer text"), -1);
    EXPECT_EQ(nmkcompare("a longer text", "a"), 1);
}

TEST(nmkcompare, takes_the_null_string_for_the_empty_text) {
    EXPECT_EQ(nmkcompare(utString(), ""), 0);
    EXPECT_EQ(nmkcompare(utString(), "a"), -1);
}

TEST(nmkcompare, knows_neither_case_nor_locale) {
    EXPECT_EQ(nmkcompare("a", "B"), 1);
    EXPECT_EQ(nmkcompare("z", utString(a_umlaut)), -1);
}

TEST(nmkcompare, compares_code_units_unsigned_and_not_characters) {
    // U+FFFD is above the surrogates that the smiley is made of, though its character is below.
    EXPECT_EQ(nmkcompare(utString(replacement), utString(smiley)), 1);
    EXPECT_EQ(nmkcompare(utString(euro), utString(smiley)), -1);
    EXPECT_EQ(nmkcompare("\xFF", utString(replacement)), 0);
}

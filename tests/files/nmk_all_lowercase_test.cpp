#include <nmktoolbox/files/nmk_all_lowercase.h>

#include "files/text_samples.h"

#include <gtest/gtest.h>

TEST(nmk_all_lowercase, asks_for_every_letter_and_passes_over_the_rest) {
    EXPECT_EQ(nmk_all_lowercase("abc 12-3"), 1);
    EXPECT_EQ(nmk_all_lowercase("abC"), 0);
    EXPECT_EQ(nmk_all_lowercase("123"), 1);
    EXPECT_EQ(nmk_all_lowercase(utString(a_umlaut)), 1);
    EXPECT_EQ(nmk_all_lowercase(utString(capital_a_umlaut)), 0);
    EXPECT_EQ(nmk_all_lowercase(utString(smiley)), 1);
    EXPECT_EQ(nmk_all_lowercase("a\xFF"), 1);
}

TEST(nmk_all_lowercase, takes_a_letter_without_case_for_one_that_is_not_lower) {
    EXPECT_EQ(nmk_all_lowercase(utString(ideograph)), 0);
    EXPECT_EQ(nmk_all_uppercase(utString(ideograph)), 0);
}

TEST(nmk_all_lowercase, is_true_of_no_text_at_all) {
    EXPECT_EQ(nmk_all_lowercase(""), 1);
    EXPECT_EQ(nmk_all_lowercase(utString()), 1);
}

TEST(nmk_all_uppercase, asks_for_every_letter_and_passes_over_the_rest) {
    EXPECT_EQ(nmk_all_uppercase("ABC 12-3"), 1);
    EXPECT_EQ(nmk_all_uppercase("ABc"), 0);
    EXPECT_EQ(nmk_all_uppercase(""), 1);
    EXPECT_EQ(nmk_all_uppercase(utString()), 1);
}

TEST(nmk_all_uppercase, counts_to_the_length_in_bytes_without_reading_past_the_wide_text) {
    std::string text;
    for (int i = 0; i < 500; ++i) {
        text += capital_a_umlaut;
    }
    EXPECT_EQ(nmk_all_uppercase(utString(text)), 1);
    EXPECT_EQ(nmk_all_uppercase(utString(text + std::string(a_umlaut))), 0);
    EXPECT_EQ(nmk_all_uppercase(utString(text + std::string(smiley))), 1);
}

#include <nmktoolbox/files/nmkstring_length.h>

#include "files/text_samples.h"

#include <gtest/gtest.h>

TEST(nmkstring_length, counts_code_units) {
    EXPECT_EQ(nmkstring_length("abc"), 3);
    EXPECT_EQ(nmkstring_length(utString(a_umlaut)), 1);
    EXPECT_EQ(nmkstring_length(utString(euro)), 1);
    EXPECT_EQ(nmkstring_length(utString(smiley)), 2);
    EXPECT_EQ(nmkstring_length(utString(std::string("a\0b", 3))), 3);
}

TEST(nmkstring_length, is_0_for_the_null_string_and_the_empty_text) {
    EXPECT_EQ(nmkstring_length(utString()), 0);
    EXPECT_EQ(nmkstring_length(""), 0);
}

TEST(nmkstring_length, counts_each_ill_formed_part_once) {
    EXPECT_EQ(nmkstring_length("\xE2\x82"), 1);
    EXPECT_EQ(nmkstring_length("\xFF\xFE"), 2);
}

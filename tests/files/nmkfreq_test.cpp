#include <nmktoolbox/files/nmkfreq.h>

#include "files/text_samples.h"

#include <gtest/gtest.h>

TEST(nmkfreq, counts_a_byte) {
    EXPECT_EQ(nmkfreq("banana", 'a'), 3);
    EXPECT_EQ(nmkfreq("banana", 'x'), 0);
    EXPECT_EQ(nmkfreq(utString(std::string("a\0b\0", 4)), '\0'), 2);
    EXPECT_EQ(nmkfreq(utString(std::string(euro) + std::string(euro)), '\x82'), 2);
    EXPECT_EQ(nmkfreq(utString(), 'a'), 0);
    EXPECT_EQ(nmkfreq("", 'a'), 0);
}

TEST(nmkfreq, counts_a_text_without_overlap) {
    EXPECT_EQ(nmkfreq("aaaaa", utString("aa")), 2);
    EXPECT_EQ(nmkfreq("banana", utString("ana")), 1);
    EXPECT_EQ(nmkfreq("a", utString("a")), 1);
    EXPECT_EQ(nmkfreq("a", utString("aa")), 0);
}

TEST(nmkfreq, counts_characters_of_several_bytes_and_units) {
    const std::string twice = std::string(smiley) + "x" + std::string(smiley);
    EXPECT_EQ(nmkfreq(utString(twice), utString(smiley)), 2);
    EXPECT_EQ(nmkfreq(utString(twice), utString(euro)), 0);
}

TEST(nmkfreq, gives_0_for_null_strings_and_an_empty_pattern) {
    EXPECT_EQ(nmkfreq(utString(), utString("a")), 0);
    EXPECT_EQ(nmkfreq("a", utString()), 0);
    EXPECT_EQ(nmkfreq("a", utString("")), 0);
    EXPECT_EQ(nmkfreq("", utString("a")), 0);
}

TEST(nmkfreq, leaves_its_text_alone) {
    const utString text("banana");
    nmkfreq(text, utString("ana"));
    EXPECT_EQ(text.view(), "banana");
}

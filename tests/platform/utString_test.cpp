// The two empty states of utString, and what else callers ask of it.

#include <utils/utString.h>

#include <string>

#include <gtest/gtest.h>

TEST(utString, the_null_string_and_the_empty_text_are_two_things) {
    const utString null;
    const utString empty("");
    EXPECT_TRUE(null.is_null());
    EXPECT_FALSE(empty.is_null());
    EXPECT_TRUE(null.is_empty());
    EXPECT_TRUE(empty.is_empty());
    EXPECT_FALSE(null == empty);
    EXPECT_TRUE(null < empty);
    EXPECT_EQ(null.c_str(), nullptr);
    EXPECT_STREQ(empty.c_str(), "");
    EXPECT_EQ(null.length(), 0);
}

TEST(utString, a_null_pointer_makes_the_null_string) {
    EXPECT_TRUE(utString(static_cast<const char*>(nullptr)).is_null());
}

TEST(utString, copies_the_text) {
    std::string text = "abc";
    const utString copy(text.c_str());
    text[0] = 'x';
    EXPECT_STREQ(copy.c_str(), "abc");
    EXPECT_EQ(copy.length(), 3);
    EXPECT_EQ(copy, utString("abc"));
    EXPECT_FALSE(copy == utString("abd"));
    EXPECT_TRUE(copy < utString("abd"));
}

TEST(utString, keeps_a_nul_inside_a_sized_text) {
    const utString text(std::string("a\0b", 3));
    EXPECT_EQ(text.length(), 3);
    EXPECT_FALSE(text == utString("a"));
}

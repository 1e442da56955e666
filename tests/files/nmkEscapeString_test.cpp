#include <nmktoolbox/files/nmkEscapeString.h>

#include "files/plain_url.h"
#include "files/text_samples.h"

#include <gtest/gtest.h>

namespace {

constexpr unsigned seed = 20260729;

std::string escaped(const std::string& text) {
    return std::string(nmkEscapeString(utString(text)).url_escape().view());
}

std::string unescaped(const std::string& text) {
    return std::string(nmkEscapeString(nmk_escape_string_url, utString(text)).str().view());
}

}  // namespace

TEST(nmkEscapeString, holds_the_text_as_it_is) {
    EXPECT_EQ(nmkEscapeString("a%20b").str().view(), "a%20b");
    EXPECT_TRUE(nmkEscapeString(utString()).str().is_null());
}

TEST(nmkEscapeString, escapes_all_but_the_unreserved_characters) {
    EXPECT_EQ(escaped(" "), "%20");
    EXPECT_EQ(escaped("A"), "A");
    EXPECT_EQ(escaped("-.09AZ_az~"), "-.09AZ_az~");
    EXPECT_EQ(escaped("\xC3\xA4/+%"), "%c3%a4%2f%2b%25");
    EXPECT_EQ(escaped(std::string(1, '\0')), "%00");
    EXPECT_EQ(escaped(""), "");
}

TEST(nmkEscapeString, keeps_the_null_string_null) {
    EXPECT_TRUE(nmkEscapeString(utString()).url_escape().is_null());
    EXPECT_TRUE(nmkEscapeString(nmk_escape_string_url, utString()).str().is_null());
}

TEST(nmkEscapeString, undoes_digits_of_either_case) {
    EXPECT_EQ(unescaped("a%20b%c3%A4"), "a b\xC3\xA4");
    EXPECT_EQ(unescaped("%00x"), std::string("\0x", 2));
    EXPECT_EQ(unescaped("%fF%Ff%aA"), "\xFF\xFF\xAA");
}

TEST(nmkEscapeString, keeps_a_percent_sign_in_the_last_two_places) {
    EXPECT_EQ(unescaped("x%4"), "x%4");
    EXPECT_EQ(unescaped("x%"), "x%");
    EXPECT_EQ(unescaped("%4"), "%4");
    EXPECT_EQ(unescaped("%"), "%");
    EXPECT_EQ(unescaped("%41"), "A");
}

TEST(nmkEscapeString, copies_invalid_escapes_unchanged) {
    EXPECT_EQ(unescaped("%zz%4x% 4%+4%0x"), "%zz%4x% 4%+4%0x");
    EXPECT_EQ(unescaped("%%41"), "%A");
}

TEST(nmkEscapeString, agrees_with_the_plain_reading_and_comes_back_for_any_bytes) {
    std::mt19937_64 draw(seed);
    for (int round = 0; round < 20000; ++round) {
        const std::string text = random_bytes(draw, 20);
        ASSERT_EQ(escaped(text), plain_url_escape(text)) << "seed " << seed << ", " << round;
        ASSERT_EQ(unescaped(text), plain_url_unescape(text)) << "seed " << seed << ", " << round;
        ASSERT_EQ(unescaped(escaped(text)), text) << "seed " << seed << ", " << round;
    }
}

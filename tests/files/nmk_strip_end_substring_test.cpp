#include <nmktoolbox/files/nmk_strip_end_substring.h>

#include "files/text_samples.h"

#include <gtest/gtest.h>

namespace {

/// The text that is left, or "-" and the text where nothing was stripped.
std::string stripped(const std::string& before, const std::string& suffix) {
    utString text(before);
    const bool done = nmk_strip_end_substring(text, utString(suffix));
    return (done ? "" : "-") + std::string(text.view());
}

}  // namespace

TEST(nmk_strip_end_substring, takes_the_suffix_off_and_says_so) {
    EXPECT_EQ(stripped("part.nmt", ".nmt"), "part");
    EXPECT_EQ(stripped("part.nmt", ".tri"), "-part.nmt");
    EXPECT_EQ(stripped("aXbX", "X"), "aXb");
    EXPECT_EQ(stripped("aXb", "X"), "-aXb");
}

TEST(nmk_strip_end_substring, leaves_a_text_that_equals_the_suffix) {
    EXPECT_EQ(stripped(".nmt", ".nmt"), "-.nmt");
    EXPECT_EQ(stripped("x", "x"), "-x");
    EXPECT_EQ(stripped("", ""), "-");
    EXPECT_EQ(stripped("mt", "nmt"), "-mt");
}

TEST(nmk_strip_end_substring, finds_the_empty_suffix_at_the_end_of_a_text) {
    EXPECT_EQ(stripped("x", ""), "x");
}

TEST(nmk_strip_end_substring, compares_code_units_and_brings_bytes_through) {
    EXPECT_EQ(stripped("\xFF" + std::string(smiley), std::string(smiley)), "\xFF");
    EXPECT_EQ(stripped(std::string(euro) + "\xE2\x82", std::string(replacement)), euro);
    EXPECT_EQ(stripped(std::string(smiley), std::string(smiley)), "-" + std::string(smiley));
}

TEST(nmk_strip_end_substring, answers_false_for_null_strings) {
    utString null;
    EXPECT_FALSE(nmk_strip_end_substring(null, utString("x")));
    EXPECT_TRUE(null.is_null());
    utString text("x");
    EXPECT_FALSE(nmk_strip_end_substring(text, utString()));
    EXPECT_EQ(text.view(), "x");
}

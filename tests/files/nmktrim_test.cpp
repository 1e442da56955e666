#include <nmktoolbox/files/nmktrim.h>

#include "files/text_samples.h"

#include <gtest/gtest.h>

namespace {

std::string trimmed(void (*function)(utString&), const std::string& before) {
    utString text(before);
    function(text);
    EXPECT_FALSE(text.is_null());
    return std::string(text.view());
}

constexpr void (*all_functions[])(utString&) = {nmkltrim, nmkrtrim, nmktrim};

}  // namespace

TEST(nmktrim, takes_white_space_from_the_ends_asked_for) {
    EXPECT_EQ(trimmed(nmkltrim, " \t\n a b \r"), "a b \r");
    EXPECT_EQ(trimmed(nmkrtrim, " \t\n a b \r"), " \t\n a b");
    EXPECT_EQ(trimmed(nmktrim, " \t\n a b \r"), "a b");
    for (const auto function : all_functions) {
        EXPECT_EQ(trimmed(function, "x"), "x");
    }
}

TEST(nmktrim, makes_an_empty_text_of_white_space_only) {
    for (const auto function : all_functions) {
        EXPECT_EQ(trimmed(function, " \t\v\f\r\n"), "");
        EXPECT_EQ(trimmed(function, " "), "");
    }
}

TEST(nmktrim, leaves_null_and_empty_alone) {
    for (const auto function : all_functions) {
        utString null;
        function(null);
        EXPECT_TRUE(null.is_null());
        EXPECT_EQ(trimmed(function, ""), "");
    }
}

TEST(nmktrim, knows_the_spaces_of_every_script_but_the_no_break_ones) {
    const std::string wide(ideographic_space);
    const std::string glued(no_break_space);
    EXPECT_EQ(trimmed(nmktrim, wide + "x" + wide), "x");
    EXPECT_EQ(trimmed(nmktrim, glued + "x" + glued), glued + "x" + glued);
}

TEST(nmktrim, brings_ill_formed_bytes_and_pairs_through) {
    EXPECT_EQ(trimmed(nmktrim, " \xFF\xE2\x82 "), "\xFF\xE2\x82");
    EXPECT_EQ(trimmed(nmktrim, " " + std::string(smiley) + " "), smiley);
    EXPECT_EQ(trimmed(nmktrim, std::string(" \0 ", 3)), std::string("\0", 1));
}

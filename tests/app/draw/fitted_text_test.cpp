// fitted_text: texts are cut between characters, with an ellipsis.

#include "draw/fitted_text.h"

#include <gtest/gtest.h>

namespace nmk_draw {
namespace {

const std::string ellipsis = "\xE2\x80\xA6";

TEST(fitted_text, leaves_a_text_that_fits_alone) {
    EXPECT_EQ(fitted_text("plate.drl", 14, 200), "plate.drl");
    EXPECT_EQ(fitted_text("", 14, 0), "");
}

TEST(fitted_text, cuts_a_long_text_to_the_width) {
    const std::string words(500, 'n');
    for (const double width : {20.0, 100.0, 333.0}) {
        const std::string fitted = fitted_text(words, 14, width);
        EXPECT_TRUE(fitted.ends_with(ellipsis));
        EXPECT_LE(text_width(fitted, 14), width);
        EXPECT_GT(text_width(fitted, 14), width - 14);
    }
}

TEST(fitted_text, never_cuts_a_character_in_two) {
    const std::string word = "\xC3\xA4\xE6\xBC\xA2\xF0\x9F\x98\x80z";  // of 2, 3, 4 and 1 bytes
    const std::string whole = word + word;
    for (double width = 0.0; width < text_width(whole, 10); width += 1.0) {
        std::string fitted = fitted_text(whole, 10, width);
        ASSERT_TRUE(fitted.ends_with(ellipsis));
        fitted.resize(fitted.size() - ellipsis.size());
        EXPECT_TRUE(whole.starts_with(fitted));
        const auto next = static_cast<unsigned char>(whole[fitted.size()]);
        EXPECT_NE(next & 0xC0U, 0x80U) << width;
    }
}

TEST(fitted_text, bytes_that_begin_no_character_count_by_themselves) {
    const std::string broken = "\xFF\xFE\x80\x80\xE6";
    EXPECT_EQ(fitted_text(broken, 10, 1000), broken);
    EXPECT_LT(fitted_text(broken + broken, 10, 40).size(), 10U);
}

TEST(text_width, wide_letters_are_wider_and_ideographs_count_one_font_size) {
    EXPECT_GT(text_width("WWW", 10), text_width("nnn", 10));
    EXPECT_LT(text_width("iii", 10), text_width("nnn", 10));
    EXPECT_DOUBLE_EQ(text_width("\xE6\xBC\xA2", 10), 10.0);
}

}  // namespace
}  // namespace nmk_draw

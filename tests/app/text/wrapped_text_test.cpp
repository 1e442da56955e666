// wrapped_text: text in lines of limited width.

#include "text/wrapped_text.h"

#include <gtest/gtest.h>

namespace {

using namespace nmk_text;

TEST(wrapped_text, breaks_at_the_last_blank_that_fits) {
    EXPECT_EQ(wrapped("one two three", 0, 7), "one two\nthree\n");
    EXPECT_EQ(wrapped("one two three", 2, 8), "  one\n  two\n  three\n");
}

TEST(wrapped_text, a_word_that_is_too_long_has_its_own_line) {
    EXPECT_EQ(wrapped("a extraordinary b", 0, 6), "a\nextraordinary\nb\n");
    EXPECT_EQ(wrapped("extraordinary", 0, 6), "extraordinary\n");
}

TEST(wrapped_text, keeps_line_feeds) { EXPECT_EQ(wrapped("a\n\nb", 1, 9), " a\n\n b\n"); }

TEST(wrapped_text, a_command_goes_on_after_a_backslash) {
    EXPECT_EQ(wrapped_command("nmk order plate.drl --json", 2, 40),
              "  nmk order plate.drl --json\n");
    EXPECT_EQ(wrapped_command("nmk order plate.drl --json --quiet", 2, 29),
              "  nmk order plate.drl \\\n      --json --quiet\n");
}

TEST(wrapped_text, every_line_is_within_the_width) {
    const std::string text = "nmk route samples/clamps.csv --start 0,5 --goal 8,8 --forward";
    for (std::size_t width = 26; width < 80; ++width) {
        for (const std::string& result :
             {wrapped(text, 2, width), wrapped_command(text, 2, width)}) {
            for (std::size_t begin = 0, end = 0; begin < result.size(); begin = end + 1) {
                end = result.find('\n', begin);
                EXPECT_LE(end - begin, width) << result;
            }
        }
    }
}

TEST(shortened, cuts_between_characters) {
    EXPECT_EQ(shortened("drill", 5), "drill");
    EXPECT_EQ(shortened("drills", 5), "dr...");
    EXPECT_EQ(shortened("\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9", 5),
              "\xC3\xA9\xC3\xA9...");
    EXPECT_EQ(shortened("\xC3\xA9\xC3\xA9", 2), "\xC3\xA9\xC3\xA9");
}

}  // namespace

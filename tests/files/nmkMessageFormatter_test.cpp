#include <nmktoolbox/files/nmkMessageFormatter.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "comma_locale.h"

namespace {

const char* fill(nmkMessageFormatter& formatter, const char* format,
                 std::vector<std::string> texts) {
    std::vector<char*> arguments;
    for (std::string& text : texts) {
        arguments.push_back(text.data());
    }
    arguments.push_back(nullptr);
    return formatter.vconcatenate(format, arguments.data());
}

}  // namespace

TEST(nmkMessageFormatter, formats_as_printf_does) {
    nmkMessageFormatter formatter;
    EXPECT_STREQ(formatter.unchecked_concatenate("%s has %d of %.2f", "tool", 3, 1.5),
                 "tool has 3 of 1.50");
    EXPECT_STREQ(formatter.unchecked_concatenate("%s", ""), "");
    EXPECT_STREQ(formatter.unchecked_concatenate("100%%"), "100%");
}

TEST(nmkMessageFormatter, keeps_its_first_buffer_up_to_126_characters) {
    nmkMessageFormatter formatter;
    const char* first = formatter.unchecked_concatenate("%s", "x");
    EXPECT_EQ(formatter.unchecked_concatenate("%s", std::string(126, 'x').c_str()), first);
    EXPECT_EQ(formatter.capacity(), 127);
}

TEST(nmkMessageFormatter, grows_when_length_and_nul_exceed_the_capacity) {
    nmkMessageFormatter formatter;
    formatter.unchecked_concatenate("%s", std::string(127, 'x').c_str());
    EXPECT_EQ(formatter.capacity(), 128);
    formatter.unchecked_concatenate("%s", std::string(128, 'x').c_str());
    EXPECT_EQ(formatter.capacity(), 129);
    EXPECT_EQ(std::string(formatter.unchecked_concatenate("%s", std::string(9999, 'y').c_str())),
              std::string(9999, 'y'));
    EXPECT_EQ(formatter.capacity(), 10000);
}

TEST(nmkMessageFormatter, stays_in_the_larger_buffer_for_a_short_message) {
    nmkMessageFormatter formatter;
    const char* grown = formatter.unchecked_concatenate("%s", std::string(500, 'x').c_str());
    EXPECT_EQ(formatter.unchecked_concatenate("short"), grown);
    EXPECT_STREQ(grown, "short");
    EXPECT_EQ(formatter.capacity(), 501);
}

TEST(nmkMessageFormatter, takes_its_own_last_message_for_an_argument) {
    nmkMessageFormatter formatter;
    const char* text = formatter.unchecked_concatenate("inner");
    text = formatter.unchecked_concatenate("<%s|%s>", text, text);
    EXPECT_STREQ(text, "<inner|inner>");
    text = formatter.unchecked_concatenate("%s%200s", text, "right");
    EXPECT_EQ(std::string(text).substr(0, 14), "<inner|inner> ");
}

TEST(nmkMessageFormatter, leaves_the_buffer_as_it_was_when_nothing_can_be_printed) {
    nmkMessageFormatter formatter;
    EXPECT_STREQ(formatter.unchecked_concatenate(nullptr), "");
    formatter.unchecked_concatenate("before");
    EXPECT_STREQ(formatter.unchecked_concatenate(nullptr), "before");
    EXPECT_STREQ(formatter.vconcatenate(nullptr, nullptr), "before");
    const wchar_t surrogate[] = {wchar_t(0xD83D), 0};
    EXPECT_STREQ(formatter.unchecked_concatenate("%ls", surrogate), "before");
}

TEST(nmkMessageFormatter, writes_numbers_the_same_in_every_locale) {
    const CommaLocale commas;
    ASSERT_TRUE(commas.holds_for_the_c_library());
    nmkMessageFormatter formatter;
    const char* volatile grouped = "%.1f %'d";  // volatile: compilers warn of the flag
    EXPECT_STREQ(formatter.unchecked_concatenate(grouped, 1234.5, 1234567), "1234.5 1234567");
}

TEST(nmkMessageFormatter, fills_texts_in_from_an_array) {
    nmkMessageFormatter formatter;
    EXPECT_STREQ(fill(formatter, "%s to %s", {"here", "there"}), "here to there");
    EXPECT_STREQ(fill(formatter, "none", {"spare"}), "none");
    EXPECT_STREQ(fill(formatter, "", {"spare"}), "");
}

TEST(nmkMessageFormatter, copies_other_conversions_unchanged) {
    nmkMessageFormatter formatter;
    EXPECT_STREQ(fill(formatter, "%d %5.1f %n %%s %s %", {"text"}), "%d %5.1f %n %%s text %");
}

TEST(nmkMessageFormatter, copies_a_text_conversion_without_an_argument_unchanged) {
    nmkMessageFormatter formatter;
    EXPECT_STREQ(fill(formatter, "%s and %s", {"one"}), "one and %s");
    EXPECT_STREQ(formatter.vconcatenate("%s", nullptr), "%s");
}

TEST(nmkMessageFormatter, searches_no_text_that_was_filled_in) {
    nmkMessageFormatter formatter;
    EXPECT_STREQ(fill(formatter, "%s%s", {"%s", "x"}), "%sx");
}

TEST(nmkMessageFormatter, grows_for_an_array_by_the_same_rule) {
    nmkMessageFormatter formatter;
    EXPECT_EQ(std::string(fill(formatter, "%s%s", {std::string(100, 'a'), std::string(27, 'b')})),
              std::string(100, 'a') + std::string(27, 'b'));
    EXPECT_EQ(formatter.capacity(), 128);
}

// Formatted output: printf's conversions, and formats that lack their arguments.

#include <apsl/apHighResTime.h>
#include <apsl/apprintf.h>

#include <cstdint>
#include <cstdio>
#include <string>

#include <gtest/gtest.h>

#include "comma_locale.h"

namespace {

template <class... Arguments>
std::string printed(const char* format, const Arguments&... arguments) {
    testing::internal::CaptureStdout();
    const int count = apprintf(format, arguments...);
    std::fflush(stdout);
    std::string text = testing::internal::GetCapturedStdout();
    EXPECT_EQ(count, static_cast<int>(text.size()));
    return text;
}

}  // namespace

TEST(apprintf, prints_a_name_and_a_number) {
    EXPECT_EQ(printed("%s = %f\n", "total", 1.5), "total = 1.500000\n");
}

TEST(apprintf, a_conversion_without_its_argument_is_printed_unchanged) {
    EXPECT_EQ(printed("100%s done, %d of %n%-5.2f\n"), "100%s done, %d of %-5.2f\n");
    EXPECT_EQ(printed("%d and %d", 1), "1 and %d");
    EXPECT_EQ(printed("%*d", 5), "%*d");
    EXPECT_EQ(printed("%*d"), "%*d");
}

TEST(apprintf, a_format_may_end_anywhere_in_a_conversion) {
    for (const std::string format : {"%", "%-", "%5", "%5.", "%5.3", "%5.3l"}) {
        EXPECT_EQ(printed(format.c_str(), 1), format);
    }
}

TEST(apprintf, a_doubled_percent_sign_is_one) { EXPECT_EQ(printed("%d%%", 42), "42%"); }

TEST(apprintf, agrees_with_printf_on_the_usual_conversions) {
    EXPECT_EQ(printed("[%5d|%-5d|%05d|%+d]", 42, 42, 42, 42), "[   42|42   |00042|+42]");
    EXPECT_EQ(printed("[%x|%X|%o|%#x]", 255, 255, 8, 255), "[ff|FF|10|0xff]");
    EXPECT_EQ(printed("[%u]", -1), "[4294967295]");
    EXPECT_EQ(printed("[%llu|%lld]", UINT64_MAX, INT64_MIN),
              "[18446744073709551615|-9223372036854775808]");
    EXPECT_EQ(printed("[%8.3f|%-8.1e|%g]", 3.14159, 1234.5, 0.5), "[   3.142|1.2e+03 |0.5]");
    EXPECT_EQ(printed("[%5s|%-5s|%.2s|%c]", "abc", "abc", "abc", 'x'), "[  abc|abc  |ab|x]");
    EXPECT_EQ(printed("[%*d|%-*d|%.*f]", 4, 7, 4, 7, 1, 2.25), "[   7|7   |2.2]");
    EXPECT_EQ(printed("[%*d]", -4, 7), "[7   ]");
}

TEST(apprintf, an_argument_of_another_type_is_printed_as_what_it_is) {
    EXPECT_EQ(printed("%s|%d|%f", 42, "text", 7), "42|text|7");
    EXPECT_EQ(printed("%d|%s", 1.5, 2.5), "1.5|2.5");
}

TEST(apprintf, writes_numbers_the_same_in_every_locale) {
    const CommaLocale commas;
    ASSERT_TRUE(commas.holds_for_the_c_library());
    EXPECT_EQ(printed("[%.2f|%8.1f|%g|%s]", 1.5, 1234.5, 0.25, 2.5), "[1.50|  1234.5|0.25|2.5]");
    EXPECT_EQ(printed("%d", 1234567), "1234567");
}

TEST(apprintf, an_enumerator_is_printed_as_its_number) {
    enum class Turn { left = -1, right = 1 };
    enum Count : unsigned char { all = 255 };
    EXPECT_EQ(printed("%d|%d|%x", Turn::left, Turn::right, Turn::left), "-1|1|ffffffff");
    EXPECT_EQ(printed("%d|%u", all, all), "255|255");
}

TEST(apprintf, null_texts_are_shown_and_null_formats_are_empty) {
    EXPECT_EQ(printed("%s", static_cast<const char*>(nullptr)), "(null)");
    EXPECT_EQ(printed(nullptr), "");
}

TEST(apprintf, arguments_left_over_are_ignored) { EXPECT_EQ(printed("%d", 1, 2, 3), "1"); }

TEST(apprintf, a_field_is_never_wider_than_a_page) {
    EXPECT_EQ(printed("%99999999999d", 1).size(), 4096U);
    EXPECT_EQ(printed("%*s", 2'000'000'000, "x").size(), 4096U);
}

TEST(apHighResTime, never_runs_backwards_and_moves_on) {
    const double start = apHighResTime::time();
    double earlier = start;
    for (int step = 0; step < 1'000'000 && earlier == start; ++step) {
        const double now = apHighResTime::time();
        ASSERT_GE(now, earlier);
        earlier = now;
    }
    EXPECT_GT(earlier, start);
}

#include <nmktoolbox/files/nmk_get_token.h>

#include "files/text_samples.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

constexpr int largest = std::numeric_limits<int>::max();
constexpr int smallest = std::numeric_limits<int>::min();

struct Found {
    const char* name;
    std::string text;
    int position;
    int answer;
    std::string token;
};

const Found token_cases[] = {
    {"first_token", "one two", 1, -1, "one"},
    {"end_of_the_first_token", "one two", 3, -1, "one"},
    {"on_a_delimiter_gives_what_follows", "one two", 4, 3, "two"},
    {"last_token", "one two", 7, 3, "two"},
    {"position_is_cut_to_the_length", "one two", largest, 3, "two"},
    {"position_0", "one two", 0, -1, " "},
    {"position_below_0", "one two", smallest, -1, " "},
    {"empty", "", 1, -1, " "},
    {"nothing_between_two_delimiters", "a  b", 2, 1, " "},
    {"nothing_behind_the_last_delimiter", "ab ", 3, 2, " "},
    {"byte_0_is_not_taken_for_the_delimiter_before", " ab", 2, -1, " "},
    {"one_character", "x", 1, -1, "x"},
    {"ill_formed", "\xFF\xE2 \x82", 1, -1, "\xFF\xE2"},
};

const Found word_cases[] = {
    {"word_up_to_the_position", "one two", 6, 1, "tw"},
    {"word_at_the_end", "one two", 7, 1, "two"},
    {"position_is_cut_to_the_length", "one two", largest, 1, "two"},
    {"first_word", "one two", 3, 1, "one"},
    {"on_something_else", "one two", 4, 0, ""},
    {"commas_and_points_belong_to_it", "x=1,234.5", 9, 1, "1,234.5"},
    {"position_0", "one", 0, 0, ""},
    {"position_below_0", "one", smallest, 0, ""},
    {"empty", "", 1, 0, ""},
    {"byte_0_is_not_tested", "-ab", 3, 1, "-ab"},
    {"byte_0_alone_is_not_tested", "-", 1, 1, "-"},
    {"letters_of_any_script", "=(f\xC3\xBCr", 6, 1, "f\xC3\xBCr"},
    {"ideographs", "= \xE6\x97\xA5", 5, 1, "\xE6\x97\xA5"},
    {"position_inside_a_character", "= \xE6\x97\xA5", 4, 1, "\xE6\x97"},
    {"the_euro_sign_is_not_a_letter",
     "ab\xE2\x82\xAC"
     "c",
     6, 1, "c"},
    {"surrogate_pairs_are_not_letters",
     "ab\xF0\x9F\x98\x80"
     "c",
     7, 1, "c"},
    {"ill_formed_bytes_are_not_letters",
     "ab\xFF"
     "c",
     4, 1, "c"},
};

}  // namespace

TEST(nmk_get_token, takes_the_token_around_a_position) {
    for (const Found& each : token_cases) {
        utString token("before");
        EXPECT_EQ(nmk_get_token(utString(each.text), " ", each.position, token), each.answer)
            << each.name;
        EXPECT_EQ(token.view(), each.token) << each.name;
    }
}

TEST(nmk_get_token, separates_at_any_of_the_delimiters) {
    utString token;
    EXPECT_EQ(nmk_get_token("a;b,c", ",;", 3, token), 1);
    EXPECT_EQ(token.view(), "b");
    EXPECT_EQ(nmk_get_token("a;b,c", "", 3, token), -1);
    EXPECT_EQ(token.view(), "a;b,c");
}

TEST(nmk_get_token, takes_null_for_an_empty_text) {
    utString token;
    EXPECT_EQ(nmk_get_token(utString(), " ", 1, token), -1);
    EXPECT_EQ(token.view(), " ");
    EXPECT_EQ(nmk_get_token("ab", utString(), 1, token), -1);
    EXPECT_EQ(token.view(), "ab");
}

TEST(nmk_get_token, may_write_over_its_own_text) {
    utString text("one two");
    EXPECT_EQ(nmk_get_token(text, " ", 7, text), 3);
    EXPECT_EQ(text.view(), "two");
}

TEST(nmk_alphanumeric_token, takes_the_word_that_ends_at_a_position) {
    for (const Found& each : word_cases) {
        utString token("before");
        EXPECT_EQ(nmk_alphanumeric_token(utString(each.text), each.position, token), each.answer)
            << each.name;
        EXPECT_EQ(token, utString(each.token)) << each.name;
    }
}

TEST(nmk_alphanumeric_token, does_not_test_the_first_byte) {
    utString token;
    nmk_alphanumeric_token("(x", 2, token);
    EXPECT_EQ(token.view(), "(x");
    nmk_alphanumeric_token(" (x", 3, token);
    EXPECT_EQ(token.view(), "x");
}

TEST(nmk_alphanumeric_token, takes_null_for_an_empty_text_and_may_write_over_its_own) {
    utString token;
    EXPECT_EQ(nmk_alphanumeric_token(utString(), 1, token), 0);
    EXPECT_EQ(token, utString(""));
    utString text("one two");
    EXPECT_EQ(nmk_alphanumeric_token(text, 7, text), 1);
    EXPECT_EQ(text.view(), "two");
}

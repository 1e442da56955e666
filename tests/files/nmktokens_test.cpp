#include <nmktoolbox/files/nmktokens.h>

#include "files/plain_tokens.h"
#include "files/text_samples.h"

#include <nmktoolbox/files/nmkMultiByteToWideChar.h>
#include <nmktoolbox/files/nmkWideCharToMultiByte.h>

#include <gtest/gtest.h>

namespace {

using Texts = std::vector<std::string>;

Texts tokens_of(const utString& text, const utString& delimiters) {
    utStringcoDList list;
    const int count = nmktokens(text, delimiters, list);
    EXPECT_EQ(count, list.size());
    Texts tokens;
    for (const utString& token : list) {
        EXPECT_FALSE(token.is_null());
        tokens.emplace_back(token.view());
    }
    return tokens;
}

struct Split {
    const char* name;
    std::string text;
    std::string delimiters;
    Texts tokens;
};

const Split split_cases[] = {
    {"plain", "a b c", " ", {"a", "b", "c"}},
    {"one_token", "abc", " ", {"abc"}},
    {"one_character", "x", " ", {"x"}},
    {"empty", "", " ", {}},
    {"delimiters_before_and_between", "  a  b", " ", {"a", "b"}},
    {"several_delimiters", "a,b;c", ",;", {"a", "b", "c"}},
    {"no_delimiters", "a b", "", {"a b"}},
    {"single_quotes", "x 'a b' y", " ", {"x", "a b", "y"}},
    {"double_quotes", "x \"a b\" y", " ", {"x", "a b", "y"}},
    {"other_mark_inside", "'a\" b' c", " ", {"a\" b", "c"}},
    {"mark_inside_a_token", "a'b c'd", " ", {"a'b", "c'd"}},
    {"unclosed_runs_to_the_end", "'a b c", " ", {"a b c"}},
    {"closed_at_the_end", "'a b'", " ", {"a b"}},
    {"closed_then_more", "'a'b c' d", " ", {"a'b c", "d"}},
    {"delimiter_in_front_of_the_closing_mark", "'a ' b", " ", {"a ", "b"}},
    {"mark_alone", "'", " ", {""}},
    {"two_marks_alone", "''", " ", {""}},
    {"three_marks", "'''", " ", {"'"}},
    {"wide_delimiter",
     "a\xE2\x82\xAC"
     "b",
     "\xE2\x82\xAC",
     {"a", "b"}},
    {"pair_delimiter",
     "a\xF0\x9F\x98\x80"
     "b",
     "\xF0\x9F\x98\x80",
     {"a", "b"}},
    {"pairs_in_tokens",
     "\xF0\x9F\x98\x80 \xF0\x9F\x98\x80",
     " ",
     {"\xF0\x9F\x98\x80", "\xF0\x9F\x98\x80"}},
    {"ill_formed_in_tokens", "\xFF\xE2 \x82", " ", {"\xFF\xE2", "\x82"}},
    {"nul_in_a_token", std::string("a\0b c", 5), " ", {std::string("a\0b", 3), "c"}},
};

}  // namespace

TEST(nmktokens, splits_at_delimiters_and_keeps_quoted_stretches_whole) {
    for (const Split& each : split_cases) {
        EXPECT_EQ(tokens_of(utString(each.text), utString(each.delimiters)), each.tokens)
            << each.name;
    }
}

TEST(nmktokens, adds_one_empty_token_for_delimiters_only) {
    EXPECT_EQ(tokens_of(" ", " "), Texts{""});
    EXPECT_EQ(tokens_of("    ", " "), Texts{""});
}

TEST(nmktokens, adds_one_empty_token_behind_a_delimiter_at_the_end) {
    EXPECT_EQ(tokens_of("a ", " "), (Texts{"a", ""}));
    EXPECT_EQ(tokens_of("a   ", " "), (Texts{"a", ""}));
    EXPECT_EQ(tokens_of("'a' ", " "), (Texts{"a", ""}));
}

TEST(nmktokens, does_not_close_at_a_mark_that_is_the_first_character_of_its_token) {
    EXPECT_EQ(tokens_of("'' b", " "), Texts{"' b"});
    EXPECT_EQ(tokens_of("'' b' c", " "), (Texts{"' b", "c"}));
}

TEST(nmktokens, appends_to_what_the_list_holds) {
    utStringcoDList list;
    list.insert_last("first");
    EXPECT_EQ(nmktokens("a b", " ", list), 2);
    EXPECT_EQ(list.size(), 3);
    EXPECT_EQ(list.read_first().view(), "first");
    EXPECT_EQ(list.read_last().view(), "b");
}

TEST(nmktokens, finds_none_in_the_null_string) {
    EXPECT_EQ(tokens_of(utString(), " "), Texts{});
    EXPECT_EQ(tokens_of("a b", utString()), Texts{"a b"});
}

TEST(nmktokens, takes_each_half_of_a_pair_for_a_delimiter) {
    // U+1F601 shares its first half with the delimiter U+1F600.
    EXPECT_EQ(tokens_of("a\xF0\x9F\x98\x81", utString(smiley)),
              (Texts{"a", std::string(replacement)}));
}

TEST(nmktokens, agrees_with_the_plain_reading) {
    constexpr unsigned seed = 20260803;
    std::mt19937_64 draw(seed);
    for (int round = 0; round < 30000; ++round) {
        const utString text(random_text(draw, 24));
        const utString delimiters(random_text(draw, 2));
        Texts expected;
        for (const std::wstring& token :
             plain_tokens(nmkMultiByteToWideChar::convert(text),
                          nmkMultiByteToWideChar::convert(delimiters))) {
            expected.emplace_back(nmkWideCharToMultiByte::convert(token.c_str()).view());
        }
        ASSERT_EQ(tokens_of(text, delimiters), expected)
            << "seed " << seed << ", round " << round << ", text " << text.view();
    }
}

TEST(nmktokens, agrees_with_the_plain_reading_for_any_bytes_and_ascii_delimiters) {
    constexpr unsigned seed = 20260809;
    std::mt19937_64 draw(seed);
    for (int round = 0; round < 30000; ++round) {
        const utString text(random_bytes(draw, 24));
        const std::vector<std::wstring> expected =
            plain_tokens(nmkMultiByteToWideChar::convert(text), L" \n");
        const Texts tokens = tokens_of(text, " \n");
        ASSERT_EQ(tokens.size(), expected.size()) << "seed " << seed << ", round " << round;
        for (std::size_t i = 0; i < tokens.size(); ++i) {
            ASSERT_EQ(nmkMultiByteToWideChar::convert(utString(tokens[i])), expected[i])
                << "seed " << seed << ", round " << round;
        }
    }
}

#include <nmktoolbox/files/nmkbasename.h>

#include "files/text_samples.h"

#include <gtest/gtest.h>

namespace {

struct Parts {
    const char* name;
    std::string path;
    std::string separator;
    std::string pathname;
    std::string basename;
};

const Parts parts_cases[] = {
    {"two_parts", "dir/file", "/", "dir", "file"},
    {"last_separator_counts", "a/b/c", "/", "a/b", "c"},
    {"separator_at_the_end_is_left_out", "a/b/", "/", "a", "b"},
    {"only_one_is_left_out", "a/b//", "/", "a/b", ""},
    {"no_separator", "file", "/", "", "file"},
    {"separator_at_the_beginning_only", "/file", "/", "", "/file"},
    {"separator_at_both_ends", "/file/", "/", "", "/file"},
    {"separator_alone", "/", "/", "", ""},
    {"two_separators_alone", "//", "/", "", "/"},
    {"one_character", "x", "/", "", "x"},
    {"empty_path", "", "/", "", ""},
    {"separator_of_two", "a::b::c", "::", "a::b", "c"},
    {"separator_of_two_at_the_end", "a::b::", "::", "a", "b"},
    {"separator_not_beyond_the_work", "x---", "--", "", "x-"},
    {"separator_longer_than_the_path", "a", "aaa", "", "a"},
    {"empty_separator_is_nowhere", "a/b", "", "", "a/b"},
    {"wide_separator",
     "a\xE2\x82\xAC"
     "b",
     "\xE2\x82\xAC", "a", "b"},
    {"pairs", "\xF0\x9F\x98\x80/\xF0\x9F\x98\x80", "/", "\xF0\x9F\x98\x80", "\xF0\x9F\x98\x80"},
    {"ill_formed_bytes", "\xFF\xE2/\x82\xFE/", "/", "\xFF\xE2", "\x82\xFE"},
};

}  // namespace

TEST(nmkbasename, is_what_follows_the_last_separator) {
    for (const Parts& each : parts_cases) {
        EXPECT_EQ(nmkbasename(utString(each.path), utString(each.separator)),
                  utString(each.basename))
            << each.name;
    }
}

TEST(nmkpathname, is_the_text_before_the_last_separator) {
    for (const Parts& each : parts_cases) {
        EXPECT_EQ(nmkpathname(utString(each.path), utString(each.separator)),
                  utString(each.pathname))
            << each.name;
    }
}

TEST(nmkbasename, does_not_test_the_beginning_for_a_separator) {
    EXPECT_EQ(nmkbasename("/a", "/").view(), "/a");
    EXPECT_EQ(nmkbasename("::a", "::").view(), "::a");
}

TEST(nmkbasename, takes_null_for_an_empty_text) {
    EXPECT_EQ(nmkbasename(utString(), "/"), utString(""));
    EXPECT_EQ(nmkpathname(utString(), "/"), utString(""));
    EXPECT_EQ(nmkbasename("a/b", utString()).view(), "a/b");
}

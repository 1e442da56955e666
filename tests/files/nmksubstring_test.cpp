#include <nmktoolbox/files/nmksubstring.h>

#include "files/text_samples.h"

#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>

namespace {

constexpr int largest = std::numeric_limits<int>::max();
constexpr int smallest = std::numeric_limits<int>::min();

}  // namespace

TEST(nmksubstring, counts_code_units) {
    const utString text(std::string(a_umlaut) + std::string(smiley) + "abc");
    EXPECT_EQ(nmksubstring(text, 0, 1).view(), a_umlaut);
    EXPECT_EQ(nmksubstring(text, 1, 2).view(), smiley);
    EXPECT_EQ(nmksubstring(text, 3, 2).view(), "ab");
    EXPECT_EQ(nmksubstring(text, 3, 0).view(), "");
}

TEST(nmksubstring, cuts_the_length_to_what_remains) {
    EXPECT_EQ(nmksubstring("abc", 1, 99).view(), "bc");
    EXPECT_EQ(nmksubstring("abc", 1, largest).view(), "bc");
    EXPECT_EQ(nmksubstring("abc", 1, -1).view(), "bc");
    EXPECT_EQ(nmksubstring("abc", 3, 1), utString(""));
}

TEST(nmksubstring, throws_for_a_start_past_the_end) {
    EXPECT_THROW(nmksubstring("abc", 4, 0), std::out_of_range);
    EXPECT_THROW(nmksubstring("abc", -1, 1), std::out_of_range);
    EXPECT_THROW(nmksubstring("abc", smallest, largest), std::out_of_range);
    EXPECT_THROW(nmksubstring("", 1, 1), std::out_of_range);
    EXPECT_THROW(nmksubstring(L"abc", 4, 0), std::out_of_range);
    EXPECT_THROW(nmksubstring(utString(euro), 2, 1), std::out_of_range) << "units, not bytes";
}

TEST(nmksubstring, takes_null_for_an_empty_text) {
    EXPECT_EQ(nmksubstring(utString(), 0, 5), utString(""));
    EXPECT_EQ(nmksubstring(static_cast<const wchar_t*>(nullptr), 0, 5), utString(""));
}

TEST(nmksubstring, brings_ill_formed_bytes_through) {
    const utString text("a\xFF\xE2\x82z");
    EXPECT_EQ(nmksubstring(text, 1, 2).view(), "\xFF\xE2\x82");
    EXPECT_EQ(nmksubstring(text, 0, 4).view(), text.view());
}

TEST(nmksubstring, has_a_substitute_where_a_pair_is_cut_apart) {
    const utString text("a" + std::string(smiley) + "b");
    const std::string half(replacement);
    EXPECT_EQ(nmksubstring(text, 0, 2).view(), "a" + half);
    EXPECT_EQ(nmksubstring(text, 1, 1).view(), half);
    EXPECT_EQ(nmksubstring(text, 2, 1).view(), half);
    EXPECT_EQ(nmksubstring(text, 2, 2).view(), half + "b");
    EXPECT_EQ(nmksubstring(text, 2, 0).view(), "");
}

TEST(nmksubstring, narrows_a_stretch_of_wide_text) {
    const wchar_t wide[] = {L'a', L'\u20AC', wchar_t(0xD83D), wchar_t(0xDE00), L'b', 0};
    EXPECT_EQ(nmksubstring(wide, 1, 3).view(), std::string(euro) + std::string(smiley));
    EXPECT_EQ(nmksubstring(wide, 3, 2).view(), std::string(replacement) + "b");
    EXPECT_EQ(nmksubstring(wide, 4, 99).view(), "b");
}

// Wide texts, places in them, and the encodings that make them.

#include <apsl/apCodePage.h>
#include <apsl/apString.h>
#include <apsl/apStringEncodingChooser.h>
#include <apsl/apStringEncodings.h>

#include <string>

#include <gtest/gtest.h>

#include "scoped_code_page.h"

TEST(apString, the_invalid_string_and_the_empty_text_are_two_things) {
    const apString invalid;
    const apString empty(L"");
    EXPECT_FALSE(invalid.is_valid());
    EXPECT_TRUE(empty.is_valid());
    EXPECT_TRUE(invalid.is_empty());
    EXPECT_TRUE(empty.is_empty());
    EXPECT_FALSE(invalid == empty);
    EXPECT_EQ(invalid.c_str(), nullptr);
    EXPECT_EQ(*empty.c_str(), L'\0');
    EXPECT_FALSE(apString(static_cast<const wchar_t*>(nullptr)).is_valid());
}

TEST(apString, replaces_from_left_to_right_without_overlap) {
    apString text(L"aaaaa");
    EXPECT_EQ(text.replace_all(L"aa", L"b"), 2);
    EXPECT_EQ(text, apString(L"bba"));
}

TEST(apString, does_not_search_what_it_has_put_in) {
    apString text(L"a.a");
    EXPECT_EQ(text.replace_all(L"a", L"aa"), 2);
    EXPECT_EQ(text, apString(L"aa.aa"));
}

TEST(apString, replaces_nothing_where_there_is_nothing) {
    apString invalid;
    EXPECT_EQ(invalid.replace_all(L"a", L"b"), 0);
    EXPECT_FALSE(invalid.is_valid());
    apString text(L"abc");
    EXPECT_EQ(text.replace_all(L"", L"x"), 0);
    EXPECT_EQ(text.replace_all(apString(), L"x"), 0);
    EXPECT_EQ(text.replace_all(L"abcd", L"x"), 0);
    EXPECT_EQ(text, apString(L"abc"));
}

TEST(apString, replaces_by_nothing_down_to_the_empty_text) {
    apString text(L"abab");
    EXPECT_EQ(text.replace_all(L"ab", apString()), 2);
    EXPECT_EQ(text, apString(L""));
}

TEST(apString, keeps_a_nul_inside) {
    apString text(std::wstring(L"a\0b\0", 4));
    EXPECT_EQ(text.length(), 4);
    EXPECT_EQ(text.replace_all(apString(std::wstring(1, L'\0')), L"/"), 2);
    EXPECT_EQ(text, apString(L"a/b/"));
}

TEST(apString, may_replace_itself) {
    apString text(L"ab");
    EXPECT_EQ(text.replace_all(text, text), 1);
    EXPECT_EQ(text, apString(L"ab"));
}

TEST(apString, ends_with_a_suffix_or_with_nothing) {
    const apString text(L"dir/");
    EXPECT_TRUE(text.ends_with(L"/"));
    EXPECT_TRUE(text.ends_with(L"dir/"));
    EXPECT_TRUE(text.ends_with(L""));
    EXPECT_FALSE(text.ends_with(L"dir"));
    EXPECT_FALSE(text.ends_with(L"a dir/"));
    EXPECT_FALSE(apString().ends_with(L"/"));
}

TEST(apString, the_left_part_is_cut_to_the_text) {
    const apString text(L"dir/");
    EXPECT_EQ(text.left(text.end() - 1), apString(L"dir"));
    EXPECT_EQ(text.left(text.begin()), apString(L""));
    EXPECT_EQ(text.left(text.begin() - 1), apString(L""));
    EXPECT_EQ(text.left(text.end() + 1), text);
    EXPECT_FALSE(apString().left(apStringPos(1)).is_valid());
}

TEST(apStringPos, counts_like_an_index) {
    apStringPos place(3);
    EXPECT_EQ((++place).index(), 4);
    EXPECT_EQ((place++).index(), 4);
    EXPECT_EQ((--place).index(), 4);
    EXPECT_EQ((place--).index(), 4);
    EXPECT_EQ(place, apStringPos(3));
    EXPECT_EQ((place + 2) - place, 2);
    EXPECT_EQ(place - 2, apStringPos(1));
    EXPECT_LT(place, place + 1);
    EXPECT_GE(place, place);
    EXPECT_NE(place, apStringPos());
}

TEST(apStringEncodings, each_decodes_and_encodes_in_its_own_code_page) {
    int status = -1;
    EXPECT_EQ(apStringUTF8Encoding().decode("\xC3\xA9", status), apString(L"\x00E9"));
    EXPECT_EQ(status, 1);
    EXPECT_EQ(apString1252Encoding().decode("\xE9", status), apString(L"\x00E9"));
    EXPECT_EQ(apString1252Encoding().encode(L"\x00E9", status), utString("\xE9"));
    EXPECT_EQ(apStringUTF8Encoding().encode(L"\x00E9", status), utString("\xC3\xA9"));
}

TEST(apStringEncodings, that_of_the_runtime_follows_the_chosen_code_page) {
    const apStringCRTEncoding encoding;
    int status = -1;
    EXPECT_EQ(ap_thread_code_page(), ap_code_page_utf8);
    EXPECT_EQ(encoding.decode("\xC3\xA9", status), apString(L"\x00E9"));
    const ScopedCodePage western(ap_code_page_western);
    EXPECT_EQ(encoding.decode("\xC3\xA9", status), apString(L"\x00C3\x00A9"));
    EXPECT_EQ(encoding.encode(L"\x00E9", status), utString("\xE9"));
}

TEST(apStringEncodings, a_code_page_that_is_not_known_is_not_taken) {
    const ScopedCodePage western(ap_code_page_western);
    ap_set_thread_code_page(437);
    EXPECT_EQ(ap_thread_code_page(), ap_code_page_western);
    EXPECT_FALSE(ap_is_known_code_page(437));
}

TEST(apStringEncodings, no_text_stays_no_text_and_the_empty_text_stays_empty) {
    const apStringUTF8Encoding encoding;
    int status = 0;
    EXPECT_FALSE(encoding.decode(utString(), status).is_valid());
    EXPECT_EQ(status, 1);
    EXPECT_TRUE(encoding.encode(apString(), status).is_null());
    EXPECT_EQ(encoding.decode("", status), apString(L""));
    EXPECT_EQ(encoding.encode(L"", status), utString(""));
}

TEST(apStringEncodings, a_substitution_clears_the_status) {
    int status = 1;
    EXPECT_EQ(apStringUTF8Encoding().decode("a\xFF", status), apString(L"a\xFFFD"));
    EXPECT_EQ(status, 0);
    status = 1;
    EXPECT_EQ(apString1252Encoding().encode(L"\x4E2D", status), utString("?"));
    EXPECT_EQ(status, 0);
}

TEST(apStringEncodingChooser, its_encoding_outlives_it) {
    const apIStringEncoding* const first = apStringEncodingChooser().ut_encoding();
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(first, apStringEncodingChooser().ut_encoding());
    int status = -1;
    EXPECT_EQ(first->encode(L"ok", status), utString("ok"));
}

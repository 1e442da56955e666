// Narrow to wide text and back: what is exact, what is substituted, and that nothing fails.

#include <apsl/apCodePage.h>
#include <gtest/gtest.h>

#include <string>

namespace {

std::wstring decoded(unsigned code_page, std::string_view bytes, int expected_status) {
    int status = -1;
    std::wstring wide = ap_decode(code_page, bytes, status);
    EXPECT_EQ(status, expected_status);
    return wide;
}

std::string encoded(unsigned code_page, std::wstring_view text, int expected_status) {
    int status = -1;
    std::string bytes = ap_encode(code_page, text, status);
    EXPECT_EQ(status, expected_status);
    return bytes;
}

}  // namespace

TEST(apCodePage, utf8_of_every_length_of_character_goes_both_ways) {
    const std::string bytes = "a\xC3\xA9\xE4\xB8\xAD\xF0\x9F\x98\x80z";
    const std::wstring wide = L"a\x00E9\x4E2D\xD83D\xDE00z";
    EXPECT_EQ(decoded(ap_code_page_utf8, bytes, 1), wide);
    EXPECT_EQ(encoded(ap_code_page_utf8, wide, 1), bytes);
}

TEST(apCodePage, each_maximal_ill_formed_part_becomes_one_replacement) {
    EXPECT_EQ(decoded(ap_code_page_utf8, "\xE4\xB8x", 0), L"\xFFFDx");
    EXPECT_EQ(decoded(ap_code_page_utf8, "\xF0\x9F\x98", 0), L"\xFFFD");
    EXPECT_EQ(decoded(ap_code_page_utf8, "\xC0\xAF", 0), L"\xFFFD\xFFFD");
    EXPECT_EQ(decoded(ap_code_page_utf8, "\xED\xA0\x80", 0), L"\xFFFD\xFFFD\xFFFD");
    // The examples of The Unicode Standard 15.0, tables 3-8 to 3-11.
    EXPECT_EQ(decoded(ap_code_page_utf8, "\xE0\x80\xE2\xF0\x9F\x92\x41", 0),
              L"\xFFFD\xFFFD\xFFFD\xFFFD\x41");
    EXPECT_EQ(decoded(ap_code_page_utf8, "\xE1\x80\xE2\xF0\x91\x92\xF1\xBF\x41", 0),
              L"\xFFFD\xFFFD\xFFFD\xFFFD\x41");
}

TEST(apCodePage, a_lone_surrogate_becomes_a_replacement) {
    EXPECT_EQ(encoded(ap_code_page_utf8, L"a\xD800", 0), "a\xEF\xBF\xBD");
    EXPECT_EQ(encoded(ap_code_page_utf8, L"\xDE00\xD83D", 0), "\xEF\xBF\xBD\xEF\xBF\xBD");
    EXPECT_EQ(encoded(ap_code_page_utf8, L"\xD83D\xD83D\xDE00", 0), "\xEF\xBF\xBD\xF0\x9F\x98\x80");
}

TEST(apCodePage, a_character_that_the_western_page_lacks_becomes_one_question_mark) {
    EXPECT_EQ(encoded(ap_code_page_western, L"\x20AC\x4E2D\xD83D\xDE00!", 0),
              "\x80?"
              "?!");
    EXPECT_EQ(encoded(ap_code_page_western, L"\x20AC!", 1), "\x80!");
}

TEST(apCodePage, a_nul_is_a_character_like_others) {
    const std::string bytes("a\0b", 3);
    EXPECT_EQ(decoded(ap_code_page_utf8, bytes, 1), std::wstring(L"a\0b", 3));
    EXPECT_EQ(encoded(ap_code_page_western, std::wstring(L"a\0b", 3), 1), bytes);
}

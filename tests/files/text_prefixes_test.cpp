// Every beginning of a text with everything in it goes through every function of the string
// toolkit; the sanitizers see to it that nothing reads past its end.
#include "files/text_samples.h"

#include <nmktoolbox/files.h>

#include <gtest/gtest.h>

#include <sstream>

namespace {

const std::string whole = everything();

/// A copy whose buffer ends with the text.
utString exact(std::string_view text) {
    char* buffer = new char[text.size() + 1];
    std::copy(text.begin(), text.end(), buffer);
    buffer[text.size()] = '\0';
    utString claimed(utStringClaim{}, buffer);
    return claimed.view() == text ? claimed : utString(text);  // cut at a nul
}

bool is_part(const utString& part, std::string_view text) {
    return text.find(part.view()) != std::string_view::npos;
}

class text_prefixes : public testing::TestWithParam<unsigned> {
  protected:
    ScopedCodePage code_page{GetParam()};
};

}  // namespace

TEST_P(text_prefixes, are_only_cut_where_a_function_only_moves_text_about) {
    for (std::size_t size = 0; size <= whole.size(); ++size) {
        const std::string_view bytes = std::string_view(whole).substr(0, size);
        for (const auto function : {nmktrim, nmkltrim, nmkrtrim}) {
            utString text = exact(bytes);
            function(text);
            EXPECT_TRUE(is_part(text, bytes)) << size;
        }
        const utString text = exact(bytes);
        EXPECT_TRUE(is_part(nmkbasename(text, " "), bytes)) << size;
        EXPECT_TRUE(is_part(nmkpathname(text, " "), bytes)) << size;
        EXPECT_TRUE(is_part(nmkBaseName(text, nullptr), bytes)) << size;
        EXPECT_TRUE(is_part(nmkBaseNameExt(text, nullptr), bytes)) << size;
        utString token;
        nmk_get_token(text, " /", static_cast<int>(size) / 2, token);
        EXPECT_TRUE(token.view() == " " || is_part(token, bytes)) << size;
        nmk_alphanumeric_token(text, static_cast<int>(size), token);
        EXPECT_TRUE(is_part(token, bytes)) << size;
        utStringcoDList list;
        nmktokens(text, " \n", list);
        for (const utString& each : list) {
            EXPECT_TRUE(is_part(each, bytes)) << size;
        }
    }
}

TEST_P(text_prefixes, come_back_whole_from_what_can_be_undone) {
    for (std::size_t size = 0; size <= whole.size(); ++size) {
        const std::string_view bytes = std::string_view(whole).substr(0, size);
        const utString text = exact(bytes);
        const utString escaped = nmkEscapeString(text).url_escape();
        EXPECT_EQ(nmkEscapeString(nmk_escape_string_url, escaped).str().view(), bytes) << size;
        utString replaced = text;
        const int count = nmkreplace_all_strings(replaced, " ", "\x01");
        EXPECT_EQ(nmkreplace_all_strings(replaced, "\x01", " "), count) << size;
        EXPECT_EQ(replaced.view(), bytes) << size;
        EXPECT_EQ(nmkfreq(text, utString(" ")), count) << size;
        EXPECT_EQ(nmkfreq(text, ' '), count) << size;
        std::istringstream stream{std::string(bytes)};
        utString line;
        std::string lines;
        while (nmkreadline(stream, line, '\n', 0)) {
            lines += line.view();
            lines += stream.get() == '\n' ? "\n" : "";
        }
        EXPECT_EQ(lines, bytes) << size;
    }
}

TEST_P(text_prefixes, are_safe_in_every_other_function) {
    for (std::size_t size = 0; size <= whole.size(); ++size) {
        const std::string_view bytes = std::string_view(whole).substr(0, size);
        const utString text = exact(bytes);
        const int length = nmkstring_length(text);
        EXPECT_EQ(nmkcompare(text, text), 0) << size;
        EXPECT_EQ(nmkpos(text, text, 0), 0) << size;
        EXPECT_EQ(nmkindex(text, text, 1), -1) << size;
        EXPECT_EQ(nmkstring_length(nmksubstring(text, length / 2, length)), length - length / 2)
            << size;
        for (const auto function : {nmkdowncase, nmkupcase, nmkcapitalize, nmkcapitalize_words}) {
            utString changed = text;
            function(changed);
            EXPECT_EQ(nmkstring_length(changed), length) << size;
            utString again = changed;
            function(again);
            EXPECT_EQ(again, changed) << size;
        }
        utString stripped = text;
        EXPECT_EQ(nmk_strip_end_substring(stripped, text), false) << size;
        EXPECT_GE(nmk_text_to_html(text).length(), text.length()) << size;
        utString lower = text;
        nmkdowncase(lower);
        EXPECT_TRUE(nmk_all_lowercase(text) == 0 || lower == text) << size;
        utString upper = text;
        nmkupcase(upper);
        EXPECT_TRUE(nmk_all_uppercase(text) == 0 || upper == text) << size;
    }
}

INSTANTIATE_TEST_SUITE_P(code_pages, text_prefixes,
                         testing::Values(ap_code_page_utf8, ap_code_page_western));

TEST(text_functions, finish_on_a_million_bytes_of_near_misses) {
    // An algorithm that compares or moves the rest of the text at every byte would take minutes.
    const std::string as(500'000, 'a');
    const utString near_miss(as + "b");
    utString text(as + as);
    EXPECT_EQ(nmkgsub(text, near_miss, "x"), 0);
    EXPECT_EQ(nmkreplace_all_strings(text, near_miss, "x"), 0);
    EXPECT_EQ(nmkpos(text, near_miss, 0), -1);
    EXPECT_EQ(nmkreplace_all_strings(text, "a", "bc"), 1'000'000);
    EXPECT_EQ(text.length(), 2'000'000);
    EXPECT_EQ(nmkgsub(text, utString("bc"), "<"), 1'000'000);
    EXPECT_EQ(nmk_text_to_html(text).length(), 4'000'000);
    EXPECT_EQ(nmkdelete_all(text, '<'), 1'000'000);
    utStringcoDList list;
    EXPECT_EQ(nmktokens(utString("'" + as), "a", list), 1);
}

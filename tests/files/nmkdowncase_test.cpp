#include <nmktoolbox/files/nmkdowncase.h>

#include "files/text_samples.h"

#include <gtest/gtest.h>

namespace {

std::string changed(void (*function)(utString&), const std::string& before) {
    utString text(before);
    function(text);
    EXPECT_FALSE(text.is_null());
    return std::string(text.view());
}

constexpr void (*all_functions[])(utString&) = {nmkdowncase, nmkupcase, nmkcapitalize,
                                                nmkcapitalize_words};

}  // namespace

TEST(nmkdowncase, changes_the_letters_of_every_script) {
    EXPECT_EQ(changed(nmkdowncase, "ABC xyz 12"), "abc xyz 12");
    EXPECT_EQ(changed(nmkdowncase, "\xC3\x84\xD0\x96\xCE\xA3"), "\xC3\xA4\xD0\xB6\xCF\x83");
}

TEST(nmkdowncase, knows_no_final_sigma) {
    EXPECT_EQ(changed(nmkdowncase, "\xCE\x9F\xCE\xA3"), "\xCE\xBF\xCF\x83");
}

TEST(nmkupcase, changes_the_letters_of_every_script) {
    EXPECT_EQ(changed(nmkupcase, "abc XYZ 12"), "ABC XYZ 12");
    EXPECT_EQ(changed(nmkupcase, "\xC3\xA4\xD0\xB6\xCF\x83\xCF\x82"),
              "\xC3\x84\xD0\x96\xCE\xA3\xCE\xA3");
}

TEST(nmkupcase, takes_a_dotless_i_to_a_shorter_i) {
    EXPECT_EQ(changed(nmkupcase, "x\xC4\xB1y"), "XIY");
}

TEST(nmkupcase, keeps_the_sharp_s) { EXPECT_EQ(changed(nmkupcase, "\xC3\x9F"), "\xC3\x9F"); }

TEST(nmkdowncase, leaves_letters_of_title_case_as_nmkupcase_does) {
    const std::string title_case_dz = "\xC7\x85";  // U+01C5, between U+01C4 and U+01C6
    EXPECT_EQ(changed(nmkdowncase, title_case_dz), title_case_dz);
    EXPECT_EQ(changed(nmkupcase, title_case_dz), title_case_dz);
}

TEST(nmkdowncase, has_no_case_for_letters_of_two_code_units) {
    const std::string capital_long_i = "\xF0\x90\x90\x80";  // U+10400
    EXPECT_EQ(changed(nmkdowncase, capital_long_i), capital_long_i);
}

TEST(nmkdowncase, brings_ill_formed_bytes_through) {
    EXPECT_EQ(changed(nmkdowncase,
                      "A\xFF"
                      "B\xE2\x82"
                      "C\xED\xA0\x80"),
              "a\xFF"
              "b\xE2\x82"
              "c\xED\xA0\x80");
    EXPECT_EQ(changed(nmkupcase, std::string("a\0b", 3)), std::string("A\0B", 3));
}

TEST(nmkdowncase, leaves_null_and_empty_alone) {
    for (const auto function : all_functions) {
        utString null;
        function(null);
        EXPECT_TRUE(null.is_null());
        EXPECT_EQ(changed(function, ""), "");
    }
}

TEST(nmkcapitalize, has_one_capital_in_front) {
    EXPECT_EQ(changed(nmkcapitalize, "hELLO wORLD"), "Hello world");
    EXPECT_EQ(changed(nmkcapitalize, "x"), "X");
    EXPECT_EQ(changed(nmkcapitalize, " aB"), " ab");
    EXPECT_EQ(changed(nmkcapitalize, "\xC3\xA4\xC3\x84"), "\xC3\x84\xC3\xA4");
    // The sign of the kelvin goes down to a plain k first, and that up to a plain K.
    EXPECT_EQ(changed(nmkcapitalize,
                      "\xE2\x84\xAA"
                      "b"),
              "Kb");
}

TEST(nmkcapitalize_words, has_a_capital_behind_white_space) {
    EXPECT_EQ(changed(nmkcapitalize_words, "hELLO wORLD\tx-y"), "Hello World\tX-y");
    EXPECT_EQ(changed(nmkcapitalize_words, "a" + std::string(ideographic_space) + "b"),
              "A" + std::string(ideographic_space) + "B");
    EXPECT_EQ(changed(nmkcapitalize_words, "a" + std::string(no_break_space) + "b"),
              "A" + std::string(no_break_space) + "b");
    EXPECT_EQ(changed(nmkcapitalize_words, "\xC3\x84 \xC3\xA4"), "\xC3\x84 \xC3\x84");
}

TEST(nmkupcase, keeps_a_letter_whose_capital_the_code_page_lacks) {
    const ScopedCodePage western(ap_code_page_western);
    EXPECT_EQ(changed(nmkupcase, "a\xE4\xFF"), "A\xC4\x9F");  // y diaeresis moves within the page
    EXPECT_EQ(changed(nmkupcase, "\xB5\x83z"), "\xB5\x83Z");  // micro and florin have no place
}

// Classes and cases of code units, over all of them.

#include <apsl/apCharacter.h>

#include <clocale>
#include <cwchar>
#include <cwctype>
#include <set>
#include <string>

#include <gtest/gtest.h>

#include "comma_locale.h"

namespace {

wchar_t wide(int unit) { return static_cast<wchar_t>(unit); }

struct Class {
    const char* name;
    bool (*ours)(wchar_t) noexcept;
    int (*of_the_c_locale)(wint_t);
};

void PrintTo(const Class& one, std::ostream* stream) { *stream << one.name; }

constexpr Class classes[] = {
    {"alpha", ap_is_alpha, std::iswalpha}, {"digit", ap_is_digit, std::iswdigit},
    {"alnum", ap_is_alnum, std::iswalnum}, {"xdigit", ap_is_xdigit, std::iswxdigit},
    {"lower", ap_is_lower, std::iswlower}, {"upper", ap_is_upper, std::iswupper},
    {"space", ap_is_space, std::iswspace}, {"blank", ap_is_blank, std::iswblank},
    {"cntrl", ap_is_cntrl, std::iswcntrl}, {"graph", ap_is_graph, std::iswgraph},
    {"print", ap_is_print, std::iswprint}, {"punct", ap_is_punct, std::iswpunct},
};

class apCharacter_class : public testing::TestWithParam<Class> {};

}  // namespace

TEST_P(apCharacter_class, is_that_of_the_c_locale_for_ascii) {
    ASSERT_STREQ(std::setlocale(LC_CTYPE, nullptr), "C");
    for (int unit = 0; unit < 128; ++unit) {
        const bool expected = GetParam().of_the_c_locale(static_cast<wint_t>(unit)) != 0;
        EXPECT_EQ(GetParam().ours(wide(unit)), expected) << unit;
    }
}

TEST_P(apCharacter_class, has_neither_surrogates_nor_numbers_beyond_Unicode) {
    for (int unit = 0xD800; unit <= 0xDFFF; ++unit) {
        EXPECT_FALSE(GetParam().ours(wide(unit))) << unit;
    }
    EXPECT_FALSE(GetParam().ours(wide(0x110000)));
    EXPECT_FALSE(GetParam().ours(wide(-1)));
}

INSTANTIATE_TEST_SUITE_P(each, apCharacter_class, testing::ValuesIn(classes),
                         [](const auto& one) { return std::string(one.param.name); });

TEST(apCharacter, the_classes_lie_within_each_other_as_they_should) {
    for (int unit = 0; unit <= 0xFFFF; ++unit) {
        const wchar_t c = wide(unit);
        ASSERT_EQ(ap_is_alnum(c), ap_is_alpha(c) || ap_is_digit(c)) << unit;
        ASSERT_FALSE(ap_is_lower(c) && ap_is_upper(c)) << unit;
        ASSERT_TRUE(!ap_is_lower(c) || ap_is_alpha(c)) << unit;
        ASSERT_TRUE(!ap_is_upper(c) || ap_is_alpha(c)) << unit;
        ASSERT_TRUE(!ap_is_blank(c) || ap_is_space(c)) << unit;
        ASSERT_FALSE(ap_is_space(c) && ap_is_graph(c)) << unit;
        ASSERT_TRUE(!ap_is_graph(c) || ap_is_print(c)) << unit;
        ASSERT_FALSE(ap_is_cntrl(c) && ap_is_print(c)) << unit;
        ASSERT_FALSE(ap_is_punct(c) && (ap_is_alnum(c) || ap_is_space(c))) << unit;
        ASSERT_TRUE(!ap_is_punct(c) || ap_is_graph(c)) << unit;
        ASSERT_TRUE(!ap_is_digit(c) || ap_is_xdigit(c)) << unit;
    }
}

TEST(apCharacter, white_space_is_that_of_unicode_less_the_no_break_spaces) {
    const std::set<int> white_space = {
        0x09,   0x0A,   0x0B,   0x0C,   0x0D,   0x20,   0x85,   0x1680, 0x2000, 0x2001, 0x2002,
        0x2003, 0x2004, 0x2005, 0x2006, 0x2008, 0x2009, 0x200A, 0x2028, 0x2029, 0x205F, 0x3000};
    for (int unit = 0; unit <= 0xFFFF; ++unit) {
        ASSERT_EQ(ap_is_space(wide(unit)), white_space.count(unit) == 1) << unit;
    }
}

TEST(apCharacter, a_no_break_space_is_printed_but_breaks_nothing) {
    for (const int unit : {0x00A0, 0x2007, 0x202F}) {
        EXPECT_TRUE(ap_is_print(wide(unit)));
        EXPECT_FALSE(ap_is_space(wide(unit)));
        EXPECT_FALSE(ap_is_blank(wide(unit)));
        EXPECT_FALSE(ap_is_punct(wide(unit)));
    }
}

TEST(apCharacter, cases_map_one_to_one) {
    EXPECT_EQ(ap_to_upper(wide(0x0131)), L'I');          // dotless i
    EXPECT_EQ(ap_to_lower(wide(0x0130)), L'i');          // I with a dot
    EXPECT_EQ(ap_to_upper(wide(0x00DF)), wide(0x00DF));  // sharp s stays
    EXPECT_EQ(ap_to_lower(wide(0x1E9E)), wide(0x00DF));  // and the capital one goes down to it
    EXPECT_EQ(ap_to_lower(wide(0x03A3)), wide(0x03C3));  // sigma, at the end of a word too
    EXPECT_EQ(ap_to_upper(wide(0x03C2)), wide(0x03A3));  // final sigma
    EXPECT_EQ(ap_to_upper(wide(0x00E9)), wide(0x00C9));  // e with acute
    EXPECT_EQ(ap_to_lower(wide(0x042F)), wide(0x044F));  // Cyrillic ya
    EXPECT_EQ(ap_to_upper(wide(0x00FF)), wide(0x0178));  // y with diaeresis
    EXPECT_EQ(ap_to_upper(wide(0xFB01)), wide(0xFB01));  // the ligature fi has two letters
    EXPECT_EQ(ap_to_lower(wide(0x01C5)), wide(0x01C6));  // title case
    EXPECT_FALSE(ap_is_upper(wide(0x01C5)));
    EXPECT_FALSE(ap_is_lower(wide(0x01C5)));
}

TEST(apCharacter, surrogates_have_no_case) {
    for (int unit = 0xD800; unit <= 0xDFFF; ++unit) {
        EXPECT_EQ(ap_to_lower(wide(unit)), wide(unit));
        EXPECT_EQ(ap_to_upper(wide(unit)), wide(unit));
    }
}

TEST(apCharacter, one_unit_stays_one_unit_in_the_other_case) {
    for (int unit = 0; unit <= 0xFFFF; ++unit) {
        ASSERT_LE(ap_to_lower(wide(unit)), wide(0xFFFF));
        ASSERT_LE(ap_to_upper(wide(unit)), wide(0xFFFF));
    }
}

TEST(apCharacter, a_locale_changes_nothing) {
    const CommaLocale german;
    ASSERT_TRUE(german.holds_for_the_c_library());
    EXPECT_EQ(ap_to_upper(L'i'), L'I');
    EXPECT_FALSE(ap_is_space(wide(0x00A0)));
    EXPECT_TRUE(ap_is_alpha(wide(0x00E9)));
}

#include <gtest/gtest.h>
#include <nls/nlsNeutralNumbers.h>
#include <nls/nls_scan_number.h>

#include <cstdio>
#include <cstring>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <thread>

#include "comma_locale.h"

namespace {

std::string written_half() {
    char text[8];
    std::snprintf(text, sizeof text, "%.1f", 0.5);
    return text;
}

struct DoubleCase {
    const char* name;
    const char* text;
    std::optional<double> value;
    const char* rest;
};

std::ostream& operator<<(std::ostream& out, const DoubleCase& each) { return out << each.name; }

class nls_scan_number_double : public testing::TestWithParam<DoubleCase> {};

struct IntCase {
    const char* name;
    const char* text;
    std::optional<int> value;
    const char* rest;
};

std::ostream& operator<<(std::ostream& out, const IntCase& each) { return out << each.name; }

class nls_scan_number_int : public testing::TestWithParam<IntCase> {};

// Scans the text and compares the value and what is left of it.
template <class Number>
void expect_scan(const char* text, const std::optional<Number>& expected, const char* rest) {
    const char* at = text;
    Number value = 77;
    EXPECT_EQ(nls_scan_number(at, text + std::strlen(text), value), expected.has_value());
    EXPECT_EQ(value, expected.value_or(77));
    EXPECT_STREQ(at, expected.has_value() ? rest : text);
}

}  // namespace

TEST(nlsNeutralNumbers, numbers_have_a_decimal_point_while_it_exists) {
    const CommaLocale comma;
    if (!comma.holds_for_the_c_library()) GTEST_SKIP() << "no locale with a decimal comma";
    {
        const nlsNeutralNumbers neutral(nlsTranslationNone);
        EXPECT_EQ(written_half(), "0.5");
        EXPECT_EQ(neutral.type(), nlsTranslationNone);
    }
    EXPECT_EQ(written_half(), "0,5");
}

TEST(nlsNeutralNumbers, guards_may_end_in_any_order) {
    const CommaLocale comma;
    if (!comma.holds_for_the_c_library()) GTEST_SKIP() << "no locale with a decimal comma";
    auto first = std::make_unique<nlsNeutralNumbers>(nlsTranslationNone);
    auto second = std::make_unique<nlsNeutralNumbers>(nlsTranslationNone);
    first.reset();
    EXPECT_EQ(written_half(), "0.5");
    second.reset();
    EXPECT_EQ(written_half(), "0,5");
}

TEST(nlsNeutralNumbers, ending_on_another_thread_does_no_harm) {
    auto guard = std::make_unique<nlsNeutralNumbers>(nlsTranslationNone);
    std::thread([&] { guard.reset(); }).join();
    EXPECT_EQ(written_half(), "0.5");
    std::thread([&] { guard = std::make_unique<nlsNeutralNumbers>(nlsTranslationNone); }).join();
    guard.reset();
    EXPECT_EQ(written_half(), "0.5");
}

TEST_P(nls_scan_number_double, reads_as_sscanf_does) {
    expect_scan(GetParam().text, GetParam().value, GetParam().rest);
}

INSTANTIATE_TEST_SUITE_P(
    texts, nls_scan_number_double,
    testing::Values(DoubleCase{"white_space_is_skipped", " \t\r\n\v\f1.5 x", 1.5, " x"},
                    DoubleCase{"a_leading_plus", "+2", 2.0, ""},
                    DoubleCase{"a_leading_minus", "-.5", -0.5, ""},
                    DoubleCase{"nothing_between_two", "1.5-2", 1.5, "-2"},
                    DoubleCase{"a_second_point", "1.5.25", 1.5, ".25"},
                    DoubleCase{"rubbish_behind", "3mm", 3.0, "mm"},
                    DoubleCase{"an_exponent", "1.5e+2,", 150.0, ","},
                    DoubleCase{"a_decimal_comma_ends_it", "1,5", 1.0, ",5"},
                    DoubleCase{"plus_and_minus", "+-1", std::nullopt, ""},
                    DoubleCase{"the_word_nan", "nan", std::nullopt, ""},
                    DoubleCase{"the_word_inf", "-inf", std::nullopt, ""},
                    DoubleCase{"hexadecimal", "0x10", std::nullopt, ""},
                    DoubleCase{"past_the_largest", "1e999", std::nullopt, ""},
                    DoubleCase{"below_the_smallest", "1e-999", std::nullopt, ""},
                    DoubleCase{"a_sign_alone", "-", std::nullopt, ""},
                    DoubleCase{"a_point_alone", ".", std::nullopt, ""},
                    DoubleCase{"nothing", " ", std::nullopt, ""}),
    testing::PrintToStringParamName());

TEST_P(nls_scan_number_int, reads_as_sscanf_does) {
    expect_scan(GetParam().text, GetParam().value, GetParam().rest);
}

INSTANTIATE_TEST_SUITE_P(texts, nls_scan_number_int,
                         testing::Values(IntCase{"white_space_is_skipped", " 12 3", 12, " 3"},
                                         IntCase{"a_leading_plus", "+12", 12, ""},
                                         IntCase{"a_fraction_is_left", "1.5", 1, ".5"},
                                         IntCase{"the_least", "-2147483648", -2147483647 - 1, ""},
                                         IntCase{"past_the_largest", "2147483648", std::nullopt,
                                                 ""},
                                         IntCase{"hexadecimal", "0X1", std::nullopt, ""},
                                         IntCase{"a_point_first", ".5", std::nullopt, ""},
                                         IntCase{"a_word", "five", std::nullopt, ""}),
                         testing::PrintToStringParamName());

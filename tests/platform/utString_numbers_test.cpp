// Numbers in texts: how they are written, that they read back, and which texts are rejected.

#include <utils/utMath.h>
#include <utils/utString.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "comma_locale.h"

namespace {

template <class Number>
std::string written(Number value) {
    utString text;
    text << value;
    return std::string(text.view());
}

/// The fewest digits of a C format that read back, as a number of digits.
int fewest_digits(double value) {
    for (int digits = 1; digits < 17; ++digits) {
        char text[64];
        std::snprintf(text, sizeof text, "%.*e", digits - 1, value);
        if (std::strtod(text, nullptr) == value) return digits;
    }
    return 17;
}

/// Digits of a written number between the first and the last that is not 0.
int digits_in(const std::string& text) {
    std::string digits;
    for (const char c : text.substr(0, text.find('e'))) {
        if (c >= '0' && c <= '9') digits += c;
    }
    const auto first = digits.find_first_not_of('0');
    const auto last = digits.find_last_not_of('0');
    return first == std::string::npos ? 1 : static_cast<int>(last - first) + 1;
}

void expect_reads_back(double value) {
    const std::string text = written(value);
    double read = 1e300;
    int position = 0;
    ASSERT_EQ(utString(text).parse(read, position), 1) << text;
    ASSERT_EQ(std::bit_cast<std::uint64_t>(read), std::bit_cast<std::uint64_t>(value)) << text;
    ASSERT_EQ(position, static_cast<int>(text.size())) << text;
    ASSERT_LE(digits_in(text), fewest_digits(value)) << text;
}

}  // namespace

TEST(utString_numbers, whole_numbers_are_written_in_decimal) {
    EXPECT_EQ(written(0), "0");
    EXPECT_EQ(written(-7), "-7");
    EXPECT_EQ(written(std::numeric_limits<int>::min()), "-2147483648");
    EXPECT_EQ(written(std::numeric_limits<long long>::min()), "-9223372036854775808");
    EXPECT_EQ(written(std::numeric_limits<unsigned long long>::max()), "18446744073709551615");
    EXPECT_EQ(written(true), "1");
}

TEST(utString_numbers, doubles_have_the_fewest_digits_without_an_exponent) {
    EXPECT_EQ(written(1.02), "1.02");
    EXPECT_EQ(written(2.0), "2");
    EXPECT_EQ(written(-0.5), "-0.5");
    EXPECT_EQ(written(100000.0), "100000");
    EXPECT_EQ(written(0.1 + 0.2), "0.30000000000000004");
    EXPECT_EQ(written(0.0001), "0.0001");
    EXPECT_EQ(written(9999999999999998.0), "9999999999999998");
}

TEST(utString_numbers, very_large_and_very_small_doubles_have_an_exponent) {
    EXPECT_EQ(written(1e16), "1e+16");
    EXPECT_EQ(written(-1.5e300), "-1.5e+300");
    EXPECT_EQ(written(0.00009), "9e-05");
    EXPECT_EQ(written(5e-324), "5e-324");
}

TEST(utString_numbers, zeros_infinities_and_not_a_number_have_one_form) {
    EXPECT_EQ(written(0.0), "0");
    EXPECT_EQ(written(-0.0), "-0");
    EXPECT_EQ(written(std::numeric_limits<double>::infinity()), "inf");
    EXPECT_EQ(written(-std::numeric_limits<double>::infinity()), "-inf");
    EXPECT_EQ(written(std::nan("")), "nan");
    EXPECT_EQ(written(std::copysign(std::nan(""), -1.0)), "nan");
}

TEST(utString_numbers, doubles_read_back_with_the_fewest_digits) {
    constexpr std::uint64_t seed = 20240611;
    std::mt19937_64 draw(seed);
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    for (int i = 0; i < 20000; ++i) {
        const double value = std::bit_cast<double>(draw());
        if (std::isfinite(value)) expect_reads_back(value);
        expect_reads_back(static_cast<double>(static_cast<std::int64_t>(draw()) >> (i % 60)) /
                          1000.0);
    }
    for (const double value : {0.0, -0.0, 1e-4, 1e16, 5e-324, 1.7976931348623157e308,
                               9007199254740993.0, 2.2250738585072014e-308}) {
        expect_reads_back(value);
        expect_reads_back(std::nextafter(value, 0.0));
    }
}

TEST(utString_numbers, infinities_read_back) {
    for (const char* text : {"inf", "-inf"}) {
        double value = 0.0;
        int position = 0;
        EXPECT_EQ(utString(text).parse(value, position), 1);
        EXPECT_EQ(written(value), text);
    }
}

TEST(utString_numbers, numbers_do_not_depend_on_the_locale) {
    const CommaLocale comma;
    std::ostringstream in_this_locale;
    in_this_locale << 1234567.5;
    ASSERT_NE(in_this_locale.str(), "1234567.5");
    EXPECT_EQ(written(1234567.5), "1234567.5");
    EXPECT_EQ(written(1234567), "1234567");
    double value = 0.0;
    int position = 0;
    EXPECT_EQ(utString("1.5,2").parse(value, position), 1);
    EXPECT_EQ(value, 1.5);
    EXPECT_EQ(position, 3);
}

TEST(utString_numbers, parse_reads_one_number_after_another) {
    const utString text("  1.5\t-2e3 +7;");
    double value = 0.0;
    int position = 0;
    EXPECT_EQ(text.parse(value, position), 1);
    EXPECT_EQ(value, 1.5);
    EXPECT_EQ(text.parse(value, position), 1);
    EXPECT_EQ(value, -2000.0);
    int whole = 0;
    EXPECT_EQ(text.parse(whole, position), 1);
    EXPECT_EQ(whole, 7);
    EXPECT_EQ(text[position], ';');
}

TEST(utString_numbers, parse_changes_nothing_when_there_is_no_number) {
    for (const char* text : {"", " ", "x", "+", "-", "+-1", "-+1", "--1", "- 1", ".", "e5"}) {
        double value = 42.0;
        int whole = 42;
        int position = 0;
        EXPECT_EQ(utString(text).parse(value, position), 0) << text;
        EXPECT_EQ(utString(text).parse(whole, position), 0) << text;
        EXPECT_EQ(value, 42.0);
        EXPECT_EQ(whole, 42);
        EXPECT_EQ(position, 0);
    }
}

TEST(utString_numbers, a_number_that_does_not_fit_is_not_read) {
    double value = 42.0;
    int whole = 42;
    int position = 0;
    EXPECT_EQ(utString("1e999").parse(value, position), 0);
    EXPECT_EQ(utString("1e-999").parse(value, position), 0);
    EXPECT_EQ(utString("2147483648").parse(whole, position), 0);
    EXPECT_EQ(utString("-2147483648").parse(whole, position), 1);
    EXPECT_EQ(whole, std::numeric_limits<int>::min());
    EXPECT_EQ(value, 42.0);
}

TEST(utString_numbers, parse_stays_inside_the_text) {
    const utString text("12");
    double value = 42.0;
    for (const int start : {-1, 2, 3, 1000, std::numeric_limits<int>::min()}) {
        int position = start;
        EXPECT_EQ(text.parse(value, position), 0) << start;
        EXPECT_EQ(position, start);
    }
    int position = 0;
    EXPECT_EQ(utString().parse(value, position), 0);
    EXPECT_EQ(utString(std::string("1\0002", 3)).parse(value, position), 1);
    EXPECT_EQ(value, 1.0);
    EXPECT_EQ(position, 1);
}

TEST(utMath, powers_of_ten_are_the_nearest_doubles) {
    for (int order = -330; order <= 320; ++order) {
        const std::string text = "1e" + std::to_string(order);
        EXPECT_EQ(utMath::pow(10.0, order), std::strtod(text.c_str(), nullptr)) << order;
    }
}

TEST(utMath, powers_of_other_bases_are_exact_for_small_integers) {
    EXPECT_EQ(utMath::pow(2.0, 10), 1024.0);
    EXPECT_EQ(utMath::pow(2.0, -1), 0.5);
    EXPECT_EQ(utMath::pow(-3.0, 3), -27.0);
    EXPECT_EQ(utMath::pow(0.0, 0), 1.0);
    EXPECT_EQ(utMath::pow(7.5, 1), 7.5);
    EXPECT_EQ(utMath::pow(10.0, std::numeric_limits<int>::min()), 0.0);
}

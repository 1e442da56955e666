#include <nmktoolbox/files/nmkformat_double.h>

#include "comma_locale.h"
#include "files/plain_format_double.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <limits>
#include <random>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double largest = std::numeric_limits<double>::max();
constexpr double smallest = std::numeric_limits<double>::denorm_min();
constexpr unsigned seed = 20260727;

std::string text_of(double value, int places) {
    return std::string(nmkformat_double(value, places).view());
}

std::string exact_text_of(double value) {
    return std::string(nmkformat_double_exact(value).view());
}

/// Any bits: every magnitude, subnormals, infinities and NaN among them.
double any_double(std::mt19937_64& draw) { return std::bit_cast<double>(draw()); }

/// Numbers that people write: few digits, near one.
double handy_double(std::mt19937_64& draw) {
    const double steps = static_cast<double>(static_cast<std::int64_t>(draw()) >> 34);
    return steps / std::pow(10.0, static_cast<double>(draw() % 10));
}

struct Formatted {
    const char* name;
    double value;
    int places;
    const char* text;
};

const Formatted formatted_cases[] = {
    {"fewer_digits_than_places", 1.5, 3, "1.5"},
    {"whole_number_keeps_one_zero", 2.0, 3, "2.0"},
    {"too_small_to_show", 0.0004, 3, "0.0"},
    {"too_small_to_show_and_negative", -0.0004, 3, "0.0"},
    {"half_a_unit_is_not_too_small", 0.0005, 3, "0.001"},
    {"negative_zero", -0.0, 3, "0.0"},
    {"negative_zero_with_places_beyond_the_doubles", -0.0, 5000, "0.0"},
    {"half_a_unit_that_rounds_down", -5e-7, 6, "0.0"},
    {"no_places", 100.0, 0, "100.0"},
    {"no_places_and_half", 2.5, 0, "2.0"},
    {"no_places_and_below_half", 0.4, 0, "0.0"},
    {"zeros_before_the_point_stay", 1000.0, 2, "1000.0"},
    {"carries", 9.9996, 3, "10.0"},
    {"negative", -12.340, 5, "-12.34"},
    {"negative_places_show_six", 7.25, -1, "7.25"},
    {"negative_places_still_cut", 4.9, -1, "0.0"},
    {"least_places_cut_everything", largest, std::numeric_limits<int>::min(), "0.0"},
    {"plus_infinity", infinity, 3, "inf"},
    {"minus_infinity", -infinity, 3, "-inf"},
    {"not_a_number", std::numeric_limits<double>::quiet_NaN(), 3, "nan"},
};

}  // namespace

TEST(nmkformat_double, rounds_and_drops_needless_zeros) {
    for (const Formatted& each : formatted_cases) {
        EXPECT_EQ(text_of(each.value, each.places), each.text) << each.name;
    }
}

TEST(nmkformat_double, agrees_with_the_plain_reading_on_every_magnitude) {
    std::mt19937_64 draw(seed);
    for (int i = 0; i < 40000; ++i) {
        const double value = i % 2 == 0 ? any_double(draw) : handy_double(draw);
        const int places = static_cast<int>(draw() % 24) - 3;
        ASSERT_EQ(text_of(value, places), plain_format_double(value, places))
            << "seed " << seed << ", value " << std::hexfloat << value << ", places " << places;
    }
}

TEST(nmkformat_double, shows_every_digit_of_the_smallest_and_the_largest_double) {
    for (const int places : {0, 1, 320, 323, 324, 1073, 1074, 1075, 5000}) {
        EXPECT_EQ(text_of(smallest, places), plain_format_double(smallest, places)) << places;
        EXPECT_EQ(text_of(-largest, places), plain_format_double(-largest, places)) << places;
    }
}

TEST(nmkformat_double, takes_any_number_of_places_without_room_for_them) {
    EXPECT_EQ(text_of(0.5, std::numeric_limits<int>::max()), "0.5");
    EXPECT_EQ(text_of(smallest, std::numeric_limits<int>::max()), text_of(smallest, 1074));
}

TEST(nmkformat_double, never_shows_a_negative_zero) {
    for (int places = 0; places <= 330; ++places) {
        const double half = std::strtod(("-5e-" + std::to_string(places + 1)).c_str(), nullptr);
        for (const double value : {half, std::nextafter(half, 0.0), std::nextafter(half, -1.0)}) {
            EXPECT_NE(text_of(value, places), "-0.0") << places;
        }
    }
}

TEST(nmkformat_double, keeps_its_point_in_every_locale) {
    const CommaLocale commas;
    ASSERT_TRUE(commas.holds_for_the_c_library());
    EXPECT_EQ(text_of(1234.5, 3), "1234.5");
    EXPECT_EQ(exact_text_of(1234.5), "1234.5");
}

TEST(nmkformat_double_exact, gives_the_first_of_15_16_and_17_digits_that_reads_back) {
    EXPECT_EQ(exact_text_of(0.1), "0.1");
    EXPECT_EQ(exact_text_of(1.0 / 3.0), "0.3333333333333333");
    EXPECT_EQ(exact_text_of(0.1 + 0.2), "0.30000000000000004");
    EXPECT_EQ(exact_text_of(100.0), "100");
    EXPECT_EQ(exact_text_of(1e15), "1e+15");
    EXPECT_EQ(exact_text_of(123456789012345.0), "123456789012345");
    EXPECT_EQ(exact_text_of(0.0001), "0.0001");
    EXPECT_EQ(exact_text_of(0.00001), "1e-05");
    EXPECT_EQ(exact_text_of(-0.0), "-0");
    EXPECT_EQ(exact_text_of(infinity), "inf");
}

TEST(nmkformat_double_exact, is_not_the_shortest_text) {
    EXPECT_EQ(exact_text_of(smallest), "4.94065645841247e-324");
    EXPECT_EQ(exact_text_of(largest), "1.7976931348623157e+308");
}

TEST(nmkformat_double_exact, keeps_17_digits_where_nothing_reads_back) {
    EXPECT_EQ(exact_text_of(std::numeric_limits<double>::quiet_NaN()), "nan");
    EXPECT_EQ(exact_text_of(-std::numeric_limits<double>::quiet_NaN()), "-nan");
}

TEST(nmkformat_double_exact, agrees_with_the_plain_reading_on_any_bits) {
    std::mt19937_64 draw(seed);
    for (int i = 0; i < 60000; ++i) {
        const double value = i % 2 == 0 ? any_double(draw) : handy_double(draw);
        ASSERT_EQ(exact_text_of(value), plain_format_double_exact(value))
            << "seed " << seed << ", value " << std::hexfloat << value;
    }
}

TEST(nmkformat_double_exact, agrees_with_the_plain_reading_at_powers_of_two_and_ten) {
    for (int power = -1074; power <= 1023; ++power) {
        const double two = std::ldexp(1.0, power);
        for (const double value : {two, std::nextafter(two, 0.0), std::nextafter(two, infinity)}) {
            ASSERT_EQ(exact_text_of(value), plain_format_double_exact(value)) << power;
        }
    }
    for (int power = -323; power <= 308; ++power) {
        const double ten = std::strtod(("1e" + std::to_string(power)).c_str(), nullptr);
        for (const double value : {ten, std::nextafter(ten, 0.0), std::nextafter(ten, infinity)}) {
            ASSERT_EQ(exact_text_of(value), plain_format_double_exact(value)) << power;
        }
    }
}

TEST(nmkformat_double_exact, rounds_ties_to_even_as_the_plain_reading_does) {
    std::mt19937_64 draw(seed);
    for (int i = 0; i < 60000; ++i) {
        // Whole numbers and a few binary places: the digit left out can be an exact five.
        const int bits = 44 + static_cast<int>(draw() % 20);
        const double value =
            std::ldexp(static_cast<double>(draw() >> (64 - bits)), -static_cast<int>(draw() % 12));
        ASSERT_EQ(exact_text_of(value), plain_format_double_exact(value))
            << "seed " << seed << ", value " << std::hexfloat << value;
    }
}

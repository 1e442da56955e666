// excellon_number: the coordinates of drill files in each format, never rounded.

#include "formats/excellon/excellon_number.h"

#include <gtest/gtest.h>

#include <cmath>
#include <ostream>
#include <random>

#include "app/formats/job/job_fixtures.h"

namespace nmk_excellon {
namespace {

constexpr ExcellonFormat inch_trailing{nmk_job::JobUnits::inches, KeptZeros::trailing, 2, 4};
constexpr ExcellonFormat inch_leading{nmk_job::JobUnits::inches, KeptZeros::leading, 2, 4};
constexpr ExcellonFormat metric_trailing{nmk_job::JobUnits::millimetres, KeptZeros::trailing, 3, 3};
constexpr ExcellonFormat metric_leading{nmk_job::JobUnits::millimetres, KeptZeros::leading, 3, 3};

struct NumberCase {
    const char* name;
    const char* text;
    ExcellonFormat format;
    std::optional<double> expected;  // in the unit of the file
};

std::ostream& operator<<(std::ostream& out, const NumberCase& number) { return out << number.name; }

class excellon_number : public testing::TestWithParam<NumberCase> {};

TEST_P(excellon_number, is_read_in_its_format) {
    const NumberCase& number = GetParam();
    const std::optional<std::int64_t> value = read_excellon_number(number.text, number.format);
    ASSERT_EQ(value.has_value(), number.expected.has_value());
    if (value) {
        EXPECT_EQ(*value, std::llround(*number.expected * 1e9));
    }
}

INSTANTIATE_TEST_SUITE_P(
    texts, excellon_number,
    testing::Values(
        NumberCase{"trailing_zeros_kept_fill_from_the_right", "15000", inch_trailing, 1.5},
        NumberCase{"trailing_zeros_kept_may_be_short", "5", inch_trailing, 0.0005},
        NumberCase{"leading_zeros_kept_fill_from_the_left", "015", inch_leading, 1.5},
        NumberCase{"leading_zeros_kept_may_be_one_digit", "1", inch_leading, 10.0},
        NumberCase{"metric_trailing", "6270", metric_trailing, 6.27},
        NumberCase{"metric_leading", "095885", metric_leading, 95.885},
        NumberCase{"metric_leading_cut_short", "1397", metric_leading, 139.7},
        NumberCase{"a_decimal_point_is_read_as_usual", "1.5", metric_leading, 1.5},
        NumberCase{"a_point_without_whole_digits", ".864", inch_trailing, 0.864},
        NumberCase{"a_point_without_decimals", "12.", inch_trailing, 12.0},
        NumberCase{"negative", "-2500", inch_trailing, -0.25},
        NumberCase{"an_explicit_plus", "+2500", inch_trailing, 0.25},
        NumberCase{"zero", "000000", inch_leading, 0.0},
        NumberCase{"more_digits_than_the_format_on_the_left", "1234567", inch_trailing, 123.4567},
        NumberCase{"nine_decimals", "0.000000001", inch_trailing, 1e-9},
        NumberCase{"zeros_behind_nine_decimals", "0.50000000000", inch_trailing, 0.5},
        NumberCase{"the_largest", "1000000.", inch_trailing, 1e6},
        NumberCase{"past_the_largest", "1000000.1", inch_trailing, std::nullopt},
        NumberCase{"ten_decimals", "0.0000000001", inch_trailing, std::nullopt},
        NumberCase{"nothing", "", inch_trailing, std::nullopt},
        NumberCase{"only_a_sign", "-", inch_trailing, std::nullopt},
        NumberCase{"only_a_point", ".", inch_trailing, std::nullopt},
        NumberCase{"two_points", "1.2.3", inch_trailing, std::nullopt},
        NumberCase{"two_signs", "--1", inch_trailing, std::nullopt},
        NumberCase{"a_sign_inside", "1-2", inch_trailing, std::nullopt},
        NumberCase{"an_exponent", "1e3", inch_trailing, std::nullopt},
        NumberCase{"not_a_number", "nan", inch_trailing, std::nullopt},
        NumberCase{"twenty_digits", "99999999999999999999", inch_trailing, std::nullopt},
        NumberCase{"a_hundred_zeros",
                   "00000000000000000000000000000000000000000000000000"
                   "00000000000000000000000000000000000000000000000000",
                   inch_trailing, std::nullopt}),
    nmk_job::CaseName());

TEST(excellon_number_text, is_read_as_the_same_value_in_every_format) {
    const unsigned seed = 20;
    std::mt19937_64 random(seed);
    std::uniform_int_distribution<std::int64_t> any(-max_excellon_coordinate,
                                                    max_excellon_coordinate);
    for (const ExcellonFormat& format :
         {inch_trailing, inch_leading, metric_trailing, metric_leading}) {
        for (int i = 0; i < 20000; ++i) {
            const std::int64_t steps[] = {1, 1000, 100000, 1000000, 1000000000};
            std::int64_t value = any(random) >> (random() % 50);
            value -= value % steps[random() % 5];
            for (const bool with_point : {false, true}) {
                const std::string text = excellon_number_text(value, format, with_point);
                ASSERT_EQ(read_excellon_number(text, format), value) << text << ", seed " << seed;
            }
        }
    }
}

TEST(excellon_number_text, is_in_the_format_of_the_file) {
    EXPECT_EQ(excellon_number_text(1'500'000'000, inch_trailing, false), "15000");
    EXPECT_EQ(excellon_number_text(1'500'000'000, inch_leading, false), "015");
    EXPECT_EQ(excellon_number_text(-250'000'000, inch_leading, false), "-0025");
    EXPECT_EQ(excellon_number_text(0, inch_leading, false), "0");
    EXPECT_EQ(excellon_number_text(1'500'000'000, metric_trailing, true), "1.5");
    EXPECT_EQ(excellon_number_text(2'000'000'000, metric_trailing, true), "2.0");
}

TEST(excellon_number_text, has_a_decimal_point_if_the_format_has_too_few_digits) {
    EXPECT_EQ(excellon_number_text(10'000, inch_trailing, false), "0.00001");
    EXPECT_EQ(excellon_number_text(123'000'000'000, inch_leading, false), "123.0");
}

TEST(excellon_millimetres, are_exact_for_decimals_of_an_inch) {
    EXPECT_EQ(excellon_millimetres(1'000'000'000, nmk_job::JobUnits::inches), 25.4);
    EXPECT_EQ(excellon_millimetres(100'000'000, nmk_job::JobUnits::inches), 2.54);
    EXPECT_EQ(excellon_millimetres(12'345'000'000, nmk_job::JobUnits::millimetres), 12.345);
}

TEST(kept_zeros_of, is_judged_by_the_ends_of_the_numbers) {
    EXPECT_EQ(kept_zeros_of("X40500Y6270\nY3730\n"), KeptZeros::trailing);
    EXPECT_EQ(kept_zeros_of("X1397Y095885\nX143256Y143383\n"), KeptZeros::leading);
    EXPECT_EQ(kept_zeros_of("X010000Y012340\n"), KeptZeros::trailing);
    EXPECT_EQ(kept_zeros_of("X0Y000000\n"), KeptZeros::trailing);
    EXPECT_EQ(kept_zeros_of("X1.50Y0.25\n"), KeptZeros::trailing);
    EXPECT_EQ(kept_zeros_of("X015Y02 ;X100\nM30\nX100\n"), KeptZeros::leading);
    EXPECT_EQ(kept_zeros_of(""), KeptZeros::trailing);
}

}  // namespace
}  // namespace nmk_excellon

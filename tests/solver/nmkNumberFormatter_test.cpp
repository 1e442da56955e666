// nmkNumberFormatter: numbers as text in a field.
#include <gtest/gtest.h>

#include <nmktoolbox/solver/nmkNumberFormatter.h>
#include <cmath>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "comma_locale.h"
#include "solver/plain_number_format.h"
#include "solver/solver_samples.h"

namespace {

std::string text_of(const utString& text) { return std::string(text.view()); }

std::string formatted(int digits, int lowest, double value) {
    return text_of(nmkNumberFormatter(digits, lowest).format(value));
}

struct Case {
    const char* name;
    int digits;
    int lowest;
    double value;
    const char* expected;
};

std::ostream& operator<<(std::ostream& out, const Case& one) { return out << one.name; }

struct Formatted : testing::TestWithParam<Case> {};

TEST_P(Formatted, reads) {
    EXPECT_EQ(formatted(GetParam().digits, GetParam().lowest, GetParam().value),
              GetParam().expected);
}

constexpr double infinity = std::numeric_limits<double>::infinity();

INSTANTIATE_TEST_SUITE_P(
    nmkNumberFormatter, Formatted,
    testing::Values(Case{"a_negative_fraction_with_room", 5, -3, -1.5, "-1.5"},
                    Case{"zero", 5, -3, 0.0, "0"},
                    Case{"negative_zero_has_no_sign", 5, -3, -0.0, "0"},
                    Case{"a_number_rounded_to_zero_has_no_sign", 5, -3, -0.0001, "0"},
                    Case{"a_field_that_cannot_show_any_number", 2, 5, 7.0, "0"},
                    Case{"a_field_without_room_for_a_digit", 0, -3, 7.0, "0"},
                    Case{"a_whole_number_keeps_no_point", 5, -3, 2.0, "2"},
                    Case{"a_whole_number_keeps_its_own_zeros", 5, -3, 1200.0, "1200"},
                    Case{"thousandths_are_plain", 6, -9, 0.00125, "0.00125"},
                    Case{"below_thousandths_there_is_an_exponent", 6, -9, 0.000125, "1.25e-4"},
                    Case{"as_many_digits_as_the_field_are_plain", 4, -3, 1234.0, "1234"},
                    Case{"more_digits_than_the_field_have_an_exponent", 4, -3, 12345.0, "1.2e4"},
                    Case{"rounding_up_to_the_next_order", 2, -5, 9.96, "10"},
                    Case{"rounding_up_to_the_first_exponent", 4, -3, 9999.6, "1e4"},
                    Case{"the_greatest_number_of_a_small_field", 3, 0, 1e200, "9e9"},
                    Case{"a_negative_number_beyond_the_field", 2, 0, -1e200, "-99"},
                    Case{"the_smallest_number_of_a_field", 4, -9, 8e-10, "1e-9"},
                    Case{"the_smallest_double", 9, -400, 5e-324, "4.941e-324"},
                    Case{"its_negative_in_a_smaller_field", 7, -400, -5e-324, "-4.9e-324"},
                    Case{"twice_the_smallest_double", 9, -400, 1e-323, "9.881e-324"},
                    Case{"the_smallest_normal_double", 12, -400, 2.2250738585072014e-308,
                         "2.225074e-308"},
                    Case{"not_a_number", 4, -3, std::numeric_limits<double>::quiet_NaN(), "nan"},
                    Case{"infinity_in_a_small_field", 2, -3, infinity, "99"},
                    Case{"infinity_in_a_field_of_two_digit_exponents", 4, -3, infinity, "9e99"},
                    Case{"infinity_in_a_field_of_three_digit_exponents", 5, -3, infinity, "inf"},
                    Case{"negative_infinity", 9, -3, -infinity, "-inf"}),
    [](const testing::TestParamInfo<Case>& one) { return one.param.name; });

/// Calls check(digits, lowest, value) over fields of 0 to 17, all lowest positions and magnitudes.
template <class Check>
void over_all_magnitudes(Check check) {
    solver_samples::Generator random(352);
    for (int digits = 0; digits <= 17; ++digits) {
        for (int lowest = -17; lowest <= 17; ++lowest) {
            for (int order = -323; order <= 308; order += order > -20 && order < 20 ? 1 : 9) {
                const double power = std::pow(10.0, order);
                check(digits, lowest, power);
                check(digits, lowest, -random.between(1.0, 9.99) * power);
                // Short decimals are halves of the last position.
                check(digits, lowest, random.below(1000) * power / 200.0);
                // Nines that round up to the next order.
                check(digits, lowest, (10.0 - std::pow(10.0, -random.below(17))) * power);
            }
        }
    }
}

TEST(nmkNumberFormatter, every_field_and_magnitude_reads_as_the_plain_way_writes_it) {
    over_all_magnitudes([](int digits, int lowest, double value) {
        ASSERT_EQ(formatted(digits, lowest, value),
                  plain_number_format::format({digits, lowest}, value))
            << digits << ' ' << lowest << ' ' << std::hexfloat << value;
    });
}

TEST(nmkNumberFormatter, a_text_takes_no_more_space_than_the_field_has) {
    over_all_magnitudes([](int digits, int lowest, double value) {
        if (digits == 0 || !std::isfinite(value)) return;
        const std::string text = formatted(digits, lowest, value);
        const double shown = std::strtod(text.c_str(), nullptr);
        const auto order = [](double x) { return std::floor(std::log10(std::fabs(x))); };
        // Nines that round up to the next order may need one character more.
        if (shown != 0.0 && order(shown) != order(value)) return;
        ASSERT_LE(plain_number_format::space_taken(text), digits)
            << text << ' ' << lowest << ' ' << std::hexfloat << value;
    });
}

TEST(nmkNumberFormatter, no_locale_changes_a_digit_or_the_point) {
    std::vector<std::string> expected;
    const auto write_all = [](std::vector<std::string>& texts) {
        for (int digits = 0; digits <= 17; ++digits) {
            for (const double value : {1234567.125, -0.00375, 1.5e-9, 2.5e99, 1e6})
                texts.push_back(formatted(digits, -12, value));
        }
    };
    write_all(expected);
    std::vector<std::string> found;
    {
        const CommaLocale comma;
        ASSERT_TRUE(comma.holds_for_the_c_library());
        write_all(found);
    }
    EXPECT_EQ(found, expected);
}

TEST(nmkNumberFormatter, a_copy_lives_on_when_its_source_is_gone) {
    auto source = std::make_unique<nmkNumberFormatter>(4, -2);
    const nmkNumberFormatter copy(*source);
    nmkNumberFormatter assigned(9, -9);
    assigned = *source;
    // Another formatter in the memory of the source must have no effect.
    *source = nmkNumberFormatter(9, -9);
    EXPECT_EQ(text_of(source->format(1.23456)), "1.23456");
    source.reset();
    EXPECT_EQ(text_of(copy.format(1.23456)), "1.23");
    EXPECT_EQ(text_of(assigned.format(1.23456)), "1.23");
}

}  // namespace

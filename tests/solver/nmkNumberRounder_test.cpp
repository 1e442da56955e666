// nmkNumberRounder: the number nearest to a given one that a field can show.
#include <gtest/gtest.h>

#include <nmktoolbox/solver/nmkNumberRounder.h>
#include <cmath>
#include <limits>

#include "solver/plain_number_format.h"
#include "solver/solver_samples.h"

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

double rounded(int digits, int lowest, double value) {
    const nmkNumericalPrecision precision(digits, lowest);
    return nmkNumberRounder(precision).round(value);
}

TEST(nmkNumberRounder, a_field_that_cannot_show_any_number_gives_zero_for_every_value) {
    for (const double value : {0.0, 1e-300, 1.0, 99.0, 1e5, 1e300, infinity})
        EXPECT_EQ(rounded(2, 5, value), 0.0) << value;
}

TEST(nmkNumberRounder, the_half_of_the_smallest_value_goes_down_and_what_is_above_goes_up) {
    EXPECT_EQ(rounded(4, -3, 0.0005), 0.0);
    EXPECT_EQ(rounded(4, -3, std::nextafter(0.0005, 1.0)), 0.001);
    EXPECT_EQ(rounded(4, -3, 0.001), 0.001);
}

TEST(nmkNumberRounder, a_half_of_the_last_position_is_rounded_down) {
    EXPECT_EQ(rounded(2, 0, 2.5), 2.0);
    EXPECT_EQ(rounded(2, 0, 3.5), 3.0);
    EXPECT_EQ(rounded(2, 0, std::nextafter(3.5, 4.0)), 4.0);
    EXPECT_EQ(rounded(3, -1, 10.25), rounded(3, -1, 10.2));
}

TEST(nmkNumberRounder, rounding_up_to_the_next_order_does_not_look_at_the_field_again) {
    EXPECT_EQ(rounded(2, -5, 9.96), 10.0);
    EXPECT_EQ(rounded(4, -9, 9.9996), 10.0);
}

TEST(nmkNumberRounder, numbers_beyond_the_field_become_its_greatest_number) {
    EXPECT_EQ(rounded(1, 0, 1234.0), 9.0);
    EXPECT_EQ(rounded(2, 0, 1234.0), 99.0);
    EXPECT_EQ(rounded(3, 0, 1e200), 9e9);
    EXPECT_DOUBLE_EQ(rounded(4, 0, 1e200), 9e99);
}

TEST(nmkNumberRounder, five_characters_hold_every_finite_number) {
    for (int digits = 5; digits <= 17; ++digits) {
        const double value = std::numeric_limits<double>::max();
        const double found = rounded(digits, -17, value);
        EXPECT_TRUE(std::isfinite(found)) << digits;
        // Rounding up would be beyond all doubles, so that up to a whole unit of the last position
        // is lost.
        const int kept = digits - 5;
        EXPECT_NEAR(found / value, 1.0, std::pow(10.0, -kept)) << digits;
    }
}

TEST(nmkNumberRounder, not_a_number_is_returned_as_it_is) {
    EXPECT_TRUE(std::isnan(rounded(4, -3, std::numeric_limits<double>::quiet_NaN())));
}

TEST(nmkNumberRounder, infinity_becomes_the_greatest_number_of_the_field) {
    EXPECT_EQ(rounded(1, 0, infinity), 9.0);
    EXPECT_EQ(rounded(2, 0, infinity), 99.0);
    EXPECT_EQ(rounded(4, -3, infinity), rounded(4, -3, 1e300));
    EXPECT_LT(rounded(4, -3, infinity), 1e100);
}

// The exponents of such a field go beyond all finite numbers.
TEST(nmkNumberRounder, infinity_stays_in_a_field_of_five_characters) {
    EXPECT_EQ(rounded(5, -3, infinity), infinity);
    EXPECT_EQ(rounded(9, -3, infinity), infinity);
}

TEST(nmkNumberRounder, a_last_position_finer_than_doubles_leaves_the_number_as_it_is) {
    const double tiny = std::numeric_limits<double>::denorm_min();
    EXPECT_EQ(rounded(17, -1000, tiny), tiny);
}

TEST(nmkNumberRounder, a_field_at_the_ends_of_int_gives_a_number) {
    constexpr int least = std::numeric_limits<int>::min();
    constexpr int greatest = std::numeric_limits<int>::max();
    for (const int digits : {least, -1, 0, 1, 9, greatest}) {
        for (const int lowest : {least, 0, greatest}) {
            for (const double value : {0.0, 1e-310, 1.0, 1e308})
                EXPECT_FALSE(std::isnan(rounded(digits, lowest, value))) << digits << ' ' << lowest;
        }
    }
}

TEST(nmkNumberRounder, agrees_with_the_plain_way_and_is_never_off_by_more_than_half_a_unit) {
    solver_samples::Generator random(351);
    for (int digits = 1; digits <= 17; ++digits) {
        for (int lowest = -17; lowest <= 17; ++lowest) {
            const nmkNumericalPrecision precision(digits, lowest);
            const nmkNumberRounder rounder(precision);
            const plain_number_format::Field plain{digits, lowest};
            for (int order = -320; order <= 307; order += order > -25 && order < 25 ? 1 : 7) {
                const double value = random.between(1.0, 10.0) * std::pow(10.0, order);
                const double found = rounder.round(value);
                ASSERT_EQ(found, plain_number_format::rounded(plain, value))
                    << digits << ' ' << lowest << ' ' << value;
                if (found == 0.0 || order < precision.minimum_order() ||
                    order > precision.maximum_order() - 1)
                    continue;
                const double unit =
                    std::pow(10.0, precision.least_significant_digit_position(order));
                // Half a unit, and the rounding of a quotient, a product and the power.
                ASSERT_LE(std::fabs(found - value), unit / 2.0 + 4e-16 * value)
                    << digits << ' ' << lowest << ' ' << value;
            }
        }
    }
}

}  // namespace

// nmkNumericalPrecision: what fits into a field.
#include <gtest/gtest.h>

#include <nmktoolbox/solver/nmkNumericalPrecision.h>
#include <limits>

#include "solver/plain_number_format.h"

namespace {

TEST(nmkNumericalPrecision, four_characters_reach_1e99_and_the_bound_keeps_thousandths) {
    const nmkNumericalPrecision precision(4, -3);
    EXPECT_EQ(precision.maximum_order(), 99);
    EXPECT_EQ(precision.minimum_order(), -3);
    EXPECT_NE(precision.constraints_satisfiable(), 0);
    EXPECT_EQ(nmkNumericalPrecision(4, -100).minimum_order(), -9);
}

TEST(nmkNumericalPrecision, a_lowest_position_above_the_greatest_order_cannot_be_satisfied) {
    EXPECT_EQ(nmkNumericalPrecision(2, 5).constraints_satisfiable(), 0);
    EXPECT_EQ(nmkNumericalPrecision(2, 2).constraints_satisfiable(), 0);
    EXPECT_NE(nmkNumericalPrecision(2, 1).constraints_satisfiable(), 0);
}

TEST(nmkNumericalPrecision, below_one_the_last_position_hangs_on_the_space_alone) {
    const nmkNumericalPrecision precision(5, -100);
    for (const int order : {-1, -2, -3}) {
        EXPECT_EQ(precision.least_significant_digit_position(order), -4) << order;
    }
    EXPECT_EQ(precision.least_significant_digit_position(-4), -5);
}

TEST(nmkNumericalPrecision, every_field_and_order_agrees_with_the_plain_way) {
    for (int digits = 0; digits <= 19; ++digits) {
        for (int lowest = -20; lowest <= 20; ++lowest) {
            const nmkNumericalPrecision precision(digits, lowest);
            const plain_number_format::Field plain{digits, lowest};
            constexpr long long int_max = std::numeric_limits<int>::max();
            EXPECT_EQ(precision.maximum_order(), std::min(plain.greatest_order(), int_max));
            EXPECT_EQ(precision.minimum_order(), std::max(plain.least_order(), -int_max - 1));
            EXPECT_EQ(precision.constraints_satisfiable() != 0, lowest <= plain.greatest_order());
            for (int order = -1100; order <= 1100; ++order) {
                ASSERT_EQ(precision.least_significant_digit_position(order),
                          plain.last_position(order))
                    << digits << ' ' << lowest << ' ' << order;
            }
        }
    }
}

TEST(nmkNumericalPrecision, fields_at_the_ends_of_int_are_cut_to_it) {
    constexpr int least = std::numeric_limits<int>::min();
    constexpr int greatest = std::numeric_limits<int>::max();
    const nmkNumericalPrecision wide(greatest, least);
    EXPECT_EQ(wide.maximum_order(), greatest);
    EXPECT_EQ(wide.minimum_order(), least);
    EXPECT_EQ(wide.least_significant_digit_position(0), least + 2);
    EXPECT_EQ(wide.least_significant_digit_position(least), least);
    const nmkNumericalPrecision none(least, least);
    EXPECT_EQ(none.maximum_order(), least);
    EXPECT_EQ(none.minimum_order(), greatest);
    EXPECT_EQ(none.least_significant_digit_position(greatest), greatest);
    EXPECT_EQ(none.least_significant_digit_position(0), greatest);
}

}  // namespace

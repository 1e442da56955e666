// Angles from their sines and cosines, compared with the series of the arctangent in 113 bits.
#include <exactmath/exact_arctangent.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <ostream>
#include <random>

#include "exactmath/plain_arctangent.h"

namespace {

using nmk_exact::exact_acos;
using nmk_exact::exact_asin;
using nmk_exact::exact_atan2;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double pi = 3.14159265358979323846;

testing::AssertionResult is_rounded_right(double y, double x) {
    const double angle = exact_atan2(y, x);
    const double plain = plain_arctangent::atan2(y, x);
    if (angle == plain) return testing::AssertionSuccess();
    return testing::AssertionFailure()
           << std::hexfloat << y << ", " << x << ": " << angle << " for " << plain;
}

TEST(exact_atan2, is_rounded_right_in_every_direction) {
    const unsigned seed = 1130;
    std::mt19937_64 random(seed);
    std::uniform_real_distribution<double> side(-1.0, 1.0);
    for (int i = 0; i < 40000; ++i) {
        ASSERT_TRUE(is_rounded_right(side(random), side(random))) << "seed " << seed;
    }
}

TEST(exact_atan2, is_rounded_right_for_sides_of_every_size) {
    const unsigned seed = 1131;
    std::mt19937_64 random(seed);
    std::uniform_real_distribution<double> digits(1.0, 2.0);
    std::uniform_int_distribution<int> exponent(-1074, 1023);
    std::uniform_int_distribution<int> apart(-80, 80);
    const auto side = [&](int binary_exponent) {
        const double size = std::ldexp(digits(random), binary_exponent);
        return random() % 2 == 0 ? size : -size;
    };
    for (int i = 0; i < 10000; ++i) {
        const int of_x = exponent(random);
        ASSERT_TRUE(is_rounded_right(side(exponent(random)), side(of_x))) << "seed " << seed;
        const int of_y = std::min(std::max(of_x + apart(random), -1074), 1023);
        ASSERT_TRUE(is_rounded_right(side(of_y), side(of_x))) << "seed " << seed;
    }
}

TEST(exact_atan2, is_rounded_right_at_and_beside_the_steps_of_its_table) {
    for (int half_steps = 1; half_steps <= 512; ++half_steps) {
        const double y = half_steps / 256.0;
        for (const double x : {1.0, -1.0, 1.0 / 3.0}) {
            ASSERT_TRUE(is_rounded_right(y * x, x));
            ASSERT_TRUE(is_rounded_right(std::nextafter(y * x, 4.0), x));
            ASSERT_TRUE(is_rounded_right(std::nextafter(y * x, -4.0), x));
        }
    }
}

// Where it comes nearest to its bound: half a step from 0, and half a step from the step behind.
TEST(exact_atan2, has_an_error_bound_of_its_quick_angle_that_holds_and_is_not_ten_times_too_wide) {
    const unsigned seed = 1134;
    std::mt19937_64 random(seed);
    std::uniform_real_distribution<double> half_step(0.5, 0.51);
    std::uniform_real_distribution<double> side(0.5, 1.0);
    double largest = 0.0;
    for (int i = 0; i < 20000; ++i) {
        const double x = side(random);
        const double y = x * half_step(random) / nmk_exact::arctangent_steps::steps_in_1;
        const auto quick = nmk_exact::arctangent_steps::quick_angle(y, x);
        const auto error = (Binary128(quick.part) - plain_arctangent::angle(y, x)) + quick.rest;
        largest = std::max(largest, std::fabs(static_cast<double>(error / Binary128(quick.part))));
    }
    EXPECT_LT(largest, nmk_exact::arctangent_steps::quick_error) << "seed " << seed;
    EXPECT_GT(largest, nmk_exact::arctangent_steps::quick_error / 10.0) << "seed " << seed;
}

// The angle is less than y / x by far less than a digit, which decides between two subnormals.
TEST(exact_atan2, rounds_down_where_the_quotient_is_halfway_between_two_subnormals) {
    const double least = std::numeric_limits<double>::denorm_min();
    EXPECT_EQ(exact_atan2(3 * least, 2.0), least);
    EXPECT_EQ(exact_atan2(least, 2.0), 0.0);
    EXPECT_EQ(exact_atan2(std::ldexp(3.0, -1022), std::ldexp(1.0, 53)), least);
    EXPECT_EQ(exact_atan2(least, 1.0), least);
}

struct Direction {
    const char* name;
    double y, x, angle;
};

std::ostream& operator<<(std::ostream& out, const Direction& d) { return out << d.name; }

class exact_atan2_of_limits : public testing::TestWithParam<Direction> {};

TEST_P(exact_atan2_of_limits, has_the_angle_and_sign_of_its_limit) {
    const Direction& d = GetParam();
    EXPECT_EQ(exact_atan2(d.y, d.x), d.angle);
    EXPECT_EQ(exact_atan2(-d.y, d.x), -d.angle);
    EXPECT_EQ(std::signbit(exact_atan2(-d.y, d.x)), true);
}

INSTANTIATE_TEST_SUITE_P(
    table, exact_atan2_of_limits,
    testing::Values(Direction{"zero_by_zero", 0.0, 0.0, 0.0},
                    Direction{"zero_by_negative_zero", 0.0, -0.0, pi},
                    Direction{"zero_by_one", 0.0, 1.0, 0.0},
                    Direction{"zero_by_minus_one", 0.0, -1.0, pi},
                    Direction{"one_by_zero", 1.0, 0.0, pi / 2.0},
                    Direction{"one_by_negative_zero", 1.0, -0.0, pi / 2.0},
                    Direction{"one_by_one", 1.0, 1.0, pi / 4.0},
                    Direction{"infinity_by_one", infinity, 1.0, pi / 2.0},
                    Direction{"infinity_by_minus_one", infinity, -1.0, pi / 2.0},
                    Direction{"infinity_by_infinity", infinity, infinity, pi / 4.0},
                    Direction{"infinity_by_minus_infinity", infinity, -infinity, 3.0 * pi / 4.0},
                    Direction{"one_by_infinity", 1.0, infinity, 0.0},
                    Direction{"one_by_minus_infinity", 1.0, -infinity, pi},
                    Direction{"zero_by_minus_infinity", 0.0, -infinity, pi}),
    [](const auto& one) { return one.param.name; });

TEST(exact_atan2, of_what_is_not_a_number_is_not_a_number) {
    EXPECT_TRUE(std::isnan(exact_atan2(std::nan(""), 1.0)));
    EXPECT_TRUE(std::isnan(exact_atan2(0.0, std::nan(""))));
    EXPECT_TRUE(std::isnan(exact_atan2(infinity, std::nan(""))));
}

TEST(exact_acos, and_arcsine_are_rounded_right_over_their_range) {
    const unsigned seed = 1132;
    std::mt19937_64 random(seed);
    std::uniform_real_distribution<double> any(-1.0, 1.0);
    std::uniform_real_distribution<double> exponent(-53.0, 0.0);
    for (int i = 0; i < 10000; ++i) {
        const double from_end = 1.0 - std::exp2(exponent(random));
        for (const double x : {any(random), from_end, -from_end, std::exp2(exponent(random))}) {
            ASSERT_EQ(exact_acos(x), plain_arctangent::acos(x)) << std::hexfloat << x;
            ASSERT_EQ(exact_asin(x), plain_arctangent::asin(x)) << std::hexfloat << x;
        }
    }
}

TEST(exact_acos, and_arcsine_at_the_ends_are_quarters_of_a_turn) {
    EXPECT_EQ(exact_acos(1.0), 0.0);
    EXPECT_EQ(exact_acos(0.0), pi / 2.0);
    EXPECT_EQ(exact_acos(-1.0), pi);
    EXPECT_EQ(exact_asin(1.0), pi / 2.0);
    EXPECT_EQ(exact_asin(-1.0), -pi / 2.0);
    EXPECT_TRUE(std::signbit(exact_asin(-0.0)));
    EXPECT_EQ(exact_asin(-5e-324), -5e-324);
    for (const double beyond : {std::nextafter(1.0, 2.0), -1.5, infinity, std::nan("")}) {
        EXPECT_TRUE(std::isnan(exact_acos(beyond)));
        EXPECT_TRUE(std::isnan(exact_asin(beyond)));
    }
}

}  // namespace

// Sine and cosine, compared with their series in 113 bits.
#include <exactmath/exact_arctangent.h>
#include <exactmath/exact_sine.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "exactmath/plain_reduction.h"
#include "exactmath/plain_sine.h"

namespace {

using nmk_exact::exact_cos;
using nmk_exact::exact_sin;
using nmk_exact::exact_sine_and_cosine;
using nmk_exact::max_small_angle;

testing::AssertionResult is_rounded_right(double angle) {
    const auto [sine, cosine] = exact_sine_and_cosine(angle);
    const double plain_sine = plain_sine::sine(angle);
    const double plain_cosine = plain_sine::cosine(angle);
    if (sine == plain_sine && cosine == plain_cosine) return testing::AssertionSuccess();
    return testing::AssertionFailure() << std::hexfloat << angle << ": " << sine << " for "
                                       << plain_sine << ", " << cosine << " for " << plain_cosine;
}

TEST(exact_sine, is_rounded_right_for_angles_of_every_size) {
    const unsigned seed = 1121;
    std::mt19937_64 random(seed);
    std::uniform_real_distribution<double> angle(0.0, max_small_angle);
    std::uniform_real_distribution<double> exponent(-60.0, 0.0);
    for (int i = 0; i < 200000; ++i) {
        ASSERT_TRUE(is_rounded_right(angle(random))) << "seed " << seed;
        ASSERT_TRUE(is_rounded_right(std::exp2(exponent(random)))) << "seed " << seed;
    }
}

TEST(exact_sine, is_rounded_right_at_and_between_the_steps_of_its_table) {
    for (int half_steps = 0; half_steps <= 537; ++half_steps) {
        const double angle = half_steps / 512.0;
        ASSERT_TRUE(is_rounded_right(angle));
        ASSERT_TRUE(is_rounded_right(std::nextafter(angle, 2.0)));
        ASSERT_TRUE(is_rounded_right(std::nextafter(angle, 0.0)));
    }
    EXPECT_TRUE(is_rounded_right(max_small_angle));
}

TEST(exact_sine, is_rounded_right_for_tiny_angles) {
    for (const double angle : {0.0, 5e-324, 1e-308, 1e-200, 1e-165, 1e-160, 0x1p-70}) {
        EXPECT_TRUE(is_rounded_right(angle));
    }
}

// The wide way decides where the quick one leaves the rounding in doubt.
TEST(exact_sine, has_a_wide_way_that_is_rounded_right_by_itself) {
    std::mt19937_64 random(7);
    std::uniform_real_distribution<double> angle(0.0, max_small_angle);
    for (int i = 0; i < 20000; ++i) {
        const double drawn = angle(random);
        const auto [sine, cosine] = nmk_exact::sine_steps::wide_sine_and_cosine(drawn);
        ASSERT_EQ(sine, plain_sine::sine(drawn)) << std::hexfloat << drawn;
        ASSERT_EQ(cosine, plain_sine::cosine(drawn)) << std::hexfloat << drawn;
    }
}

// A cubic with three real roots asks for angles up to a third of half a turn.
TEST(exact_sine, covers_small_angles_up_to_a_third_of_half_a_turn) {
    EXPECT_GT(max_small_angle, nmk_exact::exact_atan2(1e-300, -1.0) / 3.0);
}

testing::AssertionResult is_rounded_right_at_any_size(double angle) {
    const double sine = exact_sin(angle);
    const double cosine = exact_cos(angle);
    const double size = std::fabs(angle);
    const double plain_sine = std::copysign(1.0, angle) * plain_reduction::sine(size, 0);
    const double plain_cosine = plain_reduction::sine(size, 1);
    if (sine == plain_sine && cosine == plain_cosine) return testing::AssertionSuccess();
    return testing::AssertionFailure() << std::hexfloat << angle << ": " << sine << " for "
                                       << plain_sine << ", " << cosine << " for " << plain_cosine;
}

TEST(exact_sin, and_cosine_are_rounded_right_for_angles_up_to_the_largest_double) {
    const unsigned seed = 1126;
    std::mt19937_64 random(seed);
    std::uniform_real_distribution<double> digits(1.0, 2.0);
    for (int binary_exponent = -8; binary_exponent < 1024; ++binary_exponent) {
        for (int i = 0; i < 4; ++i) {
            const double angle = std::ldexp(digits(random), binary_exponent);
            ASSERT_TRUE(is_rounded_right_at_any_size(angle)) << "seed " << seed;
            ASSERT_TRUE(is_rounded_right_at_any_size(-angle)) << "seed " << seed;
        }
    }
    EXPECT_TRUE(is_rounded_right_at_any_size(std::numeric_limits<double>::max()));
}

TEST(exact_sin, and_cosine_are_rounded_right_for_angles_of_some_turns) {
    const unsigned seed = 1127;
    std::mt19937_64 random(seed);
    std::uniform_real_distribution<double> angle(-40.0, 40.0);
    for (int i = 0; i < 5000; ++i) {
        ASSERT_TRUE(is_rounded_right_at_any_size(angle(random))) << "seed " << seed;
    }
}

// Among all doubles, 6381956970095103 * 2^797 comes nearest to a multiple of a right angle.
TEST(exact_sin, and_cosine_are_rounded_right_next_to_multiples_of_a_right_angle) {
    EXPECT_TRUE(is_rounded_right_at_any_size(std::ldexp(6381956970095103.0, 797)));
    for (int quarters = 1; quarters <= 2000; ++quarters) {
        const double angle = quarters * 1.57079632679489661923;
        ASSERT_TRUE(is_rounded_right_at_any_size(angle));
        ASSERT_TRUE(is_rounded_right_at_any_size(std::nextafter(angle, 1e9)));
        ASSERT_TRUE(is_rounded_right_at_any_size(std::nextafter(angle, 0.0)));
    }
}

TEST(exact_sin, of_a_zero_keeps_its_sign_and_of_an_infinity_is_not_a_number) {
    EXPECT_TRUE(std::signbit(exact_sin(-0.0)));
    EXPECT_FALSE(std::signbit(exact_sin(0.0)));
    EXPECT_EQ(exact_cos(-0.0), 1.0);
    EXPECT_EQ(exact_sin(-5e-324), -5e-324);
    for (const double x : {std::numeric_limits<double>::infinity(), std::nan("")}) {
        EXPECT_TRUE(std::isnan(exact_sin(x)));
        EXPECT_TRUE(std::isnan(exact_sin(-x)));
        EXPECT_TRUE(std::isnan(exact_cos(x)));
    }
}

}  // namespace

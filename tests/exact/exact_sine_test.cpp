// Sine and cosine of small angles, beside their series in 113 bits.
#include "exact/exact_sine.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "exact/plain_sine.h"

namespace {

using nmk_exact::exact_sine_and_cosine;
using nmk_exact::greatest_angle;

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
    std::uniform_real_distribution<double> angle(0.0, greatest_angle);
    std::uniform_real_distribution<double> exponent(-60.0, 0.0);
    for (int i = 0; i < 200000; ++i) {
        ASSERT_TRUE(is_rounded_right(angle(random))) << "seed " << seed;
        ASSERT_TRUE(is_rounded_right(std::exp2(exponent(random)))) << "seed " << seed;
    }
}

TEST(exact_sine, is_rounded_right_at_and_between_the_places_of_its_table) {
    for (int half_places = 0; half_places <= 537; ++half_places) {
        const double angle = half_places / 512.0;
        ASSERT_TRUE(is_rounded_right(angle));
        ASSERT_TRUE(is_rounded_right(std::nextafter(angle, 2.0)));
        ASSERT_TRUE(is_rounded_right(std::nextafter(angle, 0.0)));
    }
    EXPECT_TRUE(is_rounded_right(greatest_angle));
}

TEST(exact_sine, is_right_for_angles_next_to_nothing) {
    for (const double angle : {0.0, 5e-324, 1e-308, 1e-200, 1e-165, 1e-160, 0x1p-70}) {
        EXPECT_TRUE(is_rounded_right(angle));
    }
}

// What the quick way leaves in doubt is decided by the slow one.
TEST(exact_sine, has_a_slow_way_that_is_rounded_right_by_itself) {
    std::mt19937_64 random(7);
    std::uniform_real_distribution<double> angle(0.0, greatest_angle);
    for (int i = 0; i < 20000; ++i) {
        const double drawn = angle(random);
        const auto [sine, cosine] = nmk_exact::sine_steps::slowly(drawn);
        ASSERT_EQ(sine, plain_sine::sine(drawn)) << std::hexfloat << drawn;
        ASSERT_EQ(cosine, plain_sine::cosine(drawn)) << std::hexfloat << drawn;
    }
}

// A third of the direction opposite to the axis is the greatest that a cubic asks for.
TEST(exact_sine, reaches_as_far_as_a_third_of_half_a_turn) {
    EXPECT_GT(greatest_angle, std::atan2(1e-300, -1.0) / 3.0);
}

}  // namespace

// exp and pow, compared with their series in 113 bits.
#include <exactmath/exact_power.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "exactmath/plain_power.h"

namespace {

using nmk_exact::exact_exp;
using nmk_exact::exact_pow;

constexpr double infinity = std::numeric_limits<double>::infinity();
const double not_a_number = std::nan("");

TEST(exact_exp, is_rounded_right_for_exponents_of_every_size) {
    const unsigned seed = 1122;
    std::mt19937_64 random(seed);
    std::uniform_real_distribution<double> large(-708.0, 709.7);
    std::uniform_real_distribution<double> small(-2.0, 2.0);
    std::uniform_real_distribution<double> tiny(-60.0, 0.0);
    for (int i = 0; i < 20000; ++i) {
        const double sign = i % 2 == 0 ? 1.0 : -1.0;
        for (const double x : {large(random), small(random), sign * std::exp2(tiny(random))}) {
            ASSERT_EQ(exact_exp(x), plain_power::exp(x)) << std::hexfloat << x << " seed " << seed;
        }
    }
}

TEST(exact_exp, is_rounded_right_at_and_between_the_steps_of_its_table) {
    const double step = std::log(2.0) / 64.0;
    for (int half_steps = -2000; half_steps <= 2000; ++half_steps) {
        const double x = half_steps * step / 2.0;
        ASSERT_EQ(exact_exp(x), plain_power::exp(x)) << half_steps;
        const double next = std::nextafter(x, 1000.0);
        ASSERT_EQ(exact_exp(next), plain_power::exp(next)) << half_steps;
    }
}

TEST(exact_exp, is_rounded_once_among_the_subnormals) {
    const unsigned seed = 1125;
    std::mt19937_64 random(seed);
    std::uniform_real_distribution<double> exponent(-746.0, -708.0);
    for (int i = 0; i < 20000; ++i) {
        const double x = exponent(random);
        ASSERT_EQ(exact_exp(x), plain_power::exp(x)) << std::hexfloat << x << " seed " << seed;
    }
}

TEST(exact_exp, of_zero_is_one_and_far_out_zero_or_infinity) {
    EXPECT_EQ(exact_exp(0.0), 1.0);
    EXPECT_EQ(exact_exp(-0.0), 1.0);
    EXPECT_EQ(exact_exp(0x1.62e42fefa39efp+9), 0x1.fffffffffff2ap+1023);  // the last that fits
    EXPECT_EQ(exact_exp(0x1.62e42fefa39fp+9), infinity);
    EXPECT_EQ(exact_exp(-745.13), std::numeric_limits<double>::denorm_min());
    EXPECT_EQ(exact_exp(-745.14), 0.0);
    for (const double far : {710.0, 1e10, 1e300, infinity}) {
        EXPECT_EQ(exact_exp(far), infinity);
        EXPECT_EQ(exact_exp(-36.0 - far), 0.0);
    }
    EXPECT_TRUE(std::isnan(exact_exp(not_a_number)));
}

TEST(exact_pow, is_rounded_right_for_bases_of_every_size) {
    const unsigned seed = 1123;
    std::mt19937_64 random(seed);
    std::uniform_real_distribution<double> digits(1.0, 2.0);
    std::uniform_int_distribution<int> binary_exponent(-1000, 1000);
    std::uniform_real_distribution<double> exponent(0.001, 0.999);
    std::uniform_real_distribution<double> near_one(0.5, 2.0);
    std::uniform_real_distribution<double> large_exponent(0.5, 700.0);
    for (int i = 0; i < 10000; ++i) {
        const double base = std::ldexp(digits(random), binary_exponent(random));
        const double power = exponent(random);
        ASSERT_EQ(exact_pow(base, power), plain_power::pow(base, power))
            << std::hexfloat << base << ' ' << power << " seed " << seed;
        const double other = near_one(random);
        const double more = large_exponent(random);
        ASSERT_EQ(exact_pow(other, more), plain_power::pow(other, more))
            << std::hexfloat << other << ' ' << more << " seed " << seed;
    }
}

TEST(exact_pow, is_rounded_right_for_bases_next_to_one) {
    for (int bits = 1; bits <= 52; ++bits) {
        for (const double base : {1.0 + std::ldexp(1.0, -bits), 1.0 - std::ldexp(1.0, -bits)}) {
            ASSERT_EQ(exact_pow(base, 2.5), plain_power::pow(base, 2.5)) << std::hexfloat << base;
        }
    }
    EXPECT_EQ(exact_pow(1.0, 0.3), 1.0);
}

TEST(exact_pow, is_rounded_right_for_the_roots_of_every_size) {
    const unsigned seed = 1124;
    std::mt19937_64 random(seed);
    std::uniform_real_distribution<double> digits(1.0, 2.0);
    for (int binary_exponent = -1074; binary_exponent < 1024; ++binary_exponent) {
        const double base = std::ldexp(digits(random), binary_exponent);
        for (const double exponent : {1.0 / 3.0, 1.0 / 6.0, 0.5}) {
            ASSERT_EQ(exact_pow(base, exponent), plain_power::pow(base, exponent))
                << std::hexfloat << base << ' ' << exponent << " seed " << seed;
        }
    }
}

TEST(exact_pow, at_the_ends_is_what_its_description_says) {
    EXPECT_EQ(exact_pow(0.0, 0.5), 0.0);
    EXPECT_EQ(exact_pow(1e300, 1.5), infinity);
    EXPECT_EQ(exact_pow(infinity, 0.5), infinity);
    EXPECT_EQ(exact_pow(-infinity, 0.5), infinity);
    EXPECT_TRUE(std::isnan(exact_pow(-1e-300, 0.5)));
    EXPECT_TRUE(std::isnan(exact_pow(-2.0, 1.5)));
    EXPECT_TRUE(std::isnan(exact_pow(not_a_number, 1.5)));
}

}  // namespace

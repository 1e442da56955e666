// The decimal logarithm, compared with its series in 113 bits.
#include <exactmath/exact_logarithm.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>

#include "exactmath/plain_power.h"

namespace {

using nmk_exact::exact_log10;

TEST(exact_log10, is_rounded_right_for_numbers_of_every_size) {
    const unsigned seed = 1134;
    std::mt19937_64 random(seed);
    std::uniform_real_distribution<double> digits(1.0, 2.0);
    std::uniform_real_distribution<double> near_one(0.9, 1.1);
    for (int binary_exponent = -1074; binary_exponent < 1024; ++binary_exponent) {
        for (const double x : {std::ldexp(digits(random), binary_exponent), near_one(random)}) {
            ASSERT_EQ(exact_log10(x), plain_power::log10(x)) << std::hexfloat << x;
        }
    }
}

TEST(exact_log10, of_a_power_of_ten_is_its_exponent) {
    for (int exponent = -307; exponent <= 308; ++exponent) {
        const double power = std::strtod(("1e" + std::to_string(exponent)).c_str(), nullptr);
        EXPECT_EQ(exact_log10(power), exponent);
    }
}

TEST(exact_log10, at_the_ends_is_what_its_description_says) {
    const double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(exact_log10(0.0), -infinity);
    EXPECT_EQ(exact_log10(-0.0), -infinity);
    EXPECT_EQ(exact_log10(infinity), infinity);
    EXPECT_TRUE(std::isnan(exact_log10(-1.0)));
    EXPECT_TRUE(std::isnan(exact_log10(-infinity)));
    EXPECT_TRUE(std::isnan(exact_log10(std::nan(""))));
}

}  // namespace

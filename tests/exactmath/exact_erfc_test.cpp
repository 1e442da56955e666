// The complementary error function, compared with its series in 113 bits.
#include <exactmath/exact_erfc.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "exactmath/plain_erfc.h"

namespace {

using nmk_exact::exact_erfc;

TEST(exact_erfc, is_rounded_right_from_two_down_to_the_subnormals) {
    const unsigned seed = 1133;
    std::mt19937_64 random(seed);
    std::uniform_real_distribution<double> any(-7.5, 28.0);
    std::uniform_real_distribution<double> middle(-3.5, 3.5);
    std::uniform_real_distribution<double> subnormal(26.5, 27.3);
    std::uniform_real_distribution<double> exponent(-60.0, 0.0);
    for (int i = 0; i < 500; ++i) {
        for (const double x : {any(random), middle(random), subnormal(random),
                               std::exp2(exponent(random)), -std::exp2(exponent(random))}) {
            ASSERT_EQ(exact_erfc(x), plain_erfc::erfc(x)) << std::hexfloat << x << " seed " << seed;
        }
    }
}

TEST(exact_erfc, is_rounded_right_on_both_sides_of_the_change_of_method) {
    for (const double x : {3.0, -3.0}) {
        EXPECT_EQ(exact_erfc(x), plain_erfc::erfc(x));
        EXPECT_EQ(exact_erfc(std::nextafter(x, 9.0)), plain_erfc::erfc(std::nextafter(x, 9.0)));
        EXPECT_EQ(exact_erfc(std::nextafter(x, -9.0)), plain_erfc::erfc(std::nextafter(x, -9.0)));
    }
}

TEST(exact_erfc, far_out_is_zero_or_two) {
    EXPECT_EQ(exact_erfc(0.0), 1.0);
    EXPECT_EQ(exact_erfc(-0.0), 1.0);
    for (const double far : {27.3, 28.5, 1e10, std::numeric_limits<double>::infinity()}) {
        EXPECT_EQ(exact_erfc(far), 0.0);
        EXPECT_EQ(exact_erfc(-far), 2.0);
    }
    EXPECT_TRUE(std::isnan(exact_erfc(std::nan(""))));
}

}  // namespace

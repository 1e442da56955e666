// job_length: lengths in inches become millimetres with one rounding.

#include "formats/job/job_length.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <string>

namespace nmk_job {
namespace {

double inches(double value) { return millimetres_of(value, JobUnits::inches); }

TEST(millimetres_of, inches_are_rounded_once) {
    EXPECT_EQ(inches(0.028), 0.7112);
    EXPECT_NE(0.028 * 25.4, 0.7112);
    EXPECT_EQ(inches(-0.028), -0.7112);
    EXPECT_EQ(inches(0.0), 0.0);
    EXPECT_EQ(inches(1.0), 25.4);
    EXPECT_EQ(inches(1e9), 25.4e9);
    EXPECT_EQ(inches(1e-300), 2.54e-299);
}

TEST(millimetres_of, millimetres_stay_as_they_are) {
    EXPECT_EQ(millimetres_of(0.1, JobUnits::millimetres), 0.1);
}

TEST(millimetres_of, every_decimal_has_the_nearest_number_of_millimetres) {
    for (long long i = 1; i < 200000; ++i) {
        const double exact = std::stod(std::to_string(i * 254) + "e-6");
        ASSERT_EQ(inches(std::stod(std::to_string(i) + "e-5")), exact) << i;
    }
}

TEST(millimetres_of, numbers_with_more_digits_and_of_any_size_are_near_the_product) {
    std::mt19937_64 random(3);
    std::uniform_real_distribution<double> number(-1e9, 1e9);
    for (int round = 0; round < 1000; ++round) {
        const double value = number(random);
        EXPECT_NEAR(inches(value), value * 25.4, std::abs(value) * 1e-14);
    }
    EXPECT_EQ(inches(std::numeric_limits<double>::infinity()),
              std::numeric_limits<double>::infinity());
    EXPECT_EQ(inches(1e308), std::numeric_limits<double>::infinity());
    EXPECT_TRUE(std::isnan(inches(std::nan(""))));
}

}  // namespace
}  // namespace nmk_job

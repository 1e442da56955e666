// real_roots: counts and brackets of real roots are those of polynomials made from known roots.

#include "commands/solve/real_roots.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

namespace nmk_solve {
namespace {

/// The product of x - root over all roots; exact while its coefficients are small whole numbers.
std::vector<double> polynomial_of(const std::vector<double>& roots) {
    std::vector<double> product = {1.0};
    for (const double root : roots) {
        product.insert(product.begin(), 0.0);
        for (std::size_t i = 0; i + 1 < product.size(); ++i) product[i] -= root * product[i + 1];
    }
    return product;
}

TEST(certified_roots, are_those_of_a_polynomial_made_from_its_roots) {
    constexpr unsigned seed = 17;
    std::mt19937 random(seed);
    for (int round = 0; round < 500; ++round) {
        std::vector<double> roots(1 + random() % 4);
        for (double& root : roots) root = static_cast<double>(random() % 9) / 2.0 - 2.0;
        std::sort(roots.begin(), roots.end());
        std::vector<double> listed;
        for (const CertifiedRoot& root : certified_roots(polynomial_of(roots))) {
            EXPECT_EQ(root.low, root.high);
            EXPECT_EQ(root.nearest, root.high);
            listed.insert(listed.end(), root.multiplicity, root.high);
        }
        EXPECT_EQ(listed, roots) << "round " << round << ", seed " << seed;
        EXPECT_EQ(count_real_roots(polynomial_of(roots)).with_multiplicity, roots.size());
    }
}

TEST(certified_roots, lie_between_neighbouring_doubles_where_the_sign_changes) {
    constexpr unsigned seed = 18;
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> number(-3.0, 3.0);
    std::size_t found = 0;
    for (int round = 0; round < 300; ++round) {
        std::vector<double> c(2 + random() % 4);
        for (double& value : c) value = number(random);
        for (const CertifiedRoot& root : certified_roots(c)) {
            EXPECT_EQ(std::nextafter(root.low, root.high), root.high);
            EXPECT_TRUE(root.nearest == root.low || root.nearest == root.high);
            // In 80 bits the value changes its sign within some doubles about the root.
            const auto value = [&](double x) {
                long double sum = 0.0L;
                for (std::size_t i = c.size(); i-- > 0;) sum = sum * x + c[i];
                return sum;
            };
            const double step = 1e-12 * std::max(1.0, std::abs(root.low));
            EXPECT_LE(value(root.low - step) * value(root.high + step), 0.0L)
                << "round " << round << ", seed " << seed;
            ++found;
        }
        EXPECT_EQ((c.size() - 1 - count_real_roots(c).with_multiplicity) % 2, 0U);
    }
    EXPECT_GT(found, 300U);
}

TEST(certified_roots, the_nearest_double_is_on_the_side_of_the_root) {
    // The root of 3 x = 1 is above the double nearest to it by a third of the step.
    const auto roots = certified_roots({-1.0, 3.0});
    ASSERT_EQ(roots.size(), 1U);
    EXPECT_EQ(roots[0].nearest, 1.0 / 3.0);
    const auto square = certified_roots({-2.0, 0.0, 1.0});
    ASSERT_EQ(square.size(), 2U);
    EXPECT_EQ(square[0].nearest, -std::sqrt(2.0));
    EXPECT_EQ(square[1].nearest, std::sqrt(2.0));
}

TEST(certified_roots, two_roots_may_lie_between_the_same_doubles) {
    // The roots of (3 x - 1)^2 = 2^-120 are 2^-61.6 on either side of a third.
    const double square = std::ldexp(1.0, -120);
    const std::vector<double> quadratic = {1.0, -6.0, 9.0};
    EXPECT_EQ(count_real_roots(quadratic).distinct, 1U);
    // (3 x - 1)^2 - 2^-120 x^4: the same near a third, with coefficients that are doubles.
    const auto roots = certified_roots({1.0, -6.0, 9.0, 0.0, -square});
    ASSERT_EQ(roots.size(), 4U);
    EXPECT_EQ(roots[1].low, roots[2].low);
    EXPECT_EQ(roots[1].high, roots[2].high);
    EXPECT_EQ(std::nextafter(roots[1].low, 1.0), roots[1].high);
    EXPECT_EQ(roots[1].multiplicity, 1U);
}

TEST(certified_roots, roots_beyond_the_largest_double_have_an_infinite_end) {
    const double infinity = std::numeric_limits<double>::infinity();
    const double largest = std::numeric_limits<double>::max();
    const auto far = certified_roots({-1.0, 1e-320});
    ASSERT_EQ(far.size(), 1U);
    EXPECT_EQ(far[0].low, largest);
    EXPECT_EQ(far[0].high, infinity);
    EXPECT_EQ(far[0].nearest, largest);
    const auto negative = certified_roots({1.0, 1e-320});
    ASSERT_EQ(negative.size(), 1U);
    EXPECT_EQ(negative[0].low, -infinity);
    EXPECT_EQ(negative[0].high, -largest);
}

TEST(certified_roots, the_smallest_and_the_largest_numbers_are_exact) {
    const double smallest = 5e-324;
    const double largest = std::numeric_limits<double>::max();
    const auto roots = certified_roots({0.0, -smallest, 1.0});
    ASSERT_EQ(roots.size(), 2U);
    EXPECT_EQ(roots[0].high, 0.0);
    EXPECT_EQ(roots[1].low, smallest);
    EXPECT_EQ(roots[1].high, smallest);
    const auto far = certified_roots({-largest, 1.0});
    ASSERT_EQ(far.size(), 1U);
    EXPECT_EQ(far[0].low, largest);
    EXPECT_EQ(far[0].high, largest);
}

TEST(count_real_roots, is_zero_for_a_constant_and_for_the_zero_polynomial) {
    for (const std::vector<double>& c :
         {std::vector<double>{}, {0.0}, {0.0, 0.0}, {5.0}, {5.0, 0.0, 0.0}}) {
        EXPECT_EQ(count_real_roots(c).distinct, 0U);
        EXPECT_TRUE(certified_roots(c).empty());
    }
}

TEST(count_real_roots, counts_a_multiple_root_once_and_with_its_multiplicity) {
    const RootCount count = count_real_roots({0.0, 0.0, 0.0, 0.0, 1.0});
    EXPECT_EQ(count.distinct, 1U);
    EXPECT_EQ(count.with_multiplicity, 4U);
    const RootCount pair = count_real_roots({1.0, 0.0, -2.0, 0.0, 1.0});
    EXPECT_EQ(pair.distinct, 2U);
    EXPECT_EQ(pair.with_multiplicity, 4U);
}

TEST(count_real_roots, decides_at_the_last_bit_of_a_coefficient) {
    EXPECT_EQ(count_real_roots({1.0, -2.0, 1.0}).distinct, 1U);
    EXPECT_EQ(count_real_roots({std::nextafter(1.0, 2.0), -2.0, 1.0}).distinct, 0U);
    EXPECT_EQ(count_real_roots({std::nextafter(1.0, 0.0), -2.0, 1.0}).distinct, 2U);
}

}  // namespace
}  // namespace nmk_solve

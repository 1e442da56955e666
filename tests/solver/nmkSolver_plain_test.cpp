// nmkSolver: the fast closed form for cubics beside the plain one, to the last bit.
#include <gtest/gtest.h>

#include <nmktoolbox/solver/nmkSolver.h>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>

#include "solver/plain_cubsol.h"
#include "solver/solver_samples.h"

namespace {

using solver_samples::Generator;
using Cubic = std::array<double, 4>;

constexpr int cubics = solver_samples::hostile_count;

/// Calls of both forms with this cubic agree to the last bit, slots that stay unwritten too.
testing::AssertionResult same_to_the_bit(Cubic c) {
    using Bits = std::array<std::uint64_t, 3>;
    const std::array<double, 3> untouched = {9.0, 9.0, 9.0};
    std::array<double, 3> fast = untouched;
    std::array<double, 3> plain = untouched;
    const int count = nmkSolver::cubsol(c.data(), fast.data());
    const int expected = plain_cubsol::cubsol(c.data(), plain.data());
    if (count == expected && std::bit_cast<Bits>(fast) == std::bit_cast<Bits>(plain))
        return testing::AssertionSuccess();
    return testing::AssertionFailure()
           << std::hexfloat << c[0] << ' ' << c[1] << ' ' << c[2] << ' ' << c[3] << ": " << count
           << " for " << expected << ", " << fast[0] << " for " << plain[0];
}

TEST(nmkSolver_cubsol, random_coefficients_give_the_plain_roots_to_the_bit) {
    Generator random(391);
    for (int i = 0; i < cubics; ++i) {
        Cubic c;
        for (double& one : c) one = random.between(-1.0, 1.0);
        ASSERT_TRUE(same_to_the_bit(c)) << i;
    }
}

TEST(nmkSolver_cubsol, uneven_coefficients_give_the_plain_roots_to_the_bit) {
    Generator random(392);
    for (int i = 0; i < cubics; ++i) {
        Cubic c;
        for (double& one : c) one = std::ldexp(random.between(-1.0, 1.0), random.below(200) - 100);
        ASSERT_TRUE(same_to_the_bit(c)) << i;
    }
}

TEST(nmkSolver_cubsol, whole_numbers_with_double_and_triple_roots_give_the_plain_ones_to_the_bit) {
    for (int a = -12; a <= 12; ++a) {
        for (int b = a; b <= 12; ++b) {
            for (int c = b; c <= 12; ++c) {
                const double x = a, y = b, z = c;
                for (const double scale : {1.0, -1.0, 3.0, 1e-5})
                    ASSERT_TRUE(
                        same_to_the_bit({-x * y * z * scale, (x * y + y * z + z * x) * scale,
                                         -(x + y + z) * scale, scale}));
            }
        }
    }
}

TEST(nmkSolver_cubsol, hostile_coefficients_give_the_plain_roots_to_the_bit) {
    Generator random(393);
    for (int i = 0; i < cubics; ++i) {
        Cubic c;
        for (double& one : c) one = random.hostile();
        ASSERT_TRUE(same_to_the_bit(c)) << i;
    }
}

TEST(nmkSolver_cubsol, pure_cubes_of_every_magnitude_give_the_plain_root_to_the_bit) {
    Generator random(394);
    for (int i = 0; i < cubics; ++i) {
        const double cube = std::ldexp(random.between(-1.0, 1.0), random.below(600) - 100);
        ASSERT_TRUE(same_to_the_bit({cube, 0.0, 0.0, 1.0})) << i;
        ASSERT_TRUE(same_to_the_bit({random.between(-8.0, 8.0), 0.0, 0.0, 1.0})) << i;
    }
    for (const double cube : {1.0, 8.0, 27.0, 1e-3, 1e100, 1e149, 0x1p300, 1e-6, 5e-324})
        EXPECT_TRUE(same_to_the_bit({-cube, 0.0, 0.0, 1.0})) << cube;
}

}  // namespace

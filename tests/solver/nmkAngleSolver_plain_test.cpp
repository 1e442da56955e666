// nmkAngleSolver: one angle, the conic and the general system beside the plain reading, to the bit.
//
// Compared are the count and every slot, also what stays as it was.
#include <gtest/gtest.h>

#include <nmktoolbox/solver/nmkAngleSolver.h>
#include <array>
#include <cmath>
#include <cstring>
#include <string>

#include "solver/plain_angles_first.h"
#include "solver/solver_samples.h"

namespace {

using plain_angles::Slots;
using solver_samples::Generator;

Slots untouched() {
    Slots slots;
    for (auto& one : slots) one.fill(9.0);
    return slots;
}

template <std::size_t size>
testing::AssertionResult same(int ours, int plain, const Slots& found, const Slots& expected,
                              const std::array<double, size>& p) {
    // Zeros of either sign are one value: a sum of products may be turned round.
    if (ours == plain && found == expected) return testing::AssertionSuccess();
    auto failure = testing::AssertionFailure() << std::hexfloat << "parameters";
    for (const double one : p) failure << ' ' << one;
    failure << ": " << ours << " for " << plain;
    for (std::size_t i = 0; i < 4; ++i) {
        for (std::size_t j = 0; j < 4; ++j) {
            if (found[i][j] != expected[i][j])
                failure << ", " << found[i][j] << " for " << expected[i][j];
        }
    }
    return failure;
}

// What parameters are drawn from; whole ones meet the special cases again and again.
enum class Kind { ordinary, whole, sparse, uneven, count };

double draw(Generator& random, Kind kind) {
    switch (kind) {
        case Kind::whole:
            return random.below(5) - 2;
        case Kind::sparse:
            if (random.below(3) == 0) return 0.0;
            return random.below(4) == 0 ? random.below(9) / 4.0 - 1.0 : random.between(-1.0, 1.0);
        case Kind::uneven:
            return std::ldexp(random.between(-1.0, 1.0), -random.below(3) * random.below(20));
        default:
            return random.between(-1.0, 1.0);
    }
}

template <std::size_t size, class Check>
void for_all_kinds(unsigned seed, int draws, Check check) {
    for (int kind = 0; kind < static_cast<int>(Kind::count); ++kind) {
        Generator random(seed + static_cast<unsigned>(kind));
        for (int i = 0; i < draws; ++i) {
            std::array<double, size> p;
            for (double& one : p) one = draw(random, static_cast<Kind>(kind));
            SCOPED_TRACE("kind " + std::to_string(kind) + ", draw " + std::to_string(i));
            check(random, p);
            if (testing::Test::HasFatalFailure()) return;
        }
    }
}

TEST(nmkAngleSolver_solve_angles1, returns_the_bits_of_the_plain_way) {
    for_all_kinds<3>(3100, 20000, [](Generator& random, auto p) {
        // Around the amplitude, where the tangent begins and ends.
        if (random.below(3) == 0)
            p[2] = std::hypot(p[0], p[1]) * (1.0 + random.between(-2e-5, 2e-5));
        Slots found = untouched(), expected = untouched();
        const int ours =
            nmkAngleSolver::solve_angles1(p[0], p[1], p[2], found[0].data(), found[1].data());
        const int plain =
            plain_angles::solve1(p[0], p[1], p[2], expected[0].data(), expected[1].data());
        ASSERT_TRUE(same(ours, plain, found, expected, p));
    });
}

TEST(nmkAngleSolver_solve_angles2, returns_the_bits_of_the_plain_way) {
    std::array<int, 5> counts{};
    for_all_kinds<6>(3200, 5000, [&](Generator&, const auto& p) {
        Slots found = untouched(), expected = untouched();
        const int ours = nmkAngleSolver::solve_angles2(p[0], p[1], p[2], p[3], p[4], p[5],
                                                       found[0].data(), found[1].data());
        const int plain = plain_angles::solve2(p[0], p[1], p[2], p[3], p[4], p[5],
                                               expected[0].data(), expected[1].data());
        ASSERT_TRUE(same(ours, plain, found, expected, p));
        ++counts[static_cast<std::size_t>(ours)];
    });
    for (const int one : counts) EXPECT_GT(one, 10);
}

TEST(nmkAngleSolver_solve_angles2, two_roots_near_zero_are_one_on_the_same_side_only) {
    // The half-angle tangents are 0, which counts as positive, -B, and about 1 and -1.
    double c[4];
    double s[4];
    EXPECT_EQ(nmkAngleSolver::solve_angles2(0.0, 4e-9, 1.0, 1.0, 0.0, -1.0, c, s), 4);
    EXPECT_EQ(nmkAngleSolver::solve_angles2(0.0, -4e-9, 1.0, 1.0, 0.0, -1.0, c, s), 3);
    EXPECT_EQ(nmkAngleSolver::solve_angles2(0.0, -9e-9, 1.0, 1.0, 0.0, -1.0, c, s), 3);
    EXPECT_EQ(nmkAngleSolver::solve_angles2(0.0, -1.1e-8, 1.0, 1.0, 0.0, -1.0, c, s), 4);
    EXPECT_EQ(nmkAngleSolver::solve_angles2(0.0, -4e-8, 1.0, 1.0, 0.0, -1.0, c, s), 4);
}

using Nine = std::array<double, 9>;

testing::AssertionResult system_is_plain(const Nine& p, int& count) {
    Slots found = untouched(), expected = untouched();
    count = nmkAngleSolver::solve_angles3(p[0], p[1], p[2], p[3], p[4], p[5], p[6], p[7], p[8],
                                          found[0].data(), found[1].data(), found[2].data(),
                                          found[3].data());
    const plain_angles::System s{p[0], p[1], p[2], p[3], p[4], p[5], p[6], p[7], p[8]};
    const int plain = plain_angles::solve3(s, expected);
    return same(count, plain, found, expected, p);
}

TEST(nmkAngleSolver_solve_angles3, returns_the_bits_of_the_plain_way) {
    std::array<int, 3> counts{};
    for_all_kinds<9>(3300, 10000, [&](Generator& random, auto p) {
        if (random.below(3) == 0) p[8] = std::fabs(p[8]);
        if (random.below(6) == 0) p[2] = std::ldexp(p[2], -random.below(40));  // c
        if (random.below(8) == 0) p[5] = p[6] = 0.0;                           // f and g
        if (random.below(8) == 0) p[7] = 0.0;                                  // h
        if (random.below(8) == 0) p[3] = p[0] * 2.0, p[4] = p[1] * 2.0;        // parallel
        if (random.below(8) == 0) p[6] = p[5];                                 // the pole
        int count = 0;
        ASSERT_TRUE(system_is_plain(p, count));
        ++counts[static_cast<std::size_t>(count)];
    });
    for (const int one : counts) EXPECT_GT(one, 1000);
}

TEST(nmkAngleSolver_solve_angles3, near_the_pole_returns_the_bits_of_the_plain_way) {
    Generator random(3400);
    std::array<int, 3> counts{};
    for (int i = 0; i < 20000; ++i) {
        Nine p;
        for (double& one : p) one = random.between(-1.0, 1.0);
        p[2] = std::ldexp(p[2], -12 - random.below(20));
        p[7] = std::fabs(p[7]);
        p[6] = p[5] + random.between(-1.0, 1.0) * p[7];
        int count = 0;
        ASSERT_TRUE(system_is_plain(p, count)) << i;
        ++counts[static_cast<std::size_t>(count)];
    }
    for (const int one : counts) EXPECT_GT(one, 100);
}

}  // namespace

// nmkAngleSolver: the systems that bear on the radius beside the plain reading, to the bit.
//
// Compared are the count and every slot, also what stays as it was.
#include <gtest/gtest.h>

#include <nmktoolbox/solver/nmkAngleSolver.h>
#include <array>
#include <cmath>

#include "solver/plain_angles456.h"
#include "solver/solver_samples.h"

namespace {

using plain_angles::Slots;
using solver_samples::Generator;
using Seven = std::array<double, 7>;  // a b c d e h k

struct Result {
    int count = 0;
    Slots slots;

    Result() {
        for (auto& one : slots) one.fill(9.0);
    }
    double* operator[](std::size_t i) { return slots[i].data(); }
};

testing::AssertionResult same(const Result& ours, const Result& plain, const Seven& p) {
    if (ours.count == plain.count && ours.slots == plain.slots) return testing::AssertionSuccess();
    auto failure = testing::AssertionFailure() << std::hexfloat << "a b c d e h k";
    for (const double one : p) failure << ' ' << one;
    failure << ": " << ours.count << " for " << plain.count;
    for (std::size_t i = 0; i < 4; ++i) {
        for (std::size_t j = 0; j < 4; ++j)
            failure << ", " << ours.slots[i][j] << " for " << plain.slots[i][j];
    }
    return failure;
}

// Ordinary parameters; whole and vanishing ones, which meet the special cases again and again.
double draw(Generator& random, int kind) {
    if (kind == 1) return random.below(5) - 2;
    if (kind == 2 && random.below(3) == 0) return 0.0;
    if (kind == 3)
        return std::ldexp(random.between(-1.0, 1.0), -random.below(3) * random.below(12));
    return random.between(-1.0, 1.0);
}

// What one solver is asked and what is expected of it; room says how many solutions there can be.
template <class Ask>
void compare(unsigned seed, std::size_t room, Ask ask) {
    std::array<int, 5> counts{};
    for (int kind = 0; kind < 4; ++kind) {
        Generator random(seed + static_cast<unsigned>(kind));
        for (int i = 0; i < 10000; ++i) {
            Seven p;
            for (double& one : p) one = draw(random, kind);
            if (random.below(2) == 0) p[6] = std::fabs(p[6]);
            if (random.below(8) == 0) p[2] = std::ldexp(p[2], 30 - random.below(60));  // c
            if (random.below(8) == 0) p[3] = std::ldexp(p[3], 20 - random.below(40));  // d
            if (random.below(8) == 0) p[2] = 0.0;
            if (random.below(8) == 0) p[5] = 0.0;  // h
            if (random.below(8) == 0) p[3] = (p[5] + p[6]) * std::hypot(p[0], p[1]);
            Result ours, plain;
            ask(p, ours, plain);
            ASSERT_TRUE(same(ours, plain, p)) << "kind " << kind << ", draw " << i;
            ++counts[static_cast<std::size_t>(ours.count)];
        }
    }
    for (std::size_t i = 0; i <= room; ++i) EXPECT_GT(counts[i], 5) << i;
}

TEST(nmkAngleSolver_solve_angles4, returns_the_bits_of_the_plain_way) {
    compare(4100, 2, [](const Seven& p, Result& x, Result& y) {
        x.count = nmkAngleSolver::solve_angles4(p[0], p[1], p[2], p[3], p[5], p[6], x[0], x[1],
                                                x[2], x[3]);
        y.count = plain_angles::solve4(p[0], p[1], p[2], p[3], p[5], p[6], y.slots);
    });
}

TEST(nmkAngleSolver_solve_angles4_one_solution, returns_the_bits_of_the_plain_way) {
    compare(4200, 2, [](const Seven& p, Result& x, Result& y) {
        x.count = nmkAngleSolver::solve_angles4_one_solution(p[0], p[1], p[2], p[3], p[5], p[6],
                                                             x[0], x[1], x[2], x[3]);
        y.count = plain_angles::solve4_one(p[0], p[1], p[2], p[3], p[5], p[6], y.slots);
    });
}

TEST(nmkAngleSolver_solve_angles5, returns_the_bits_of_the_plain_way) {
    compare(4300, 2, [](const Seven& p, Result& x, Result& y) {
        x.count = nmkAngleSolver::solve_angles5(p[0], p[1], p[2], p[3], p[4], p[5], p[6], x[0],
                                                x[1], x[2], x[3]);
        y.count = plain_angles::solve5(p[0], p[1], p[2], p[3], p[4], p[5], p[6], y.slots);
    });
}

TEST(nmkAngleSolver_solve_angles5, beside_a_large_d_returns_the_bits_of_the_plain_way) {
    Generator random(4400);
    std::array<int, 3> counts{};
    for (int i = 0; i < 40000; ++i) {
        Seven p;
        for (double& one : p) one = random.between(-1.0, 1.0);
        // The radius is a hundred thousandth of d, or less.
        p[2] *= std::ldexp(1.0, -16 - random.below(10));
        p[5] *= 5e-6;
        p[6] *= 5e-6;
        p[4] = p[3] * random.between(0.0, 1.0);
        Result ours, plain;
        ours.count = nmkAngleSolver::solve_angles5(p[0], p[1], p[2], p[3], p[4], p[5], p[6],
                                                   ours[0], ours[1], ours[2], ours[3]);
        plain.count = plain_angles::solve5(p[0], p[1], p[2], p[3], p[4], p[5], p[6], plain.slots);
        ASSERT_TRUE(same(ours, plain, p)) << i;
        ++counts[static_cast<std::size_t>(ours.count)];
    }
    for (const int one : counts) EXPECT_GT(one, 100);
}

TEST(nmkAngleSolver_solve_angles6, returns_the_bits_of_the_plain_way) {
    compare(4500, 1, [](const Seven& p, Result& x, Result& y) {
        x.count =
            nmkAngleSolver::solve_angles6(p[0], p[1], p[2], p[3], p[6], x[0], x[1], x[2], x[3]);
        y.count = plain_angles::solve6(p[0], p[1], p[2], p[3], p[6], y.slots);
    });
}

}  // namespace

// nmkSolver: quadratics, polished cubics and quartics beside the plain reading, to the last bit.
//
// Compared are the count, every slot of the roots and every status, also what stays as it was.
#include <gtest/gtest.h>

#include <nmktoolbox/solver/nmkSolver.h>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "solver/plain_quadratic_and_quartic.h"
#include "solver/private_members.h"
#include "solver/solver_samples.h"

namespace {

using solver_samples::Generator;

struct Result {
    int count = 0;
    std::array<double, 4> roots = {9.0, 9.0, 9.0, 9.0};
    std::array<int, 4> status = {7, 7, 7, 7};
};

testing::AssertionResult same(const Result& ours, const Result& plain,
                              const std::vector<double>& c) {
    using Bits = std::array<std::uint64_t, 4>;
    if (ours.count == plain.count && ours.status == plain.status &&
        std::bit_cast<Bits>(ours.roots) == std::bit_cast<Bits>(plain.roots))
        return testing::AssertionSuccess();
    auto failure = testing::AssertionFailure() << std::hexfloat << "coefficients";
    for (const double one : c) failure << ' ' << one;
    failure << ": " << ours.count << " for " << plain.count;
    for (std::size_t i = 0; i < 4; ++i) {
        failure << ", " << ours.roots[i] << " (" << ours.status[i] << ") for " << plain.roots[i]
                << " (" << plain.status[i] << ')';
    }
    return failure;
}

testing::AssertionResult quadratic_is_plain(std::vector<double> c) {
    Result ours, plain;
    ours.count = nmkSolver::qadsol(c.data(), ours.roots.data());
    plain.count = plain_solver::qadsol(c.data(), plain.roots.data());
    return same(ours, plain, c);
}

testing::AssertionResult cubic_is_plain(std::vector<double> c, int polish) {
    Result ours, plain;
    ours.count = nmkSolver::cubsol(c.data(), polish, ours.roots.data(), ours.status.data());
    plain.count = plain_solver::cubsol(c.data(), polish, plain.roots.data(), plain.status.data());
    return same(ours, plain, c);
}

testing::AssertionResult quartic_is_plain(std::vector<double> c, int polish, int& count) {
    Result ours, plain;
    ours.count = nmkSolver::qarsol(c.data(), polish, ours.roots.data(), ours.status.data());
    plain.count = plain_solver::qarsol(c.data(), polish, plain.roots.data(), plain.status.data());
    count = ours.count;
    return same(ours, plain, c);
}

// What coefficients are drawn from: ordinary ones, whole ones with many double roots, uneven ones,
// products of factors with roots that are nearly the same, and roots that are all large or all
// small.
enum class Kind { ordinary, whole, uneven, clustered, shrinking, stretched, count };

std::vector<double> clustered(Generator& random, int degree) {
    std::vector<double> roots(static_cast<std::size_t>(degree), random.between(-2.0, 2.0));
    for (double& root : roots) {
        if (random.below(2) == 0) root += std::ldexp(random.between(-1.0, 1.0), -random.below(40));
        if (random.below(4) == 0) root = random.between(-30.0, 30.0);
    }
    return solver_samples::polynomial_of(roots, random.between(-2.0, 2.0));
}

std::vector<double> draw(Generator& random, Kind kind, int degree) {
    if (kind == Kind::clustered) return clustered(random, degree);
    std::vector<double> c(static_cast<std::size_t>(degree) + 1);
    for (double& one : c) {
        one = random.between(-1.0, 1.0);
        if (kind == Kind::whole) one = random.below(7) - 3;
        if (kind == Kind::uneven) one = std::ldexp(one, random.below(80) - 40);
    }
    if (kind == Kind::stretched) {
        const int stretch = random.below(48) - 24;
        for (std::size_t i = 0; i < c.size(); ++i)
            c[i] = std::ldexp(c[i], stretch * static_cast<int>(i));
    }
    // Now and then the ends all but vanish.
    if (kind == Kind::shrinking) {
        c.front() = std::ldexp(c.front(), -random.below(60));
        c.back() = std::ldexp(c.back(), -random.below(60));
    }
    return c;
}

template <class Check>
void for_all_kinds(int degree, int draws, Check check) {
    for (int kind = 0; kind < static_cast<int>(Kind::count); ++kind) {
        Generator random(2300U + static_cast<unsigned>(10 * degree + kind));
        for (int i = 0; i < draws; ++i) {
            SCOPED_TRACE("kind " + std::to_string(kind) + ", draw " + std::to_string(i));
            check(draw(random, static_cast<Kind>(kind), degree));
            if (testing::Test::HasFatalFailure()) return;
        }
    }
}

TEST(nmkSolver_qadsol, returns_the_bits_of_the_plain_way) {
    for_all_kinds(2, 20000, [](const auto& c) { ASSERT_TRUE(quadratic_is_plain(c)); });
}

TEST(nmkSolver_qadsol, around_a_double_root_returns_the_bits_of_the_plain_way) {
    Generator random(2301);
    for (int i = 0; i < 50000; ++i) {
        const double a = random.between(-1.0, 1.0), x = random.between(-1.0, 1.0);
        const double off = std::ldexp(random.between(-1.0, 1.0), -20 - random.below(40));
        const double scale = std::ldexp(1.0, random.below(20) - 10);
        ASSERT_TRUE(quadratic_is_plain({a * x * x * scale + off, -2.0 * a * x * scale, a * scale}));
    }
}

TEST(nmkSolver_qadsol, a_small_discriminant_is_judged_beside_the_middle_coefficient) {
    // x^2 + 0.001 x + c: two roots from a discriminant of 1e-16 on, though 1e-15 is not reached.
    const double b = 1e-3;
    for (const auto& [discriminant, distinct] :
         {std::pair(0.7e-16, false), std::pair(0.97e-16, false), std::pair(1.03e-16, true),
          std::pair(1.3e-16, true)}) {
        double c[3] = {(b * b - discriminant) / 4.0, b, 1.0};
        double roots[2];
        ASSERT_EQ(nmkSolver::qadsol(c, roots), 2);
        EXPECT_EQ(roots[0] < roots[1], distinct) << discriminant;
    }
}

TEST(nmkSolver_cubsol, the_status_form_is_the_plain_one_to_the_bit) {
    for_all_kinds(3, 10000, [](const auto& c) {
        for (const int polish : {0, 1}) ASSERT_TRUE(cubic_is_plain(c, polish));
    });
}

TEST(nmkSolver_qarsol, returns_the_bits_of_the_plain_way) {
    std::array<int, 5> counts{};
    for_all_kinds(4, 10000, [&](const auto& c) {
        for (const int polish : {0, 1}) {
            int count = 0;
            ASSERT_TRUE(quartic_is_plain(c, polish, count));
            ++counts[static_cast<std::size_t>(count)];
        }
    });
    for (const int one : counts) EXPECT_GT(one, 100);
}

TEST(nmkSolver_qarsol, the_status_of_a_cubic_behind_a_root_at_zero_is_behind_that_root) {
    // x (1 + x + x^2 + 1e-150 x^3): too uneven for the cubic, which marks its three slots.
    double c[5] = {0.0, 1.0, 1.0, 1.0, 1e-150};
    double roots[4] = {9, 9, 9, 9};
    int status[4] = {7, 7, 7, 7};
    EXPECT_EQ(nmkSolver::qarsol(c, 0, roots, status), 1);
    EXPECT_EQ(roots[0], 0.0);
    EXPECT_EQ((std::vector<int>(status, status + 4)), (std::vector<int>{0, 1, 1, 1}));
}

TEST(nmkSolver_qarsol, a_square_a_hair_below_zero_is_zero_twice) {
    // -x^4 + x^2 + 1e-15: x^2 is 1, or a unit or two in the last place above -1e-15.
    double c[5] = {1e-15, 0.0, 1.0, 0.0, -1.0};
    double roots[4];
    int status[4];
    ASSERT_EQ(nmkSolver::qarsol(c, 0, roots, status), 4);
    EXPECT_EQ(roots[0], 0.0);
    EXPECT_EQ(roots[1], 0.0);
    EXPECT_NEAR(roots[2], -1.0, 1e-14);
    EXPECT_NEAR(roots[3], 1.0, 1e-14);
    // Further below there is nothing.
    c[0] = 2e-15;
    EXPECT_EQ(nmkSolver::qarsol(c, 0, roots, status), 2);
}

TEST(nmkSolver_qarsol, a_double_root_with_one_other_root_brings_a_zero_along) {
    // (x - 1)^2 (3 - x + 1e-13 x^2): what is left beside the double root is in effect linear. Its
    // one root counts as two, with the zero behind it, which the polishing then takes to a root.
    const double A = 1e-13;
    int count = 0;
    ASSERT_TRUE(quartic_is_plain({3.0, -7.0, 5.0 + A, -1.0 - 2.0 * A, A}, 1, count));
    EXPECT_EQ(count, 4);
}

using Doubles = std::vector<double>;

int laguer(Doubles c, Doubles& roots, std::vector<int>& status) {
    int count = static_cast<int>(roots.size());
    const int degree = static_cast<int>(c.size()) - 1;
    EXPECT_EQ(member_of(private_members::SolverLaguer())(c.data(), degree, roots.data(), count,
                                                         status.data()),
              1);
    return count;
}

TEST(nmkSolver_laguer, behind_a_dropped_root_the_next_starts_from_the_dropped_value) {
    Generator random(2304);
    int dropped = 0, different = 0;
    for (int i = 0; i < 200000; ++i) {
        Doubles c = draw(random, Kind::ordinary, 4);
        Doubles ours(4), plain;
        for (double& one : ours) one = random.between(-2.0, 2.0);
        plain = ours;
        const Doubles before = ours;
        std::vector<int> status(4, 7), plain_status(4, 7);
        const int count = laguer(c, ours, status);
        int plain_count = 4;
        plain_solver::laguer(c.data(), 4, plain.data(), plain_count, plain_status.data());
        ASSERT_EQ(count, plain_count) << i;
        ASSERT_EQ(ours, plain) << i;
        ASSERT_EQ(status, plain_status) << i;
        if (count == 4) continue;
        ++dropped;
        // Each refined alone, from its own value: sometimes another result.
        Doubles alone;
        for (double x : before) {
            if (plain_solver::refine(c.data(), 4, x, x)) alone.push_back(x);
        }
        different += alone != Doubles(ours.begin(), ours.begin() + count);
    }
    EXPECT_GT(dropped, 100);
    EXPECT_GT(different, 10);
}

TEST(nmkSolver_laguer, next_to_zero_every_step_is_the_plain_one_to_the_bit) {
    // Roots of about 1e-15: where a step would be complex, its real part and the turning point are
    // both near at hand.
    Generator random(2305);
    for (int i = 0; i < 100000; ++i) {
        const int degree = 3 + random.below(2);
        const double scale = std::pow(10.0, random.between(-16.0, -14.0));
        Doubles c = draw(random, Kind::ordinary, degree);
        double power = 1e20;
        for (double& one : c) {
            one *= power;
            power /= scale;
        }
        Doubles ours(1, scale * random.between(-2.0, 2.0));
        Doubles plain = ours;
        std::vector<int> status(1, 7), plain_status(1, 7);
        const int count = laguer(c, ours, status);
        int plain_count = 1;
        plain_solver::laguer(c.data(), degree, plain.data(), plain_count, plain_status.data());
        ASSERT_EQ(count, plain_count) << i;
        ASSERT_EQ(ours, plain) << i;
        ASSERT_EQ(status, plain_status) << i;
    }
}

}  // namespace

// nmkAngleSolver: the forms that fill arrays of giAngle, beside those that fill cosines and sines.
#include <gtest/gtest.h>

#include <nmktoolbox/solver/nmkAngleSolver.h>
#include <array>

#include "solver/solver_samples.h"

namespace {

using solver_samples::Generator;

constexpr std::size_t room = 4;
const giAngle untouched(giDegrees, 1234.0);

using Numbers = std::array<double, room>;
using Angles = std::array<giAngle, room>;

/// One angle of each solution, by cosine and sine.
struct Pairs {
    Numbers cosines;
    Numbers sines;

    /// As giAngle; what was not filled as it was.
    Angles angles(int count) const {
        Angles made;
        made.fill(untouched);
        for (std::size_t i = 0; i < static_cast<std::size_t>(count); ++i) {
            if (cosines[i] == 9.0) continue;
            made[i] = giAngle(giAngleTangent2(0), sines[i], cosines[i]);
        }
        return made;
    }
};

struct Solutions {
    Pairs phi;
    Pairs psi;
    Angles phi_angles;
    Angles psi_angles;

    Solutions() {
        for (Numbers* one : {&phi.cosines, &phi.sines, &psi.cosines, &psi.sines}) one->fill(9.0);
        phi_angles.fill(untouched);
        psi_angles.fill(untouched);
    }
};

/// Solves many systems with both forms; `numbers` and `angles` return their counts.
template <class Of_numbers, class Of_angles>
void compare(unsigned seed, int most, Of_numbers numbers, Of_angles angles) {
    Generator random(seed);
    std::array<int, room + 1> counts{};
    for (int i = 0; i < 20000; ++i) {
        std::array<double, 9> p;
        for (double& one : p) one = random.below(6) == 0 ? 0.0 : random.between(-1.0, 1.0);
        Solutions x;
        const int count = numbers(p, x);
        ASSERT_EQ(angles(p, x), count) << i;
        ASSERT_EQ(x.phi_angles, x.phi.angles(count)) << i;
        ASSERT_EQ(x.psi_angles, x.psi.angles(count)) << i;
        ++counts[static_cast<std::size_t>(count)];
    }
    EXPECT_GT(counts[0], 10);
    EXPECT_GT(counts[static_cast<std::size_t>(most)], 10);
}

using Nine = std::array<double, 9>;

TEST(nmkAngleSolver_angle_forms, of_one_angle_give_the_angles_of_its_cosines_and_sines) {
    compare(
        6100, 2,
        [](const Nine& p, Solutions& x) {
            return nmkAngleSolver::solve_angles1(p[0], p[1], p[2], x.phi.cosines.data(),
                                                 x.phi.sines.data());
        },
        [](const Nine& p, Solutions& x) {
            return nmkAngleSolver::solve_angles1(p[0], p[1], p[2], x.phi_angles.data());
        });
    compare(
        6200, 4,
        [](const Nine& p, Solutions& x) {
            return nmkAngleSolver::solve_angles2(p[0], p[1], p[2], p[3], p[4], p[5],
                                                 x.phi.cosines.data(), x.phi.sines.data());
        },
        [](const Nine& p, Solutions& x) {
            return nmkAngleSolver::solve_angles2(p[0], p[1], p[2], p[3], p[4], p[5],
                                                 x.phi_angles.data());
        });
}

TEST(nmkAngleSolver_angle_forms, of_solve_angles3_give_phi_and_then_psi) {
    compare(
        6300, 2,
        [](const Nine& p, Solutions& x) {
            return nmkAngleSolver::solve_angles3(p[0], p[1], p[2], p[3], p[4], p[5], p[6], p[7],
                                                 p[8], x.phi.cosines.data(), x.phi.sines.data(),
                                                 x.psi.cosines.data(), x.psi.sines.data());
        },
        [](const Nine& p, Solutions& x) {
            return nmkAngleSolver::solve_angles3(p[0], p[1], p[2], p[3], p[4], p[5], p[6], p[7],
                                                 p[8], x.phi_angles.data(), x.psi_angles.data());
        });
}

TEST(nmkAngleSolver_angle_forms, of_solve_angles4_give_phi_and_then_psi) {
    compare(
        6400, 2,
        [](const Nine& p, Solutions& x) {
            return nmkAngleSolver::solve_angles4(p[0], p[1], p[2], p[3], p[4], p[5],
                                                 x.phi.cosines.data(), x.phi.sines.data(),
                                                 x.psi.cosines.data(), x.psi.sines.data());
        },
        [](const Nine& p, Solutions& x) {
            return nmkAngleSolver::solve_angles4(p[0], p[1], p[2], p[3], p[4], p[5],
                                                 x.phi_angles.data(), x.psi_angles.data());
        });
}

TEST(nmkAngleSolver_angle_forms, of_solve_angles4_one_solution_give_phi_and_then_psi) {
    compare(
        6500, 2,
        [](const Nine& p, Solutions& x) {
            return nmkAngleSolver::solve_angles4_one_solution(
                p[0], p[1], p[2], p[3], p[4], p[5], x.phi.cosines.data(), x.phi.sines.data(),
                x.psi.cosines.data(), x.psi.sines.data());
        },
        [](const Nine& p, Solutions& x) {
            return nmkAngleSolver::solve_angles4_one_solution(
                p[0], p[1], p[2], p[3], p[4], p[5], x.phi_angles.data(), x.psi_angles.data());
        });
}

TEST(nmkAngleSolver_angle_forms, of_solve_angles5_give_phi_and_then_psi) {
    compare(
        6600, 2,
        [](const Nine& p, Solutions& x) {
            return nmkAngleSolver::solve_angles5(p[0], p[1], p[2], p[3], p[4], p[5], p[6],
                                                 x.phi.cosines.data(), x.phi.sines.data(),
                                                 x.psi.cosines.data(), x.psi.sines.data());
        },
        [](const Nine& p, Solutions& x) {
            return nmkAngleSolver::solve_angles5(p[0], p[1], p[2], p[3], p[4], p[5], p[6],
                                                 x.phi_angles.data(), x.psi_angles.data());
        });
}

TEST(nmkAngleSolver_angle_forms, of_solve_angles6_give_phi_and_then_psi) {
    compare(
        6700, 1,
        [](const Nine& p, Solutions& x) {
            return nmkAngleSolver::solve_angles6(p[0], p[1], p[2], p[3], p[4], x.phi.cosines.data(),
                                                 x.phi.sines.data(), x.psi.cosines.data(),
                                                 x.psi.sines.data());
        },
        [](const Nine& p, Solutions& x) {
            return nmkAngleSolver::solve_angles6(p[0], p[1], p[2], p[3], p[4], x.phi_angles.data(),
                                                 x.psi_angles.data());
        });
}

}  // namespace

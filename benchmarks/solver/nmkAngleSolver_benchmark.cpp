// nmkAngleSolver_benchmark: time a call of each system of angles, and that none of them allocates.
#include <nmktoolbox/solver.h>

#include <cstdio>
#include <cstdlib>
#include <new>
#include <vector>

#include "solver/solver_samples.h"
#include "stopwatch.h"

namespace {

long allocations = 0;

}  // namespace

void* operator new(std::size_t size) {
    ++allocations;
    if (void* const memory = std::malloc(size)) return memory;
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

namespace {

const int problems = stopwatch::size(200000, 2000);
const int runs = stopwatch::rounds(9);
constexpr int parameters = 9;

/// Room for the largest count of each system.
struct Slots {
    double cos_phi[4], sin_phi[4], cos_psi[4], sin_psi[4];
};

/// Random parameters, row after row: the last one, which goes to k, is not negative.
std::vector<double> random_systems(int used) {
    solver_samples::Generator random(31);
    std::vector<double> all;
    all.reserve(static_cast<std::size_t>(problems) * parameters);
    for (int i = 0; i < problems; ++i) {
        for (int j = 0; j < parameters; ++j)
            all.push_back(random.between(j == used - 1 && used > 3 ? 0.0 : -1.0, 1.0));
    }
    return all;
}

/// Prints the time of a call; returns whether there was no allocation.
template <class Solve>
bool measure(const char* name, int used, const Solve& solve) {
    const std::vector<double> all = random_systems(used);
    Slots x;
    long solutions = 0;
    const long before = allocations;
    const double seconds = stopwatch::least_seconds(runs, [&] {
        for (std::size_t i = 0; i < all.size(); i += parameters) solutions += solve(&all[i], x);
    });
    const long allocated = allocations - before;
    std::printf("%-28s %7.1f ns a call, %.2f solutions, %ld allocations\n", name,
                seconds * 1e9 / problems, double(solutions) / (double(runs) * problems), allocated);
    return allocated == 0;
}

}  // namespace

int main() {
    using A = nmkAngleSolver;
    bool none = measure("solve_angles1", 3, [](const double* p, Slots& x) {
        return A::solve_angles1(p[0], p[1], p[2], x.cos_phi, x.sin_phi);
    });
    none &= measure("solve_angles2", 6, [](const double* p, Slots& x) {
        return A::solve_angles2(p[0], p[1], p[2], p[3], p[4], p[5], x.cos_phi, x.sin_phi);
    });
    none &= measure("solve_angles3", 9, [](const double* p, Slots& x) {
        return A::solve_angles3(p[0], p[1], p[2], p[3], p[4], p[5], p[6], p[7], p[8], x.cos_phi,
                                x.sin_phi, x.cos_psi, x.sin_psi);
    });
    none &= measure("solve_angles4", 6, [](const double* p, Slots& x) {
        return A::solve_angles4(p[0], p[1], p[2], p[3], p[4], p[5], x.cos_phi, x.sin_phi, x.cos_psi,
                                x.sin_psi);
    });
    none &= measure("solve_angles4_one_solution", 6, [](const double* p, Slots& x) {
        return A::solve_angles4_one_solution(p[0], p[1], p[2], p[3], p[4], p[5], x.cos_phi,
                                             x.sin_phi, x.cos_psi, x.sin_psi);
    });
    none &= measure("solve_angles5", 7, [](const double* p, Slots& x) {
        return A::solve_angles5(p[0], p[1], p[2], p[3], p[4], p[5], p[6], x.cos_phi, x.sin_phi,
                                x.cos_psi, x.sin_psi);
    });
    none &= measure("solve_angles6", 5, [](const double* p, Slots& x) {
        return A::solve_angles6(p[0], p[1], p[2], p[3], p[4], x.cos_phi, x.sin_phi, x.cos_psi,
                                x.sin_psi);
    });
    if (!none) std::puts("a solver ALLOCATED memory");
    return none ? 0 : 1;
}

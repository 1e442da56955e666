// nmkSolver_benchmark: cubics and quartics beside the solvers of GSL, on the same random input.
#include <nmktoolbox/solver.h>

#include <vector>

#include "ordering/stopwatch.h"
#include "solver/solver_samples.h"

#if defined(NMK_WITH_GSL)
#include <gsl/gsl_poly.h>
#endif

namespace {

constexpr int problems = 1000000;
constexpr int runs = 9;
double sink = 0.0;

std::vector<double> random_polynomials(int degree) {
    solver_samples::Generator random(1);
    std::vector<double> all;
    for (int i = 0; i < problems * (degree + 1); ++i) all.push_back(random.between(-1.0, 1.0));
    return all;
}

std::vector<double> real_rooted_cubics() {
    solver_samples::Generator random(2);
    std::vector<double> all;
    for (int i = 0; i < problems; ++i) {
        for (const double c : solver_samples::polynomial_of(
                 solver_samples::separate_roots(random, 3, 5.0, 0.1), 1.0))
            all.push_back(c);
    }
    return all;
}

double cubics_ours(std::vector<double>& all) {
    return stopwatch::least_seconds(runs, [&] {
        double roots[3] = {};
        for (int i = 0; i < problems; ++i) sink += nmkSolver::cubsol(&all[4U * unsigned(i)], roots);
    });
}

double quartics_ours(std::vector<double>& all) {
    return stopwatch::least_seconds(runs, [&] {
        double roots[4];
        int status[4];
        for (int i = 0; i < problems; ++i)
            sink += nmkSolver::qarsol(&all[5U * unsigned(i)], 0, roots, status);
    });
}

#if defined(NMK_WITH_GSL)
double cubics_gsl(const std::vector<double>& all) {
    return stopwatch::least_seconds(runs, [&] {
        double x = 0.0, y = 0.0, z = 0.0;
        for (int i = 0; i < problems; ++i) {
            const double* c = &all[4U * unsigned(i)];
            sink += gsl_poly_solve_cubic(c[2] / c[3], c[1] / c[3], c[0] / c[3], &x, &y, &z);
        }
    });
}

double quartics_gsl(const std::vector<double>& all) {
    gsl_poly_complex_workspace* const space = gsl_poly_complex_workspace_alloc(5);
    const double taken = stopwatch::seconds([&] {
        double z[8];
        for (int i = 0; i < problems; ++i) {
            gsl_poly_complex_solve(&all[5U * unsigned(i)], 5, space, z);
            sink += z[0];
        }
    });
    gsl_poly_complex_workspace_free(space);
    return taken;
}
#endif

}  // namespace

int main() {
    std::vector<double> mixed = random_polynomials(3);
    std::vector<double> real = real_rooted_cubics();
    std::vector<double> quartics = random_polynomials(4);
#if defined(NMK_WITH_GSL)
    bool reached =
        stopwatch::report("cubsol, mixed", cubics_ours(mixed), cubics_gsl(mixed), 1.0, true);
    reached &=
        stopwatch::report("cubsol, all real", cubics_ours(real), cubics_gsl(real), 0.8, true);
    reached &=
        stopwatch::report("qarsol", quartics_ours(quartics), quartics_gsl(quartics), 0.6, true);
    return reached && sink != 0.5 ? 0 : 1;
#else
    std::printf("without GSL: cubsol %.0f ns mixed, %.0f ns all real; qarsol %.0f ns a call\n",
                cubics_ours(mixed) * 1e9 / problems, cubics_ours(real) * 1e9 / problems,
                quartics_ours(quartics) * 1e9 / problems);
    return sink != 0.5 ? 0 : 1;
#endif
}

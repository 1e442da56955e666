// nmkRootSolve_benchmark: calls of the function and time for a root in a bracket to 1e-10, beside
// bisection and GSL's Brent.
//
// The functions are those on which such methods are usually compared: easy ones, flat ones, steep
// ones and multiple roots. A call of the derivative counts as a call. All three get the function
// through the same virtual call.
#include <maths/mlFunction.h>
#include <nmktoolbox/solver.h>

#include <cmath>
#include <cstdio>
#include <vector>

#include "stopwatch.h"

#if defined(NMK_WITH_GSL)
#include <gsl/gsl_errno.h>
#include <gsl/gsl_roots.h>
#endif

namespace {

constexpr double tolerance = 1e-10;
constexpr int most_iterations = 1000;
const int repetitions = stopwatch::size(2000, 10);
constexpr int runs = 5;
double sink = 0.0;

struct Problem {
    const char* name;
    double (*value)(double);
    double (*slope)(double);
    double lo, hi;
};

double power(double x, int n) { return n == 0 ? 1.0 : x * power(x, n - 1); }

const std::vector<Problem> problems = {
    {"x^3 - 2x - 5", [](double x) { return x * x * x - 2 * x - 5; },
     [](double x) { return 3 * x * x - 2; }, 2, 3},
    {"cos x - x", [](double x) { return std::cos(x) - x; },
     [](double x) { return -std::sin(x) - 1; }, 0, 1},
    {"x exp x - 1", [](double x) { return x * std::exp(x) - 1; },
     [](double x) { return (x + 1) * std::exp(x); }, -1, 1},
    {"sin x - x / 2", [](double x) { return std::sin(x) - x / 2; },
     [](double x) { return std::cos(x) - 0.5; }, 1.5, 3.1},
    {"x^2 - (1 - x)^5", [](double x) { return x * x - power(1 - x, 5); },
     [](double x) { return 2 * x + 5 * power(1 - x, 4); }, 0, 1},
    {"2x exp -5 + 1 - 2 exp -5x",
     [](double x) { return 2 * x * std::exp(-5.0) + 1 - 2 * std::exp(-5 * x); },
     [](double x) { return 2 * std::exp(-5.0) + 10 * std::exp(-5 * x); }, 0, 1},
    {"Kepler, 0.8", [](double x) { return x - 0.8 * std::sin(x) - 1; },
     [](double x) { return 1 - 0.8 * std::cos(x); }, 0, 3},
    {"x^12 - 0.2", [](double x) { return power(x, 12) - 0.2; },
     [](double x) { return 12 * power(x, 11); }, 0, 5},
    {"atan x", [](double x) { return std::atan(x); }, [](double x) { return 1 / (1 + x * x); }, -1,
     5},
    {"x^3, a triple root", [](double x) { return x * x * x; }, [](double x) { return 3 * x * x; },
     -1, 10},
    {"x^9, a ninefold root", [](double x) { return power(x, 9); },
     [](double x) { return 9 * power(x, 8); }, -1, 4},
};

class Function : public mlFunction {
  public:
    explicit Function(const Problem& problem) : m_problem(problem) {}

    double value(double x) const override {
        ++calls;
        return m_problem.value(x);
    }
    double derivative(int, double x) const override {
        ++calls;
        return m_problem.slope(x);
    }

    mutable long calls = 0;

  private:
    const Problem& m_problem;
};

double ours(const Function& f, double lo, double hi) {
    int converged = 0;
    return nmkRootSolve::bracketed_root_solve(f, lo, hi, 0.0, converged, most_iterations);
}

double bisection(const Function& f, double lo, double hi) {
    const bool negative = f.value(lo) < 0.0;
    while (hi - lo >= tolerance) {
        const double middle = (lo + hi) / 2.0;
        ((f.value(middle) < 0.0) == negative ? lo : hi) = middle;
    }
    return lo;
}

#if defined(NMK_WITH_GSL)
double brent(const Function& f, double lo, double hi) {
    static gsl_root_fsolver* const solver = gsl_root_fsolver_alloc(gsl_root_fsolver_brent);
    gsl_function function;
    function.function = [](double x, void* of) {
        return static_cast<const Function*>(of)->value(x);
    };
    function.params = const_cast<Function*>(&f);
    gsl_root_fsolver_set(solver, &function, lo, hi);
    for (int i = 0; i < most_iterations; ++i) {
        gsl_root_fsolver_iterate(solver);
        if (gsl_root_test_interval(gsl_root_fsolver_x_lower(solver),
                                   gsl_root_fsolver_x_upper(solver), tolerance, 0.0) == GSL_SUCCESS)
            break;
    }
    return gsl_root_fsolver_root(solver);
}
#endif

/// Prints calls and nanoseconds for one root, which it returns.
template <class Method>
double measure(const char* method, const Problem& problem, const Method& find) {
    const Function f(problem);
    const double root = find(f, problem.lo, problem.hi);
    const long calls = f.calls;
    const double seconds = stopwatch::least_seconds(runs, [&] {
        for (int i = 0; i < repetitions; ++i) sink += find(f, problem.lo, problem.hi);
    });
    std::printf("  %s %4ld calls %6.0f ns", method, calls, seconds * 1e9 / repetitions);
    return root;
}

}  // namespace

int main() {
    bool all_same = true;
    for (const Problem& problem : problems) {
        std::printf("%-26s", problem.name);
        const double root = measure("ours", problem, ours);
        const double halved = measure("| bisection", problem, bisection);
#if defined(NMK_WITH_GSL)
        measure("| Brent", problem, brent);
#endif
        const bool same = std::abs(root - halved) <= 10.0 * tolerance;
        std::puts(same ? "" : "  RESULTS DIFFER");
        all_same = all_same && same;
    }
    return all_same && sink != 0.5 ? 0 : 1;
}

#include <exactmath/exact_power.h>
#include <nmktoolbox/solver/nmkCumulativeGaussian.h>

namespace {

constexpr double density_at_zero = 0.39894228;
constexpr double slope_of_t = 0.2316419;

double tail_polynomial(double t) {
    return 0.31938153 +
           t * (-0.356563782 + t * (1.781477937 + t * (-1.821255978 + t * 1.330274429)));
}

}  // namespace

double nmkCumulativeGaussian::calculate(double x) {
    return calculate(x, nmk_exact::exact_exp(-x * x / 2.0));
}

double nmkCumulativeGaussian::calculate(double x, double exp_term) {
    const double z = density_at_zero * exp_term;
    if (x >= 0.0) {
        const double t = 1.0 / (1.0 + slope_of_t * x);
        return 1.0 - z * t * tail_polynomial(t);
    }
    const double t = 1.0 / (1.0 - slope_of_t * x);
    return z * t * tail_polynomial(t);
}

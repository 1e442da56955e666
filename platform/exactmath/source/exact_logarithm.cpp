#include <exactmath/exact_logarithm.h>

#include <cmath>
#include <limits>

#include "wide_power.h"

namespace nmk_exact {
namespace {

constexpr DoubleDouble natural_log_of_10{0x1.26bb1bbb55516p+1, -0x1.f48ad494ea3e9p-53};

}  // namespace

double exact_log10(double x) {
    if (x == 0.0) return -std::numeric_limits<double>::infinity();
    if (x < 0.0) return std::numeric_limits<double>::quiet_NaN();
    if (!std::isfinite(x)) return x;
    const DoubleDouble logarithm = wide_log(x) / natural_log_of_10;
    return logarithm.high + logarithm.low;
}

}  // namespace nmk_exact

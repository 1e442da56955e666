// nmkNumberRounder: the number nearest to a given one among those that a field can show.
#include <exactmath/exact_logarithm.h>
#include <nmktoolbox/solver/nmkNumberRounder.h>
#include <utils/utMath.h>

#include <cmath>

namespace {

// A remainder above this part of the last position is rounded up.
// Deliberate: a remainder of exactly a half is rounded down.
constexpr double remainder_is_rounded_up = 0.5;

/// value rounded to a whole number of units.
double round_to_unit(double value, double unit) {
    // The last position is finer than doubles are.
    if (unit == 0.0) return value;
    const double quotient = value / unit;
    const double whole = std::floor(quotient);
    if (!(quotient - whole > remainder_is_rounded_up)) return whole * unit;
    const double up = (whole + 1.0) * unit;
    return std::isfinite(up) ? up : whole * unit;
}

}  // namespace

nmkNumberRounder::nmkNumberRounder(const nmkNumericalPrecision& precision)
    : m_precision(&precision) {}

double nmkNumberRounder::round(double value) const {
    if (no_positive_admissible_value() != 0) return 0.0;
    if (std::isnan(value)) return value;
    const double least = minimum_positive_admissible_value();
    const double greatest = maximum_positive_admissible_value();
    if (value >= greatest) return greatest;
    if (value <= least / 2.0) return 0.0;
    if (value <= least) return least;
    // Deliberate: the last position is that of the order before rounding; 9.96 becomes 10, although
    // the field shows one digit less of it.
    const int order = static_cast<int>(std::floor(nmk_exact::exact_log10(value)));
    return round_to_unit(value,
                         utMath::pow(10.0, m_precision->least_significant_digit_position(order)));
}

double nmkNumberRounder::maximum_positive_admissible_value() const {
    const int order = m_precision->maximum_order();
    // From five characters on the exponent reaches beyond all finite numbers.
    if (order >= 308) return HUGE_VAL;
    return utMath::pow(10.0, order + 1) -
           utMath::pow(10.0, m_precision->least_significant_digit_position(order));
}

double nmkNumberRounder::minimum_positive_admissible_value() const {
    return utMath::pow(10.0, m_precision->minimum_order());
}

int nmkNumberRounder::no_positive_admissible_value() const {
    return m_precision->constraints_satisfiable() == 0 ? 1 : 0;
}

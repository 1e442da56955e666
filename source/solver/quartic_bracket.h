// quartic_bracket: one real root of a quartic, by a change of sign and safeguarded Newton steps.
//
// Quartics are 5 doubles in ascending powers, scaled to a largest coefficient of 1, with a constant
// term that is not zero. Both loops end on every input: see the bounds in quartic_bracket.cpp.
#pragma once

namespace nmk_solver {

/// Where a search for a change of sign ended.
struct QuarticBracket {
    enum class Kind { none, root, change_of_sign };

    Kind kind = Kind::none;
    double low = 0.0;   ///< the end at which the quartic has the sign of its constant term
    double high = 0.0;  ///< the other end, or the root itself; may be the smaller number
};

/// At or below this absolute value of the scaled quartic, x itself is a root.
constexpr double quartic_value_is_zero = 1e-15;

/// The numbers have the same sign, zero counting as positive.
constexpr bool same_sign(double first, double second) { return (first < 0.0) == (second < 0.0); }

double quartic_value(const double* a, double x);
double quartic_slope(const double* a, double x);

/// A change of sign on the positive axis, for ends of opposite sign at zero and infinity.
QuarticBracket bracket_on_the_positive_axis(const double* a);

/// The root in a bracket. It may not be finite when the quartic overflows all over the bracket.
double refine_in_bracket(const double* a, double low, double high);

}  // namespace nmk_solver

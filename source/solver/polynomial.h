// polynomial: values of polynomials with coefficients in ascending powers.
//
// Horner's rule from the top coefficient. The order of the operations is fixed, so that a value is
// the same to the last bit wherever it is computed.
#pragma once

#include <cmath>

namespace nmk_solver {

/// Value at x of the polynomial of the given degree.
inline double polynomial_value(const double* coefficients, int degree, double x) {
    double value = coefficients[degree];
    for (int i = degree - 1; i >= 0; --i) value = value * x + coefficients[i];
    return value;
}

/// The first `count` coefficients are neither infinite nor NaN.
inline bool all_finite(const double* coefficients, int count) {
    for (int i = 0; i < count; ++i) {
        if (!std::isfinite(coefficients[i])) return false;
    }
    return true;
}

/// The largest absolute value of the first `count` coefficients.
inline double largest_absolute(const double* coefficients, int count) {
    double largest = 0.0;
    for (int i = 0; i < count; ++i) {
        const double size = std::fabs(coefficients[i]);
        if (size > largest) largest = size;
    }
    return largest;
}

}  // namespace nmk_solver

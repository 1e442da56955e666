// bernstein: evaluation and subdivision of polynomials in Bernstein form.
//
// A polynomial of degree n has the coefficients b[0] to b[n], numbers or vectors, and at u the
// value of the sum of C(n, i) u^i (1 - u)^(n - i) b[i].
#pragma once

#include <ngk/ngkBezCurve.h>

#include <array>
#include <cstddef>
#include <span>

namespace nmk_ngk {

/// The degrees that occur: three times that of a curve in the search for its nearest point.
inline constexpr int max_bernstein_degree = 3 * ngk_max_degree;
inline constexpr std::size_t max_points = static_cast<std::size_t>(ngk_max_degree) + 1;

using BinomialTable = std::array<std::array<double, max_bernstein_degree + 1>,
                                 static_cast<std::size_t>(max_bernstein_degree) + 1>;

consteval BinomialTable make_binomials() {
    BinomialTable table{};
    for (std::size_t n = 0; n < table.size(); ++n) {
        table[n][0] = 1.0;
        for (std::size_t i = 1; i <= n; ++i) table[n][i] = table[n - 1][i - 1] + table[n - 1][i];
    }
    return table;
}

inline constexpr BinomialTable binomials = make_binomials();

/// The value at u of the polynomial whose coefficient i is coefficient(i); the ends exactly.
/// Method: Horner's for Bernstein form; Farin, Curves and Surfaces for CAGD, 5th ed., section 5.8.
template <class Coefficient>
auto bernstein_value(int degree, double u, const Coefficient& coefficient) {
    const double rest = 1.0 - u;
    const auto& binomial = binomials[static_cast<std::size_t>(degree)];
    auto sum = coefficient(0);
    double power = 1.0;
    for (int i = 1; i <= degree; ++i) {
        power *= u;
        sum = sum * rest + coefficient(i) * (binomial[static_cast<std::size_t>(i)] * power);
    }
    return sum;
}

/// Splits at u: `low` becomes the coefficients of the part below, `high` of the part above. All
/// have `count` elements; `high` may be where the coefficients are.
/// Method: de Casteljau.
template <class Value>
void subdivide(const Value* coefficients, int count, double u, Value* low, Value* high) {
    if (coefficients != high) std::copy_n(coefficients, count, high);
    for (int level = 0; level < count; ++level) {
        low[level] = high[0];
        for (int i = 0; i + level + 1 < count; ++i) high[i] += (high[i + 1] - high[i]) * u;
    }
}

}  // namespace nmk_ngk

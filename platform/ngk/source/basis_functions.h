// basis_functions: those B-splines that are not zero on an interval of knots, and their
// derivatives.
#pragma once

#include "bernstein.h"
#include "knots.h"

namespace nmk_ngk {

struct BasisFunctions {
    using Row = std::array<double, max_points>;

    std::size_t first;  // index of the point that values[0] belongs to
    Row values;
    Row slopes;
    Row bends;
};

namespace basis_steps {

/// Raises B-splines of degree `degree` - 1, row[0] to row[degree - 1], to those of `degree`.
/// Formula: Cox and de Boor.
inline void raise(std::span<const double> knots, std::size_t interval, std::size_t degree,
                  double value, BasisFunctions::Row& row) {
    double carried = 0.0;
    for (std::size_t j = 0; j < degree; ++j) {
        const double right = knots[interval + j + 1];
        const double left = knots[interval + j + 1 - degree];
        const double share = row[j] / (right - left);
        row[j] = carried + (right - value) * share;
        carried = (value - left) * share;
    }
    row[degree] = carried;
}

/// The derivatives of B-splines of `degree` from the values of those one degree lower.
/// Formula: Piegl and Tiller, The NURBS Book, 2nd ed., equation 2.7.
inline void differentiate(std::span<const double> knots, std::size_t interval, std::size_t degree,
                          BasisFunctions::Row& row) {
    double carried = 0.0;
    for (std::size_t j = 0; j < degree; ++j) {
        const double width = knots[interval + j + 1] - knots[interval + j + 1 - degree];
        const double share = static_cast<double>(degree) * row[j] / width;
        row[j] = carried - share;
        carried = share;
    }
    row[degree] = carried;
}

}  // namespace basis_steps

inline BasisFunctions basis_functions(int degree, std::span<const double> knots, double value) {
    using namespace basis_steps;
    const std::size_t p = static_cast<std::size_t>(degree);
    const std::size_t interval = interval_at(degree, knots, value);
    BasisFunctions basis;
    basis.first = interval - p;
    basis.values.fill(0.0);
    basis.values[0] = 1.0;
    basis.slopes.fill(0.0);
    basis.bends.fill(0.0);
    for (std::size_t degree_now = 1; degree_now <= p; ++degree_now) {
        if (degree_now + 1 == p) basis.bends = basis.values;
        if (degree_now == p) basis.slopes = basis.values;
        raise(knots, interval, degree_now, value, basis.values);
    }
    if (p == 1) basis.bends.fill(0.0);
    if (p >= 2) {
        differentiate(knots, interval, p - 1, basis.bends);
        differentiate(knots, interval, p, basis.bends);
    }
    differentiate(knots, interval, p, basis.slopes);
    return basis;
}

}  // namespace nmk_ngk

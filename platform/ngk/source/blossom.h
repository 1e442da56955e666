// blossom: the control points of a NURBS curve between two knots as those of a Bezier curve.
#pragma once

#include "bernstein.h"
#include "knots.h"

namespace nmk_ngk {

/// The polar form of the polynomial on the interval that begins at the knot with the index
/// `interval`, with the argument `low` `degree` - `ups` times and `high` `ups` times.
/// Source: Ramshaw, Blossoms are polar forms, CAGD 6, 1989.
template <class Value>
Value blossom(int degree, std::span<const double> knots, std::span<const Value> values,
              std::size_t interval, int ups) {
    const std::size_t p = static_cast<std::size_t>(degree);
    const double low = knots[interval];
    const double high = knots[interval + 1];
    std::array<Value, max_points> rows;
    std::copy_n(values.begin() + static_cast<std::ptrdiff_t>(interval - p), p + 1, rows.begin());
    for (std::size_t level = 1; level <= p; ++level) {
        const double argument = level <= static_cast<std::size_t>(ups) ? high : low;
        for (std::size_t j = p; j >= level; --j) {
            const double from = knots[interval - p + j];
            const double to = knots[interval + 1 + j - level];
            const double part = (argument - from) / (to - from);
            rows[j] = part == 1.0 ? rows[j] : rows[j - 1] + (rows[j] - rows[j - 1]) * part;
        }
    }
    return rows[p];
}

}  // namespace nmk_ngk

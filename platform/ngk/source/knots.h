// knots: the knots of NURBS curves and surfaces.
#pragma once

#include <ngk/Vec.h>
#include <ngk/ngkBezCurve.h>
#include <ngk/ngkT.h>

#include <algorithm>
#include <cstddef>
#include <span>
#include <vector>

namespace nmk_ngk {

// Intervals of knots are empty or at least this part of the whole range, so that derivatives by the
// parameter keep their digits.
inline constexpr double least_interval_part = 1e-12;

/// What the parameter may be. There are at least degree + 2 knots.
inline ngkRange range_of_knots(int degree, std::span<const double> knots) {
    const std::size_t p = static_cast<std::size_t>(degree);
    return {knots[p], knots[knots.size() - p - 1]};
}

/// The index of the last knot that is at most `value` and begins an interval of the range that is
/// not empty; the interval at the end of the range holds its end.
inline std::size_t interval_at(int degree, std::span<const double> knots, double value) {
    const auto [low, high] = range_of_knots(degree, knots);
    const auto next = value < high ? std::ranges::upper_bound(knots, std::max(value, low))
                                   : std::ranges::lower_bound(knots, high);
    return static_cast<std::size_t>(next - knots.begin()) - 1;
}

/// Whether a curve of this degree with so many points can have the knots.
inline bool are_knots(int degree, std::span<const double> knots, std::size_t points) {
    const std::size_t p = static_cast<std::size_t>(degree);
    const bool fits = degree >= 1 && degree <= ngk_max_degree && points > p &&
                      knots.size() == points + p + 1 && std::ranges::is_sorted(knots) &&
                      std::ranges::all_of(
                          knots, [](double knot) { return std::abs(knot) <= largest_coordinate; });
    if (!fits) return false;
    const auto [low, high] = range_of_knots(degree, knots);
    if (!(low < high) || !(high - low > 1.0 / largest_coordinate)) return false;
    const double least = (high - low) * least_interval_part;
    for (std::size_t i = p; i + p + 1 < knots.size(); ++i) {
        const double interval = knots[i + 1] - knots[i];
        if (interval > 0.0 && interval < least) return false;
        // An inner knot that is there more than `degree` times tears the curve apart.
        if (knots[i] > low && knots[i] < high && knots[i] == knots[i + p]) return false;
    }
    return true;
}

}  // namespace nmk_ngk

// lattice.h: the places that a generator of the plane reaches from a start, by column and row.
//
// The coordinates of a place are sums of steps, and the ways to it differ in how they round. While
// every point stands close to its place, column and row answer what comparing points within the
// tolerance would: two points of one place are within it, and of two places they are not.
#pragma once

#include <geometry/giPoint2.h>

#include <cmath>
#include <cstdint>

#include "search/plane_places.h"

namespace nmk_search {

struct Lattice_place {
    std::int32_t column;
    std::int32_t row;
};

/// The columns or the rows.
class Lattice_axis {
  public:
    Lattice_axis(double origin, double step) : m_origin(origin), m_step(step) {}

    /// Whether its lines are far enough apart, and near enough to zero for sums to be told.
    bool is_usable() const { return stands_on(0, m_origin) && std::abs(m_step) >= least_step; }

    /// Whether `coordinate` is close to a line. False for one that is no number.
    bool stands_on(std::int32_t line, double coordinate) const {
        if (line > most_lines || line < -most_lines) return false;
        const double drift = std::abs(coordinate - (m_origin + line * m_step));
        return drift <= largest_drift && std::abs(coordinate) <= largest_coordinate;
    }

    /// The coordinate that a step forwards, backwards or none leads to.
    double next(double coordinate, int direction) const {
        if (direction == 0) return coordinate;
        return direction > 0 ? coordinate + m_step : coordinate - m_step;
    }

  private:
    static constexpr double largest_coordinate = 1e9;
    static constexpr double largest_drift = 0.2 * nodes_are_one_place;
    static constexpr double least_step = 10.0 * nodes_are_one_place;
    static constexpr std::int32_t most_lines = 1 << 30;

    // Two points of one place: each has drifted in x and in y, seen past what rounding hides.
    static constexpr double hidden_by_rounding = 1e-6;  // at 1e9, generously
    static constexpr double diagonal = 1.42;
    static_assert(2 * diagonal * (largest_drift + hidden_by_rounding) < nodes_are_one_place);
    // Two points of neighbouring places.
    static_assert(least_step - 2 * (largest_drift + hidden_by_rounding) > nodes_are_one_place);

    double m_origin;
    double m_step;
};

}  // namespace nmk_search

// lattice.h: the places that a generator of the plane reaches from a start, by column and row.
//
// The coordinates of a place are sums of steps, and the ways to it differ in how they round. While
// every point stands close to its place, column and row answer what comparing points within the
// tolerance would: two points of one place are within it, and of two places they are not.
#pragma once

#include <geometry/giPoint2.h>

#include <cmath>
#include <cstdint>

#include "search/plane_nodes.h"

namespace nmk_search {

struct LatticeCell {
    std::int32_t column;
    std::int32_t row;
};

/// The columns or the rows.
class LatticeAxis {
  public:
    LatticeAxis(double origin, double step) : m_origin(origin), m_step(step) {}

    /// Whether its lines are far enough apart, and near enough to zero for sums to be told.
    bool is_usable() const { return has_on_line(0, m_origin) && std::abs(m_step) >= min_step; }

    /// Whether `coordinate` is close to a line. False for one that is no number.
    bool has_on_line(std::int32_t line, double coordinate) const {
        if (line > max_line || line < -max_line) return false;
        const double drift = std::abs(coordinate - (m_origin + line * m_step));
        return drift <= max_drift && std::abs(coordinate) <= max_coordinate;
    }

    /// The coordinate that a step forwards, backwards or none leads to.
    double next(double coordinate, int direction) const {
        if (direction == 0) return coordinate;
        return direction > 0 ? coordinate + m_step : coordinate - m_step;
    }

  private:
    static constexpr double max_coordinate = 1e9;
    static constexpr double max_drift = 0.2 * node_tolerance;
    static constexpr double min_step = 10.0 * node_tolerance;
    static constexpr std::int32_t max_line = 1 << 30;

    // Two points of one place: each has drifted in x and in y, seen past what rounding hides.
    static constexpr double hidden_by_rounding = 1e-6;  // at 1e9, generously
    static constexpr double diagonal = 1.42;
    static_assert(2 * diagonal * (max_drift + hidden_by_rounding) < node_tolerance);
    // Two points of neighbouring places.
    static_assert(min_step - 2 * (max_drift + hidden_by_rounding) > node_tolerance);

    double m_origin;
    double m_step;
};

}  // namespace nmk_search

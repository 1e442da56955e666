// lattice.h: the lines of a lattice, and the cells at which its columns and rows cross.
//
// The coordinates of a node are sums of steps, and different sums for one cell round differently.
// While every point is close to its cell, comparing columns and rows gives the same results as
// comparing points within the tolerance: two points of one cell are within it, and two points of
// different cells are not.
#pragma once

#include <nmktoolbox/search/nmkLatticeRoute.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <span>

#include "search/plane_nodes.h"

namespace nmk_search {

using LatticeCell = nmkLatticeCell;

/// Lines are numbered up to this, to either side of the origin.
constexpr std::int32_t max_line = 1 << 30;

/// A column or row.
struct Line {
    std::int32_t number;
    double coordinate;
};

/// The columns or rows of the neighbours of a cell, and its own.
class Lines {
  public:
    const Line* begin() const { return m_lines.data(); }
    const Line* end() const { return m_lines.data() + m_count; }
    std::size_t count() const { return m_count; }
    void add(Line line) { m_lines[m_count++] = line; }

  private:
    std::array<Line, 3> m_lines;
    std::size_t m_count = 0;
};

/// Columns or rows whose coordinates are added up step by step, as those of nodes are.
class SummedAxis {
  public:
    SummedAxis(double origin, double step) : m_origin(origin), m_step(step) {}

    /// Whether its lines are far enough apart, and near enough to zero, for sums to distinguish
    /// them.
    bool is_usable() const { return has_on_line(0, m_origin) && std::abs(m_step) >= min_step; }

    /// Whether `coordinate` is close to the line. False for NaN.
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

    /// Adds the lines in these directions to `lines`. False when one of them has drifted away.
    bool add_neighbours(Line from, std::span<const int> directions, Lines& lines) const {
        for (const int direction : directions) {
            const Line line{from.number + direction, next(from.coordinate, direction)};
            if (!has_on_line(line.number, line.coordinate)) return false;
            lines.add(line);
        }
        return true;
    }

  private:
    static constexpr double max_coordinate = 1e9;
    static constexpr double max_drift = 0.2 * node_tolerance;
    static constexpr double min_step = 10.0 * node_tolerance;

    // Two points of one cell: each has drifted in x and in y, by a little more than can be
    // measured.
    static constexpr double hidden_by_rounding = 1e-6;  // at 1e9, generously
    static constexpr double diagonal = 1.42;
    static_assert(2 * diagonal * (max_drift + hidden_by_rounding) < node_tolerance);
    // Two points of neighbouring cells.
    static_assert(min_step - 2 * (max_drift + hidden_by_rounding) > node_tolerance);

    double m_origin;
    double m_step;
};

/// Columns or rows whose coordinates are computed from their numbers.
class NumberedAxis {
  public:
    NumberedAxis(double origin, double step) : m_origin(origin), m_step(step) {}

    double coordinate(std::int32_t line) const { return m_origin + line * m_step; }

    /// Adds the lines in these directions to `lines`, except those beyond max_line. Returns true.
    bool add_neighbours(Line from, std::span<const int> directions, Lines& lines) const {
        for (const int direction : directions) {
            const std::int64_t line = std::int64_t{from.number} + direction;
            if (line > max_line || line < -max_line) continue;
            const auto number = static_cast<std::int32_t>(line);
            lines.add({number, coordinate(number)});
        }
        return true;
    }

  private:
    double m_origin;
    double m_step;
};

}  // namespace nmk_search

// route_plane: the lattice that a route is searched on, and which of its cells are blocked.

#include "formats/lattice/route_plane.h"

#include <cmath>

namespace nmk_lattice {

namespace {

// A step of 30 binary digits times a count of 22 stays within the 53 of a double.
constexpr int step_digits = 30;

double rounded_step(double step) {
    int exponent = 0;
    const double fraction = std::frexp(step, &exponent);
    return std::ldexp(std::nearbyint(std::ldexp(fraction, step_digits)), exponent - step_digits);
}

}  // namespace

RoutePlane::RoutePlane(giPoint2 anchor, GridCell anchor_cell, giPoint2 steps, int columns, int rows)
    : m_anchor(anchor),
      m_anchor_cell(anchor_cell),
      m_steps(steps),
      m_search_steps(rounded_step(steps.x), rounded_step(steps.y)),
      m_columns(columns),
      m_rows(rows),
      m_blocked(static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows)) {}

bool RoutePlane::contains(GridCell cell) const {
    return cell.column >= 0 && cell.column < m_columns && cell.row >= 0 && cell.row < m_rows;
}

void RoutePlane::block(GridCell cell) {
    std::uint8_t& blocked = m_blocked[index(cell)];
    m_blocked_count += blocked == 0 ? 1U : 0U;
    blocked = 1;
}

giPoint2 RoutePlane::at(GridCell cell) const {
    return {m_anchor.x + (cell.column - m_anchor_cell.column) * m_steps.x,
            m_anchor.y + (cell.row - m_anchor_cell.row) * m_steps.y};
}

giPoint2 RoutePlane::nearest_point(const giPoint2& point) const {
    return {m_anchor.x + std::nearbyint((point.x - m_anchor.x) / m_steps.x) * m_steps.x,
            m_anchor.y + std::nearbyint((point.y - m_anchor.y) / m_steps.y) * m_steps.y};
}

std::optional<GridCell> RoutePlane::cell_at(const giPoint2& point) const {
    const double column = std::nearbyint((point.x - m_anchor.x) / m_steps.x);
    const double row = std::nearbyint((point.y - m_anchor.y) / m_steps.y);
    constexpr double far = 1e9;  // no lattice has such a cell, and an int can hold it
    if (!(std::abs(column) < far && std::abs(row) < far)) {
        return std::nullopt;
    }
    const GridCell cell{static_cast<int>(column) + m_anchor_cell.column,
                        static_cast<int>(row) + m_anchor_cell.row};
    if (!contains(cell) || at(cell).coincident(point, min_step) == 0) {
        return std::nullopt;
    }
    return cell;
}

giPoint2 RoutePlane::search_point(const giPoint2& point) const {
    const auto coordinate = [](double offset, double step, int anchor, double search_step) {
        const double count = offset / step;
        const double whole = std::nearbyint(count);
        const bool is_on_lattice = std::abs(whole - count) * step <= min_step;
        return ((is_on_lattice ? whole : count) + anchor) * search_step;
    };
    return {coordinate(point.x - m_anchor.x, m_steps.x, m_anchor_cell.column, m_search_steps.x),
            coordinate(point.y - m_anchor.y, m_steps.y, m_anchor_cell.row, m_search_steps.y)};
}

}  // namespace nmk_lattice

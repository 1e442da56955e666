// route_plane.h: the lattice that a route is searched on, and which of its cells are blocked.
//
// Cells are counted by column and row from one corner of the lattice. The search uses coordinates
// of its own: the column times a step and the row times a step, with steps of so few binary digits
// that no product is ever rounded. So a goal on the lattice is met exactly, which an arrival needs,
// also with steps such as 0.1. The steps differ from the true ones by less than one part in 10^9.
#pragma once

#include <geometry/giPoint2.h>
#include <nmktoolbox/search/nmkLatticeRoute.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace nmk_lattice {

/// The largest lattice that is searched, 2048 by 2048.
constexpr std::size_t max_cells = std::size_t{1} << 22U;

/// The largest size of a coordinate of a lattice: cells must differ from their neighbours.
constexpr double max_route_coordinate = 1e6;

/// Points no further apart than this are taken as one cell, so steps must be larger.
constexpr double min_step = 1e-5;

using GridCell = nmkLatticeCell;

class RoutePlane {
  public:
    /// A lattice without blocked cells, with the cell `anchor_cell` at the point `anchor`. The
    /// steps are above min_step, columns times rows at most max_cells.
    RoutePlane(giPoint2 anchor, GridCell anchor_cell, giPoint2 steps, int columns, int rows);

    int columns() const { return m_columns; }
    int rows() const { return m_rows; }
    giPoint2 steps() const { return m_steps; }

    /// The steps of the search, rounded to 30 binary digits.
    giPoint2 search_steps() const { return m_search_steps; }

    /// The lattice of the search: the same cells, with column and row 0 at the point (0, 0).
    nmkLattice search_lattice(bool forward_only) const {
        return {{0.0, 0.0}, m_search_steps, forward_only};
    }

    bool contains(GridCell cell) const;
    bool is_blocked(GridCell cell) const { return m_blocked[index(cell)] != 0; }
    void block(GridCell cell);
    std::size_t blocked_count() const { return m_blocked_count; }
    std::size_t cell_count() const { return m_blocked.size(); }

    /// The point of the cell.
    giPoint2 at(GridCell cell) const;

    /// The cell at the point, within 1e-5; empty where the point is off the lattice.
    std::optional<GridCell> cell_at(const giPoint2& point) const;

    /// The point of the lattice, continued past its edges, that is nearest to the point.
    giPoint2 nearest_point(const giPoint2& point) const;

    /// The point in the coordinates of the search. Points of the lattice are met exactly.
    giPoint2 search_point(const giPoint2& point) const;

    bool is_map = false;  // rows are counted downwards, as in the file

  private:
    std::size_t index(GridCell cell) const {
        return static_cast<std::size_t>(cell.row) * static_cast<std::size_t>(m_columns) +
               static_cast<std::size_t>(cell.column);
    }

    giPoint2 m_anchor;
    GridCell m_anchor_cell;
    giPoint2 m_steps;
    giPoint2 m_search_steps;
    int m_columns;
    int m_rows;
    std::vector<std::uint8_t> m_blocked;  // row by row
    std::size_t m_blocked_count = 0;
};

}  // namespace nmk_lattice

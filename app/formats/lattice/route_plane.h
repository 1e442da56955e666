// route_plane.h: the lattice on which a route is searched, with its blocked cells.
//
// A cell is addressed by its column and row from one corner of the lattice; its point is the middle
// of the cell. The search has coordinates of its own: column and row times steps that are rounded
// to so few binary digits that no product or sum is ever rounded. So every path to a cell ends at
// exactly the same coordinates, also with steps such as 0.1, and the search, which needs equality
// to the last bit, recognises the goal. The rounded steps differ from the true ones by less than a
// part in 1e9.
#pragma once

#include <geometry/giPoint2.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace nmk_lattice {

/// The largest lattice that is searched, 2048 by 2048.
constexpr std::size_t max_cells = std::size_t{1} << 22U;

/// The largest absolute value of a coordinate of a lattice; cells remain distinct up to it.
constexpr double max_route_coordinate = 1e6;

/// Points no further apart than this are one cell for the search, so steps must be larger.
constexpr double min_step = 1e-5;

struct GridCell {
    int column = 0;
    int row = 0;

    bool operator==(const GridCell&) const = default;
};

class RoutePlane {
  public:
    /// A lattice without blocked cells; `anchor` is the point of `anchor_cell`. The steps are above
    /// min_step, columns times rows at most max_cells.
    RoutePlane(giPoint2 anchor, GridCell anchor_cell, giPoint2 steps, int columns, int rows);

    int columns() const { return m_columns; }
    int rows() const { return m_rows; }
    giPoint2 steps() const { return m_steps; }

    /// The steps of the search, rounded to 30 binary digits.
    giPoint2 search_steps() const { return m_search_steps; }

    bool contains(GridCell cell) const;
    bool is_blocked(GridCell cell) const { return m_blocked[index(cell)] != 0; }
    void block(GridCell cell);
    std::size_t blocked_count() const { return m_blocked_count; }
    std::size_t cell_count() const { return m_blocked.size(); }

    /// The point of the cell.
    giPoint2 at(GridCell cell) const;

    /// The cell at the point, to 1e-5; empty if the point is off the lattice.
    std::optional<GridCell> cell_at(const giPoint2& point) const;

    /// The nearest point of the lattice, continued past its edges.
    giPoint2 nearest_point(const giPoint2& point) const;

    /// The point in the coordinates of the search; exact for the points of the lattice.
    giPoint2 search_point(const giPoint2& point) const;
    giPoint2 search_point(GridCell cell) const;

    /// The cell at these coordinates of the search.
    GridCell searched_cell(const giPoint2& search_point) const;

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

// route_plane.h: the lattice that a route is searched on, and which of its places are blocked.
//
// A place is counted by its column and row from one corner of the lattice. The search walks
// coordinates of its own: the column times a step and the row times a step, with steps that have so
// few digits that no product or sum is ever rounded. So every way to a place arrives at the same
// coordinates exactly, also with steps such as 0.1, and an arrival, which needs equality to the
// last bit, is found. They differ from the true steps by less than a part in a thousand million.
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

/// The largest size of a coordinate of a lattice: a place must be told from its neighbours.
constexpr double max_route_coordinate = 1e6;

/// Places no further apart than this are one place for the search, so steps must be larger.
constexpr double min_step = 1e-5;

using GridCell = nmkLatticeCell;

class RoutePlane {
  public:
    /// A lattice without blocked places, through `anchor`, which stands at `anchor_place`. The
    /// steps are above smallest_step, columns times rows at most most_places.
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

    bool contains(GridCell place) const;
    bool is_blocked(GridCell place) const { return m_blocked[index(place)] != 0; }
    void block(GridCell place);
    std::size_t blocked_count() const { return m_blocked_count; }
    std::size_t cell_count() const { return m_blocked.size(); }

    /// Where the place stands.
    giPoint2 at(GridCell place) const;

    /// The place that stands at the point, to 1e-5; none where the point is off the lattice.
    std::optional<GridCell> cell_at(const giPoint2& point) const;

    /// The place of the lattice, which may be carried on past its edges, nearest to the point.
    giPoint2 nearest_point(const giPoint2& point) const;

    /// The point in the coordinates of the search. Places of the lattice are met exactly.
    giPoint2 search_point(const giPoint2& point) const;

    bool is_map = false;  // rows are counted downwards, as they stand in the file

  private:
    std::size_t index(GridCell place) const {
        return static_cast<std::size_t>(place.row) * static_cast<std::size_t>(m_columns) +
               static_cast<std::size_t>(place.column);
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

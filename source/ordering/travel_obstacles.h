// travel_obstacles.h: the polygons of all keep-outs, in the unit of a network.
//
// A square lattice over all of them counts the polygons near each cell, summed from the lower left,
// so that four numbers show whether any is near a leg. Most legs are straight by that alone; the
// others are compared with the polygons whose boxes they may meet, which a tree finds.
#pragma once

#include <nmktoolbox/ordering/nmkTravelKeepOut.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "travel_box_tree.h"
#include "travel_polygon.h"

namespace nmk_ordering {

/// The corners of a part of a keep-out, divided by `unit`.
std::vector<PlanePoint> plane_corners(const std::vector<giPoint2>& part, double unit);

/// A cell of the lattice over all polygons. Places to the left of them all are in column 0, places
/// to the right in the last one, and likewise the rows.
struct PlaneCell {
    std::int16_t column = 0;
    std::int16_t row = 0;
};

class TravelObstacles {
  public:
    /// `keep_outs` have no fault.
    TravelObstacles(const std::vector<nmkTravelKeepOut>& keep_outs, double unit);
    /// Each polygon is a keep-out.
    explicit TravelObstacles(std::vector<TravelPolygon> polygons);

    const std::vector<TravelPolygon>& polygons() const { return m_polygons; }
    /// Of the boxes of the polygons.
    const TravelBoxTree& tree() const { return m_tree; }
    /// Of all polygons.
    const PlaneBox& box() const { return m_box; }

    /// Number of the first keep-out with the place inside.
    std::optional<int> keep_out_at(const PlanePoint& p) const;
    /// Number of the first keep-out that the line crosses.
    std::optional<int> keep_out_between(const PlanePoint& a, const PlanePoint& b) const;
    /// Whether none crosses the line.
    bool is_free(const PlanePoint& a, const PlanePoint& b) const {
        return !is_any_near(a, b) || !is_any_between(a, b);
    }
    /// False where the line crosses none for certain, in a time that does not depend on them.
    bool is_any_near(const PlanePoint& a, const PlanePoint& b) const {
        return is_any_near(cell_of(a), cell_of(b));
    }
    /// The same for a line whose ends are in these cells, for callers that keep them.
    bool is_any_near(const PlaneCell& a, const PlaneCell& b) const {
        const auto [left, right] = std::minmax(a.column, b.column);
        const auto [lower, upper] = std::minmax(a.row, b.row);
        return count_at(right + 1, upper + 1) - count_at(left, upper + 1) !=
               count_at(right + 1, lower) - count_at(left, lower);
    }
    PlaneCell cell_of(const PlanePoint& p) const {
        return {cell(p.x, m_box.low.x, m_box.high.x, m_cell.x),
                cell(p.y, m_box.low.y, m_box.high.y, m_cell.y)};
    }
    /// The sum of all edges in x and in y.
    PlanePoint perimeter() const;

  private:
    static constexpr int cells = 128;  // along each side of the polygons, and one beside each end
    static constexpr int sums = cells + 3;  // along each side of the table, whose first are 0
    static_assert((cells + 2) * (cells + 2) <= UINT16_MAX);

    template <class Holds>
    std::optional<int> first_keep_out(const PlanePoint& a, const PlanePoint& b,
                                      const Holds& holds) const;
    bool is_any_between(const PlanePoint& a, const PlanePoint& b) const;
    void prepare();
    void count_near();
    void add_near(const PlaneBox& box);
    static std::int16_t cell(double value, double low, double high, double width);
    static std::size_t index(int column, int row) {
        return static_cast<std::size_t>(row) * sums + static_cast<std::size_t>(column);
    }
    std::uint16_t& count_at(int column, int row) { return m_counts[index(column, row)]; }
    int count_at(int column, int row) const { return m_counts[index(column, row)]; }

    std::vector<TravelPolygon> m_polygons;
    std::vector<int> m_keep_outs;  // by polygon, ascending
    TravelBoxTree m_tree;
    PlaneBox m_box;
    PlanePoint m_cell;  // width and height
    // By column and row: cells with a polygon to the lower left. Small numbers, so that the table
    // stays in the nearest cache.
    std::vector<std::uint16_t> m_counts;
};

}  // namespace nmk_ordering

// point_index.h: which of many points of the plane is within the tolerance of a given point.
//
// Points are hashed by the cell of a fine grid that they lie in. A look-up visits the grid cells
// that the circle of the tolerance can touch and compares the points in them. The number of a grid
// cell is a double: multiplying, adding and rounding down keep the order of doubles, so no point
// within the tolerance is missed, however large the coordinates are. A point with a coordinate that
// is not finite is near no other.
#pragma once

#include <geometry/giPoint2.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace nmk_search {

class PointIndex {
  public:
    static constexpr std::uint32_t none = UINT32_MAX;

    /// Adds `point` with a `position`, by which first_at chooses.
    void add(const giPoint2& point, std::uint32_t position);

    /// Whether any point is within the tolerance of `point`.
    bool contains(const giPoint2& point) const;

    /// The least position of a point within the tolerance of `point`, or none.
    std::uint32_t first_at(const giPoint2& point) const;

  private:
    struct Entry {
        giPoint2 point;
        std::uint32_t position;
        std::uint32_t next;  // of the same chain, or none
    };

    std::size_t chain_of(double cell_x, double cell_y) const;
    void link(std::uint32_t number);
    void grow();
    template <class Visit>
    void visit_near(const giPoint2& point, const Visit& visit) const;
    template <class Visit>
    bool visit_chain(std::size_t chain, const giPoint2& point, const Visit& visit) const;

    std::vector<Entry> m_entries;
    std::vector<std::uint32_t> m_chains;  // a power of two of them: the last entry of each, or none
};

}  // namespace nmk_search

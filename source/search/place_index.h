// place_index.h: which of many points of the plane is within the tolerance of a point, without
// asking each of them.
//
// Points are filed under the cell of a grid that they lie in. A look-up walks the cells that the
// circle of the tolerance can touch and compares the points in them. The number of a cell is a
// double: multiplying, adding and rounding down keep the order of doubles, so no point within the
// tolerance is missed, however large the coordinates are. A point with a coordinate that is not
// finite is near nothing.
#pragma once

#include <geometry/giPoint2.h>

#include <cstddef>
#include <cstdint>
#include <vector>

#include "search/tiling.h"

namespace nmk_search {

class Place_index {
  public:
    static constexpr std::uint32_t none = UINT32_MAX;

    /// Files `position`, which is not less than any before, under `point`.
    void add(const giPoint2& point, std::uint32_t position);

    /// The least position whose point is one place with `point`, or none.
    std::uint32_t first_at(const giPoint2& point) const;

    /// Fetches what first_at will look at. Several look-ups then wait for memory together.
    void prefetch(const giPoint2& point) const;

  private:
    // Small, so that the slots of neighbours share a cache line. The rest of the hash spares most
    // looks at points that are elsewhere.
    struct Slot {
        std::uint32_t rest_of_hash = 0;
        std::uint32_t number = none;
    };

    std::uint64_t hash_of(const giPoint2& point) const;
    std::size_t home_of(std::uint64_t hash) const { return hash & (m_slots.size() - 1); }
    std::size_t next_after(std::size_t slot, std::size_t turn) const;
    std::size_t put(std::uint32_t number);
    void refile(std::size_t slots);
    Tiling tiling_of_points() const;
    std::uint32_t first_in_cell(double cell_x, double cell_y, const giPoint2& point) const;

    std::vector<giPoint2> m_points;  // in the order of filing
    std::vector<std::uint32_t> m_positions;
    std::vector<Slot> m_slots;  // a power of two of them, at most half in use
    Tiling m_tiling;
    bool m_may_learn = true;  // the lattice is still to be found out
};

}  // namespace nmk_search

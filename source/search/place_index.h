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

    /// A point to be looked up, and where to begin.
    struct Sought {
        giPoint2 point;
        std::uint64_t hash = 0;            // of the cell of the point
        std::uint32_t filing = 0;          // the one that the hash belongs to
        bool is_well_inside_cell = false;  // its circle touches no other
    };

    Place_index();

    /// Files `position`, which is not less than any before, under `point`.
    void add(const giPoint2& point, std::uint32_t position);

    /// Prepares a look-up and fetches what it will look at. Several look-ups that are prepared
    /// together wait for memory together. Points may be added before the look-up.
    Sought seek(const giPoint2& point) const;

    /// Whether any point is one place with `sought`.
    bool contains(const Sought& sought) const { return find<true>(sought) != none; }

    /// The least position whose point is one place with `sought`, or none.
    std::uint32_t first_at(const Sought& sought) const { return find<false>(sought); }

  private:
    // The point stands in the slot, so that a look-up touches one place in memory. The rest of the
    // hash spares most comparisons with points that are elsewhere.
    struct Slot {
        giPoint2 point{0.0, 0.0};
        std::uint32_t rest_of_hash = 0;
        std::uint32_t position = none;
    };

    std::size_t home_of(std::uint64_t hash) const { return hash & (m_slots.size() - 1); }
    std::size_t next_after(std::size_t slot, std::size_t turn) const;
    std::size_t put(const giPoint2& point, std::uint32_t position);
    void refile(std::size_t slots, const Tiling& tiling);
    Tiling tiling_of_points() const;
    template <bool any_will_do>
    std::uint32_t find(const Sought& sought) const;
    template <bool any_will_do>
    std::uint32_t find_around(const giPoint2& point) const;
    template <bool any_will_do>
    std::uint32_t find_in_cell(std::uint64_t hash, const giPoint2& point) const;

    std::vector<Slot> m_slots;  // a power of two of them, at most half in use
    std::size_t m_in_use = 0;
    Tiling m_tiling;
    std::uint32_t m_filing = 0;  // goes up when all points are filed anew
    bool m_may_learn = true;     // the lattice is still to be found out
};

}  // namespace nmk_search

// place_index.h: which of many points of the plane lie within the tolerance of a point, without
// asking each of them.
//
// Points are filed under the cell of a grid that they lie in, in a table of hashes and positions;
// the points themselves stay with their owner. A look-up walks the cells that the circle of the
// tolerance can touch and lets the owner compare. The number of a cell is a double: dividing,
// adding and rounding down keep the order of doubles, so no point within the tolerance is missed,
// however large the coordinates are. A point with a coordinate that is not finite is near nothing.
#pragma once

#include <geometry/giPoint2.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace nmk_search {

class Place_index {
  public:
    static constexpr std::uint32_t none = UINT32_MAX;

    /// Files `position` under `point`.
    void add(const giPoint2& point, std::uint32_t position);

    /// The least position that `is_match` answers true for, or none. It is asked for every position
    /// filed within the tolerance of `point`, and for some others.
    template <class Is_match>
    std::uint32_t first_match(const giPoint2& point, Is_match is_match) const;

  private:
    struct Slot {
        std::uint32_t hash = 0;
        std::uint32_t position = none;
    };

    /// The numbers of the cells in which a coordinate's neighbours can lie.
    struct Cells {
        double first;
        double last;
    };

    static bool is_finite(const giPoint2& point) {
        return std::isfinite(point.x) && std::isfinite(point.y);
    }
    static double cell_of(double coordinate);
    static Cells cells_near(double coordinate);
    static std::uint32_t hash_of(double cell_x, double cell_y);
    void put(Slot slot);
    void grow();

    template <class Is_match>
    std::uint32_t first_in_cell(double cell_x, double cell_y, Is_match& is_match) const;

    std::vector<Slot> m_slots;  // a power of two of them, at most half in use
    std::size_t m_used = 0;
};

// Wide beside the tolerance, so that most circles touch one cell. Rounding to the nearest puts the
// lattices that people use in the middle of their cells.
inline double Place_index::cell_of(double coordinate) {
    constexpr double cell_width = 1e-4;
    return std::floor(coordinate / cell_width + 0.5) + 0.0;  // one zero, not two
}

inline Place_index::Cells Place_index::cells_near(double coordinate) {
    constexpr double reach = 2e-5;  // twice the tolerance: a rounded distance may be a little short
    return {cell_of(coordinate - reach), cell_of(coordinate + reach)};
}

template <class Is_match>
std::uint32_t Place_index::first_match(const giPoint2& point, Is_match is_match) const {
    if (m_used == 0 || !is_finite(point)) return none;
    const Cells x = cells_near(point.x);
    const Cells y = cells_near(point.y);
    std::uint32_t first = none;
    // Where adding 1 no longer changes the number of a cell, first and last are the same.
    for (double cell_x = x.first;; cell_x += 1.0) {
        for (double cell_y = y.first;; cell_y += 1.0) {
            const std::uint32_t found = first_in_cell(cell_x, cell_y, is_match);
            if (found < first) first = found;
            if (!(cell_y < y.last)) break;
        }
        if (!(cell_x < x.last)) break;
    }
    return first;
}

template <class Is_match>
std::uint32_t Place_index::first_in_cell(double cell_x, double cell_y, Is_match& is_match) const {
    const std::uint32_t hash = hash_of(cell_x, cell_y);
    const std::size_t mask = m_slots.size() - 1;
    std::uint32_t first = none;
    for (std::size_t at = hash & mask; m_slots[at].position != none; at = (at + 1) & mask) {
        const Slot& slot = m_slots[at];
        if (slot.hash == hash && slot.position < first && is_match(slot.position)) {
            first = slot.position;
        }
    }
    return first;
}

}  // namespace nmk_search

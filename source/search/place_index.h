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

namespace nmk_search {

class Place_index {
  public:
    static constexpr std::uint32_t none = UINT32_MAX;

    /// Files `position` under `point`.
    void add(const giPoint2& point, std::uint32_t position);

    /// The least position whose point is one place with `point`, or none.
    std::uint32_t first_at(const giPoint2& point) const;

  private:
    // The point stands in the slot: a look-up is to touch as little memory as it can.
    struct Slot {
        giPoint2 point{0.0, 0.0};
        std::uint32_t position = none;
    };

    void put(const Slot& slot);
    void grow();
    std::uint32_t first_in_cell(double cell_x, double cell_y, const giPoint2& point) const;

    std::vector<Slot> m_slots;  // a power of two of them, at most half in use
    std::size_t m_used = 0;
};

}  // namespace nmk_search

// point_index.h: which of many points of the plane is within the tolerance of a point, without
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

class PointIndex {
  public:
    static constexpr std::uint32_t none = UINT32_MAX;

    /// Files `position` under `point`.
    void add(const giPoint2& point, std::uint32_t position);

    /// Whether any point is one place with `point`.
    bool contains(const giPoint2& point) const;

    /// The least position whose point is one place with `point`, or none.
    std::uint32_t first_at(const giPoint2& point) const;

  private:
    struct Entry {
        giPoint2 point;
        std::uint32_t position;
        std::uint32_t next;  // of the same chain, or none
    };

    std::size_t chain_of(double cell_x, double cell_y) const;
    void file(std::uint32_t filed);
    void grow();
    template <class See>
    void visit_near(const giPoint2& point, const See& see) const;
    template <class See>
    bool visit_chain(std::size_t chain, const giPoint2& point, const See& see) const;

    std::vector<Entry> m_entries;
    std::vector<std::uint32_t> m_chains;  // a power of two of them: the last filed of each, or none
};

}  // namespace nmk_search

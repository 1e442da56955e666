// tiling.h: where in a table of slots a cell of the plane belongs, so that cells which stand beside
// each other on a lattice mostly stand beside each other in memory.
//
// The lattice is cut into tiles of 4 by 4 places. The slots of a tile are side by side; which slots
// they are is a matter of hashing. Any widths of the lattice give a table that works, the true ones
// one that is fast.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace nmk_search {

/// std::floor, which not every processor that we run on has as an instruction; one zero, not two.
inline double floor_of(double value) {
    constexpr double whole_from_here = 4503599627370496.0;  // 2 to the 52
    if (!(std::abs(value) < whole_from_here)) return value;
    const auto whole = static_cast<double>(static_cast<std::int64_t>(value));
    return whole > value ? whole - 1.0 : whole;
}

class Tiling {
  public:
    static constexpr std::size_t slots_in_tile = 16;

    /// Every cell a place of the lattice.
    Tiling() = default;

    /// The lattice whose widths are the least gaps between the numbers of the cells.
    Tiling(std::vector<double> cells_x, std::vector<double> cells_y);

    bool is_of_cells() const { return m_columns_in_cell == 1.0 && m_rows_in_cell == 1.0; }

    /// Tile and slot in it: the last 4 bits tell the places of a tile apart, and so do 4 bits of
    /// the upper half.
    std::uint64_t hash_of(double cell_x, double cell_y) const;

  private:
    double m_columns_in_cell = 1.0;
    double m_rows_in_cell = 1.0;
};

}  // namespace nmk_search

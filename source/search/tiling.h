// tiling.h: where in a table of slots a cell of the plane belongs, so that cells which stand beside
// each other on a lattice mostly stand beside each other in memory.
//
// The lattice is cut into tiles of 4 by 4 places. The slots of a tile are side by side; which slots
// they are is a matter of hashing. Any widths of the lattice give a table that works, the true ones
// one that is fast.
#pragma once

#include <bit>
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

/// A column or row of the lattice: its tile, and its place from 0 to 3 in it.
struct Line {
    std::uint64_t tile;
    std::uint64_t place;
};

inline Line line_of(double cell, double lines_in_cell) {
    constexpr double few_enough_to_count = 1e15;
    const double along = cell * lines_in_cell + 0.5;
    if (!(std::abs(along) < few_enough_to_count)) return {std::bit_cast<std::uint64_t>(along), 0};
    const auto towards_zero = static_cast<std::int64_t>(along);
    const std::int64_t number = towards_zero - (static_cast<double>(towards_zero) > along ? 1 : 0);
    return {static_cast<std::uint64_t>(number >> 2), static_cast<std::uint64_t>(number & 3)};
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

inline std::uint64_t Tiling::hash_of(double cell_x, double cell_y) const {
    const Line column = line_of(cell_x, m_columns_in_cell);
    const Line row = line_of(cell_y, m_rows_in_cell);
    std::uint64_t mixed = (column.tile + 1) * 0x9e3779b97f4a7c15u;
    mixed = (mixed ^ (mixed >> 32) ^ row.tile) * 0xd6e8feb86659fd93u;
    mixed ^= mixed >> 32;
    mixed *= 0x9e3779b97f4a7c15u;
    mixed ^= mixed >> 29;
    // The places are shuffled too: on a lattice that is wider than was thought, all would be equal.
    const std::uint64_t place = column.place * 4 + row.place;
    return mixed ^ place ^ (place << 32);
}

}  // namespace nmk_search

#include "search/tiling.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace nmk_search {

namespace {

/// A column or row of the lattice: its tile, and its place from 0 to 3 in it.
struct Line {
    std::uint64_t tile;
    std::uint64_t place;
};

Line line_of(double cell, double lines_in_cell) {
    constexpr double few_enough_to_count = 1e15;
    const double line = floor_of(cell * lines_in_cell + 0.5);
    if (!(std::abs(line) < few_enough_to_count)) return {std::bit_cast<std::uint64_t>(line), 0};
    const auto number = static_cast<std::int64_t>(line);
    return {static_cast<std::uint64_t>(number >> 2), static_cast<std::uint64_t>(number & 3)};
}

// One over the least gap between two of the numbers; 1 when there is none.
double lines_in_cell(std::vector<double> cells) {
    double least = 0.0;
    std::sort(cells.begin(), cells.end());
    for (std::size_t i = 1; i < cells.size(); ++i) {
        const double gap = cells[i] - cells[i - 1];
        if (gap > 0.0 && (least == 0.0 || gap < least)) least = gap;
    }
    return least > 0.0 && std::isfinite(least) ? 1.0 / least : 1.0;
}

}  // namespace

Tiling::Tiling(std::vector<double> cells_x, std::vector<double> cells_y)
    : m_columns_in_cell(lines_in_cell(std::move(cells_x))),
      m_rows_in_cell(lines_in_cell(std::move(cells_y))) {}

std::uint64_t Tiling::hash_of(double cell_x, double cell_y) const {
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

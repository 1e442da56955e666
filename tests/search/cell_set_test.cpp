// The set of cells, beside an ordered set of the standard library.
#include "search/cell_set.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <set>
#include <utility>

namespace {

using nmk_search::CellSet;
using nmk_search::LatticeCell;

// Within `spread` of a corner, to either side.
LatticeCell draw_cell(std::mt19937& random, LatticeCell corner, int spread) {
    std::uniform_int_distribution<std::int32_t> off(-spread, spread);
    const std::int32_t column = corner.column + off(random);
    return {column, corner.row + off(random)};
}

TEST(CellSet, holds_what_was_added_and_nothing_else) {
    const unsigned seed = 88;
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    constexpr std::int32_t far = 1 << 30;
    for (const LatticeCell corner :
         {LatticeCell{0, 0}, {far, far}, {-far, far}, {far, -far}, {-far, -far}, {5, -4000}}) {
        for (const int spread : {3, 20, 2000, 1 << 20}) {
            CellSet cells;
            std::set<std::pair<std::int32_t, std::int32_t>> expected;
            for (int i = 0; i < 1000; ++i) {
                const LatticeCell added = draw_cell(random, corner, spread);
                cells.add(added);
                expected.emplace(added.column, added.row);
                const LatticeCell asked = draw_cell(random, corner, spread);
                ASSERT_EQ(cells.contains(asked), expected.contains({asked.column, asked.row}))
                    << asked.column << ',' << asked.row;
                ASSERT_TRUE(cells.contains(added)) << added.column << ',' << added.row;
            }
            for (const auto& [column, row] : expected) ASSERT_TRUE(cells.contains({column, row}));
        }
    }
}

TEST(CellSet, distinguishes_the_cells_of_a_tile_and_of_its_neighbours) {
    for (std::int32_t column = -9; column <= 9; ++column) {
        for (std::int32_t row = -9; row <= 9; ++row) {
            CellSet cells;
            cells.add({column, row});
            for (std::int32_t other_column = -17; other_column <= 17; ++other_column) {
                for (std::int32_t other_row = -17; other_row <= 17; ++other_row) {
                    const bool same = other_column == column && other_row == row;
                    ASSERT_EQ(cells.contains({other_column, other_row}), same);
                }
            }
        }
    }
}

}  // namespace

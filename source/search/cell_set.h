// cell_set.h: a set of cells of a lattice, one bit each.
//
// Cells are kept in tiles of 8 by 8, and only tiles that hold a cell exist: where a search
// closes most of what it comes by, a million cells take half a megabyte.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "search/lattice.h"

namespace nmk_search {

class CellSet {
  public:
    CellSet() : m_tiles(min_slots) {}

    bool contains(LatticeCell cell) const {
        return (m_tiles[slot_of(key_of(cell))].cells & bit_of(cell)) != 0;
    }

    void add(LatticeCell cell);

  private:
    struct Tile {
        std::uint64_t key = 0;
        std::uint64_t cells = 0;  // none: the slot is free
    };

    static constexpr std::size_t min_slots = 16;

    static std::uint64_t key_of(LatticeCell cell) {
        const auto column = static_cast<std::uint32_t>(cell.column >> 3);
        return std::uint64_t{column} << 32 | static_cast<std::uint32_t>(cell.row >> 3);
    }
    static std::uint64_t bit_of(LatticeCell cell) {
        return std::uint64_t{1} << ((cell.column & 7) * 8 + (cell.row & 7));
    }

    // The slot of the tile, or the free one where it would go.
    std::size_t slot_of(std::uint64_t key) const {
        constexpr std::uint64_t odd = 0x9e3779b97f4a7c15u;
        std::uint64_t mixed = (key ^ (key >> 32)) * odd;
        std::size_t slot = (mixed ^ (mixed >> 32)) & (m_tiles.size() - 1);
        while (m_tiles[slot].cells != 0 && m_tiles[slot].key != key) {
            slot = (slot + 1) & (m_tiles.size() - 1);
        }
        return slot;
    }
    void grow();

    std::vector<Tile> m_tiles;  // a power of two of them, at most half in use
    std::size_t m_in_use = 0;
};

}  // namespace nmk_search

// cell_set.h: a set of places of a lattice, one bit each.
//
// Places are kept by tiles of 8 by 8, of which only those that hold a place exist: where a search
// closes most of what it comes by, a million places take half a megabyte.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "search/lattice.h"

namespace nmk_search {

class CellSet {
  public:
    CellSet() : m_tiles(min_slots) {}

    bool contains(LatticeCell place) const {
        return (m_tiles[slot_of(key_of(place))].places & bit_of(place)) != 0;
    }

    void add(LatticeCell place);

  private:
    struct Tile {
        std::uint64_t key = 0;
        std::uint64_t places = 0;  // none: the slot is free
    };

    static constexpr std::size_t min_slots = 16;

    static std::uint64_t key_of(LatticeCell place) {
        const auto column = static_cast<std::uint32_t>(place.column >> 3);
        return std::uint64_t{column} << 32 | static_cast<std::uint32_t>(place.row >> 3);
    }
    static std::uint64_t bit_of(LatticeCell place) {
        return std::uint64_t{1} << ((place.column & 7) * 8 + (place.row & 7));
    }

    // The slot of the tile, or the free one where it would go.
    std::size_t slot_of(std::uint64_t key) const {
        constexpr std::uint64_t odd = 0x9e3779b97f4a7c15u;
        std::uint64_t mixed = (key ^ (key >> 32)) * odd;
        std::size_t slot = (mixed ^ (mixed >> 32)) & (m_tiles.size() - 1);
        while (m_tiles[slot].places != 0 && m_tiles[slot].key != key) {
            slot = (slot + 1) & (m_tiles.size() - 1);
        }
        return slot;
    }
    void grow();

    std::vector<Tile> m_tiles;  // a power of two of them, at most half in use
    std::size_t m_in_use = 0;
};

}  // namespace nmk_search

#include "search/cell_set.h"

#include <utility>

namespace nmk_search {

void CellSet::add(LatticeCell cell) {
    if (2 * (m_in_use + 1) > m_tiles.size()) grow();
    const std::uint64_t key = key_of(cell);
    Tile& tile = m_tiles[slot_of(key)];
    if (tile.cells == 0) ++m_in_use;
    tile.key = key;
    tile.cells |= bit_of(cell);
}

void CellSet::grow() {
    std::vector<Tile> tiles(2 * m_tiles.size());
    std::swap(m_tiles, tiles);
    for (const Tile& tile : tiles) {
        if (tile.cells != 0) m_tiles[slot_of(tile.key)] = tile;
    }
}

}  // namespace nmk_search

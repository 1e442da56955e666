// travel_cell.h: some nodes of a ring as a ring of their own.
//
// Whatever lies between two of the nodes on the ring becomes a fixed edge, and what hangs together
// by fixed edges is one: only its two ends remain, as mates. A ring of the rest that is shorter
// makes the whole ring shorter, with each piece between mates put back, forwards or backwards.
#pragma once

#include <vector>

#include "travel_network.h"

namespace nmk_ordering {

/// Which way an end of a fixed edge that has a direction is travelled.
enum class TravelEndType : char { any, entered, left };

struct TravelCell {
    std::vector<int> nodes;  // of the network, by node of the cell; terminals last
    std::vector<int> mates;  // by node of the cell
    std::vector<TravelEndType> types;
    std::vector<int> order;  // the ring of the cell

    int size() const { return static_cast<int>(nodes.size()); }
};

/// A ring of all nodes and the positions on it.
class TravelTour {
  public:
    TravelTour(const TravelNetwork& network, std::vector<int> ring);

    const std::vector<int>& ring() const { return m_ring; }

    /// The nodes that are marked, as a cell.
    TravelCell cell(const std::vector<bool>& is_marked) const;

    /// Puts the cell back with another order of its ring.
    void replace(const TravelCell& cell, const std::vector<int>& order);

  private:
    struct Piece {
        int first;  // positions on the ring; the piece may go over the end
        int last;
    };

    static std::size_t at(int index) { return static_cast<std::size_t>(index); }
    int size() const { return static_cast<int>(m_ring.size()); }
    int after(int position) const { return position + 1 < size() ? position + 1 : 0; }
    int before(int position) const { return position > 0 ? position - 1 : size() - 1; }

    void set_ring(std::vector<int> ring);
    bool is_fixed_after(int position, int next) const;
    bool has_direction(const Piece& piece) const;
    std::vector<Piece> pieces(const std::vector<int>& marked) const;
    void append(std::vector<int>& ring, int from, int to) const;

    const TravelNetwork& m_network;
    std::vector<int> m_ring;
    std::vector<int> m_positions;
    std::vector<int> m_directed;  // by position: edges with a direction before it; empty for none
};

}  // namespace nmk_ordering

#include "travel_cell.h"

#include <algorithm>
#include <utility>

namespace nmk_ordering {

TravelTour::TravelTour(const TravelNetwork& network, std::vector<int> ring)
    : m_network(network), m_positions(ring.size()) {
    set_ring(std::move(ring));
}

void TravelTour::set_ring(std::vector<int> ring) {
    m_ring = std::move(ring);
    m_network.turn(m_ring);
    for (int position = 0; position < size(); ++position) {
        m_positions[at(m_ring[at(position)])] = position;
    }
    const std::vector<int>& ahead = m_network.ahead();
    if (ahead.empty()) return;
    m_directed.assign(m_ring.size() + 1, 0);
    for (int position = 0; position < size(); ++position) {
        const int directed = ahead[at(m_ring[at(position)])] >= 0 ? 1 : 0;
        m_directed[at(position + 1)] = m_directed[at(position)] + directed;
    }
}

bool TravelTour::is_fixed_after(int position, int next) const {
    return after(position) != next || m_network.is_fixed(m_ring[at(position)], m_ring[at(next)]);
}

// The edges before the last node of the piece count.
bool TravelTour::has_direction(const Piece& piece) const {
    if (m_directed.empty() || piece.first == piece.last) return false;
    const int turn = piece.first < piece.last ? 0 : m_directed.back();
    return m_directed[at(piece.last)] + turn > m_directed[at(piece.first)];
}

// The marked positions, joined where the edge between two of them is fixed.
std::vector<TravelTour::Piece> TravelTour::pieces(const std::vector<int>& marked) const {
    const std::size_t count = marked.size();
    std::size_t begin = 0;
    while (begin < count && is_fixed_after(marked[(begin + count - 1) % count], marked[begin])) {
        ++begin;
    }
    std::vector<Piece> pieces;
    if (begin == count) return pieces;  // nothing can be exchanged
    for (std::size_t i = 0; i < count; ++i) {
        const int position = marked[(begin + i) % count];
        const bool is_joined = i > 0 && is_fixed_after(marked[(begin + i - 1) % count], position);
        if (is_joined) {
            pieces.back().last = position;
        } else {
            pieces.push_back({position, position});
        }
    }
    return pieces;
}

TravelCell TravelTour::cell(const std::vector<bool>& is_marked) const {
    std::vector<int> marked;
    for (int position = 0; position < size(); ++position) {
        if (is_marked[at(m_ring[at(position)])]) marked.push_back(position);
    }
    TravelCell cell;
    const std::vector<Piece> found = pieces(marked);
    // The terminals come last, but keep their places in the order.
    for (const bool with_terminals : {false, true}) {
        for (const Piece& piece : found) {
            for (const int position : {piece.first, piece.last}) {
                const int node = m_ring[at(position)];
                if ((node >= m_network.point_count()) != with_terminals) continue;
                cell.nodes.push_back(node);
                if (piece.first == piece.last) break;
            }
        }
    }
    std::vector<int> number(m_ring.size(), -1);
    for (int node = 0; node < cell.size(); ++node) number[at(cell.nodes[at(node)])] = node;
    cell.mates.assign(cell.nodes.size(), -1);
    cell.types.assign(cell.nodes.size(), TravelEndType::any);
    for (const Piece& piece : found) {
        const int first = number[at(m_ring[at(piece.first)])];
        const int last = number[at(m_ring[at(piece.last)])];
        cell.order.push_back(first);
        if (first == last) continue;
        cell.order.push_back(last);
        cell.mates[at(first)] = last;
        cell.mates[at(last)] = first;
        if (!has_direction(piece)) continue;
        cell.types[at(first)] = TravelEndType::entered;
        cell.types[at(last)] = TravelEndType::left;
    }
    return cell;
}

void TravelTour::append(std::vector<int>& ring, int from, int to) const {
    for (int position = from;; position = after(position)) {
        ring.push_back(m_ring[at(position)]);
        if (position == to) return;
    }
}

void TravelTour::replace(const TravelCell& cell, const std::vector<int>& order) {
    const std::size_t count = order.size();
    const bool is_cut = cell.mates[at(order.front())] == order.back();
    // By node of the cell: whether it is the first of its piece on the ring as it is.
    std::vector<bool> is_first(cell.nodes.size());
    for (std::size_t i = 0; i < cell.order.size(); ++i) {
        const int node = cell.order[i];
        is_first[at(node)] = true;
        if (cell.mates[at(node)] >= 0) ++i;
    }
    std::vector<int> ring;
    ring.reserve(m_ring.size());
    for (std::size_t i = is_cut ? 1 : 0, visited = 0; visited < count; ++i, ++visited) {
        const int node = order[i % count];
        const int from = m_positions[at(cell.nodes[at(node)])];
        if (cell.mates[at(node)] < 0) {
            ring.push_back(m_ring[at(from)]);
            continue;
        }
        const int to = m_positions[at(cell.nodes[at(cell.mates[at(node)])])];
        if (is_first[at(node)]) {
            append(ring, from, to);
        } else {
            const std::size_t begin = ring.size();
            append(ring, to, from);
            std::reverse(ring.begin() + static_cast<std::ptrdiff_t>(begin), ring.end());
        }
        ++i;
        ++visited;
    }
    set_ring(std::move(ring));
}

}  // namespace nmk_ordering

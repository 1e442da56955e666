// travel_ring.h: a ring of nodes in an array, whose changes can be taken back.
//
// An exchange keeps its longest segment where it is and writes the others behind it, so that it
// costs what it moves. What was there before goes to a log: undo() takes changes back at the cost
// of making them, and commit() forgets the log.
//
// Fixed edges are never cut; a node has one at most. Those of one-way lines are counted along the
// ring, from any place and modulo all of them, so that an exchange that would turn some of them and
// not others is seen at once. The ring
// as a whole may turn round.
#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "travel_exchange.h"

namespace nmk_ordering {

/// Nodes t0 t1 ... of an exchange.
using ExchangeNodes = std::array<int, 2 * max_exchange_edges>;

class TravelRing {
  public:
    /// The ring visits the nodes 0, 1, ... in the order of `order`.
    ///
    ///   mates     by node: the other end of its fixed edge, -1 for none; mates are neighbours
    ///   one_way   by node: 1 for one end of each fixed edge that has a direction; empty for none
    TravelRing(std::vector<int> order, std::vector<int> mates, std::vector<char> one_way);

    int size() const { return m_size; }
    int node(int position) const { return m_nodes[at(position)]; }
    int position(int of_node) const { return m_positions[at(of_node)]; }
    int mate(int of_node) const { return m_mates[at(of_node)]; }
    int next(int of_node) const {
        const int place = m_positions[at(of_node)] + 1;
        return m_nodes[at(place == m_size ? 0 : place)];
    }
    int previous(int of_node) const {
        const int place = m_positions[at(of_node)];
        return m_nodes[at(place == 0 ? m_size - 1 : place - 1)];
    }
    const std::vector<int>& order() const { return m_nodes; }

    /// Whether the exchange of the first 2 * edges nodes leaves one ring, and turns no one-way line
    /// against another. Sets `order` for exchange().
    bool is_possible(const ExchangeNodes& nodes, int edges, SegmentOrder& order) const;

    /// Makes an exchange that is_possible has returned true for.
    void exchange(const SegmentOrder& order);

    /// Replaces A B C by C B A, the three segments after `position`, in their directions: the
    /// double bridge of Martin, Otto and Felten, 1991, whose four edges no sequential exchange puts
    /// back.
    void bridge(int position, int first, int second, int third);

    /// How much is in the log, for undo().
    std::size_t mark() const { return m_changes.size(); }
    /// Takes back what was changed since the mark.
    void undo(std::size_t mark);
    void commit();

  private:
    struct Change {
        int start;  // position
        int length;
        std::size_t nodes;  // where the nodes from before begin in m_log
    };
    struct Piece {
        int begin;  // in the log of the change
        int length;
        bool is_reversed;
    };

    static std::size_t at(int index) { return static_cast<std::size_t>(index); }
    int wrapped(int position) const { return position < m_size ? position : position - m_size; }
    RemovedEdge removed_edge(int first, int second) const;
    bool keeps_directions(const SegmentOrder& order) const;
    int longest_segment(const SegmentOrder& order) const;
    int segment_length(const SegmentOrder& order, int segment) const;
    void rewrite(int start, const Piece* pieces, int count);
    void log_nodes(int start, int length);
    template <class From>
    int put(From from, int count, int place);
    template <class From>
    From put_run(From from, int count, int place);
    void count_one_ways(int start, int length);
    bool has_one_way(int first, int last) const;

    int m_size;
    std::vector<int> m_nodes;      // by position
    std::vector<int> m_positions;  // by node
    std::vector<int> m_mates;
    std::vector<char> m_one_way;
    // By position: one-way nodes up to and with it, modulo all of them; empty for none.
    std::vector<int> m_counts;
    int m_one_ways;
    std::vector<int> m_log;
    std::vector<Change> m_changes;
};

}  // namespace nmk_ordering

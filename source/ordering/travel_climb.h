// travel_climb.h: chained Lin-Kernighan on one ring.
//
// An exchange is searched depth first over the nearest neighbours, three edges deep, without
// touching the ring (five with prices); the first that makes it shorter is made. Where there
// is none, the one that leaves most to gain is made all the same, and the search continues from its
// last node, as deep as its submoves; if all of them gain nothing they are taken back (Helsgaun,
// "General k-opt submoves for the Lin-Kernighan TSP heuristic", Mathematical Programming
// Computation 1, 2009). A kick is a double bridge of nodes that random walks over the neighbours
// reach; a kick whose repair is longer than before is taken back.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "travel_budget.h"
#include "travel_candidates.h"
#include "travel_ring.h"

namespace nmk_ordering {

/// How wide and how deep an exchange is searched.
struct TravelWidths {
    int edges;     // that one exchange of the search removes
    int submoves;  // exchanges that are made one after the other before one of them gains
    std::array<int, max_exchange_edges - 1> tried;  // neighbours at each depth
};
constexpr TravelWidths widths_without_prices = {3, 3, {8, 5}};
/// With prices, which leave few legs to look at. Of one-way lines only every second exchange of
/// three edges is possible, and none of two. What is made and taken back moves half of the ring,
/// since near lines are not near each other on it.
constexpr TravelWidths widths_with_prices = {5, 1, {8, 8, 5, 3}};
static_assert(widths_with_prices.edges <= max_exchange_edges);
/// Length of the random walks of a kick, and the longest piece of the ring that a kick moves.
constexpr int walk_length = 10;
constexpr int max_kick_length = 1000;
/// One kick in so many exchanges pieces along the ring, wherever they lie: walks do not leave a
/// cluster of points. The longest of these pieces.
constexpr int kicks_for_one_along = 10;
constexpr int max_piece_along = 50;
/// A gain must be larger than this part of the length of the ring, or it may be rounding.
constexpr double least_gain_in_lengths = 1e-13;

/// Numbers for the kicks: xorshift with a multiplication, Vigna, "An experimental exploration of
/// Marsaglia's xorshift generators", ACM Trans. Math. Software 42, 2016.
class TravelRandom {
  public:
    /// 0 to limit - 1.
    int draw(int limit) {
        m_word ^= m_word >> 12;
        m_word ^= m_word << 25;
        m_word ^= m_word >> 27;
        const std::uint64_t high = (m_word * 2685821657736338717U) >> 32;
        return static_cast<int>((high * static_cast<std::uint64_t>(limit)) >> 32);
    }

  private:
    std::uint64_t m_word = 88172645463325252U;
};

template <class Cost>
class TravelClimb {
  public:
    /// All are borrowed.
    TravelClimb(const Cost& cost, const TravelNeighbours& neighbours, TravelRing& ring,
                TravelBudget& budget)
        : m_cost(cost),
          m_neighbours(neighbours),
          m_ring(ring),
          m_budget(budget),
          m_terminals(static_cast<int>(cost.terminals.size())),
          m_widths(cost.prices.empty() ? widths_without_prices : widths_with_prices),
          m_is_waiting(at(ring.size()), 0) {
        double length = 0.0;
        for (int node = 0; node < ring.size(); ++node) {
            length += m_cost.without_prices(node, ring.next(node));
        }
        m_least_gain = length * least_gain_in_lengths;
    }

    /// Climbs from the ring as it is, then makes `steps` kicks.
    void run(std::int64_t steps) {
        for (int place = 0; place < m_ring.size(); ++place) wait(m_ring.node(place));
        m_keeps_each_gain = true;
        climb();
        m_keeps_each_gain = false;
        if (m_ring.size() < least_kicked) return;
        for (std::int64_t step = 0; step < steps && !m_budget.is_over(); ++step) {
            double change = kick();
            change -= climb();
            if (change <= 0.0) {
                m_ring.commit();
            } else {
                m_ring.undo(0);
            }
            m_budget.step();
        }
    }

  private:
    static constexpr int least_kicked = 8;  // nodes of a ring; a smaller one has no double bridge
    static constexpr int walk_neighbours = 5;
    static constexpr int kick_draws = 20;

    struct Best {
        double open_gain;
        int edges = 0;
        ExchangeNodes nodes;
        SegmentOrder order;
    };

    static std::size_t at(int index) { return static_cast<std::size_t>(index); }

    void wait(int node) {
        if (m_is_waiting[at(node)] != 0) return;
        m_is_waiting[at(node)] = 1;
        m_waiting.push_back(node);
    }

    // Improves until no waiting node starts an exchange; returns what was gained.
    double climb() {
        double gained = 0.0;
        for (std::size_t next = 0; next < m_waiting.size(); ++next) {
            const int node = m_waiting[next];
            m_is_waiting[at(node)] = 0;
            while (!m_budget.is_over() && improve(node)) gained += m_gain;
            m_budget.work();
            if (next > max_queue) {
                m_waiting.erase(m_waiting.begin(),
                                m_waiting.begin() + static_cast<std::ptrdiff_t>(next));
                next = 0;
            }
        }
        m_waiting.clear();
        return gained;
    }

    bool improve(int node) {
        return improve(node, m_ring.next(node)) || improve(node, m_ring.previous(node));
    }

    // Searches an exchange that begins with the removal of the edge from `first` to `second`.
    bool improve(int first, int second) {
        if (m_ring.mate(first) == second) return false;
        const std::size_t mark = m_ring.mark();
        m_touched.clear();
        m_added.clear();
        double gain = m_cost(first, second);
        int last = second;
        for (int submove = 0; submove <= m_widths.submoves; ++submove) {
            m_nodes[0] = first;
            m_nodes[1] = last;
            m_best.open_gain = m_least_gain;
            m_best.edges = 0;
            if (search(1, gain)) {
                make_gain();
                return true;
            }
            if (m_best.edges == 0 || submove == m_widths.submoves) break;
            make_best();
            gain = m_best.open_gain;
            last = m_best.nodes[at(2 * m_best.edges - 1)];
        }
        if (m_ring.mark() != mark) m_ring.undo(mark);
        return false;
    }

    void make_gain() {
        m_ring.exchange(m_order);
        for (int i = 0; i < 2 * m_edges; ++i) wait(m_nodes[at(i)]);
        for (const int node : m_touched) wait(node);
        if (m_keeps_each_gain) m_ring.commit();
    }

    void make_best() {
        m_ring.exchange(m_best.order);
        const int count = 2 * m_best.edges;
        m_touched.insert(m_touched.end(), m_best.nodes.begin(), m_best.nodes.begin() + count);
        for (int i = 1; i + 1 < count; i += 2) {
            m_added.emplace_back(m_best.nodes[at(i)], m_best.nodes[at(i + 1)]);
        }
    }

    // `edges` are removed and open: `gain` is what they cost less what was added between them.
    bool search(int edges, double gain) {
        const int from = m_nodes[at(2 * edges - 1)];
        const int next = m_ring.next(from);
        const int previous = m_ring.previous(from);
        int tried = 0;
        const TravelNeighbour* const end = m_neighbours.end(from);
        for (const TravelNeighbour* to = m_neighbours.begin(from); to != end; ++to) {
            const double left = gain - to->cost;
            if (left <= m_least_gain) break;
            if (to->node == next || to->node == previous) continue;
            if (is_added(from, to->node, edges)) continue;
            if (try_removal(edges, left, to->node, m_ring.next(to->node)) ||
                try_removal(edges, left, to->node, m_ring.previous(to->node))) {
                return true;
            }
            if (++tried == m_widths.tried[at(edges - 1)] + m_terminals) break;
        }
        return false;
    }

    // Tries to remove the edge from `to`, which was just joined, to its neighbour `end`.
    bool try_removal(int edges, double left, int to, int end) {
        if (m_ring.mate(to) == end || is_removed(to, end, edges) || was_added(to, end)) {
            return false;
        }
        m_nodes[at(2 * edges)] = to;
        m_nodes[at(2 * edges + 1)] = end;
        const double gain = left + m_cost(to, end);
        if (end != m_nodes[0] && !m_cost.is_above(gain - m_least_gain, end, m_nodes[0])) {
            m_gain = gain - m_cost(end, m_nodes[0]);
            if (m_gain > m_least_gain && m_ring.is_possible(m_nodes, edges + 1, m_order)) {
                m_edges = edges + 1;
                return true;
            }
        }
        if (edges + 1 < m_widths.edges) return search(edges + 1, gain);
        if (gain > m_best.open_gain && end != m_nodes[0]) note_best(edges + 1, gain);
        return false;
    }

    void note_best(int edges, double gain) {
        if (!m_ring.is_possible(m_nodes, edges, m_best_order)) return;
        m_best = {gain, edges, m_nodes, m_best_order};
    }

    bool is_terminal(int node) const { return node >= m_ring.size() - m_terminals; }

    static bool is_edge(int a, int b, int first, int second) {
        return (a == first && b == second) || (a == second && b == first);
    }
    bool is_removed(int a, int b, int edges) const {
        for (int i = 0; i < 2 * edges; i += 2) {
            if (is_edge(a, b, m_nodes[at(i)], m_nodes[at(i + 1)])) return true;
        }
        return false;
    }
    bool is_added(int a, int b, int edges) const {
        for (int i = 1; i + 1 < 2 * edges; i += 2) {
            if (is_edge(a, b, m_nodes[at(i)], m_nodes[at(i + 1)])) return true;
        }
        return false;
    }
    // By an exchange before this one of the same chain.
    bool was_added(int a, int b) const {
        for (const auto& [first, second] : m_added) {
            if (is_edge(a, b, first, second)) return true;
        }
        return false;
    }

    // A node that a walk from `node` reaches. It never ends at a terminal, which would be next to
    // every node and make all kicks cut there.
    int walk(int node) {
        for (int step = 0; step < walk_length; ++step) {
            const TravelNeighbour* const begin = m_neighbours.begin(node);
            const int count = m_neighbours.count(node);
            if (count == 0) break;
            const int to = begin[m_random.draw(std::min(count, walk_neighbours))].node;
            if (!is_terminal(to)) node = to;
        }
        return node;
    }

    // A node a little further along the ring.
    int further(int node) {
        const int reach = std::min(max_piece_along, m_ring.size() / 4);
        const int place = m_ring.position(node) + 1 + m_random.draw(reach);
        return m_ring.node(place < m_ring.size() ? place : place - m_ring.size());
    }

    // The position before an edge that may be cut, at the node or one before it.
    int cut_at(int node) const {
        const int place = m_ring.position(node);
        if (m_ring.mate(node) != m_ring.next(node)) return place;
        return place == 0 ? m_ring.size() - 1 : place - 1;
    }

    // Makes a double bridge and returns by how much the ring is longer.
    double kick() {
        for (int draw = 0; draw < kick_draws; ++draw) {
            const int around = m_random.draw(m_ring.size());
            std::array<int, 4> cuts{cut_at(around)};
            const bool is_along = m_random.draw(kicks_for_one_along) == 0;
            int reached = around;
            for (std::size_t i = 1; i < cuts.size(); ++i) {
                reached = is_along ? further(reached) : walk(around);
                cuts[i] = cut_at(reached);
            }
            if (turn_to_gap(cuts)) return bridge(cuts);
        }
        return 0.0;
    }

    // Puts the cuts in the order of the ring, beginning after the longest gap; false if two are the
    // same or they are too far apart.
    bool turn_to_gap(std::array<int, 4>& cuts) const {
        std::sort(cuts.begin(), cuts.end());
        if (std::adjacent_find(cuts.begin(), cuts.end()) != cuts.end()) return false;
        const int n = m_ring.size();
        std::size_t widest = 3;
        int width = cuts[0] - cuts[3] + n;
        for (std::size_t i = 0; i < 3; ++i) {
            if (cuts[i + 1] - cuts[i] <= width) continue;
            width = cuts[i + 1] - cuts[i];
            widest = i;
        }
        std::rotate(cuts.begin(), cuts.begin() + static_cast<std::ptrdiff_t>((widest + 1) % 4),
                    cuts.end());
        return n - width <= max_kick_length;
    }

    double bridge(const std::array<int, 4>& cuts) {
        const int n = m_ring.size();
        std::array<int, 8> ends{};  // before and after each cut
        for (std::size_t i = 0; i < cuts.size(); ++i) {
            ends[2 * i] = m_ring.node(cuts[i]);
            ends[2 * i + 1] = m_ring.next(ends[2 * i]);
        }
        std::array<int, 3> lengths{};
        for (std::size_t i = 0; i < lengths.size(); ++i) {
            const int length = cuts[i + 1] - cuts[i];
            lengths[i] = length < 0 ? length + n : length;
        }
        const double after = m_cost(ends[0], ends[5]) + m_cost(ends[6], ends[3]) +
                             m_cost(ends[4], ends[1]) + m_cost(ends[2], ends[7]);
        const double before = m_cost(ends[0], ends[1]) + m_cost(ends[2], ends[3]) +
                              m_cost(ends[4], ends[5]) + m_cost(ends[6], ends[7]);
        m_ring.bridge(cuts[0], lengths[0], lengths[1], lengths[2]);
        for (const int node : ends) wait(node);
        return after - before;
    }

    static constexpr std::size_t max_queue = 50000;  // nodes done with that are still held

    const Cost& m_cost;
    const TravelNeighbours& m_neighbours;
    TravelRing& m_ring;
    TravelBudget& m_budget;
    int m_terminals;  // neighbours of nearly all nodes; tried beside the others
    TravelWidths m_widths;
    TravelRandom m_random;
    double m_least_gain = 0.0;
    bool m_keeps_each_gain = false;

    std::vector<int> m_waiting;
    std::vector<char> m_is_waiting;

    // The exchange that is searched, and when one is found its gain.
    ExchangeNodes m_nodes{};
    SegmentOrder m_order;
    int m_edges = 0;
    double m_gain = 0.0;

    Best m_best{};
    SegmentOrder m_best_order;
    std::vector<int> m_touched;
    std::vector<std::pair<int, int>> m_added;
};

}  // namespace nmk_ordering

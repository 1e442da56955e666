// travel_network.h: a travel problem as a ring of nodes.
//
// A point is one node, a line two, its start and its end, joined by a fixed edge. After the nodes
// of the items come start and end of the travel: a place is a node with a point, an end that is
// free or at an item a terminal, which has none. Start and end are joined by a fixed edge, so that
// an open travel is a ring too; one terminal does for both ends where both are free. The items of a
// group that keeps its order are chained by fixed edges.
//
// All coordinates, speeds and accelerations are divided by one power of two, which is exact and
// keeps squares from overflowing.
#pragma once

#include <nmktoolbox/ordering/nmkTravelProblem.h>

#include <array>
#include <cstddef>
#include <memory>
#include <vector>

#include "travel_cost.h"
#include "travel_legs.h"
#include "travel_metrics.h"

namespace nmk_ordering {

/// Items as they are travelled.
struct TravelSequence {
    std::vector<int> order;
    std::vector<bool> is_reversed;  // by item
};

/// The power of two above a number; 1 where the number is 0.
double unit_of(double largest);
/// The unit of keep-outs alone.
double unit_of_keep_outs(const std::vector<nmkTravelKeepOut>& keep_outs);
/// The metric of a problem whose lengths are divided by `unit`.
TravelMetric scaled_metric(const nmkTravelProblem& problem, double unit);

class TravelNetwork {
  public:
    /// `problem` is borrowed, and has no fault.
    explicit TravelNetwork(const nmkTravelProblem& problem);
    TravelNetwork(const TravelNetwork&) = delete;
    TravelNetwork& operator=(const TravelNetwork&) = delete;

    const nmkTravelProblem& problem() const { return m_problem; }
    int items() const { return static_cast<int>(m_problem.items.size()); }
    int size() const { return point_count() + static_cast<int>(m_terminals.size()); }

    /// Of the nodes 0 to point_count() - 1; the terminals follow.
    const std::vector<TravelPoint>& points() const { return m_points; }
    int point_count() const { return static_cast<int>(m_points.size()); }
    const std::vector<TravelTerminal>& terminals() const { return m_terminals; }

    /// By node with a point; empty unless a group may change its order.
    const std::vector<int>& groups() const { return m_groups; }
    /// More than an exchange of edges without one can gain.
    double penalty() const { return m_penalty; }

    const TravelMetric& metric() const { return m_metric; }
    bool is_plane() const { return m_is_plane; }
    double unit() const { return m_unit; }  // a length of the problem in a length of the network

    int first_node(int item) const { return m_first_nodes[at(item)]; }
    bool is_line(int item) const {
        return m_problem.items[at(item)].kind != nmkTravelItemKind::point;
    }
    bool may_reverse(int item) const {
        return m_problem.items[at(item)].kind == nmkTravelItemKind::line;
    }
    int entry_node(int item, bool is_reversed) const {
        return first_node(item) + (is_line(item) && is_reversed ? 1 : 0);
    }
    int exit_node(int item, bool is_reversed) const {
        return first_node(item) + (is_line(item) && !is_reversed ? 1 : 0);
    }

    bool is_closed() const { return m_problem.end.kind == nmkTravelEnd::Kind::at_start; }
    /// The nodes of both ends; -1 for those of a closed travel without a start place.
    int start_node() const { return m_start; }
    int end_node() const { return m_end; }
    /// Whether the node is an end of a line.
    bool has_mate(int node) const { return node < m_item_nodes && is_line(m_item_of[at(node)]); }
    bool is_place(int node) const { return node >= m_item_nodes && node < point_count(); }

    bool is_fixed(int a, int b) const { return m_fixed[at(a)][0] == b || m_fixed[at(a)][1] == b; }
    /// By node: the node that has to follow it; empty where no item has a direction.
    const std::vector<int>& ahead() const { return m_ahead; }

    /// Length of the leg between two nodes, around the keep-outs; 0 to a terminal.
    double leg(int from, int to) const {
        if (from >= point_count() || to >= point_count()) return 0.0;
        return m_legs != nullptr ? m_legs->cost(from, to)
                                 : m_metric(m_points[at(from)], m_points[at(to)]);
    }
    /// Null without keep-outs. It remembers what it has found.
    TravelLegs* legs() const { return m_legs.get(); }
    /// Length of the whole travel, in the unit of the network.
    double length(const TravelSequence& sequence) const;

    std::vector<int> ring(const TravelSequence& sequence) const;
    /// The ring may be turned and reversed.
    TravelSequence sequence(const std::vector<int>& ring) const;
    /// Puts the ring into the direction of its one-way lines.
    void turn(std::vector<int>& ring) const;

    /// Of a closed travel without a start place: begins at the start item or with item 0, or at the
    /// first of its group.
    void begin_at_start(TravelSequence& sequence) const;

    /// Fixes the edges inside groups that keep their order, with lines in these directions.
    void chain_groups(const TravelSequence& sequence);

    /// By item: the number of its group, -1 for none.
    std::vector<int> group_of_items() const;

  private:
    static std::size_t at(int index) { return static_cast<std::size_t>(index); }

    void add_items();
    void add_ends();
    int add_end(const nmkTravelEnd& end);
    void fix(int a, int b);
    void set_groups();
    void scale();
    std::vector<int> from_start(const std::vector<int>& ring) const;

    const nmkTravelProblem& m_problem;
    std::vector<TravelPoint> m_points;
    std::vector<TravelTerminal> m_terminals;
    std::vector<int> m_first_nodes;
    std::vector<int> m_item_of;  // by node of an item
    std::vector<std::array<int, 2>> m_fixed;
    std::vector<int> m_ahead;
    std::vector<int> m_groups;
    TravelMetric m_metric;
    std::unique_ptr<TravelLegs> m_legs;
    double m_penalty = 1.0;
    double m_unit = 1.0;
    bool m_is_plane = false;
    int m_item_nodes = 0;
    int m_start = -1;
    int m_end = -1;
};

}  // namespace nmk_ordering

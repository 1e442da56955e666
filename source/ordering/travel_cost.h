// travel_cost.h: what an edge between two nodes of a cell costs.
//
// Mostly that is the metric between their points. Two things are put on top:
//
// Nodes of different groups pay a penalty of more than any exchange can gain otherwise, so that the
// edges between groups, which are as few as can be from the start on, never become more (Chisman,
// "The clustered traveling salesman problem", Computers and Operations Research 2, 1975).
//
// The last nodes of a cell may be terminals, which have no place: the way to one is free, but where
// it belongs to an item every other node pays twice the penalty.
//
// Prices of nodes are taken off at both ends of an edge, which makes all rings shorter by the same.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <vector>

#include "travel_exchange.h"

namespace nmk_ordering {

/// The penalty in units of the largest cost between two points. An exchange removes at most
/// max_exchange_edges, and a chain of them is judged one by one.
constexpr double penalty_in_largest_costs = 8.0;
static_assert(penalty_in_largest_costs > max_exchange_edges + 1);

/// A terminal and the nodes of its item; -1 where there is none.
struct TravelTerminal {
    std::array<int, 2> item_nodes{-1, -1};

    bool is_free() const { return item_nodes[0] < 0; }
    bool takes(int node) const {
        return is_free() || node == item_nodes[0] || node == item_nodes[1];
    }
};

template <class Metric>
class TravelCost {
  public:
    using Point = typename Metric::Point;

    Metric metric{};
    std::vector<Point> points;              // by node, without the terminals
    std::vector<int> groups;                // by node; empty where no item is in one
    std::vector<TravelTerminal> terminals;  // numbered after the points
    double penalty = 0.0;
    std::vector<double> prices;  // by node, taken off at both ends of an edge; empty for none

    double operator()(int a, int b) const { return less_prices(without_prices(a, b), a, b); }
    double without_prices(int a, int b) const { return with_penalties(a, b, metric); }

    /// Whether an edge is known to cost more than `most` before its cost is computed, which takes
    /// long for some metrics.
    bool is_above(double most, int a, int b) const {
        if constexpr (requires(const Point& p) { metric.at_least(p, p); }) {
            const auto least = [this](const Point& p, const Point& q) {
                return metric.at_least(p, q);
            };
            return less_prices(with_penalties(a, b, least), a, b) > most;
        } else {
            return false;
        }
    }

  private:
    double less_prices(double cost, int a, int b) const {
        return prices.empty() ? cost : cost - (prices[at(a)] + prices[at(b)]);
    }
    template <class Length>
    double with_penalties(int a, int b, const Length& length_between) const {
        if (std::max(a, b) >= static_cast<int>(points.size())) [[unlikely]] {
            return to_terminal(a, b);
        }
        const double length = length_between(points[at(a)], points[at(b)]);
        if (groups.empty() || groups[at(a)] == groups[at(b)]) return length;
        return length + penalty;
    }
    static std::size_t at(int index) { return static_cast<std::size_t>(index); }

    double to_terminal(int a, int b) const {
        const int terminal = std::max(a, b) - static_cast<int>(points.size());
        const double between_groups = groups.empty() ? 0.0 : penalty;
        return terminals[at(terminal)].takes(std::min(a, b)) ? between_groups
                                                             : between_groups + 2.0 * penalty;
    }
};

}  // namespace nmk_ordering

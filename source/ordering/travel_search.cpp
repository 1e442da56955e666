#include "travel_search.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <numeric>
#include <utility>

#include "travel_cell.h"
#include "travel_climb.h"
#include "travel_neighbours.h"
#include "travel_prices.h"

namespace nmk_ordering {

namespace {

// Items of a cell, at most. Larger ones would move long pieces of the ring in memory that is far.
constexpr int max_cell_items = 12000;

// Neighbours of a node that the search may join it to. With groups as many again of its own.
constexpr int neighbour_count = 6;
// Where the ends of one-way lines get prices: so many that nearly always all exits can be assigned
// to entries.
constexpr int neighbour_count_with_prices = 24;
// Beside keep-outs, where some of the nearest are behind one.
constexpr int neighbour_count_beside_keep_outs = 10;
// Those of them that are the nearest in each quadrant, so that a cluster of points has neighbours
// outside of it.
constexpr int neighbours_of_quadrant = 2;

// One pass over all cells: where each box is halved, and the part of all steps.
struct Pass {
    double cut;
    double steps;
};
constexpr std::array<Pass, 3> passes = {{{0.5, 0.4}, {0.4, 0.3}, {0.6, 0.3}}};

std::size_t at(int index) { return static_cast<std::size_t>(index); }

// The metric by which neighbours are looked for, and a node as a point of the metric of the search.
// Beside keep-outs they are the nearest in a straight line, sorted by the ways to them.
template <class Metric>
struct MetricOfSearch {
    using Straight = Metric;
    static const Metric& straight(const Metric& metric) { return metric; }
    static typename Metric::Point point(const TravelNetwork& network, int node) {
        return Metric::point(network.points()[at(node)]);
    }
    static constexpr int neighbours = neighbour_count;
};

template <class Metric>
struct MetricOfSearch<LegLength<Metric>> {
    using Straight = Metric;
    static const Metric& straight(const LegLength<Metric>& metric) { return metric.straight; }
    static typename LegLength<Metric>::Point point(const TravelNetwork& network, int node) {
        return {Metric::point(network.points()[at(node)]), network.legs()->cell(node), node};
    }
    static constexpr int neighbours = neighbour_count_beside_keep_outs;
};

template <class Metric>
TravelCost<Metric> cost_of(const TravelNetwork& network, const TravelCell& cell,
                           const Metric& metric) {
    TravelCost<Metric> cost;
    cost.metric = metric;
    cost.penalty = network.penalty();
    for (const int node : cell.nodes) {
        if (node < network.point_count()) {
            cost.points.push_back(MetricOfSearch<Metric>::point(network, node));
            if (!network.groups().empty()) cost.groups.push_back(network.groups()[at(node)]);
            continue;
        }
        TravelTerminal terminal = network.terminals()[at(node - network.point_count())];
        if (!terminal.is_free()) {
            for (int& item_node : terminal.item_nodes) {
                const auto place = std::find(cell.nodes.begin(), cell.nodes.end(), item_node);
                item_node = static_cast<int>(place - cell.nodes.begin());  // or of no node
            }
        }
        cost.terminals.push_back(terminal);
    }
    return cost;
}

template <class Metric>
class NeighbourLists {
  public:
    NeighbourLists(const TravelCell& cell, const TravelCost<Metric>& cost,
                   const std::vector<TravelPoint>& points, TravelBudget& budget)
        : m_cell(cell),
          m_cost(cost),
          m_count(Traits::neighbours),
          m_budget(budget),
          m_tree(Traits::straight(cost.metric), points, static_cast<int>(points.size())) {}

    /// Makes each node a neighbour of its neighbours, and takes prices off; false, with nothing
    /// done, if prices would be of no use.
    bool price(TravelCost<Metric>& cost, TravelNeighbours& neighbours) {
        if (!are_nearly_all_one_way(m_cell.types)) return false;
        m_count = std::max(m_count, neighbour_count_with_prices);
        TravelNeighbours wide = lists();
        m_count = Traits::neighbours;
        if (m_budget.is_over()) return false;
        make_mutual(wide);
        cost.prices = one_way_prices(wide, m_cell.types);
        if (cost.prices.empty()) return false;
        take_off(cost.prices, wide);
        neighbours = std::move(wide);
        return true;
    }

    TravelNeighbours lists() {
        m_lists = {};
        const int points = static_cast<int>(m_cost.points.size());
        for (int node = 0; node < m_cell.size(); ++node) {
            m_lists.begins.push_back(m_lists.all.size());
            if (node < points) add_points(node);
            add_terminals(node);
            m_lists.sort(m_lists.begins.back(), m_lists.all.size());
            m_budget.work();
        }
        m_lists.begins.push_back(m_lists.all.size());
        return std::move(m_lists);
    }

  private:
    using Traits = MetricOfSearch<Metric>;
    using Tree = TravelTree<typename Traits::Straight>;

    bool fits(int node, int other) const {
        const TravelEndType type = m_cell.types[at(node)];
        return other != node && m_cell.mates[at(node)] != other &&
               (type == TravelEndType::any || m_cell.types[at(other)] != type);
    }
    bool is_in_group(int node, int other) const {
        return m_cost.groups[at(node)] == m_cost.groups[at(other)];
    }

    void add_points(int node) {
        if (m_budget.is_over()) return;  // the climb will not begin
        const bool has_groups = !m_cost.groups.empty();
        m_tree.nearest(
            node, m_count,
            [&](int other) {
                return fits(node, other) && !(has_groups && is_in_group(node, other));
            },
            m_found);
        add_found(node);
        for (const bool is_right : {false, true}) {
            for (const bool is_upper : {false, true}) {
                m_tree.nearest_in(
                    {is_right, is_upper}, node, neighbours_of_quadrant,
                    [&](int other) { return fits(node, other); }, m_found);
                add_found(node);
            }
        }
        if (!has_groups) return;
        m_tree.nearest(
            node, m_count, [&](int other) { return fits(node, other) && is_in_group(node, other); },
            m_found);
        add_found(node);
    }
    void add_found(int node) {
        for (const auto& found : m_found) {
            const auto begin =
                m_lists.all.begin() + static_cast<std::ptrdiff_t>(m_lists.begins.back());
            const bool is_there = std::any_of(
                begin, m_lists.all.end(),
                [&](const TravelNeighbour& neighbour) { return neighbour.node == found.point; });
            if (!is_there) m_lists.all.push_back({m_cost(node, found.point), found.point});
        }
    }
    // A terminal is a neighbour of every node that it takes, and has only nodes of its item as its.
    void add_terminals(int node) {
        const int points = static_cast<int>(m_cost.points.size());
        for (int k = 0; k < static_cast<int>(m_cost.terminals.size()); ++k) {
            const TravelTerminal& terminal = m_cost.terminals[at(k)];
            if (node < points && terminal.takes(node) && fits(node, points + k)) {
                m_lists.all.push_back({m_cost(node, points + k), points + k});
            }
            if (node != points + k || terminal.is_free()) continue;
            for (const int other : terminal.item_nodes) {
                if (other < points && fits(node, other)) {
                    m_lists.all.push_back({m_cost(node, other), other});
                }
            }
        }
    }
    const TravelCell& m_cell;
    const TravelCost<Metric>& m_cost;
    int m_count;  // nearest points of each node
    TravelBudget& m_budget;
    Tree m_tree;
    TravelNeighbours m_lists;
    std::vector<typename Tree::Found> m_found;
};

template <class Metric>
class CellSearch {
  public:
    CellSearch(const TravelNetwork& network, const Metric& metric, TravelTour& tour,
               TravelBudget& budget)
        : m_network(network), m_metric(metric), m_tour(tour), m_budget(budget) {}

    void run() {
        std::vector<int> items(at(m_network.items()));
        std::iota(items.begin(), items.end(), 0);
        if (m_network.items() <= max_cell_items) {
            improve(items.begin(), items.end(), m_budget.steps());
            return;
        }
        for (const Pass& pass : passes) divide(items.begin(), items.end(), pass);
    }

  private:
    using Items = std::vector<int>::iterator;

    // The boxes are not cut at the same places in two passes.
    void divide(Items begin, Items end, const Pass& pass) {
        if (m_budget.is_over()) return;
        const auto count = end - begin;
        if (count <= max_cell_items) {
            const double part = static_cast<double>(count) / m_network.items();
            const double steps = static_cast<double>(m_budget.steps()) * pass.steps * part;
            improve(begin, end, static_cast<std::int64_t>(steps));
            return;
        }
        const int axis = widest_axis(begin, end);
        const Items middle =
            begin + static_cast<std::ptrdiff_t>(static_cast<double>(count) * pass.cut);
        std::nth_element(begin, middle, end, [&](int a, int b) {
            const double first = place(a, axis);
            const double second = place(b, axis);
            return first != second ? first < second : a < b;
        });
        divide(begin, middle, pass);
        divide(middle, end, pass);
    }

    double place(int item, int axis) const {
        return coordinate(m_network.points()[at(m_network.first_node(item))], axis);
    }

    int widest_axis(Items begin, Items end) const {
        int widest = 0;
        double width = -1.0;
        for (int axis = 0; axis < 3; ++axis) {
            const auto [low, high] = std::minmax_element(
                begin, end, [&](int a, int b) { return place(a, axis) < place(b, axis); });
            if (place(*high, axis) - place(*low, axis) <= width) continue;
            width = place(*high, axis) - place(*low, axis);
            widest = axis;
        }
        return widest;
    }

    // All cells have the ends of the travel, which may move anywhere.
    void improve(Items begin, Items end, std::int64_t steps) {
        std::vector<bool> is_marked(m_tour.ring().size(), false);
        for (Items item = begin; item != end; ++item) {
            is_marked[at(m_network.entry_node(*item, false))] = true;
            is_marked[at(m_network.exit_node(*item, false))] = true;
        }
        for (const int node : {m_network.start_node(), m_network.end_node()}) {
            if (node >= 0) is_marked[at(node)] = true;
        }
        const TravelCell cell = m_tour.cell(is_marked);
        if (cell.size() < least_nodes) return;
        TravelCost<Metric> cost = cost_of(m_network, cell, m_metric);
        std::vector<TravelPoint> points;
        for (const int node : cell.nodes) {
            if (node < m_network.point_count()) points.push_back(m_network.points()[at(node)]);
        }
        NeighbourLists<Metric> lists(cell, cost, points, m_budget);
        TravelNeighbours neighbours;
        if (!lists.price(cost, neighbours)) neighbours = lists.lists();
        if (m_budget.is_over()) return;
        TravelRing ring(cell.order, cell.mates, one_ways(cell));
        TravelClimb<TravelCost<Metric>>(cost, neighbours, ring, m_budget).run(steps);
        m_tour.replace(cell, ring.order());
    }

    std::vector<char> one_ways(const TravelCell& cell) const {
        std::vector<char> marks;
        if (m_network.ahead().empty()) return marks;
        for (const TravelEndType type : cell.types) {
            marks.push_back(type == TravelEndType::entered ? 1 : 0);
        }
        return marks;
    }

    static constexpr int least_nodes = 5;  // of a cell in which something can be exchanged

    const TravelNetwork& m_network;
    Metric m_metric;
    TravelTour& m_tour;
    TravelBudget& m_budget;
};

// Calls `work` with the metric of a network, in a straight line.
template <class Work>
void with_metric(const TravelNetwork& network, const Work& work) {
    switch (network.metric().measure) {
        case nmkTravelMeasure::chebyshev:
            return work(ChebyshevLength());
        case nmkTravelMeasure::time:
            return work(network.metric().rapid);
        case nmkTravelMeasure::length:
            break;
    }
    if (network.is_plane()) return work(PlaneLength());
    work(SpaceLength());
}

// The node of an item that a free end is at pays for one leg less: the largest payments of that
// kind are taken off, one for each terminal side.
template <class Metric>
double half_of_nearest(const TravelNetwork& network, const Metric& metric) {
    const TravelTree<Metric> tree(metric, network.points(), network.point_count());
    std::vector<typename TravelTree<Metric>::Found> found;
    std::vector<double> savings;
    double sum = 0.0;
    for (int node = 0; node < network.point_count(); ++node) {
        const bool is_open_end = network.is_place(node) && !network.is_closed();
        const int legs = is_open_end || network.has_mate(node) ? 1 : 2;
        tree.nearest(
            node, legs, [&](int other) { return other != node && !network.is_fixed(node, other); },
            found);
        for (const auto& neighbour : found) sum += neighbour.cost;
        if (!network.is_place(node)) savings.push_back(found.back().cost);
    }
    const auto& terminals = network.terminals();
    const std::size_t sides =
        network.start_node() == network.end_node() ? 2 * terminals.size() : terminals.size();
    std::partial_sort(savings.begin(), savings.begin() + static_cast<std::ptrdiff_t>(sides),
                      savings.end(), std::greater<>());
    for (std::size_t side = 0; side < sides; ++side) sum -= savings[side];
    return sum / 2.0;
}

}  // namespace

TravelSequence search_sequence(const TravelNetwork& network, const TravelSequence& start,
                               TravelBudget& budget) {
    TravelTour tour(network, network.ring(start));
    const auto search = [&](const auto& metric) {
        CellSearch<std::decay_t<decltype(metric)>>(network, metric, tour, budget).run();
    };
    if (network.legs() != nullptr) {
        network.legs()->set_budget(budget);
        with_metric(network, [&]<class Metric>(const Metric& metric) {
            search(LegLength<Metric>{metric, network.legs()});
        });
    } else {
        with_metric(network, search);
    }
    return network.sequence(tour.ring());
}

double lower_bound(const TravelNetwork& network) {
    double bound = 0.0;
    with_metric(network, [&](const auto& metric) { bound = half_of_nearest(network, metric); });
    return bound;
}

}  // namespace nmk_ordering

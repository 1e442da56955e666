// travel_prices: exits bid for entries. Deterministic: ties go to the neighbour that comes first.
#include "travel_prices.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace nmk_ordering {

namespace {

// The least bid at first, in mean costs of the nearest neighbour, by what it is divided for each
// further phase, and the number of phases.
constexpr double first_bid = 1.0;
constexpr double finer = 4.0;
constexpr int phases = 6;
// Bids of a phase for each exit, at most: the prices of a phase that is cut short serve as well.
constexpr std::int64_t max_bids_of_an_exit = 100;
// An exit goes without an entry rather than pay so many times what its farthest neighbour costs. It
// comes to that only where no assignment has neighbours for all.
constexpr double farthest_neighbours = 100.0;
// Prices are of use where nearly all nodes have one, and nearly all exits an entry: one in so many
// may go without.
constexpr std::size_t nodes_for_one_without = 20;
constexpr std::size_t exits_for_one_without = 50;

constexpr int nobody = -1;

std::size_t at(int index) { return static_cast<std::size_t>(index); }

class Auction {
  public:
    Auction(const TravelNeighbours& neighbours, const std::vector<TravelEndType>& types)
        : m_neighbours(neighbours), m_types(types), m_prices(types.size(), 0.0) {
        for (int node = 0; node < neighbours.nodes(); ++node) {
            if (types[at(node)] == TravelEndType::left && neighbours.count(node) > 0) {
                m_exits.push_back(node);
            }
        }
    }

    double mean_of_nearest() const {
        double sum = 0.0;
        for (const int exit : m_exits) sum += m_neighbours.begin(exit)->cost;
        return m_exits.empty() ? 0.0 : sum / static_cast<double>(m_exits.size());
    }

    void run(double least_bid) {
        m_owners.assign(m_prices.size(), nobody);
        std::vector<int> waiting(m_exits.rbegin(), m_exits.rend());
        std::int64_t left = max_bids_of_an_exit * static_cast<std::int64_t>(m_exits.size());
        for (; !waiting.empty() && left > 0; --left) {
            const int exit = waiting.back();
            waiting.pop_back();
            const int outbid = bid(exit, least_bid);
            if (outbid != nobody) waiting.push_back(outbid);
        }
    }

    bool has_nearly_all() const {
        const auto entries = static_cast<std::size_t>(std::count_if(
            m_owners.begin(), m_owners.end(), [](int owner) { return owner != nobody; }));
        return (m_exits.size() - entries) * exits_for_one_without <= m_exits.size();
    }

    /// An entry costs its price more, and an exit gets off what its cheapest entry costs.
    std::vector<double> node_prices() const {
        std::vector<double> prices(m_prices.size(), 0.0);
        for (int node = 0; node < m_neighbours.nodes(); ++node) {
            if (m_types[at(node)] == TravelEndType::entered) prices[at(node)] = -m_prices[at(node)];
        }
        for (const int exit : m_exits) prices[at(exit)] = two_cheapest(exit).first_cost;
        return prices;
    }

  private:
    struct Cheapest {
        int entry = nobody;
        double first_cost = 0.0;
        double second_cost = 0.0;
    };

    double limit(int exit) const {
        const TravelNeighbour* const end = m_neighbours.end(exit);
        return farthest_neighbours * (end - 1)->cost;
    }

    Cheapest two_cheapest(int exit) const {
        Cheapest found;
        found.first_cost = found.second_cost = limit(exit);
        const TravelNeighbour* const end = m_neighbours.end(exit);
        for (const TravelNeighbour* to = m_neighbours.begin(exit); to != end; ++to) {
            if (to->cost >= found.second_cost) break;  // a price is never below 0
            const double cost = to->cost + m_prices[at(to->node)];
            if (cost < found.first_cost) {
                found.second_cost = found.first_cost;
                found.first_cost = cost;
                found.entry = to->node;
            } else {
                found.second_cost = std::min(found.second_cost, cost);
            }
        }
        return found;
    }

    // Returns the exit that loses its entry.
    int bid(int exit, double least_bid) {
        const Cheapest found = two_cheapest(exit);
        if (found.entry == nobody) return nobody;
        m_prices[at(found.entry)] += found.second_cost - found.first_cost + least_bid;
        return std::exchange(m_owners[at(found.entry)], exit);
    }

    const TravelNeighbours& m_neighbours;
    const std::vector<TravelEndType>& m_types;
    std::vector<int> m_exits;
    std::vector<double> m_prices;  // by node, of entries
    std::vector<int> m_owners;     // by node, of entries
};

}  // namespace

bool are_nearly_all_one_way(const std::vector<TravelEndType>& types) {
    const auto any = std::count(types.begin(), types.end(), TravelEndType::any);
    return static_cast<std::size_t>(any) * nodes_for_one_without <= types.size();
}

std::vector<double> one_way_prices(const TravelNeighbours& neighbours,
                                   const std::vector<TravelEndType>& types) {
    Auction auction(neighbours, types);
    double least_bid = auction.mean_of_nearest() * first_bid;
    if (!(least_bid > 0.0)) return {};
    for (int phase = 0; phase < phases; ++phase, least_bid /= finer) auction.run(least_bid);
    return auction.has_nearly_all() ? auction.node_prices() : std::vector<double>();
}

void take_off(const std::vector<double>& prices, TravelNeighbours& neighbours) {
    for (int node = 0; node < neighbours.nodes(); ++node) {
        for (std::size_t i = neighbours.begins[at(node)]; i < neighbours.begins[at(node + 1)];
             ++i) {
            TravelNeighbour& to = neighbours.all[i];
            to.cost -= prices[at(node)] + prices[at(to.node)];
        }
        neighbours.sort(neighbours.begins[at(node)], neighbours.begins[at(node + 1)]);
    }
}

}  // namespace nmk_ordering

#include "travel_turns.h"

#include <algorithm>
#include <array>
#include <limits>

namespace nmk_ordering {

namespace {

constexpr double unreachable = std::numeric_limits<double>::infinity();

std::size_t at(int index) { return static_cast<std::size_t>(index); }

class TurnChoice {
  public:
    TurnChoice(const TravelNetwork& network, const std::vector<int>& order)
        : m_network(network), m_order(order), m_came_from(order.size()) {}

    /// The least length where the first item is cut in the direction `first`.
    double choose(bool first) {
        m_first = first;
        std::array<double, 2> costs = {unreachable, unreachable};
        const int start = m_network.start_node();
        const int entry = m_network.entry_node(m_order.front(), first);
        costs[first ? 1 : 0] = start >= 0 ? m_network.leg(start, entry) : 0.0;
        for (std::size_t k = 1; k < m_order.size(); ++k) costs = step(k, costs);
        const int end = m_network.end_node() >= 0 ? m_network.end_node() : entry;
        for (const bool turn : {false, true}) {
            costs[turn ? 1 : 0] += m_network.leg(m_network.exit_node(m_order.back(), turn), end);
        }
        m_last = costs[1] < costs[0];
        return std::min(costs[0], costs[1]);
    }

    void store(std::vector<bool>& is_reversed) const {
        bool turn = m_last;
        for (std::size_t k = m_order.size(); k-- > 1;) {
            is_reversed[at(m_order[k])] = turn;
            turn = m_came_from[k][turn ? 1 : 0];
        }
        is_reversed[at(m_order.front())] = m_first;
    }

  private:
    std::array<double, 2> step(std::size_t k, const std::array<double, 2>& costs) {
        std::array<double, 2> next = {unreachable, unreachable};
        for (const bool turn : {false, true}) {
            if (turn && !m_network.may_reverse(m_order[k])) break;
            const int entry = m_network.entry_node(m_order[k], turn);
            for (const bool before : {false, true}) {
                if (costs[before ? 1 : 0] == unreachable) continue;
                const int exit = m_network.exit_node(m_order[k - 1], before);
                const double cost = costs[before ? 1 : 0] + m_network.leg(exit, entry);
                if (cost >= next[turn ? 1 : 0]) continue;
                next[turn ? 1 : 0] = cost;
                m_came_from[k][turn ? 1 : 0] = before;
            }
        }
        return next;
    }

    const TravelNetwork& m_network;
    const std::vector<int>& m_order;
    std::vector<std::array<bool, 2>> m_came_from;  // by place: the direction of the item before
    bool m_first = false;
    bool m_last = false;
};

}  // namespace

void choose_turns(const TravelNetwork& network, TravelSequence& sequence) {
    if (sequence.order.empty()) return;
    TurnChoice choice(network, sequence.order);
    const double forwards = choice.choose(false);
    if (network.may_reverse(sequence.order.front()) && choice.choose(true) >= forwards) {
        choice.choose(false);
    }
    choice.store(sequence.is_reversed);
}

}  // namespace nmk_ordering

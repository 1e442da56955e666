#include "travel_exact.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <vector>

namespace nmk_ordering {

namespace {

using Kind = nmkTravelEnd::Kind;
using Set = unsigned;  // of items, a bit each

constexpr double unreachable = std::numeric_limits<double>::infinity();

std::size_t at(int index) { return static_cast<std::size_t>(index); }
Set bit(int item) { return 1U << static_cast<unsigned>(item); }

// Which item may follow which. A group that was entered is finished before another item is; only
// that of the first item of a closed travel may be left, and is then finished at the end, since
// there the end and the start are neighbours.
class Succession {
  public:
    explicit Succession(const TravelNetwork& network)
        : m_network(network), m_groups(network.group_of_items()), m_all(bit(network.items()) - 1) {
        for (const nmkTravelGroup& group : network.problem().groups) {
            Set items = 0;
            for (const int item : group.items) items |= bit(item);
            m_items.push_back(items);
        }
    }

    Set all() const { return m_all; }

    bool may_begin(int item) const {
        return (!keeps_order(item) || group(item).items.front() == item) && may_end(0, item);
    }
    bool may_follow(Set done, int first, int last, int item) const {
        if (m_groups[at(item)] == m_groups[at(last)] && m_groups[at(item)] >= 0) {
            return may_end(done, item) && (!keeps_order(item) || follows(last, item));
        }
        return may_leave(done, first, last) && may_enter(done, first, item) && may_end(done, item);
    }

  private:
    bool keeps_order(int item) const { return m_groups[at(item)] >= 0 && group(item).keeps_order; }
    const nmkTravelGroup& group(int item) const {
        return m_network.problem().groups[at(m_groups[at(item)])];
    }
    Set items_of_group(int item) const { return m_items[at(m_groups[at(item)])]; }
    bool goes_over_the_end(int item, int first) const {
        return m_network.is_closed() && m_network.start_node() < 0 && !keeps_order(first) &&
               m_groups[at(item)] == m_groups[at(first)];
    }
    bool follows(int last, int item) const {
        const std::vector<int>& items = group(item).items;
        const auto place = std::find(items.begin(), items.end(), item);
        return place != items.begin() && *(place - 1) == last;
    }
    bool may_leave(Set done, int first, int last) const {
        if (m_groups[at(last)] < 0) return true;
        return (items_of_group(last) & ~done) == 0 || goes_over_the_end(last, first);
    }
    bool may_enter(Set done, int first, int item) const {
        if (m_groups[at(item)] < 0) return true;
        if ((items_of_group(item) & done) == 0) {
            return !keeps_order(item) || group(item).items.front() == item;
        }
        return goes_over_the_end(item, first) && (m_all & ~done & ~items_of_group(item)) == 0;
    }
    // The end item is the last.
    bool may_end(Set done, int item) const {
        const nmkTravelEnd& end = m_network.problem().end;
        return end.kind != Kind::item || (item == end.item) == ((done | bit(item)) == m_all);
    }

    const TravelNetwork& m_network;
    std::vector<int> m_groups;
    std::vector<Set> m_items;  // by group
    Set m_all;
};

// The table of one first item and its direction.
class SubsetTable {
  public:
    SubsetTable(const TravelNetwork& network, const Succession& succession)
        : m_network(network),
          m_succession(succession),
          m_states(2 * network.items()),
          m_costs((std::size_t{succession.all()} + 1) * at(m_states)),
          m_came_from(m_costs.size()),
          m_legs(at(m_states) * at(m_states)) {
        for (int from = 0; from < m_states; ++from) {
            for (int to = 0; to < m_states; ++to) {
                m_legs[at(from * m_states + to)] = network.leg(exit_node(from), entry_node(to));
            }
        }
    }

    /// The least length of a travel that begins with a state, twice an item and one more if
    /// reversed.
    double fill(int first) {
        std::fill(m_costs.begin(), m_costs.end(), unreachable);
        const int start = m_network.start_node();
        m_costs[cell(bit(first / 2), first)] =
            start >= 0 ? m_network.leg(start, entry_node(first)) : 0.0;
        for (Set done = 1; done < m_succession.all(); ++done) {
            for (int last = 0; last < m_states; ++last) extend(done, first, last);
        }
        const int end = m_network.end_node() >= 0 ? m_network.end_node() : entry_node(first);
        double least = unreachable;
        for (int last = 0; last < m_states; ++last) {
            const double cost = m_costs[cell(m_succession.all(), last)];
            if (cost == unreachable) continue;
            const double length = cost + m_network.leg(exit_node(last), end);
            if (length >= least) continue;
            least = length;
            m_last = last;
        }
        return least;
    }

    TravelSequence sequence() const {
        TravelSequence sequence;
        sequence.order.resize(at(m_network.items()));
        sequence.is_reversed.assign(sequence.order.size(), false);
        Set done = m_succession.all();
        int state = m_last;
        for (std::size_t k = sequence.order.size(); k-- > 0;) {
            sequence.order[k] = state / 2;
            sequence.is_reversed[at(state / 2)] = state % 2 != 0;
            const int before = m_came_from[cell(done, state)];
            done &= ~bit(state / 2);
            state = before;
        }
        return sequence;
    }

  private:
    int entry_node(int state) const { return m_network.entry_node(state / 2, state % 2 != 0); }
    int exit_node(int state) const { return m_network.exit_node(state / 2, state % 2 != 0); }
    std::size_t cell(Set done, int last) const {
        return std::size_t{done} * at(m_states) + at(last);
    }

    void extend(Set done, int first, int last) {
        const double cost = m_costs[cell(done, last)];
        if (cost == unreachable) return;
        for (int next = 0; next < m_states; ++next) {
            const int item = next / 2;
            if ((done & bit(item)) != 0) continue;
            if (next % 2 != 0 && !m_network.may_reverse(item)) continue;
            if (!m_succession.may_follow(done, first / 2, last / 2, item)) continue;
            const double length = cost + m_legs[at(last * m_states + next)];
            double& least = m_costs[cell(done | bit(item), next)];
            if (length >= least) continue;
            least = length;
            m_came_from[cell(done | bit(item), next)] = static_cast<std::int8_t>(last);
        }
    }

    const TravelNetwork& m_network;
    const Succession& m_succession;
    int m_states;
    std::vector<double> m_costs;           // by set and last state
    std::vector<std::int8_t> m_came_from;  // likewise
    std::vector<double> m_legs;            // by two states
    int m_last = 0;
};

// A ring may begin anywhere; an open travel begins with the start item, or with each.
std::vector<int> first_items(const TravelNetwork& network, const Succession& succession) {
    const nmkTravelEnd& start = network.problem().start;
    if (start.kind == Kind::item) return {start.item};
    std::vector<int> items;
    const bool is_ring = network.is_closed() && network.start_node() < 0;
    for (int item = 0; item < network.items(); ++item) {
        if (!succession.may_begin(item)) continue;
        items.push_back(item);
        if (is_ring) break;
    }
    return items;
}

}  // namespace

TravelSequence exact_sequence(const TravelNetwork& network) {
    const Succession succession(network);
    SubsetTable table(network, succession);
    TravelSequence best;
    double least = unreachable;
    for (const int item : first_items(network, succession)) {
        for (int turn = 0; turn < (network.may_reverse(item) ? 2 : 1); ++turn) {
            const double length = table.fill(2 * item + turn);
            if (length >= least) continue;
            least = length;
            best = table.sequence();
        }
    }
    network.begin_at_start(best);
    return best;
}

}  // namespace nmk_ordering

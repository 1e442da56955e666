#include "travel_start.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

#include "travel_turns.h"

namespace nmk_ordering {

namespace {

using Kind = nmkTravelEnd::Kind;

std::size_t at(int index) { return static_cast<std::size_t>(index); }

constexpr std::uint32_t curve_side = 65536;  // cells of the curve along each side of its square

// The place of a cell along the curve: Hilbert's, from the largest squares to the smallest.
std::uint32_t place_on_curve(std::uint32_t x, std::uint32_t y) {
    std::uint32_t place = 0;
    for (std::uint32_t side = curve_side / 2; side > 0; side /= 2) {
        const bool right = (x & side) != 0;
        const bool upper = (y & side) != 0;
        place = place * 4 + ((right ? 3U : 0U) ^ (upper ? 1U : 0U));
        if (upper) continue;
        if (right) {
            x = curve_side - 1 - x;
            y = curve_side - 1 - y;
        }
        std::swap(x, y);
    }
    return place;
}

class Curve {
  public:
    explicit Curve(const std::vector<TravelPoint>& points) {
        std::array<double, 3> low{}, sides{};
        for (int axis = 0; axis < 3; ++axis) {
            double least = coordinate(points.front(), axis);
            double largest = least;
            for (const TravelPoint& p : points) {
                least = std::min(least, coordinate(p, axis));
                largest = std::max(largest, coordinate(p, axis));
            }
            low[at(axis)] = least;
            sides[at(axis)] = largest - least;
        }
        m_axes = {0, 1};
        if (sides[2] > std::min(sides[0], sides[1])) m_axes[sides[0] < sides[1] ? 0 : 1] = 2;
        m_low = {low[at(m_axes[0])], low[at(m_axes[1])]};
        m_side = std::max(sides[at(m_axes[0])], sides[at(m_axes[1])]);
    }

    std::uint32_t place(const TravelPoint& p) const {
        return place_on_curve(cell(p, 0), cell(p, 1));
    }

  private:
    std::uint32_t cell(const TravelPoint& p, std::size_t side) const {
        if (!(m_side > 0.0)) return 0;
        const double part = (coordinate(p, m_axes[side]) - m_low[side]) / m_side;
        return static_cast<std::uint32_t>(part * static_cast<double>(curve_side - 1));
    }

    std::array<int, 2> m_axes{};
    std::array<double, 2> m_low{};
    double m_side = 0.0;
};

// What an item is sorted by: first its block, a group or itself, then its place in that.
struct Key {
    int block_rank;  // 0 for the first block of the travel, 1, 2 for the last
    std::uint32_t block_place;
    int block;  // so that blocks of one place are not mixed
    int rank;
    std::uint32_t place;
    int item;

    bool operator<(const Key& other) const {
        if (block_rank != other.block_rank) return block_rank < other.block_rank;
        if (block_place != other.block_place) return block_place < other.block_place;
        if (block != other.block) return block < other.block;
        if (rank != other.rank) return rank < other.rank;
        return place != other.place ? place < other.place : item < other.item;
    }
};

class Keys {
  public:
    explicit Keys(const TravelNetwork& network)
        : m_network(network), m_curve(network.points()), m_groups(network.group_of_items()) {
        for (int item = 0; item < network.items(); ++item) {
            const int group = m_groups[at(item)];
            m_keys.push_back({1, place(group < 0 ? item : first_of(group)),
                              group < 0 ? network.items() + item : group, 1, place(item), item});
        }
        const nmkTravelProblem& problem = network.problem();
        for (const nmkTravelGroup& group : problem.groups) {
            for (std::size_t k = 0; k < group.items.size() && group.keeps_order; ++k) {
                m_keys[at(group.items[k])].place = static_cast<std::uint32_t>(k);
            }
        }
        if (problem.start.kind == Kind::item) move_to(problem.start.item, 0);
        if (problem.end.kind == Kind::item) move_to(problem.end.item, 2);
    }

    std::vector<int> sorted() {
        std::sort(m_keys.begin(), m_keys.end());
        std::vector<int> order;
        order.reserve(m_keys.size());
        for (const Key& key : m_keys) order.push_back(key.item);
        return order;
    }

  private:
    int first_of(int group) const { return m_network.problem().groups[at(group)].items.front(); }
    std::uint32_t place(int item) const {
        return m_curve.place(m_network.points()[at(m_network.first_node(item))]);
    }
    // A group that keeps its order has the item at that end already.
    void move_to(int item, int rank) {
        const int group = m_groups[at(item)];
        m_keys[at(item)].block_rank = rank;
        if (group < 0) return;
        const nmkTravelGroup& of_item = m_network.problem().groups[at(group)];
        for (const int other : of_item.items) m_keys[at(other)].block_rank = rank;
        if (!of_item.keeps_order) m_keys[at(item)].rank = rank;
    }

    const TravelNetwork& m_network;
    Curve m_curve;
    std::vector<int> m_groups;
    std::vector<Key> m_keys;
};

}  // namespace

TravelSequence start_sequence(const TravelNetwork& network) {
    TravelSequence sequence;
    sequence.order = Keys(network).sorted();
    sequence.is_reversed.assign(sequence.order.size(), false);
    choose_turns(network, sequence);
    return sequence;
}

}  // namespace nmk_ordering

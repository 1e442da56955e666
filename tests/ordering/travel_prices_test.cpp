// Tests of the prices of one-way lines, beside the plain assignment.
#include <gtest/gtest.h>
#include <nmktoolbox/ordering/nmkTravelOrder.h>

#include <algorithm>
#include <random>
#include <utility>
#include <vector>

#include "ordering/plain_assignment.h"
#include "ordering/travel_prices.h"

namespace {

using nmk_ordering::TravelEndType;
using nmk_ordering::TravelNeighbours;

// One-way lines with random ends; line i is entered at node 2i and left at node 2i + 1.
class Lines {
  public:
    Lines(std::size_t count, std::uint32_t seed) : m_count(count) {
        std::mt19937 words(seed);
        for (std::size_t node = 0; node < 2 * count; ++node) {
            const double x = static_cast<double>(words() % 1000);
            m_points.emplace_back(x, static_cast<double>(words() % 1000), 0.0);
        }
    }

    double leg(std::size_t from_line, std::size_t to_line) const {
        return m_points[2 * from_line + 1].distance(m_points[2 * to_line]);
    }

    double assignment() const {
        std::vector<double> costs;
        for (std::size_t from = 0; from < m_count; ++from) {
            for (std::size_t to = 0; to < m_count; ++to) {
                costs.push_back(from == to ? 1e6 : leg(from, to));
            }
        }
        return plain::Assignment(costs, m_count).cost();
    }

    // The nearest entries of each exit, and all as mutual neighbours.
    TravelNeighbours neighbours(std::size_t count_of_each) const {
        TravelNeighbours lists;
        for (std::size_t node = 0; node < 2 * m_count; ++node) {
            const std::size_t first = lists.all.size();
            lists.begins.push_back(first);
            if (node % 2 == 0) continue;
            for (std::size_t to = 0; to < m_count; ++to) {
                if (to != node / 2)
                    lists.all.push_back({leg(node / 2, to), static_cast<int>(2 * to)});
            }
            lists.sort(first, lists.all.size());
            lists.all.resize(std::min(lists.all.size(), first + count_of_each));
        }
        lists.begins.push_back(lists.all.size());
        make_mutual(lists);
        return lists;
    }

    std::vector<TravelEndType> types() const {
        std::vector<TravelEndType> types;
        for (std::size_t node = 0; node < 2 * m_count; ++node) {
            types.push_back(node % 2 == 0 ? TravelEndType::entered : TravelEndType::left);
        }
        return types;
    }

    nmkTravelProblem problem() const {
        nmkTravelProblem problem;
        problem.end = nmkTravelEnd::at_start();
        for (std::size_t line = 0; line < m_count; ++line) {
            problem.items.push_back(
                nmkTravelItem::one_way_line(m_points[2 * line], m_points[2 * line + 1]));
        }
        return problem;
    }

  private:
    std::size_t m_count;
    std::vector<giPoint3> m_points;
};

double sum_of(const std::vector<double>& prices) {
    double sum = 0.0;
    for (const double price : prices) sum += price;
    return sum;
}

TEST(one_way_prices, sum_up_to_nearly_the_shortest_assignment_and_never_to_more) {
    for (std::uint32_t seed = 1; seed <= 20; ++seed) {
        const Lines lines(20 + 5 * seed, seed);
        const double least = lines.assignment();
        const double sum = sum_of(one_way_prices(lines.neighbours(1000), lines.types()));
        EXPECT_LE(sum, least * (1.0 + 1e-12)) << seed;
        EXPECT_GE(sum, least * 0.99) << seed;
    }
}

TEST(one_way_prices, leave_no_leg_between_neighbours_below_nothing) {
    const Lines lines(200, 3);
    TravelNeighbours neighbours = lines.neighbours(24);
    take_off(one_way_prices(neighbours, lines.types()), neighbours);
    for (const nmk_ordering::TravelNeighbour& neighbour : neighbours.all) {
        EXPECT_GE(neighbour.cost, -1e-9);
    }
}

// Of three exits for one entry two get none, after a bounded number of bids.
TEST(one_way_prices, are_empty_where_many_exits_cannot_be_assigned) {
    TravelNeighbours neighbours;
    neighbours.begins = {0, 3, 4, 5, 6};
    neighbours.all = {{1.0, 1}, {2.0, 2}, {3.0, 3}, {1.0, 0}, {2.0, 0}, {3.0, 0}};
    EXPECT_TRUE(one_way_prices(neighbours, {TravelEndType::entered, TravelEndType::left,
                                            TravelEndType::left, TravelEndType::left})
                    .empty());
}

// The same lists without a node.
TravelNeighbours without(const TravelNeighbours& lists, int node) {
    TravelNeighbours fewer;
    for (int from = 0; from < lists.nodes(); ++from) {
        fewer.begins.push_back(fewer.all.size());
        for (const auto* to = lists.begin(from); to != lists.end(from); ++to) {
            if (from != node && to->node != node) fewer.all.push_back(*to);
        }
    }
    fewer.begins.push_back(fewer.all.size());
    return fewer;
}

TEST(one_way_prices, are_of_use_with_one_exit_in_50_without_an_entry) {
    for (const std::size_t count : {49U, 50U}) {
        const Lines lines(count, 2);
        std::vector<TravelEndType> types = lines.types();
        types[0] = TravelEndType::any;
        const auto prices = one_way_prices(without(lines.neighbours(1000), 0), types);
        EXPECT_EQ(prices.empty(), count == 49) << count;
        EXPECT_TRUE(prices.empty() || prices[0] == 0.0);
    }
}

TEST(take_off, leaves_the_prices_of_both_ends_off_and_sorts_each_list_again) {
    TravelNeighbours neighbours;
    neighbours.begins = {0, 2, 4, 5, 6};
    neighbours.all = {{4.0, 2}, {5.0, 3}, {1.0, 2}, {2.0, 3}, {4.0, 0}, {5.0, 0}};
    nmk_ordering::take_off({1.0, 0.5, -2.0, 1.5}, neighbours);
    std::vector<std::pair<double, int>> left;
    for (const nmk_ordering::TravelNeighbour& to : neighbours.all) {
        left.emplace_back(to.cost, to.node);
    }
    EXPECT_EQ(left, (std::vector<std::pair<double, int>>{
                        {2.5, 3}, {5.0, 2}, {0.0, 3}, {2.5, 2}, {5.0, 0}, {2.5, 0}}));
}

TEST(one_way_prices, are_of_use_with_one_other_node_in_20) {
    std::vector<TravelEndType> types = Lines(200, 1).types();
    std::fill_n(types.begin(), 20, TravelEndType::any);
    EXPECT_TRUE(nmk_ordering::are_nearly_all_one_way(types));
    types[20] = TravelEndType::any;
    EXPECT_FALSE(nmk_ordering::are_nearly_all_one_way(types));
}

TEST(one_way_prices, are_empty_where_all_legs_cost_nothing) {
    TravelNeighbours neighbours;
    neighbours.begins = {0, 1, 2};
    neighbours.all = {{0.0, 1}, {0.0, 0}};
    EXPECT_TRUE(one_way_prices(neighbours, {TravelEndType::entered, TravelEndType::left}).empty());
}

TEST(one_way_prices, are_empty_without_one_way_lines) {
    const Lines lines(10, 1);
    const std::vector<TravelEndType> any(20, TravelEndType::any);
    EXPECT_TRUE(one_way_prices(lines.neighbours(5), any).empty());
}

// No order of one-way lines is shorter than the assignment of their exits to their entries.
TEST(nmkTravelOrder_one_way_lines, come_within_2_percent_of_the_shortest_assignment) {
    const Lines lines(300, 5);
    nmkTravelOrder order(lines.problem());
    order.set_steps(300);
    const double least = lines.assignment();
    const double length = order.find().length;
    EXPECT_GE(length, least * (1.0 - 1e-12));
    EXPECT_LE(length, least * 1.02);
}

}  // namespace

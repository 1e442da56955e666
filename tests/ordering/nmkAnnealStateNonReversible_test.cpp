// nmkAnnealStateNonReversible_test.cpp: lines that may be cut one way only.

#include <gtest/gtest.h>
#include <nmkarcline/nmkDebugGeometry.h>

#include <algorithm>
#include <limits>
#include <numeric>
#include <vector>

#include "ordering/plain_problems.h"

namespace {

using plain::Inside;
using plain::items_of;
using plain::Spread;
using plain::TwoArrays;

struct OpenOneWay : nmkAnnealStateNonReversible {
    using nmkAnnealStateNonReversible::nmkAnnealStateNonReversible;
    using nmkAnnealStateNonReversible::operator=;
    using nmkAnnealOrderState::candidate_1;
    using nmkAnnealOrderState::candidate_2;
    using nmkAnnealOrderState::candidate_distance;
    using nmkAnnealOrderState::distance_value;
    using nmkAnnealOrderState::random;
    using nmkAnnealStateNonReversible::get_candidates;
    using nmkAnnealStateNonReversible::update_candidate_distance;
    double distance(int a, int b) override {
        ++distances;
        return nmkAnnealStateNonReversible::distance(a, b);
    }
    int distances = 0;
};

double shortest_by_trying_all(nmkAnnealStateNonReversible& state, int n, bool closed) {
    std::vector<int> order(static_cast<std::size_t>(n));
    std::iota(order.begin(), order.end(), 0);
    double shortest = std::numeric_limits<double>::max();
    do {
        double length = closed ? state.distance(order.back(), order.front()) : 0.0;
        for (std::size_t k = 1; k < order.size(); ++k) {
            length += state.distance(order[k - 1], order[k]);
        }
        shortest = std::min(shortest, length);
    } while (std::next_permutation(order.begin(), order.end()));
    return shortest;
}

TEST(nmkAnnealStateNonReversible, ignores_z_in_distances) {
    giPoint3coPageArr starts, ends;
    starts.add(giPoint3(1, 2, 3));
    ends.add(giPoint3(1, 2, 300));
    EXPECT_EQ(nmkAnnealStateNonReversible(starts, ends, 0).distance(0, 0), 0.0);
}

TEST(nmkAnnealStateNonReversible, solves_up_to_nine_lines_exactly) {
    for (int n = 2; n <= 9; ++n) {
        for (int closed = 0; closed < 2; ++closed) {
            const TwoArrays arrays(Spread::space, n, static_cast<std::uint32_t>(n));
            nmkAnnealStateNonReversible state(arrays.starts, arrays.ends, closed);
            EXPECT_EQ(state.initialise(), -1.0);
            EXPECT_NEAR(state.length(), shortest_by_trying_all(state, n, closed != 0), 1e-9);
            EXPECT_NEAR(Inside::length_of(state), state.length(), 1e-9);
            std::vector<int> items = items_of(state);
            if (closed != 0) {
                EXPECT_EQ(items.back(), n - 1);
            }
            std::sort(items.begin(), items.end());
            for (int k = 0; k < n; ++k) EXPECT_EQ(items[static_cast<std::size_t>(k)], k);
        }
    }
}

// Lines 1 and 2 are alike, and line 0 belongs last: 1 2 0 and 2 1 0 are equally short, and the
// first of them is met first.
TEST(nmkAnnealStateNonReversible, keeps_the_first_of_two_orders_that_are_equally_short) {
    giPoint3coPageArr starts, ends;
    starts.add(giPoint3(10, 0, 0));
    ends.add(giPoint3(99, 99, 0));
    for (int k = 1; k < 3; ++k) {
        starts.add(giPoint3(0, 0, 0));
        ends.add(giPoint3(10, 0, 0));
    }
    nmkAnnealStateNonReversible state(starts, ends, 0);
    EXPECT_EQ(state.initialise(), -1.0);
    EXPECT_EQ(items_of(state), (std::vector<int>{1, 2, 0}));
    EXPECT_EQ(Inside::length_of(state), 10.0);
}

TEST(nmkAnnealStateNonReversible, is_left_in_order_with_one_line_or_none) {
    for (int n = 0; n <= 1; ++n) {
        const TwoArrays arrays(Spread::space, n, 4);
        nmkAnnealStateNonReversible state(arrays.starts, arrays.ends, 1);
        EXPECT_EQ(state.initialise(), -1.0);
        EXPECT_EQ(Inside::length_of(state), -1.0);
        EXPECT_EQ(items_of(state), std::vector<int>(static_cast<std::size_t>(n), 0));
    }
}

TEST(nmkAnnealStateNonReversible, keeps_item_1_last_in_a_closed_tour_of_two) {
    const TwoArrays arrays(Spread::space, 2, 6);
    nmkAnnealStateNonReversible state(arrays.starts, arrays.ends, 1);
    EXPECT_EQ(state.initialise(), -1.0);
    EXPECT_EQ(items_of(state), (std::vector<int>{0, 1}));
}

TEST(nmkAnnealStateNonReversible, solves_nine_lines_and_anneals_ten) {
    const TwoArrays nine(Spread::square, 9, 13), ten(Spread::square, 10, 13);
    nmkAnnealStateNonReversible state9(nine.starts, nine.ends, 0), best9(nine.starts, nine.ends, 0);
    nmkAnneal anneal9(state9, best9);
    anneal9.simulate();
    EXPECT_EQ(anneal9.num_iterations_used(), 0);
    EXPECT_NEAR(best9.length(), shortest_by_trying_all(best9, 9, false), 1e-9);
    nmkAnnealStateNonReversible state10(ten.starts, ten.ends, 0), best10(ten.starts, ten.ends, 0);
    nmkAnneal anneal10(state10, best10);
    anneal10.simulate();
    EXPECT_GE(anneal10.num_iterations_used(), 15000);
}

TEST(nmkAnnealStateNonReversible, predicts_the_length_of_every_move_with_ten_distances) {
    for (int closed = 0; closed < 2; ++closed) {
        const TwoArrays arrays(Spread::space, 11, 15);
        OpenOneWay state(arrays.starts, arrays.ends, closed);
        state.initialise();
        state.randomise();
        for (int k = 0; k < 3000; ++k) {
            state.distances = 0;
            const double predicted = state.candidate_new_state();
            ASSERT_LE(state.distances, 10);
            state.accept_new_state();
            ASSERT_NEAR(predicted, state.length(), 1e-8) << k;
            ASSERT_EQ(state.distance_value, predicted);
            ASSERT_EQ(state.candidate_distance, predicted);  // stays as it is
            ASSERT_LT(state.candidate_1, state.candidate_2);
        }
        std::vector<int> items = items_of(state);
        std::sort(items.begin(), items.end());
        for (int k = 0; k < 11; ++k) EXPECT_EQ(items[static_cast<std::size_t>(k)], k);
    }
}

TEST(nmkAnnealStateNonReversible, counts_no_edge_twice_between_adjacent_blocks) {
    const TwoArrays arrays(Spread::space, 12, 17);
    OpenOneWay state(arrays.starts, arrays.ends, 1);
    state.initialise();
    state.candidate_1 = 3;
    state.candidate_2 = 4;  // room for blocks of one only, which touch
    state.distances = 0;
    state.update_candidate_distance();
    EXPECT_EQ(state.distances, 3 + 4 - 1);
    state.accept_new_state();
    EXPECT_EQ(items_of(state), (std::vector<int>{0, 1, 2, 4, 3, 5, 6, 7, 8, 9, 10, 11}));
    EXPECT_NEAR(state.distance_value, state.length(), 1e-9);
    // And across the end of the order: block B at 11 runs into block A at 0.
    state.candidate_1 = 0;
    state.candidate_2 = 11;
    state.update_candidate_distance();
    state.accept_new_state();
    EXPECT_EQ(items_of(state).front(), 11);
    EXPECT_NEAR(state.distance_value, state.length(), 1e-9);
}

TEST(nmkAnnealStateNonReversible, copies_neither_closedness_nor_another_kind) {
    const TwoArrays arrays(Spread::space, 12, 19);
    OpenOneWay open(arrays.starts, arrays.ends, 0), closed(arrays.starts, arrays.ends, 1);
    open.initialise();
    open.randomise();
    closed = static_cast<const nmkAnnealState&>(open);
    EXPECT_EQ(items_of(closed), items_of(open));
    EXPECT_GT(closed.length(), open.length());
    nmkAnnealStatePoints other(&arrays.starts);
    closed = static_cast<const nmkAnnealState&>(other);
    EXPECT_EQ(items_of(closed), items_of(open));
}

TEST(nmkAnnealStateNonReversible, draws_its_lines_on_the_debug_channel) {
    const TwoArrays arrays(Spread::space, 3, 20);
    nmkDebugGeometry& channel = nmkDebugGeometry::get_from_manager("nmkAnnealStateNonReversible");
    nmkAnnealStateNonReversible state(arrays.starts, arrays.ends, 0);
    channel.clear();
    state.initialise();
    EXPECT_EQ(channel.size(), 0);
    channel.switch_on(1);
    state.initialise();
    EXPECT_EQ(channel.size(), 3);
    channel.switch_off();
    channel.clear();
}

}  // namespace

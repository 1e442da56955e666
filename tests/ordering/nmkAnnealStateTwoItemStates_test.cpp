// nmkAnnealStateTwoItemStates_test.cpp: toolpaths that can be run in two ways.

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "ordering/plain_problems.h"

namespace {

using plain::items_of;
using Array = nmkAnnealItemTPcoPageArrPrfINTERNALcoPrfcoPageArr;

// Run from one end in state 0, from the other in any other state.
struct TwoWay : nmkAnnealItemTP {
    TwoWay(giPoint3 a, giPoint3 b) : from(a), to(b) {}
    giPoint3 start_point(int state) const override { return state == 0 ? from : to; }
    giPoint3 end_point(int state) const override { return state == 0 ? to : from; }
    giPoint3 from, to;
};

Array toolpaths(int n) {
    const auto points = plain::spread_points(plain::Spread::space, 2 * n, 61);
    Array array;
    for (std::size_t k = 0; k < points.size(); k += 2) {
        const auto &a = points[k], &b = points[k + 1];
        array.add(nmkAnnealItemTPcoPageArrPrfINTERNALcoPrf(
            new TwoWay(giPoint3(a.x, a.y, a.z), giPoint3(b.x, b.y, b.z))));
    }
    return array;
}

struct OpenState : nmkAnnealStateTwoItemStates {
    using nmkAnnealOrderState::candidate_1;
    using nmkAnnealOrderState::candidate_2;
    using nmkAnnealOrderState::candidate_distance;
    using nmkAnnealOrderState::distance_value;
    using nmkAnnealOrderState::item_states;
    using nmkAnnealOrderState::random;
    using nmkAnnealStateTwoItemStates::candidate_flip_state;
    using nmkAnnealStateTwoItemStates::candidate_swap_state;
    using nmkAnnealStateTwoItemStates::flip_item_state;
    using nmkAnnealStateTwoItemStates::has_valid_candidate;
    using nmkAnnealStateTwoItemStates::has_valid_flip_candidate;
    using nmkAnnealStateTwoItemStates::has_valid_swap_candidate;
    using nmkAnnealStateTwoItemStates::nmkAnnealStateTwoItemStates;
    using nmkAnnealStateTwoItemStates::num_item_states;
    using nmkAnnealStateTwoItemStates::operator=;
    double distance(int a, int b) override {
        ++distances;
        return nmkAnnealStateTwoItemStates::distance(a, b);
    }
    int distances = 0;
};

TEST(nmkAnnealStateTwoItemStates, is_ready_when_it_is_made) {
    OpenState state(toolpaths(5), 0);
    EXPECT_EQ(items_of(state), (std::vector<int>{0, 1, 2, 3, 4}));
    EXPECT_EQ(state.distance_value, state.length());
    EXPECT_EQ(state.num_item_states(0), 2);
    EXPECT_FALSE(state.has_valid_candidate());
}

TEST(nmkAnnealStateTwoItemStates, anneals_two_items_but_not_one) {
    for (int n = 0; n <= 1; ++n) EXPECT_EQ(OpenState(toolpaths(n), 1).initialise(), -1.0);
    OpenState state(toolpaths(2), 0), best(toolpaths(2), 0);
    EXPECT_GT(state.initialise(), 0.0);
    const double start = state.length();
    nmkAnneal anneal(state, best);
    anneal.simulate();
    EXPECT_GE(anneal.num_iterations_used(), 15000);
    EXPECT_LE(best.length(), start);
}

TEST(nmkAnnealStateTwoItemStates, looks_up_the_states_by_item) {
    OpenState state(toolpaths(3), 0);
    const double before = state.distance(0, 1);
    state.flip_item_state(1);
    EXPECT_NE(state.distance(0, 1), before);
    EXPECT_EQ(state.item_states[1], 1);
    state.flip_item_state(1);
    EXPECT_EQ(state.distance(0, 1), before);
    state.item_states[2] = 9;
    state.flip_item_state(2);
    EXPECT_EQ(state.item_states[2], 1);
}

TEST(nmkAnnealStateTwoItemStates, predicts_the_length_of_every_move) {
    for (int closed = 0; closed < 2; ++closed) {
        for (int n : {2, 3, 8}) {
            OpenState state(toolpaths(n), closed);
            state.randomise();
            for (int k = 0; k < 2000; ++k) {
                const double predicted = state.candidate_new_state();
                ASSERT_TRUE(state.has_valid_candidate());
                state.accept_new_state();
                ASSERT_NEAR(predicted, state.length(), 1e-8) << closed << ' ' << n << ' ' << k;
                ASSERT_EQ(state.candidate_1, -1);
            }
            std::vector<int> items = items_of(state);
            std::sort(items.begin(), items.end());
            for (int k = 0; k < n; ++k) ASSERT_EQ(items[static_cast<std::size_t>(k)], k);
        }
    }
}

TEST(nmkAnnealStateTwoItemStates, proposes_a_flip_a_quarter_of_the_time) {
    OpenState state(toolpaths(6), 0);
    int flips = 0;
    for (int k = 0; k < 4000; ++k) {
        state.candidate_new_state();
        if (state.has_valid_flip_candidate() && !state.has_valid_swap_candidate()) ++flips;
        state.accept_new_state();
    }
    EXPECT_NEAR(flips, 1000, 120);
}

TEST(nmkAnnealStateTwoItemStates, has_only_one_edge_at_the_ends_of_an_open_path) {
    for (int closed = 0; closed < 2; ++closed) {
        OpenState state(toolpaths(5), closed);
        bool seen[5] = {};
        for (int k = 0; k < 200; ++k) {
            state.initialise();
            state.distances = 0;
            state.candidate_flip_state();
            ASSERT_LT(state.distances, 5);
            seen[state.distances] = true;
        }
        EXPECT_EQ(seen[2], closed == 0);  // one edge, before and after
        EXPECT_TRUE(seen[4]);
    }
}

TEST(nmkAnnealStateTwoItemStates, does_nothing_without_a_valid_move) {
    OpenState state(toolpaths(4), 0);
    state.candidate_distance = 1.0;
    const double length = state.distance_value;
    state.accept_new_state();
    EXPECT_EQ(items_of(state), (std::vector<int>{0, 1, 2, 3}));
    EXPECT_EQ(state.distance_value, length);
}

TEST(nmkAnnealStateTwoItemStates, copies_paths_and_states_from_its_own_kind_only) {
    OpenState from(toolpaths(6), 1), to(toolpaths(3), 0);
    from.randomise();
    to = static_cast<const nmkAnnealState&>(from);
    EXPECT_EQ(items_of(to), items_of(from));
    EXPECT_EQ(to.length(), from.length());
    to = static_cast<const nmkAnnealState&>(nmkAnnealOrderState(2));
    EXPECT_EQ(items_of(to), items_of(from));
}

TEST(nmkAnnealStateTwoItemStates, does_not_copy_the_block_length) {
    OpenState from(toolpaths(6), 0), to(toolpaths(6), 0);
    from.candidate_swap_state();
    to = static_cast<const nmkAnnealState&>(from);
    EXPECT_TRUE(from.has_valid_swap_candidate());
    EXPECT_FALSE(to.has_valid_swap_candidate());
}

// A swap is valid between two positions in order, with blocks that fit between them.
TEST(nmkAnnealStateTwoItemStates, accepts_only_swaps_that_fit_into_the_order) {
    struct Swap {
        const char* name;
        int first, second;
        bool is_valid;
    };
    const Swap swaps[] = {{"as drawn", 1, 4, true},
                          {"before the first position", -1, 4, false},
                          {"past the last position", 1, 6, false},
                          {"one position only", 2, 2, false},
                          {"in falling order", 4, 1, false}};
    OpenState state(toolpaths(6), 0);
    for (const Swap& swap : swaps) {
        do {
            state.candidate_swap_state();
        } while (state.candidate_2 - state.candidate_1 != 1);  // blocks of one
        state.candidate_1 = swap.first;
        state.candidate_2 = swap.second;
        EXPECT_EQ(state.has_valid_swap_candidate(), swap.is_valid) << swap.name;
    }
}

TEST(nmkAnnealStateTwoItemStates, accepts_no_block_that_is_too_long) {
    OpenState state(toolpaths(6), 0);
    const auto needs_room = [&state] {  // drawn blocks that are longer than one
        state.candidate_swap_state();
        state.candidate_1 = 0;
        state.candidate_2 = 1;
        return !state.has_valid_swap_candidate();
    };
    bool is_found = false;
    for (int k = 0; k < 100 && !is_found; ++k) is_found = needs_room();
    ASSERT_TRUE(is_found);
    const std::vector<int> before = items_of(state);
    state.accept_new_state();
    EXPECT_EQ(items_of(state), before);
    state.candidate_2 = 3;
    EXPECT_TRUE(state.has_valid_swap_candidate());
}

TEST(nmkAnnealStateTwoItemStates, stays_as_it_is_when_assigned_to_itself) {
    OpenState state(toolpaths(5), 1);
    state.randomise();
    const std::vector<int> before = items_of(state);
    const double length = state.length();
    const nmkAnnealState& same = state;
    state = same;
    EXPECT_EQ(items_of(state), before);
    EXPECT_EQ(state.length(), length);
}

}  // namespace

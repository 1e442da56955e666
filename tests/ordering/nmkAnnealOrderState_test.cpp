// nmkAnnealOrderState_test.cpp: the common base of the ordering problems.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <set>
#include <utility>
#include <vector>

#include "ordering/plain_problems.h"

namespace {

using plain::items_of;

// Points on a line, with the protected operations made public and the calls of distance counted.
struct LineState : nmkAnnealOrderState {
    explicit LineState(int n) : nmkAnnealOrderState(n) {}
    using nmkAnnealOrderState::candidate_1;
    using nmkAnnealOrderState::candidate_2;
    using nmkAnnealOrderState::candidate_distance;
    using nmkAnnealOrderState::distance_value;
    using nmkAnnealOrderState::get_candidates;
    using nmkAnnealOrderState::item_states;
    using nmkAnnealOrderState::items;
    using nmkAnnealOrderState::normalise_index;
    using nmkAnnealOrderState::num_item_states;
    using nmkAnnealOrderState::random;
    using nmkAnnealOrderState::update_candidate_distance;
    using nmkAnnealOrderState::operator=;
    double distance(int a, int b) override {
        ++distances;
        return std::abs(a - b) * 1.5;
    }
    int distances = 0;
};

TEST(nmkAnnealOrderState, is_not_annealed_with_three_items_or_fewer) {
    for (int n = 0; n <= 3; ++n) {
        LineState state(n);
        EXPECT_EQ(state.initialise(), -1.0);
        EXPECT_EQ(state.distance_value, -1.0);
        for (int k = 0; k < n; ++k) EXPECT_EQ(state.items[k], k);
    }
    LineState four(4);
    EXPECT_EQ(four.initialise(), 4.5);
}

TEST(nmkAnnealOrderState, starts_with_nothing_pending) {
    LineState state(5);
    EXPECT_EQ(state.distance_value, -1.0);
    EXPECT_EQ(state.candidate_distance, -1.0);
    EXPECT_EQ(state.candidate_1, -1);
    EXPECT_EQ(state.candidate_2, -1);
    EXPECT_EQ(state.random.word, 1u);
    EXPECT_EQ(state.num_items(), 5);
    EXPECT_EQ(state.size(), 5);
    EXPECT_EQ(state.num_item_states(0), 1);
    EXPECT_EQ(state.normalise_index(-5), 0);
    EXPECT_EQ(state.normalise_index(6), 1);
}

TEST(nmkAnnealOrderState, measures_an_open_path) {
    for (int n = 0; n <= 1; ++n) EXPECT_EQ(LineState(n).total_distance(), 0.0);
    nmkAnnealOrderState bare(5);
    EXPECT_EQ(bare.initialise(), 0.0);
    LineState state(5);
    state.initialise();
    EXPECT_EQ(state.length(), 6.0);
}

TEST(nmkAnnealOrderState, draws_only_what_the_third_step_leaves_with_four_items) {
    LineState state(4);
    std::set<std::pair<int, int>> seen;
    for (int k = 0; k < 1000; ++k) {
        int first = 0, second = 0;
        state.get_candidates(first, second);
        seen.insert({first, second});
    }
    // The second value is always 0 and moves on until it is two away.
    const std::set<std::pair<int, int>> expected{{0, 2}, {1, 3}, {0, 3}};
    EXPECT_EQ(seen, expected);
}

TEST(nmkAnnealOrderState, keeps_a_position_between_the_two_it_draws) {
    for (int n = 4; n < 30; ++n) {
        LineState state(n);
        for (int k = 0; k < 500; ++k) {
            int first = 0, second = 0;
            const std::uint32_t word = state.random.word;
            state.get_candidates(first, second);
            EXPECT_GE(first, 0);
            EXPECT_GE(second - first, 2);
            EXPECT_LT(second, n);
            mlRandom two_draws(0);
            two_draws.word = word;
            two_draws.draw();
            two_draws.draw();
            EXPECT_EQ(state.random.word, two_draws.word);
        }
    }
}

TEST(nmkAnnealOrderState, reverses_the_tail_when_the_second_position_is_last) {
    LineState state(6);
    state.initialise();
    state.candidate_1 = 2;
    state.candidate_2 = 5;
    state.distances = 0;
    state.update_candidate_distance();
    EXPECT_EQ(state.distances, 2);
    EXPECT_EQ(state.candidate_distance, 7.5 + (4.5 - 1.5));
    state.accept_new_state();
    EXPECT_EQ(items_of(state), (std::vector<int>{0, 1, 2, 5, 4, 3}));
    EXPECT_EQ(state.distance_value, state.length());
}

TEST(nmkAnnealOrderState, changes_two_edges_when_the_second_position_is_not_last) {
    LineState state(6);
    state.initialise();
    state.candidate_1 = 0;
    state.candidate_2 = 3;
    state.distances = 0;
    state.update_candidate_distance();
    EXPECT_EQ(state.distances, 4);
    state.accept_new_state();
    EXPECT_EQ(items_of(state), (std::vector<int>{0, 3, 2, 1, 4, 5}));
    EXPECT_EQ(state.distance_value, state.length());
    EXPECT_EQ(state.candidate_distance, -1.0);
    EXPECT_EQ(state.candidate_1, -1);
    EXPECT_EQ(state.candidate_2, -1);
}

TEST(nmkAnnealOrderState, never_moves_the_first_position_by_a_move) {
    LineState state(9);
    state.initialise();
    state.randomise();
    const int first = state.items[0];
    for (int k = 0; k < 300; ++k) {
        state.candidate_new_state();
        state.accept_new_state();
        ASSERT_EQ(state.items[0], first);
    }
}

TEST(nmkAnnealOrderState, drops_a_proposal_that_is_followed_by_another) {
    LineState state(9);
    state.initialise();
    const std::vector<int> before = items_of(state);
    for (int k = 0; k < 20; ++k) state.candidate_new_state();
    EXPECT_EQ(items_of(state), before);
    EXPECT_EQ(state.distance_value, 12.0);
}

TEST(nmkAnnealOrderState, draws_fifteen_bits_only) {
    LineState state(40000);
    state.initialise();
    int highest_first = 0, highest_second = 0;
    for (int k = 0; k < 200000; ++k) {
        int first = 0, second = 0;
        state.get_candidates(first, second);
        highest_first = std::max(highest_first, first);
        highest_second = std::max(highest_second, second);
    }
    EXPECT_LE(highest_first, 32767);
    EXPECT_LE(highest_second, 32769);  // a second that has moved on past its first
    EXPECT_GT(highest_second, 32000);
}

TEST(nmkAnnealOrderState, shuffles_with_one_draw_for_each_position) {
    LineState state(7);
    state.initialise();
    state.item_states[3] = 5;
    const double returned = state.randomise();
    EXPECT_EQ(returned, state.length());
    mlRandom random(1);
    std::vector<int> expected{0, 1, 2, 3, 4, 5, 6};
    for (std::size_t k = 0; k < 7; ++k) {
        std::swap(expected[static_cast<std::size_t>(random.draw() % 7)], expected[k]);
    }
    EXPECT_EQ(items_of(state), expected);
    EXPECT_EQ(state.random.word, random.word);
    EXPECT_EQ(state.item_states[3], 5);
}

TEST(nmkAnnealOrderState, copies_all_but_the_generator) {
    LineState from(6), to(6);
    from.initialise();
    from.randomise();
    from.item_states[2] = 1;
    from.candidate_new_state();
    to = static_cast<const nmkAnnealState&>(from);
    EXPECT_EQ(items_of(to), items_of(from));
    EXPECT_EQ(to.item_states[2], 1);
    EXPECT_EQ(to.distance_value, from.distance_value);
    EXPECT_EQ(to.candidate_distance, from.candidate_distance);
    EXPECT_EQ(to.candidate_1, from.candidate_1);
    EXPECT_EQ(to.candidate_2, from.candidate_2);
    EXPECT_EQ(to.random.word, 1u);
    EXPECT_NE(from.random.word, 1u);
}

struct ForeignState : nmkAnnealState {
    int size() override { return 0; }
    double initialise() override { return 0.0; }
    double randomise() override { return 0.0; }
    double candidate_new_state() override { return 0.0; }
    void accept_new_state() override {}
    nmkAnnealState& operator=(const nmkAnnealState&) override { return *this; }
};

TEST(nmkAnnealOrderState, stays_as_it_is_when_assigned_from_a_state_of_another_kind) {
    LineState state(6);
    state.initialise();
    state.randomise();
    const std::vector<int> before = items_of(state);
    nmkAnnealState& returned = (state = static_cast<const nmkAnnealState&>(ForeignState()));
    EXPECT_EQ(&returned, &state);
    EXPECT_EQ(items_of(state), before);
}

TEST(nmkAnnealOrderState, reports_its_kind) {
    nmkAnnealOrderState state(4);
    ForeignState foreign;
    EXPECT_EQ(&state.ut_dynamic_type(), &nmkAnnealOrderState::ut_static_type());
    EXPECT_NE(state.ut_is_kind_of(nmkAnnealState::ut_static_type()), 0);
    EXPECT_EQ(state.ut_is_kind_of(nmkAnnealStatePoints::ut_static_type()), 0);
    EXPECT_EQ(nmkAnnealOrderState::ut_dynamic_cast(&foreign), nullptr);
    EXPECT_EQ(nmkAnnealOrderState::ut_dynamic_cast(static_cast<nmkAnnealState*>(nullptr)), nullptr);
    EXPECT_EQ(nmkAnnealOrderState::ut_dynamic_cast(static_cast<nmkAnnealState*>(&state)), &state);
}

TEST(nmkAnnealOrderState, gives_its_arrays_to_ones_of_any_size) {
    LineState state(5);
    state.initialise();
    state.item_states[4] = 3;
    intcoFixedArr items(2), states(9);
    state.get_items(items);
    state.get_item_states(states);
    EXPECT_EQ(items.size(), 5);
    EXPECT_EQ(states.size(), 5);
    EXPECT_EQ(states[4], 3);
}

// The self-check is private; C++ allows to name it in an explicit instantiation.
int verify(nmkAnnealOrderState& state);
template <int (nmkAnnealOrderState::*check)()>
struct SelfCheck {
    friend int verify(nmkAnnealOrderState& state) { return (state.*check)(); }
};
template struct SelfCheck<&nmkAnnealOrderState::verify_result>;

TEST(nmkAnnealOrderState, verifies_that_the_order_contains_every_item) {
    LineState state(5), empty(0);
    EXPECT_EQ(verify(empty), 1);
    EXPECT_EQ(verify(state), 0);  // zeros only
    state.initialise();
    state.randomise();
    EXPECT_EQ(verify(state), 1);
    state.items[2] = state.items[3];
    EXPECT_EQ(verify(state), 0);
}

}  // namespace

// nmkAnnealStateReversibleLines_test.cpp: lines that may be cut either way.

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "ordering/plain_problems.h"

namespace {

using plain::items_of;
using plain::Spread;
using plain::TwoArrays;

struct OpenReversible : nmkAnnealStateReversibleLines {
    using nmkAnnealStateReversibleLines::nmkAnnealStateReversibleLines;
    using nmkAnnealStateReversibleLines::operator=;
    using nmkAnnealOrderState::candidate_1;
    using nmkAnnealOrderState::candidate_2;
    using nmkAnnealOrderState::candidate_distance;
    using nmkAnnealOrderState::distance_value;
    using nmkAnnealStateReversibleLines::end_point;
    using nmkAnnealStateReversibleLines::get_candidates;
    using nmkAnnealStateReversibleLines::num_item_states;
    using nmkAnnealStateReversibleLines::reversed;
    using nmkAnnealStateReversibleLines::reversible;
    using nmkAnnealStateReversibleLines::start_point;
    using nmkAnnealStateReversibleLines::switch_item_to_state;
    using nmkAnnealStateReversibleLines::update_candidate_distance;

    void move(int first, int second) {
        candidate_1 = first;
        candidate_2 = second;
        update_candidate_distance();
    }
};

std::vector<int> flags_of(const nmkAnnealStateReversibleLines& state) {
    intcoFixedArr flags;
    state.get_reverse_flags(flags);
    return {flags.begin(), flags.end()};
}

TEST(nmkAnnealStateReversibleLines, measures_a_closed_tour) {
    giPoint3coPageArr starts, ends;
    for (int k = 0; k < 4; ++k) {
        starts.add(giPoint3(10 * k, 0, 0));
        ends.add(giPoint3(10 * k, 3, 4));
    }
    OpenReversible state(starts, ends);
    state.initialise();
    EXPECT_EQ(state.distance(0, 0), 5.0);
    EXPECT_EQ(state.num_item_states(0), 2);
    EXPECT_EQ(state.reversible(), 1);
    state.switch_item_to_state(1, 1);
    EXPECT_EQ(state.start_point(1).y, 3.0);
    EXPECT_EQ(state.end_point(1).y, 0.0);
    EXPECT_EQ(state.distance(0, 1), 10.0);
    const giPoint3coPageArr none;
    EXPECT_EQ(nmkAnnealStateReversibleLines(none, none).total_distance(), 0.0);
}

TEST(nmkAnnealStateReversibleLines, wraps_the_span_when_first_is_above_second) {
    const TwoArrays arrays(Spread::space, 7, 3);
    OpenReversible state(arrays.starts, arrays.ends);
    state.initialise();
    state.move(4, 1);  // positions 5, 6, 0, 1
    state.accept_new_state();
    EXPECT_EQ(items_of(state), (std::vector<int>{6, 5, 2, 3, 4, 1, 0}));
    EXPECT_EQ(flags_of(state), (std::vector<int>{1, 1, 0, 0, 0, 1, 1}));
    EXPECT_NEAR(state.distance_value, state.length(), 1e-9);
    EXPECT_EQ(state.candidate_1, -1);
    EXPECT_EQ(state.candidate_distance, -1.0);
}

// After one move the flags read the same by position and by item; after two they do not.
TEST(nmkAnnealStateReversibleLines, gives_the_flags_by_position_not_by_item) {
    const TwoArrays arrays(Spread::space, 7, 3);
    OpenReversible state(arrays.starts, arrays.ends);
    state.initialise();
    state.move(0, 3);
    state.accept_new_state();
    state.move(2, 5);
    state.accept_new_state();
    EXPECT_EQ(items_of(state), (std::vector<int>{0, 3, 2, 5, 4, 1, 6}));
    EXPECT_EQ(flags_of(state), (std::vector<int>{0, 1, 1, 1, 1, 0, 0}));
}

TEST(nmkAnnealStateReversibleLines, reverses_a_single_line_by_a_span_of_one) {
    const TwoArrays arrays(Spread::space, 5, 5);
    OpenReversible state(arrays.starts, arrays.ends);
    state.initialise();
    state.move(4, 0);
    state.accept_new_state();
    EXPECT_EQ(items_of(state), (std::vector<int>{0, 1, 2, 3, 4}));
    EXPECT_EQ(flags_of(state), (std::vector<int>{1, 0, 0, 0, 0}));
    EXPECT_NEAR(state.distance_value, state.length(), 1e-9);
}

TEST(nmkAnnealStateReversibleLines, predicts_the_length_of_every_move) {
    const TwoArrays arrays(Spread::space, 6, 7);
    for (int first = 0; first < 6; ++first) {
        for (int second = 0; second < 6; ++second) {
            if (first == second) continue;
            OpenReversible state(arrays.starts, arrays.ends);
            state.initialise();
            state.randomise();
            state.move(first, second);
            state.accept_new_state();
            EXPECT_NEAR(state.distance_value, state.length(), 1e-9) << first << ' ' << second;
        }
    }
}

TEST(nmkAnnealStateReversibleLines, stores_a_sum_below_zero_as_zero) {
    const TwoArrays arrays(Spread::space, 6, 8);
    OpenReversible state(arrays.starts, arrays.ends);
    state.initialise();
    state.distance_value = -1e6;
    state.move(1, 3);
    EXPECT_EQ(state.candidate_distance, 0.0);
    EXPECT_FALSE(std::signbit(state.candidate_distance));
}

TEST(nmkAnnealStateReversibleLines, draws_two_positions_that_differ_in_either_order) {
    const TwoArrays arrays(Spread::space, 4, 9);
    OpenReversible state(arrays.starts, arrays.ends);
    int falling = 0, rising = 0;
    for (int k = 0; k < 500; ++k) {
        int first = 0, second = 0;
        state.get_candidates(first, second);
        ASSERT_NE(first, second);
        ASSERT_TRUE(first >= 0 && first < 4 && second >= 0 && second < 4);
        ++(first > second ? falling : rising);
    }
    EXPECT_GT(falling, 100);
    EXPECT_GT(rising, 100);
}

TEST(nmkAnnealStateReversibleLines, copies_the_flags) {
    const TwoArrays arrays(Spread::space, 5, 11);
    OpenReversible from(arrays.starts, arrays.ends), to(arrays.ends, arrays.starts);
    from.initialise();
    from.switch_item_to_state(3, 1);
    to = static_cast<const nmkAnnealState&>(from);
    EXPECT_EQ(flags_of(to), flags_of(from));
    EXPECT_EQ(to.length(), from.length());
    nmkAnnealStatePoints other(&arrays.starts);
    to = static_cast<const nmkAnnealState&>(other);
    EXPECT_EQ(flags_of(to), flags_of(from));
}

}  // namespace

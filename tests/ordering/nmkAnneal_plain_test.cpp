// nmkAnneal_plain_test.cpp: the library's annealing compared with the plain one, to the last bit.

#include <gtest/gtest.h>

#include <string>

#include "ordering/plain_problems.h"

namespace {

using plain::Inside;
using plain::Spread;

template <class Problem>
void expect_same_order(const nmkAnnealOrderState& ours, const Problem& peer, const char* which) {
    SCOPED_TRACE(which);
    EXPECT_EQ(plain::items_of(ours), peer.items);
    EXPECT_EQ(Inside::word(ours), peer.random.word);
    EXPECT_EQ(Inside::length_of(ours), peer.length);
    EXPECT_EQ(Inside::candidate(ours), peer.candidate);
    EXPECT_EQ(Inside::first(ours), peer.first);
    EXPECT_EQ(Inside::second(ours), peer.second);
}

// Runs both `times` times: a second run starts from other words and counts than the first.
template <class State, class Problem>
void expect_same_run(State& state, State& best, Problem& plain_state, Problem& plain_best,
                     std::uint32_t seed, int times = 1) {
    plain::Engine ours(state, best);
    plain::Anneal<Problem> peer(plain_state, plain_best);
    ours.seed(static_cast<int>(seed));
    peer.random.word = seed;
    for (int run = 0; run < times; ++run) {
        ours.simulate();
        peer.simulate();
        EXPECT_EQ(ours.num_iterations_used(), peer.iterations);
        EXPECT_EQ(ours.random.word, peer.random.word);
        EXPECT_EQ(ours.best_energy, peer.best_energy);
        EXPECT_EQ(ours.current_energy, peer.current_energy);
        EXPECT_EQ(ours.start_temperature, peer.start_temperature);
        expect_same_order(state, plain_state, "working state");
        expect_same_order(best, plain_best, "best state");
    }
}

struct Case {
    Spread spread;
    int n;
};

std::string label(const ::testing::TestParamInfo<Case>& info) {
    return std::string(plain::name_of(info.param.spread)) + "_of_" + std::to_string(info.param.n);
}

std::vector<Case> cases() {
    std::vector<Case> all;
    for (int n = 0; n <= 12; ++n) all.push_back({Spread::square, n});
    for (int spread = 1; spread <= 6; ++spread) {
        for (int n : {4, 5, 10, 17}) all.push_back({static_cast<Spread>(spread), n});
    }
    all.push_back({Spread::square, 37});
    all.push_back({Spread::grid, 36});
    return all;
}

class nmkAnneal_plain : public ::testing::TestWithParam<Case> {};

TEST_P(nmkAnneal_plain, points_end_as_the_plain_loop) {
    const auto points = plain::spread_points(GetParam().spread, GetParam().n, 11);
    const giPoint3coPageArr array = plain::paged(points);
    nmkAnnealStatePoints state(&array), best(&array);
    plain::Points plain_state(points), plain_best(points);
    expect_same_run(state, best, plain_state, plain_best, 77, GetParam().n < 7 ? 2 : 1);
}

TEST_P(nmkAnneal_plain, reversible_lines_end_as_the_plain_loop) {
    const auto starts = plain::spread_points(GetParam().spread, GetParam().n, 12);
    const auto ends = plain::spread_points(GetParam().spread, GetParam().n, 13);
    const giPoint3coPageArr from = plain::paged(starts), to = plain::paged(ends);
    nmkAnnealStateReversibleLines state(from, to), best(from, to);
    plain::Lines plain_state(starts, ends), plain_best(starts, ends);
    expect_same_run(state, best, plain_state, plain_best, 78, GetParam().n < 7 ? 2 : 1);
    EXPECT_EQ(plain::reversed_by_item(best), plain_best.reversed);
    EXPECT_EQ(plain::reversed_by_item(state), plain_state.reversed);
}

TEST_P(nmkAnneal_plain, one_way_lines_end_as_the_plain_loop) {
    if (GetParam().n < 10) return;  // solved exactly, which has its own tests
    const auto starts = plain::spread_points(GetParam().spread, GetParam().n, 14);
    const auto ends = plain::spread_points(GetParam().spread, GetParam().n, 15);
    const giPoint3coPageArr from = plain::paged(starts), to = plain::paged(ends);
    for (int closed = 0; closed < 2; ++closed) {
        nmkAnnealStateNonReversible state(from, to, closed), best(from, to, closed);
        plain::OneWay plain_state(starts, ends, closed != 0), plain_best(starts, ends, closed != 0);
        expect_same_run(state, best, plain_state, plain_best, 79);
    }
}

// A class derived from a state of the library is run through its operations, not on flat arrays.
struct DerivedPoints : nmkAnnealStatePoints {
    using nmkAnnealStatePoints::nmkAnnealStatePoints;
    using nmkAnnealStatePoints::operator=;
};
struct DerivedLines : nmkAnnealStateReversibleLines {
    using nmkAnnealStateReversibleLines::nmkAnnealStateReversibleLines;
    using nmkAnnealStateReversibleLines::operator=;
};
struct DerivedOneWay : nmkAnnealStateNonReversible {
    using nmkAnnealStateNonReversible::nmkAnnealStateNonReversible;
    using nmkAnnealStateNonReversible::operator=;
};

TEST(nmkAnneal, runs_points_through_their_operations_to_the_same_end) {
    for (int n : {4, 7, 30}) {
        const auto points = plain::spread_points(Spread::space, n, 21);
        const giPoint3coPageArr array = plain::paged(points);
        DerivedPoints state(&array), best(&array);
        plain::Points plain_state(points), plain_best(points);
        expect_same_run(state, best, plain_state, plain_best, 5);
    }
}

TEST(nmkAnneal, runs_lines_through_their_operations_to_the_same_end) {
    for (int n : {10, 30}) {
        const auto starts = plain::spread_points(Spread::space, n, 22);
        const auto ends = plain::spread_points(Spread::space, n, 23);
        const giPoint3coPageArr from = plain::paged(starts), to = plain::paged(ends);
        DerivedLines lines(from, to), best_lines(from, to);
        plain::Lines plain_lines(starts, ends), plain_best_lines(starts, ends);
        expect_same_run(lines, best_lines, plain_lines, plain_best_lines, 6);
        for (int closed = 0; closed < 2; ++closed) {
            DerivedOneWay state(from, to, closed), best(from, to, closed);
            plain::OneWay plain_state(starts, ends, closed != 0);
            plain::OneWay plain_best(starts, ends, closed != 0);
            expect_same_run(state, best, plain_state, plain_best, 7);
        }
    }
}

// Long enough that points are not copied into the order from the start.
TEST(nmkAnneal, ends_as_the_plain_loop_when_points_are_copied_into_the_order_late) {
    const auto points = plain::spread_points(Spread::square, 170, 24);
    const giPoint3coPageArr array = plain::paged(points);
    nmkAnnealStatePoints state(&array), best(&array);
    plain::Points plain_state(points), plain_best(points);
    expect_same_run(state, best, plain_state, plain_best, 8);
}

INSTANTIATE_TEST_SUITE_P(over, nmkAnneal_plain, ::testing::ValuesIn(cases()), label);

}  // namespace

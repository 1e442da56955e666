// nmkAnnealOrderTPState_test.cpp: toolpaths with tool axes.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <memory>
#include <vector>

#include "ordering/plain_problems.h"

namespace {

using plain::items_of;
using Paths = std::vector<std::shared_ptr<nmkAnnealItemOrientedTP>>;

const giUnitVec3 up(0, 0, 1);

std::shared_ptr<nmkAnnealItemOrientedTP> toolpath(giPoint3 start, giPoint3 end, int orientation = 0,
                                                  giUnitVec3 axis = up, int order = 0) {
    return std::make_shared<nmkAnnealItemOrientedTP>(start, end, orientation, axis, order);
}

// Runs of `sizes` toolpaths, each run in sequence, on points of their own.
Paths runs(const std::vector<int>& sizes) {
    Paths paths;
    int total = 0;
    for (int size : sizes) total += size;
    const auto points = plain::spread_points(plain::Spread::space, 2 * total, 51);
    std::size_t k = 0;
    for (std::size_t run = 0; run < sizes.size(); ++run) {
        for (int order = 0; order < sizes[run]; ++order, k += 2) {
            const auto &a = points[k], &b = points[k + 1];
            paths.push_back(toolpath(giPoint3(a.x, a.y, a.z), giPoint3(b.x, b.y, b.z),
                                     static_cast<int>(run), up, order));
        }
    }
    return paths;
}

struct OpenState : nmkAnnealOrderTPState {
    using nmkAnnealOrderState::candidate_1;
    using nmkAnnealOrderState::candidate_2;
    using nmkAnnealOrderState::candidate_distance;
    using nmkAnnealOrderState::distance_value;
    using nmkAnnealOrderState::items;
    using nmkAnnealOrderState::random;
    using nmkAnnealOrderTPState::get_candidates;
    using nmkAnnealOrderTPState::make_valid_candidate;
    using nmkAnnealOrderTPState::nmkAnnealOrderTPState;
    using nmkAnnealOrderTPState::update_candidate_distance;
    using nmkAnnealOrderTPState::operator=;
};

// Whether the toolpaths of each orientation are still in sequence.
bool in_sequence(const Paths& paths, const std::vector<int>& items) {
    std::map<int, int> last;
    for (int item : items) {
        const auto& path = *paths[static_cast<std::size_t>(item)];
        const auto found = last.find(path.orientation_id());
        if (found != last.end() && found->second > path.order_id()) return false;
        last[path.orientation_id()] = path.order_id();
    }
    return true;
}

TEST(nmkAnnealItemOrientedTP, returns_what_it_was_made_of_in_any_state) {
    const auto path = toolpath(giPoint3(1, 2, 3), giPoint3(4, 5, 6), 7, up, 8);
    EXPECT_EQ(path->start_point(0), path->start_point(1));
    EXPECT_EQ(path->end_point(9).y, 5.0);
    EXPECT_EQ(path->orientation_id(), 7);
    EXPECT_EQ(path->order_id(), 8);
    nmkAnnealItemOrientedTP copy;
    EXPECT_FALSE(copy.start_point(0).is_set());
    copy = *path;
    EXPECT_EQ(copy.end_point(0), path->end_point(0));
    EXPECT_EQ(copy.orientation_id(), 7);
    EXPECT_EQ(copy.order_id(), 8);
    EXPECT_EQ(copy.orientation_vector(), up);
}

TEST(nmkAnnealOrderTPState, measures_the_plan_to_the_end_of_the_next_toolpath) {
    nmkAnnealOrderTPState state({toolpath(giPoint3(9, 9, 0), giPoint3(0, 0, 0)),
                                 toolpath(giPoint3(100, 0, 0), giPoint3(3, 4, 0))});
    EXPECT_EQ(state.distance(0, 1), 5.0);
}

TEST(nmkAnnealOrderTPState, charges_twice_the_rise_but_nothing_for_going_down) {
    nmkAnnealOrderTPState state({toolpath(giPoint3(0, 0, 0), giPoint3(0, 0, 10)),
                                 toolpath(giPoint3(3, 4, 4), giPoint3(3, 4, 4)),
                                 toolpath(giPoint3(3, 4, 12), giPoint3(3, 4, 12))});
    EXPECT_EQ(state.distance(0, 1), 5.0);
    EXPECT_EQ(state.distance(0, 2), 5.0 + 2 * 2.0);
}

TEST(nmkAnnealOrderTPState, charges_nothing_for_an_axis_up_to_a_right_angle) {
    const giUnitVec3 along_x(1, 0, 0), down(0, 0, -1);
    EXPECT_EQ(nmkAnnealOrderTPState::axis_distance(up, along_x), 0.0);
    EXPECT_EQ(nmkAnnealOrderTPState::axis_distance(up, up), 0.0);
    const double half_turn = std::atan2(0.0, -1.0);
    EXPECT_EQ(nmkAnnealOrderTPState::axis_distance(up, down),
              (6.283185307179586 - half_turn) * 10.0);
    const giPoint3 origin(0, 0, 0);
    nmkAnnealOrderTPState state({toolpath(origin, origin, 0, up), toolpath(origin, origin, 0, down),
                                 toolpath(origin, origin, 1, along_x),
                                 toolpath(origin, origin, 1, down)});
    EXPECT_EQ(state.distance(0, 1), 0.0);  // of one orientation, whatever the axes
    EXPECT_EQ(state.distance(0, 2), 0.0);
    EXPECT_GT(state.distance(0, 3), 31.0);
}

TEST(nmkAnnealOrderTPState, never_passes_its_own_orientation_out_of_sequence) {
    const Paths paths = runs({3, 2});
    OpenState state(paths);
    state.initialise();
    EXPECT_EQ(state.make_valid_candidate(0, 4, 1), 0);
    EXPECT_EQ(state.make_valid_candidate(2, 9, 1), 4);
    EXPECT_EQ(state.make_valid_candidate(3, 0, -1), 0);
    EXPECT_EQ(state.make_valid_candidate(3, -2, -1), 0);
    EXPECT_EQ(state.make_valid_candidate(3, 2, -1), 2);
    EXPECT_EQ(state.make_valid_candidate(4, 0, -1), 4);
    EXPECT_EQ(state.make_valid_candidate(1, 1, 1), 1);
}

TEST(nmkAnnealOrderTPState, may_pass_one_of_its_own_orientation_with_the_same_number) {
    const giPoint3 origin(0, 0, 0);
    const Paths paths(3, toolpath(origin, origin, 0, up, 5));
    OpenState state(paths);
    state.initialise();
    EXPECT_EQ(state.make_valid_candidate(0, 2, 1), 2);
    EXPECT_EQ(state.make_valid_candidate(2, 0, -1), 0);
}

TEST(nmkAnnealOrderTPState, changes_nothing_by_a_move_that_cannot_be_made) {
    OpenState state(runs({5}));
    state.initialise();
    const std::vector<int> before = items_of(state);
    const double length = state.distance_value;
    for (int k = 0; k < 50; ++k) {
        EXPECT_EQ(state.candidate_new_state(), length);
        EXPECT_EQ(state.candidate_1, state.candidate_2);
        state.accept_new_state();
        EXPECT_EQ(items_of(state), before);
        EXPECT_EQ(state.distance_value, length);
    }
}

TEST(nmkAnnealOrderTPState, predicts_the_length_of_every_slide_and_keeps_the_sequence) {
    const Paths paths = runs({4, 1, 3, 2});
    OpenState state(paths);
    state.initialise();
    state.randomise();
    int slides = 0;
    for (int k = 0; k < 3000; ++k) {
        const double predicted = state.candidate_new_state();
        ASSERT_LT(state.candidate_1, 9);  // the last position is never chosen
        if (state.candidate_1 != state.candidate_2) ++slides;
        state.accept_new_state();
        ASSERT_NEAR(predicted, state.length(), 1e-8);
        ASSERT_TRUE(in_sequence(paths, items_of(state)));
    }
    EXPECT_GT(slides, 500);
}

TEST(nmkAnnealOrderTPState, shuffles_whole_runs_and_ends_with_the_last_of_them) {
    const Paths paths = runs({3, 2, 4});
    OpenState state(paths);
    state.initialise();
    std::vector<std::vector<int>> seen;
    for (int k = 0; k < 40; ++k) {
        const double length = state.randomise();
        EXPECT_EQ(length, state.length());
        const std::vector<int> items = items_of(state);
        EXPECT_TRUE(in_sequence(paths, items));
        EXPECT_EQ((std::vector<int>(items.end() - 4, items.end())), (std::vector<int>{5, 6, 7, 8}));
        std::vector<int> sorted = items;
        std::sort(sorted.begin(), sorted.end());
        for (int item = 0; item < 9; ++item)
            ASSERT_EQ(sorted[static_cast<std::size_t>(item)], item);
        seen.push_back(items);
    }
    std::sort(seen.begin(), seen.end());
    EXPECT_GT(std::unique(seen.begin(), seen.end()) - seen.begin(), 3);
}

TEST(nmkAnnealOrderTPState, is_not_annealed_with_three_items) {
    OpenState state(runs({1, 2}));
    EXPECT_EQ(state.initialise(), -1.0);
    EXPECT_EQ(items_of(state), (std::vector<int>{0, 1, 2}));
}

TEST(nmkAnnealOrderTPState, fails_out_of_range_past_its_paths) {
    nmkAnnealOrderTPState state(runs({2}));
    EXPECT_THROW(state.distance(0, 2), std::out_of_range);
}

TEST(nmkAnnealOrderTPState, copies_paths_and_order_from_its_own_kind_only) {
    const Paths few = runs({1, 1, 2}), other = runs({2, 3});
    OpenState from(few), to(other);
    from.initialise();
    from.randomise();
    from.candidate_new_state();
    nmkAnnealOrderTPState& returned = (to = static_cast<const nmkAnnealState&>(from));
    EXPECT_EQ(&returned, &to);
    EXPECT_EQ(items_of(to), items_of(from));
    EXPECT_EQ(to.length(), from.length());
    to.accept_new_state();
    from.accept_new_state();
    EXPECT_EQ(items_of(to), items_of(from));
    to = static_cast<const nmkAnnealState&>(nmkAnnealOrderState(9));
    EXPECT_EQ(items_of(to), items_of(from));
}

TEST(nmkAnnealOrderTPState, is_annealed_to_a_cheaper_order_that_keeps_the_sequence) {
    const Paths paths = runs({3, 2, 3});
    OpenState state(paths), best(paths);
    state.initialise();
    const double start = state.length();
    nmkAnneal anneal(state, best);
    anneal.simulate();
    EXPECT_TRUE(in_sequence(paths, items_of(best)));
    EXPECT_LT(best.length(), start);
}

TEST(nmkAnnealOrderTPState, accepts_nothing_before_a_move_was_proposed) {
    OpenState state(runs({2, 3}));
    const double length = state.initialise();
    const std::vector<int> before = items_of(state);
    state.accept_new_state();
    EXPECT_EQ(items_of(state), before);
    EXPECT_EQ(state.distance_value, length);
}

TEST(nmkAnnealOrderTPState, stays_as_it_is_when_assigned_to_itself) {
    OpenState state(runs({2, 3}));
    state.initialise();
    state.randomise();
    const std::vector<int> before = items_of(state);
    const nmkAnnealState& same = state;
    state = same;
    EXPECT_EQ(items_of(state), before);
}

TEST(nmkAnnealOrderTPState, slides_a_toolpath_to_either_end_of_the_order) {
    const Paths paths = runs({1, 1, 1, 1});
    OpenState state(paths);
    for (const auto& [from, to] : {std::pair(3, 0), std::pair(0, 3), std::pair(1, 2)}) {
        state.initialise();
        state.candidate_1 = from;
        state.candidate_2 = to;
        state.update_candidate_distance();
        state.accept_new_state();
        EXPECT_EQ(items_of(state)[static_cast<std::size_t>(to)], from);
        EXPECT_NEAR(state.distance_value, state.length(), 1e-9);
    }
}

TEST(nmkAnnealOrderTPState, is_cast_down_from_a_state_of_its_kind_only) {
    const OpenState state(runs({4}));
    const nmkAnnealOrderState other(4);
    const nmkAnnealState* const pointer = &state;
    EXPECT_EQ(nmkAnnealOrderTPState::ut_dynamic_cast(pointer), &state);
    EXPECT_EQ(nmkAnnealOrderTPState::ut_dynamic_cast(static_cast<const nmkAnnealState*>(&other)),
              nullptr);
}

}  // namespace

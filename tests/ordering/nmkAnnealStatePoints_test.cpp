// nmkAnnealStatePoints_test.cpp: points on an open path.

#include <gtest/gtest.h>

#include <vector>

#include "ordering/plain_problems.h"

namespace {

using plain::items_of;
using plain::Spread;
using plain::TwoArrays;

TEST(nmkAnnealStatePoints, measures_in_space) {
    giPoint3coPageArr points;
    points.add(giPoint3(0, 0, 0));
    points.add(giPoint3(2, 3, 6));
    nmkAnnealStatePoints state(&points);
    EXPECT_EQ(state.distance(0, 1), 7.0);
    EXPECT_EQ(state.num_items(), 2);
}

TEST(nmkAnnealStatePoints, takes_over_the_array_of_its_source) {
    const TwoArrays arrays(Spread::space, 6, 1);
    nmkAnnealStatePoints from(&arrays.starts), to(&arrays.ends);
    from.initialise();
    from.randomise();
    to = from;
    EXPECT_EQ(items_of(to), items_of(from));
    EXPECT_EQ(to.length(), from.length());
    const std::vector<int> before = items_of(from);
    nmkAnnealState& same = from;
    from = same;
    EXPECT_EQ(items_of(from), before);
}

TEST(nmkAnnealStatePoints, is_cast_down_from_a_state_of_its_kind_only) {
    const TwoArrays arrays(Spread::space, 4, 1);
    const nmkAnnealStatePoints points(&arrays.starts);
    const nmkAnnealStateReversibleLines lines(arrays.starts, arrays.ends);
    const nmkAnnealState* const pointer = &points;
    EXPECT_EQ(nmkAnnealStatePoints::ut_dynamic_cast(pointer), &points);
    EXPECT_EQ(nmkAnnealStateReversibleLines::ut_dynamic_cast(pointer), nullptr);
    EXPECT_EQ(nmkAnnealStateNonReversible::ut_dynamic_cast(pointer), nullptr);
    EXPECT_EQ(nmkAnnealStateTwoItemStates::ut_dynamic_cast(pointer), nullptr);
    EXPECT_EQ(nmkAnnealOrderState::ut_dynamic_cast(pointer), &points);
    const nmkAnnealState* const other = &lines;
    EXPECT_EQ(nmkAnnealStatePoints::ut_dynamic_cast(other), nullptr);
    EXPECT_EQ(nmkAnnealStateReversibleLines::ut_dynamic_cast(other), &lines);
}

}  // namespace

#include <gtest/gtest.h>
#include <nmktoolbox/uniqueid/nmkObjectId.h>
#include <nmktoolbox/uniqueid/nmkRefToObjectId.h>
#include <nmktoolbox/uniqueid/nmkUniqueIdPair.h>

#include <algorithm>
#include <set>

#include "uniqueid/identifier_samples.h"

using namespace identifier_samples;

namespace {

nmkRefToObjectId reference_with(const Words& words) {
    nmkRefToObjectId reference;
    reference.become(handle_with(words));
    return reference;
}

}  // namespace

TEST(nmkRefToObjectId, a_new_one_refers_to_nothing) {
    EXPECT_EQ(serials_spent([] { EXPECT_EQ(nmkRefToObjectId().is_valid(), 0); }), 1);
}

TEST(nmkRefToObjectId, copies_share_the_target) {
    nmkObjectId object;
    const nmkRefToObjectId reference = object.create_reference();
    const nmkRefToObjectId copy(reference);
    nmkRefToObjectId assigned;
    assigned = reference;
    nmkRefToObjectId become;
    become.become(reference);
    for (const nmkRefToObjectId& one : {copy, assigned, become}) {
        EXPECT_EQ(object.is_target_of(one), 1);
    }
    EXPECT_EQ(object.reference_count(), 5);
}

TEST(nmkRefToObjectId, is_equal_by_value_and_when_both_are_invalid) {
    const nmkRefToObjectId reference = reference_with({1, 2, 3, 4});
    EXPECT_EQ(reference.is_equal(reference_with({1, 2, 3, 4})), 1);
    EXPECT_EQ(reference.is_equal(reference_with({1, 2, 3, 5})), 0);
    EXPECT_EQ(reference.is_equal(nmkRefToObjectId()), 0);
    EXPECT_EQ(nmkRefToObjectId().is_equal(reference), 0);
    EXPECT_EQ(nmkRefToObjectId().is_equal(nmkRefToObjectId()), 1);
    EXPECT_TRUE(nmkRefToObjectId() == nmkRefToObjectId());
}

TEST(nmkRefToObjectId, setting_it_invalid_harms_neither_target_nor_other_references) {
    nmkObjectId object;
    nmkRefToObjectId reference = object.create_reference();
    const nmkRefToObjectId other = reference;
    EXPECT_EQ(serials_spent([&] { reference.set_invalid(); }), 1);
    EXPECT_EQ(reference.is_valid(), 0);
    EXPECT_EQ(object.is_valid(), 1);
    EXPECT_EQ(object.is_target_of(other), 1);
}

TEST(nmkRefToObjectId, is_ordered_and_hashed_by_its_target) {
    const nmkRefToObjectId first = reference_with({1, 2, 3, 4});
    const nmkRefToObjectId second = reference_with({1, 2, 3, 5});
    EXPECT_TRUE(first < second);
    EXPECT_FALSE(second < first);
    EXPECT_EQ(first.get_hash_val(), 1UL);
    EXPECT_EQ(co_hash(first), 1U);
    const std::set<nmkRefToObjectId, nmkRefToObjectIdLessThan> ordered = {second, first, second};
    ASSERT_EQ(ordered.size(), 2U);
    EXPECT_TRUE(*ordered.begin() == first);
}

TEST(nmkRefToObjectIdcoSet, holds_each_target_once) {
    nmkRefToObjectIdcoSet set;
    set.add(reference_with({1, 2, 3, 4}));
    set.add(reference_with({1, 2, 3, 4}));
    set.add(reference_with({1, 2, 3, 5}));
    EXPECT_EQ(set.size(), 2);
    EXPECT_TRUE(set.contains(reference_with({1, 2, 3, 5})));
}

TEST(nmkUniqueIdPair, is_equal_only_in_the_same_order) {
    const nmkRefToObjectId a = reference_with({1, 2, 3, 4});
    const nmkRefToObjectId b = reference_with({5, 6, 7, 8});
    nmkUniqueIdPair pair;
    nmkUniqueIdPair reverse;
    nmkUniqueIdPair same;
    pair.set(a, b);
    reverse.set(b, a);
    same.set(reference_with({1, 2, 3, 4}), reference_with({5, 6, 7, 8}));
    EXPECT_TRUE(pair == same);
    EXPECT_EQ(pair.is_equal(same), 1);
    EXPECT_FALSE(pair == reverse);
    EXPECT_TRUE(pair.uid1() == a);
    EXPECT_TRUE(pair.uid2() == b);
}

TEST(nmkUniqueIdPair, has_the_same_hash_in_both_orders) {
    nmkUniqueIdPair pair;
    pair.set(reference_with({1, 2, 3, 4}), reference_with({6, 2, 3, 4}));
    EXPECT_EQ(co_hash(pair), 7U);
    pair.set(pair.uid2(), pair.uid1());
    EXPECT_EQ(co_hash(pair), 7U);
    EXPECT_EQ(co_hash(pair.uid1()), 6U);
    EXPECT_EQ(co_hash(pair.uid2()), 1U);
}

TEST(nmkUniqueIdPair, is_valid_only_when_both_are) {
    nmkUniqueIdPair pair;
    EXPECT_EQ(pair.is_valid(), 0);
    pair.set(reference_with({1, 2, 3, 4}), nmkRefToObjectId());
    EXPECT_EQ(pair.is_valid(), 0);
    pair.set(nmkRefToObjectId(), reference_with({1, 2, 3, 4}));
    EXPECT_EQ(pair.is_valid(), 0);
    pair.set(reference_with({1, 2, 3, 4}), reference_with({1, 2, 3, 4}));
    EXPECT_EQ(pair.is_valid(), 1);
}

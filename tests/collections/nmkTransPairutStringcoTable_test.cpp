#include <gtest/gtest.h>
#include <nmktoolbox/collections/nmkTransPairutStringcoTable.h>

namespace {

using Pair = TRANSLATE_TYPETRANSLATE_TYPEnmkcoPair;

Pair pair_of(int first, int second) {
    return {static_cast<TRANSLATE_TYPE>(first), static_cast<TRANSLATE_TYPE>(second)};
}

}  // namespace

TEST(nmkTransPairutStringcoTable, the_default_record_has_both_key_values_at_12) {
    const nmkTransPairutStringcoTableP record;
    EXPECT_EQ(static_cast<int>(record.key.first), 12);
    EXPECT_EQ(static_cast<int>(record.key.second), 12);
    EXPECT_TRUE(record.value.is_null());
    EXPECT_EQ(nmkTransPairutStringcoTablePcoSet::nil().key, pair_of(12, 12));
}

TEST(nmkTransPairutStringcoTable, indexing_adds_a_missing_key_once_with_the_null_text) {
    nmkTransPairutStringcoTable table;
    EXPECT_TRUE(table[pair_of(1, 2)].is_null());
    EXPECT_EQ(table.size(), 1);
    table[pair_of(1, 2)] = utString("from 1 to 2");
    EXPECT_EQ(table[pair_of(1, 2)], utString("from 1 to 2"));
    EXPECT_EQ(table.size(), 1);
}

TEST(nmkTransPairutStringcoTable, reading_a_missing_key_adds_nothing) {
    nmkTransPairutStringcoTable table;
    table[pair_of(1, 2)] = utString("there");
    EXPECT_TRUE(table.read(pair_of(2, 1)).is_null());
    EXPECT_EQ(table.read(pair_of(1, 2)), utString("there"));
    EXPECT_EQ(table.size(), 1);
}

TEST(nmkTransPairutStringcoTable, records_are_equal_by_their_keys_alone) {
    nmkTransPairutStringcoTablePcoSet set(4, 50);
    set.add({pair_of(1, 2), utString("first")});
    EXPECT_EQ(set.add({pair_of(1, 2), utString("second")}).value, utString("first"));
    EXPECT_EQ(set.size(), 1);
    EXPECT_EQ(co_hash(pair_of(1, 2)), co_hash(pair_of(1, 2)));
    EXPECT_NE(co_hash(pair_of(1, 2)), co_hash(pair_of(2, 1)));
}

TEST(nmkTransPairutStringcoTable, remove_returns_whether_there_was_a_record) {
    nmkTransPairutStringcoTable table;
    table[pair_of(0, 0)] = utString("zero");
    EXPECT_NE(table.remove(pair_of(0, 0)), 0);
    EXPECT_EQ(table.remove(pair_of(0, 0)), 0);
}

TEST(nmkTransPairutStringcoTable, indexing_the_nil_key_does_not_change_the_nil_record) {
    nmkTransPairutStringcoTable table;
    table[pair_of(12, 12)] = utString("text");
    EXPECT_TRUE(nmkTransPairutStringcoTablePcoSet::nil().value.is_null());
    EXPECT_TRUE(table.read(pair_of(3, 3)).is_null());
    table[pair_of(12, 12)];
    EXPECT_EQ(table.size(), 1);
}

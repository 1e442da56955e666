#include <gtest/gtest.h>
#include <ncamcontainer/coTable.h>

#include <string>

namespace {

using Table = coTable<int, std::string>;

}  // namespace

TEST(coTable, adds_a_missing_key_once_when_it_is_indexed) {
    Table table;
    EXPECT_EQ(table[7], "");
    EXPECT_EQ(table.size(), 1);
    table[7] = "seven";
    EXPECT_EQ(table[7], "seven");
    EXPECT_EQ(table.size(), 1);
}

TEST(coTable, reading_a_missing_key_adds_nothing) {
    Table table;
    EXPECT_EQ(table.read(7), "");
    EXPECT_EQ(table.size(), 0);
    table[7] = "seven";
    EXPECT_EQ(table.read(7), "seven");
}

TEST(coTable, remove_returns_whether_there_was_a_record) {
    Table table;
    table[7] = "seven";
    EXPECT_EQ(table.remove(8), 0);
    EXPECT_NE(table.remove(7), 0);
    EXPECT_EQ(table.remove(7), 0);
    EXPECT_EQ(table.size(), 0);
}

TEST(coTable, keeps_the_values_through_growth) {
    Table table(1, 50);
    for (int i = 0; i < 500; ++i) table[i] = std::to_string(i);
    for (int i = 0; i < 500; ++i) EXPECT_EQ(table.read(i), std::to_string(i));
}

TEST(coTable, indexing_the_nil_key_does_not_change_the_nil_record) {
    Table table;
    table[0] = "zero";
    EXPECT_EQ(table.read(0), "zero");
    EXPECT_EQ(Table().read(0), "");
    EXPECT_EQ(table.read(1), "");
}

TEST(coTable, becomes_an_independent_copy) {
    Table original;
    original[1] = "one";
    Table copy(utCopy(), original);
    original[1] = "changed";
    EXPECT_EQ(copy.read(1), "one");
    copy.become(utCopy(), original);
    EXPECT_EQ(copy.read(1), "changed");
}

TEST(coTable, can_be_read_record_by_record) {
    Table table;
    table[1] = "one";
    table[2] = "two";
    int keys = 0;
    for (Table::Records::coIterator it(table.records()); ++it;) keys += it->key;
    EXPECT_EQ(keys, 3);
    std::string texts;
    for (const auto& [key, value] : table) texts += std::to_string(key) + value;
    EXPECT_TRUE(texts == "1one2two" || texts == "2two1one") << texts;
    table.clear();
    EXPECT_TRUE(table.begin() == table.end());
}

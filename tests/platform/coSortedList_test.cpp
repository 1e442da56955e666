#include <gtest/gtest.h>
#include <ncamcontainer/coSortedList.h>

#include <algorithm>
#include <random>
#include <utility>
#include <vector>

namespace {

using Item = std::pair<int, int>;  // key, order of arrival

struct LessKey {
    bool operator()(const Item& a, const Item& b) const { return a.first < b.first; }
};
using Sorted = coSortedList<Item, LessKey>;

}  // namespace

TEST(coSortedList, inserts_a_new_element_after_those_that_compare_equal) {
    Sorted list;
    std::vector<Item> plain;
    std::mt19937 random(20);
    for (int i = 0; i < 1000; ++i) {
        const Item item(static_cast<int>(random() % 20), i);
        list.add(item);
        plain.push_back(item);
    }
    std::stable_sort(plain.begin(), plain.end(), LessKey());
    EXPECT_EQ(std::vector<Item>(list.begin(), list.end()), plain);
    EXPECT_EQ(list.size(), 1000);
}

TEST(coSortedList, reading_an_empty_list_gives_nil) {
    Sorted list;
    EXPECT_EQ(&list.read_first(), &Sorted::nil());
    EXPECT_EQ(&list.read_last(), &Sorted::nil());
    EXPECT_EQ(Sorted::nil(), Item());
}

TEST(coSortedList, can_be_read_backwards) {
    Sorted list;
    for (const int key : {2, 1, 3}) list.add({key, 0});
    EXPECT_EQ(list.rbegin()->first, 3);
    EXPECT_EQ(list.read_last().first, 3);
}

TEST(coSortedList, removing_the_first_of_an_empty_list_does_nothing) {
    Sorted list;
    list.add({2, 0});
    list.add({1, 0});
    EXPECT_EQ(list.read_first().first, 1);
    list.remove_first();
    EXPECT_EQ(list.read_first().first, 2);
    list.remove_first();
    list.remove_first();
    EXPECT_EQ(list.size(), 0);
}

TEST(coSortedList, becomes_an_independent_copy) {
    Sorted original;
    original.add({1, 0});
    Sorted copy(utCopy(), original);
    original.clear();
    EXPECT_EQ(copy.size(), 1);
    copy.become(utCopy(), original);
    EXPECT_EQ(copy.size(), 0);
}

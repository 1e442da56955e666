// The doubly and the singly linked list behave alike, so most tests run on both.
#include <gtest/gtest.h>
#include <ncamcontainer/coDList.h>
#include <ncamcontainer/coSList.h>

#include <algorithm>
#include <random>
#include <utility>
#include <vector>

namespace {

template <class List>
std::vector<int> contents_of(const List& list) {
    std::vector<int> found;
    for (typename List::coIterator it(list); ++it;) found.push_back(*it);
    EXPECT_EQ(found, std::vector<int>(list.begin(), list.end()));
    return found;
}

template <class List>
class coLists : public testing::Test {};

using BothLists = testing::Types<coDList<int>, coSList<int>>;
TYPED_TEST_SUITE(coLists, BothLists);

}  // namespace

TYPED_TEST(coLists, inserts_and_removes_at_both_ends) {
    TypeParam list;
    list.insert_last(2);
    list.insert_last(3);
    list.insert_first(1);
    EXPECT_EQ(contents_of(list), (std::vector<int>{1, 2, 3}));
    EXPECT_NE(list.remove_last(), 0);
    EXPECT_NE(list.remove_first(), 0);
    EXPECT_EQ(contents_of(list), (std::vector<int>{2}));
    EXPECT_NE(list.remove_last(), 0);
    EXPECT_EQ(list.remove_first(), 0);
    EXPECT_EQ(list.remove_last(), 0);
    EXPECT_EQ(list.size(), 0);
}

TYPED_TEST(coLists, a_step_past_the_end_moves_before_the_first) {
    TypeParam list{1, 2};
    typename TypeParam::coIterator it(list);
    EXPECT_EQ(it.index(), -1);
    EXPECT_NE(++it, 0);
    EXPECT_EQ(it.index(), 0);
    EXPECT_NE(++it, 0);
    EXPECT_EQ(++it, 0);
    EXPECT_EQ(it.index(), -1);
    EXPECT_NE(++it, 0);
    EXPECT_EQ(*it, 1);
}

TYPED_TEST(coLists, steps_backwards_from_the_tail) {
    TypeParam list{1, 2, 3};
    typename TypeParam::coIterator it(list);
    std::vector<int> visited;
    while (--it) visited.push_back(*it);
    EXPECT_EQ(visited, (std::vector<int>{3, 2, 1}));
    EXPECT_EQ(it.index(), -1);
}

TYPED_TEST(coLists, steps_by_several_in_both_directions) {
    TypeParam list{0, 1, 2, 3, 4};
    typename TypeParam::coIterator it(list);
    EXPECT_NE(it += 3, 0);
    EXPECT_EQ(*it, 2);
    EXPECT_NE(it -= 2, 0);
    EXPECT_EQ(*it, 0);
    EXPECT_NE(it -= -4, 0);
    EXPECT_EQ(*it, 4);
    EXPECT_NE(it += -1, 0);
    EXPECT_EQ(*it, 3);
    EXPECT_NE(it += 0, 0);
    EXPECT_EQ(it += 2, 0);
    EXPECT_EQ(it.index(), -1);
    EXPECT_EQ(it += 0, 0);
}

TYPED_TEST(coLists, moves_to_an_index_from_any_position) {
    TypeParam list;
    for (int i = 0; i < 20; ++i) list.insert_last(i);
    typename TypeParam::coIterator it(list);
    for (const int from : {-1, 0, 3, 10, 19}) {
        for (int to = 0; to < 20; ++to) {
            it.set_index(from);
            ASSERT_NE(it.set_index(to), 0);
            ASSERT_EQ(*it, to);
            ASSERT_EQ(it.index(), to);
        }
    }
    EXPECT_EQ(it.set_index(20), 0);
    EXPECT_EQ(it.index(), -1);
    EXPECT_EQ(it.set_index(-1), 0);
}

TYPED_TEST(coLists, positions_are_equal_on_the_same_element_of_the_same_list) {
    TypeParam list{1, 1};
    TypeParam other{1, 1};
    typename TypeParam::coIterator a(list);
    typename TypeParam::coIterator b(list);
    EXPECT_TRUE(a == b);
    ++a;
    EXPECT_TRUE(a != b);
    ++b;
    EXPECT_TRUE(a == b);
    ++b;
    EXPECT_TRUE(a != b);
    EXPECT_TRUE(typename TypeParam::coIterator(list) != typename TypeParam::coIterator(other));
}

TYPED_TEST(coLists, a_cursor_inserts_around_its_element_and_stays_on_it) {
    TypeParam list{5};
    typename TypeParam::coCursor cursor(list);
    ++cursor;
    cursor.insert_after(6);
    cursor.insert_before(4);
    cursor.insert_first(3);
    cursor.insert_last(7);
    EXPECT_EQ(contents_of(list), (std::vector<int>{3, 4, 5, 6, 7}));
    EXPECT_EQ(*cursor, 5);
    EXPECT_EQ(cursor.index(), 2);
}

TYPED_TEST(coLists, a_cursor_before_the_first_inserts_at_the_ends) {
    TypeParam list{5};
    typename TypeParam::coCursor cursor(list);
    cursor.insert_after(4);
    cursor.insert_before(6);
    EXPECT_EQ(contents_of(list), (std::vector<int>{4, 5, 6}));
    EXPECT_EQ(cursor.index(), -1);
}

TYPED_TEST(coLists, remove_moves_to_the_next_element) {
    TypeParam list{1, 2, 3};
    typename TypeParam::coCursor cursor(list);
    cursor.set_index(1);
    EXPECT_NE(cursor.remove(), 0);
    EXPECT_EQ(*cursor, 3);
    EXPECT_EQ(cursor.index(), 1);
    EXPECT_NE(cursor.remove(), 0);
    EXPECT_EQ(cursor.index(), -1);
    EXPECT_EQ(cursor.remove(), 0);
    EXPECT_EQ(contents_of(list), (std::vector<int>{1}));
    list.insert_last(9);
    EXPECT_EQ(contents_of(list), (std::vector<int>{1, 9}));
}

TYPED_TEST(coLists, after_remove_backwards_a_step_reaches_the_next_element) {
    TypeParam list{1, 2, 3, 4, 5};
    typename TypeParam::coCursor cursor(list);
    std::vector<int> visited;
    while (++cursor) {
        visited.push_back(*cursor);
        if (*cursor % 2 == 1) cursor.remove_backwards();
    }
    EXPECT_EQ(visited, (std::vector<int>{1, 2, 3, 4, 5}));
    EXPECT_EQ(contents_of(list), (std::vector<int>{2, 4}));
    EXPECT_EQ(cursor.remove_backwards(), 0);
}

TYPED_TEST(coLists, a_cursor_keeps_its_element_when_the_ends_are_removed) {
    TypeParam list{1, 2, 3};
    typename TypeParam::coCursor cursor(list);
    cursor.set_index(1);
    EXPECT_NE(cursor.remove_first(), 0);
    EXPECT_EQ(*cursor, 2);
    EXPECT_EQ(cursor.index(), 0);
    EXPECT_NE(cursor.remove_last(), 0);
    EXPECT_EQ(*cursor, 2);
    EXPECT_NE(cursor.remove_first(), 0);
    EXPECT_EQ(cursor.index(), -1);
    EXPECT_EQ(cursor.remove_last(), 0);
}

TYPED_TEST(coLists, a_cursor_on_the_tail_moves_back_when_the_tail_is_removed) {
    TypeParam list{1, 2};
    typename TypeParam::coCursor cursor(list);
    cursor.set_index(1);
    EXPECT_NE(cursor.remove_last(), 0);
    EXPECT_EQ(*cursor, 1);
    EXPECT_EQ(cursor.index(), 0);
    EXPECT_NE(cursor.remove_last(), 0);
    EXPECT_EQ(cursor.index(), -1);
}

TYPED_TEST(coLists, becomes_an_independent_copy) {
    TypeParam original{1, 2, 3};
    TypeParam copy(utCopy(), original);
    original.remove_first();
    EXPECT_EQ(contents_of(copy), (std::vector<int>{1, 2, 3}));
    copy.become(utCopy(), original);
    EXPECT_EQ(contents_of(copy), (std::vector<int>{2, 3}));
    copy.become(utCopy(), copy);
    EXPECT_EQ(contents_of(copy), (std::vector<int>{2, 3}));
    const TypeParam moved(std::move(copy));
    EXPECT_EQ(contents_of(moved), (std::vector<int>{2, 3}));
}

TYPED_TEST(coLists, behaves_like_a_plain_list_under_random_changes) {
    for (unsigned seed = 1; seed <= 5; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        std::mt19937 random(seed);
        TypeParam list;
        std::vector<int> plain;
        for (int step = 0; step < 500; ++step) {
            typename TypeParam::coCursor cursor(list);
            const int index = plain.empty() ? -1 : static_cast<int>(random() % plain.size());
            cursor.set_index(index);
            if (index < 0 || random() % 5 < 3) {
                const bool after = random() % 2 == 0;
                after ? cursor.insert_after(step) : cursor.insert_before(step);
                const int at = index < 0 ? 0 : index + (after ? 1 : 0);
                plain.insert(plain.begin() + at, step);
            } else {
                random() % 2 == 0 ? cursor.remove() : cursor.remove_backwards();
                plain.erase(plain.begin() + index);
            }
            ASSERT_EQ(contents_of(list), plain);
            ASSERT_EQ(list.size(), static_cast<int>(plain.size()));
        }
    }
}

TYPED_TEST(coLists, reading_an_empty_list_gives_nil) {
    TypeParam list;
    const TypeParam& constant = list;
    EXPECT_EQ(&list.read_first(), &TypeParam::nil());
    EXPECT_EQ(&list.read_last(), &TypeParam::nil());
    EXPECT_EQ(&constant.read_first(), &TypeParam::nil());
    EXPECT_EQ(&constant.read_last(), &TypeParam::nil());
    EXPECT_EQ(TypeParam::nil(), 0);
    list.insert_last(7);
    list.insert_last(8);
    EXPECT_EQ(list.read_first(), 7);
    EXPECT_EQ(list.read_last(), 8);
}

TYPED_TEST(coLists, reading_at_a_position_before_the_first_gives_nil) {
    TypeParam list{7};
    typename TypeParam::coIterator it(list);
    typename TypeParam::coCursor cursor(list);
    EXPECT_EQ(&it.read(), &TypeParam::nil());
    EXPECT_EQ(&*it, &TypeParam::nil());
    EXPECT_EQ(it.operator->(), &TypeParam::nil());
    EXPECT_EQ(&cursor.read(), &TypeParam::nil());
    EXPECT_EQ(&*cursor, &TypeParam::nil());
    while (++cursor) {
    }
    EXPECT_EQ(&cursor.read(), &TypeParam::nil());
    cursor.set_index(0);
    cursor.remove();
    EXPECT_EQ(&cursor.read(), &TypeParam::nil());
}

TYPED_TEST(coLists, a_cursor_changes_its_element) {
    TypeParam list{1, 2};
    typename TypeParam::coCursor cursor(list);
    cursor.set_index(1);
    cursor.element() = 9;
    EXPECT_EQ(contents_of(list), (std::vector<int>{1, 9}));
    EXPECT_EQ(cursor.read(), 9);
}

TYPED_TEST(coLists, work_with_standard_algorithms) {
    TypeParam list{3, 1, 2, 1};
    EXPECT_EQ(std::count(list.begin(), list.end(), 1), 2);
    std::replace(list.begin(), list.end(), 1, 5);
    EXPECT_EQ(contents_of(list), (std::vector<int>{3, 5, 2, 5}));
    typename TypeParam::iterator it = list.begin();
    EXPECT_EQ(*it++, 3);
    EXPECT_EQ(*it, 5);
    EXPECT_EQ(it.operator->(), &*it);
    const TypeParam empty;
    EXPECT_TRUE(empty.begin() == empty.end());
}

TYPED_TEST(coLists, are_assigned_by_copying_and_by_moving) {
    const TypeParam original{1, 2};
    TypeParam copy{9};
    copy = original;
    EXPECT_EQ(contents_of(copy), (std::vector<int>{1, 2}));
    TypeParam moved{7, 8, 9};
    moved = std::move(copy);
    EXPECT_EQ(contents_of(moved), (std::vector<int>{1, 2}));
    const TypeParam constructed(moved);
    EXPECT_EQ(contents_of(constructed), (std::vector<int>{1, 2}));
}

TYPED_TEST(coLists, large_steps_end_before_the_first) {
    TypeParam list{0, 1};
    typename TypeParam::coIterator it(list);
    EXPECT_EQ(it -= 3, 0);
    EXPECT_EQ(it.index(), -1);
    EXPECT_EQ(it += -3, 0);
    EXPECT_EQ(it -= -3, 0);
    EXPECT_EQ(it -= 0, 0);
    EXPECT_NE(it -= 2, 0);
    EXPECT_EQ(*it, 0);
    EXPECT_NE(it -= 0, 0);
}

TEST(coDList, taking_the_elements_of_an_empty_list_changes_nothing) {
    coDList<int> list{1};
    coDList<int> empty;
    list.take_last(empty);
    EXPECT_EQ(contents_of(list), (std::vector<int>{1}));
    list.take_last(empty, {});
    EXPECT_EQ(contents_of(list), (std::vector<int>{1}));
}

TEST(coDList, links_both_ways_after_changes_in_the_middle) {
    coDList<int> list{1, 2, 4};
    coDList<int>::coCursor cursor(list);
    cursor.set_index(2);
    cursor.insert_before(3);
    cursor.set_index(1);
    cursor.remove();
    std::vector<int> backwards;
    for (coDList<int>::coIterator it(list); --it;) backwards.push_back(*it);
    EXPECT_EQ(backwards, (std::vector<int>{4, 3, 1}));
}

TEST(coDList, a_range_based_loop_can_change_the_elements) {
    coDList<int> list{1, 2, 3};
    for (int& element : list) element *= 10;
    EXPECT_EQ(contents_of(list), (std::vector<int>{10, 20, 30}));
    EXPECT_EQ(list.read_last(), 30);
}

TEST(coDList, takes_the_elements_of_another_list_at_their_addresses) {
    coDList<int> list{1, 2};
    coDList<int> other{3, 4};
    const int* const third = &other.read_first();
    list.take_last(other);
    EXPECT_EQ(contents_of(list), (std::vector<int>{1, 2, 3, 4}));
    EXPECT_EQ(list.size(), 4);
    EXPECT_EQ(&*std::next(list.begin(), 2), third);
    EXPECT_EQ(other.size(), 0);
    EXPECT_TRUE(contents_of(other).empty());
    other.take_last(list);
    list.take_last(list);
    EXPECT_EQ(contents_of(other), (std::vector<int>{1, 2, 3, 4}));
    EXPECT_EQ(list.size(), 0);
}

TEST(coDList, takes_the_elements_of_another_list_in_a_new_order) {
    coDList<int> list{1};
    coDList<int> other{2, 3, 4};
    list.take_last(other, {2, 0, 1});
    EXPECT_EQ(contents_of(list), (std::vector<int>{1, 4, 2, 3}));
    EXPECT_EQ(list.size(), 4);
    EXPECT_EQ(other.size(), 0);
    std::vector<int> backwards;
    for (coDList<int>::coIterator it(list); --it;) backwards.push_back(*it);
    EXPECT_EQ(backwards, (std::vector<int>{3, 2, 4, 1}));
}

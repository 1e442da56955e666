#include <gtest/gtest.h>
#include <ncamcontainer/builtin_containers.h>
#include <ncamcontainer/coSet.h>

#include <algorithm>
#include <array>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace {

// A hash with three values, so most elements collide.
struct CollidingInterface {
    static unsigned int obj_hash(const int& element) {
        return static_cast<unsigned int>(element % 3);
    }
    static int obj_compare(const int& a, const int& b) { return a == b ? 0 : 1; }
};
using CollidingSet = coSet<int, CollidingInterface>;

// Compared by number; the name shows which of two equal elements is stored.
struct Named {
    int number = 0;
    std::string name;
};
unsigned int co_hash(const Named& element) { return coObjInterface<int>::obj_hash(element.number); }
bool operator==(const Named& a, const Named& b) { return a.number == b.number; }
using NamedSet = coSet<Named>;

template <class Set>
std::set<int> contents_of(const Set& set) {
    std::set<int> found;
    for (typename Set::coIterator it(set); ++it;) found.insert(*it);
    EXPECT_EQ(found, std::set<int>(set.begin(), set.end()));
    return found;
}

template <class Set>
void expect_the_contents_of_a_plain_set_under_random_changes(unsigned seed, Set set) {
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    std::mt19937 random(seed);
    std::set<int> plain;
    for (int step = 0; step < 4000; ++step) {
        const int element = static_cast<int>(random() % 300);
        if (random() % 2 == 0) {
            const bool was_new = plain.insert(element).second;
            const int& stored = set.add(element);
            ASSERT_EQ(&stored == &Set::nil(), was_new);
        } else {
            plain.erase(element);
            set.remove(element);
        }
        ASSERT_EQ(set.size(), static_cast<int>(plain.size()));
        ASSERT_EQ(set.contains(element), plain.count(element) == 1);
    }
    EXPECT_EQ(contents_of(set), plain);
}

}  // namespace

TEST(coSet, has_no_slots_until_the_first_add) {
    intcoSet set(4, 50);
    EXPECT_EQ(set.arr_size(), 0);
    set.add(1);
    EXPECT_EQ(set.arr_size(), 16);
}

TEST(coSet, grows_to_32_slots_when_the_count_reaches_8) {
    intcoSet set(4, 50);
    for (int i = 0; i < 7; ++i) set.add(i);
    EXPECT_EQ(set.arr_size(), 16);
    set.add(7);
    EXPECT_EQ(set.arr_size(), 32);
    for (int i = 0; i < 8; ++i) EXPECT_EQ(set.find(i), i);
}

TEST(coSet, does_not_grow_when_an_equal_element_is_added) {
    intcoSet set(4, 50);
    for (int i = 0; i < 7; ++i) set.add(i);
    for (int i = 0; i < 7; ++i) set.add(i);
    EXPECT_EQ(set.arr_size(), 16);
}

TEST(coSet, doubles_until_the_count_is_below_the_load_limit) {
    intcoSet set(4, 1);
    set.add(1);
    EXPECT_EQ(set.arr_size(), 128);  // 1 is not below 0.64, but below 1.28
}

TEST(coSet, limits_the_arguments_of_its_constructor) {
    for (const int load_limit : {-5, 0, 100, 1000}) {
        intcoSet set(0, load_limit);
        for (int i = 0; i < 100; ++i) set.add(i);
        for (int i = 0; i < 100; ++i) EXPECT_TRUE(set.contains(i)) << load_limit;
        EXPECT_FALSE(set.contains(100)) << load_limit;
    }
    intcoSet negative_exponent(-3, 50);
    negative_exponent.add(1);
    EXPECT_TRUE(negative_exponent.contains(1));
}

TEST(coSet, finds_and_removes_before_the_first_add) {
    intcoSet set(4, 50);
    EXPECT_EQ(&set.find(3), &intcoSet::nil());
    EXPECT_EQ(set.remove(3), intcoSet::nil());
    EXPECT_EQ(set.remove_any(), intcoSet::nil());
    EXPECT_EQ(set.arr_size(), 0);
}

TEST(coSet, add_returns_nil_for_a_new_element_and_the_stored_one_for_an_equal_one) {
    NamedSet set(4, 50);
    EXPECT_EQ(&set.add({7, "first"}), &NamedSet::nil());
    EXPECT_EQ(set.add({7, "second"}).name, "first");
    EXPECT_EQ(set.find({7, ""}).name, "first");
    EXPECT_EQ(set.size(), 1);
}

TEST(coSet, removing_an_absent_element_gives_nil_and_leaves_the_running_hash) {
    intcoSet set{1, 2, 3};
    const unsigned int before = set.running_hash();
    EXPECT_EQ(set.remove(9), intcoSet::nil());
    EXPECT_EQ(set.running_hash(), before);
    EXPECT_EQ(set.size(), 3);
}

TEST(coSet, running_hash_is_the_exclusive_or_of_all_hashes) {
    const auto hash = [](int element) { return coObjInterface<int>::obj_hash(element); };
    intcoSet set(1, 50);
    unsigned int expected = 0;
    for (int i = 0; i < 50; ++i) {
        set.add(i);
        expected ^= hash(i);
        EXPECT_EQ(set.running_hash(), expected);
    }
    set.remove(17);
    EXPECT_EQ(set.running_hash(), expected ^ hash(17));
    set.clear();
    EXPECT_EQ(set.running_hash(), 0U);
}

TEST(coSet, an_element_that_equals_nil_is_stored_like_any_other) {
    intcoSet set(4, 50);
    EXPECT_EQ(&set.add(0), &intcoSet::nil());
    EXPECT_EQ(set.size(), 1);
    EXPECT_NE(&set.find(0), &intcoSet::nil());
    EXPECT_TRUE(set.contains(0));
    EXPECT_NE(&set.add(0), &intcoSet::nil());
}

TEST(coSet, nil_itself_is_never_inserted) {
    intcoSet set(4, 50);
    EXPECT_EQ(&set.add(intcoSet::nil()), &intcoSet::nil());
    EXPECT_EQ(set.size(), 0);
}

TEST(coSet, an_element_that_becomes_equal_to_nil_does_not_hide_the_others) {
    struct SharedInterface {
        static unsigned int obj_hash(const std::shared_ptr<int>&) { return 5; }
        static int obj_compare(const std::shared_ptr<int>& a, const std::shared_ptr<int>& b) {
            const int a_number = a ? *a : 0;
            return a_number == (b ? *b : 0) ? 0 : 1;
        }
    };
    coSet<std::shared_ptr<int>, SharedInterface> set(4, 50);
    const auto first = std::make_shared<int>(1);
    const auto second = std::make_shared<int>(2);
    set.add(first);
    set.add(second);
    *first = 0;  // now equals nil
    EXPECT_EQ(set.find(second), second);
    EXPECT_EQ(set.size(), 2);
}

TEST(coSet, closes_the_gap_when_colliding_elements_are_removed) {
    CollidingSet set(4, 80);
    for (int i = 0; i < 12; ++i) set.add(i);
    for (const int removed : {3, 0, 6}) {
        EXPECT_EQ(set.remove(removed), removed);
        EXPECT_FALSE(set.contains(removed));
    }
    EXPECT_EQ(contents_of(set), (std::set<int>{1, 2, 4, 5, 7, 8, 9, 10, 11}));
}

TEST(coSet, behaves_like_a_plain_set_under_random_changes) {
    for (unsigned seed = 1; seed <= 5; ++seed) {
        expect_the_contents_of_a_plain_set_under_random_changes(seed, intcoSet(0, 99));
        expect_the_contents_of_a_plain_set_under_random_changes(seed, intcoSet(4, 50));
        expect_the_contents_of_a_plain_set_under_random_changes(seed, CollidingSet(2, 75));
    }
}

TEST(coSet, removes_any_until_it_is_empty) {
    intcoSet set(4, 50);
    for (int i = 1; i <= 1000; ++i) set.add(i);
    std::set<int> taken;
    while (set.size() > 0) {
        intcoSet::coIterator first(set);
        ASSERT_EQ(++first, 1);
        const int expected = *first;
        const int removed = set.remove_any();
        ASSERT_EQ(removed, expected);
        taken.insert(removed);
    }
    EXPECT_EQ(taken.size(), 1000U);
    EXPECT_EQ(set.remove_any(), intcoSet::nil());
}

TEST(coSet, an_iterator_visits_each_element_once_in_each_pass) {
    intcoSet set{5, 6, 7};
    intcoSet::coIterator it(set);
    for (int pass = 0; pass < 2; ++pass) {
        int count = 0;
        while (++it) ++count;
        EXPECT_EQ(count, 3);
    }
}

TEST(coSet, reading_at_a_position_before_the_first_gives_nil) {
    const intcoSet set{5};
    intcoSet::coIterator it(set);
    EXPECT_EQ(&*it, &intcoSet::nil());
    ++it;
    EXPECT_EQ(*it, 5);
    it.reset();
    EXPECT_EQ(it.operator->(), &intcoSet::nil());
}

TEST(coSet, works_with_standard_algorithms) {
    const intcoSet set{5, 6, 7};
    int sum = 0;
    for (const int element : set) sum += element;
    EXPECT_EQ(sum, 18);
    EXPECT_EQ(std::count_if(set.begin(), set.end(), [](int element) { return element > 5; }), 2);
    intcoSet::const_iterator it = set.begin();
    const int first = *it++;
    EXPECT_NE(*it, first);
    EXPECT_EQ(it.operator->(), &*it);
    EXPECT_TRUE(intcoSet().begin() == intcoSet().end());
}

TEST(coSet, is_equal_to_a_set_with_the_same_elements_in_other_slots) {
    intcoSet small_table(2, 90);
    intcoSet large_table(8, 50);
    for (const int element : {1, 2, 3}) small_table.add(element);
    for (const int element : {3, 2, 1}) large_table.add(element);
    EXPECT_TRUE(small_table == large_table);
    large_table.add(4);
    EXPECT_FALSE(small_table == large_table);
    small_table.add(5);
    EXPECT_FALSE(small_table == large_table);
}

TEST(coSet, sets_with_equal_running_hashes_and_different_elements_differ) {
    CollidingSet zeros(4, 50);  // 0 and 3 have the hash 0, 1 and 4 have the hash 1
    CollidingSet ones(4, 50);
    for (const int element : {0, 1, 4}) zeros.add(element);
    for (const int element : {3, 1, 4}) ones.add(element);
    EXPECT_EQ(zeros.running_hash(), ones.running_hash());
    EXPECT_FALSE(zeros == ones);
}

TEST(coSet, is_assigned_by_copying_and_by_moving) {
    const intcoSet original{1, 2};
    intcoSet copy{9};
    copy = original;
    EXPECT_TRUE(copy == original);
    intcoSet moved{7};
    moved = std::move(copy);
    EXPECT_TRUE(moved == original);
    intcoSet& same = moved;
    moved = std::move(same);
    EXPECT_TRUE(moved == original);
    const intcoSet constructed(std::move(moved));
    EXPECT_TRUE(constructed == original);
}

TEST(coSet, becoming_a_copy_of_an_empty_set_releases_the_slots) {
    intcoSet set{1};
    set.become(utCopy(), intcoSet(6, 50));
    EXPECT_EQ(set.arr_size(), 0);
    set.clear();
    set.add(1);
    EXPECT_EQ(set.arr_size(), 64);
}

TEST(coSet, recognises_subsets) {
    const intcoSet small{1, 2};
    const intcoSet large{1, 2, 3};
    const intcoSet other{1, 4};
    EXPECT_TRUE(small <= large);
    EXPECT_FALSE(large <= small);
    EXPECT_FALSE(other <= large);
    EXPECT_TRUE(intcoSet() <= small);
    EXPECT_TRUE(large <= large);
}

TEST(coSet, unites_intersects_and_subtracts_in_place) {
    intcoSet set{1, 2, 3};
    set += intcoSet{3, 4};
    EXPECT_EQ(contents_of(set), (std::set<int>{1, 2, 3, 4}));
    set *= intcoSet{2, 3, 4, 9};
    EXPECT_EQ(contents_of(set), (std::set<int>{2, 3, 4}));
    set -= intcoSet{3, 9};
    EXPECT_EQ(contents_of(set), (std::set<int>{2, 4}));
}

TEST(coSet, combines_with_itself) {
    intcoSet set{1, 2, 3};
    const intcoSet& same = set;
    set += same;
    EXPECT_EQ(contents_of(set), (std::set<int>{1, 2, 3}));
    set *= same;
    EXPECT_EQ(contents_of(set), (std::set<int>{1, 2, 3}));
    set -= same;
    EXPECT_EQ(set.size(), 0);
}

TEST(coSet, becomes_an_independent_copy) {
    intcoSet original{1, 2, 3};
    intcoSet copy(utCopy(), original);
    original.remove(2);
    EXPECT_EQ(contents_of(copy), (std::set<int>{1, 2, 3}));
    copy.become(utCopy(), original);
    EXPECT_EQ(contents_of(copy), (std::set<int>{1, 3}));
    EXPECT_TRUE(copy == original);
    copy.become(utCopy(), copy);
    EXPECT_EQ(contents_of(copy), (std::set<int>{1, 3}));
}

TEST(coSet, keeps_its_slots_when_it_is_cleared) {
    intcoSet set(4, 50);
    for (int i = 0; i < 20; ++i) set.add(i);
    const int slots = set.arr_size();
    set.clear();
    EXPECT_EQ(set.arr_size(), slots);
    EXPECT_EQ(set.size(), 0);
    EXPECT_FALSE(set.contains(3));
}

TEST(coSet, removes_an_element_that_is_passed_by_its_stored_copy) {
    NamedSet set(4, 50);
    set.add({1, "one"});
    const Named& stored = set.find({1, ""});
    EXPECT_EQ(set.remove(stored).name, "one");
    EXPECT_EQ(set.size(), 0);
}

TEST(coSet, numbers_at_equal_distances_have_different_hashes) {
    for (const int distance : {1, 2, 16, 1000, 4096, 65536, 65537}) {
        std::set<unsigned int> hashes;
        for (int i = 0; i < 1024; ++i) {
            hashes.insert(coObjInterface<int>::obj_hash(i * distance));
        }
        EXPECT_EQ(hashes.size(), 1024U) << distance;
    }
}

TEST(coSet, negative_numbers_have_different_hashes) {
    std::set<unsigned int> hashes;
    for (int i = -1000; i < 1000; ++i) hashes.insert(coObjInterface<int>::obj_hash(i));
    for (long long i = 1; i <= 1000; ++i) {
        hashes.insert(coObjInterface<long long>::obj_hash(i << 32));
    }
    EXPECT_EQ(hashes.size(), 3000U);
}

TEST(coSet, an_element_whose_hash_is_0_is_part_of_the_running_hash) {
    CollidingSet set(4, 50);  // 0 and 3 have the hash 0, 1 has the hash 1
    set.add(0);
    set.add(3);
    set.add(1);
    EXPECT_EQ(set.running_hash(), 1U);
    set.remove(3);
    EXPECT_EQ(set.running_hash(), 1U);
    EXPECT_TRUE(set.contains(0));
    set.remove(1);
    EXPECT_EQ(set.running_hash(), 0U);
    EXPECT_EQ(set.size(), 1);
}

TEST(coSet, holds_enumerations_and_pointers) {
    enum class Colour { red, green };
    coSet<Colour> colours{Colour::green};
    EXPECT_TRUE(colours.contains(Colour::green));
    EXPECT_FALSE(colours.contains(Colour::red));
    const int numbers[2] = {};
    coSet<const int*> pointers{&numbers[0]};
    EXPECT_TRUE(pointers.contains(&numbers[0]));
    EXPECT_FALSE(pointers.contains(&numbers[1]));
}

TEST(coSet, makes_nil_once_when_several_threads_ask_at_the_same_time) {
    struct OnlyUsedHere {
        int number = 0;
        bool operator==(const OnlyUsedHere&) const = default;
    };
    std::array<const OnlyUsedHere*, 8> found{};
    std::vector<std::thread> threads;
    for (const OnlyUsedHere*& nil : found) {
        threads.emplace_back([&nil] { nil = &coSet<OnlyUsedHere>::nil(); });
    }
    for (std::thread& thread : threads) thread.join();
    for (const OnlyUsedHere* nil : found) EXPECT_EQ(nil, found[0]);
}

TEST(coSet, derives_from_the_set_core) {
    static_assert(std::is_base_of_v<basecoSet<int>, coSet<int>>);
    static_assert(std::is_base_of_v<coHash<int>, basecoSet<int>>);
    basecoSet<int> core(4, 50);
    EXPECT_EQ(&core.add(7), &core.nil());
    EXPECT_EQ(core.add(7), 7);
    basecoSetcoIterator<int> it(core);
    EXPECT_NE(++it, 0);
    EXPECT_EQ(*it, 7);
    EXPECT_EQ(++it, 0);
}

#include <gtest/gtest.h>
#include <ncamcontainer/builtin_containers.h>
#include <ncamcontainer/coSet.h>

#include <array>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace {

// A set whose elements all collide, so that every search runs through the others.
struct CollidingInterface {
    static unsigned int obj_hash(const int& element) {
        return static_cast<unsigned int>(element % 3);
    }
    static int obj_compare(const int& a, const int& b) { return a == b ? 0 : 1; }
};
using CollidingSet = coSet<int, CollidingInterface>;

// Equal by number, apart by name.
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
    return found;
}

template <class Set>
void expect_same_as_the_plain_set_through_random_changes(unsigned seed, Set set) {
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    std::mt19937 random(seed);
    std::set<int> plain;
    for (int step = 0; step < 4000; ++step) {
        const int element = static_cast<int>(random() % 300);
        if (random() % 2 == 0) {
            const bool was_new = plain.insert(element).second;
            const int& answer = set.add(element);
            ASSERT_EQ(&answer == &Set::nil(), was_new);
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

TEST(coSet, brings_limits_from_outside_inside) {
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

TEST(coSet, answers_nil_for_a_new_element_and_the_stored_one_for_an_equal_one) {
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

TEST(coSet, an_element_that_equals_nil_is_an_element_like_any_other) {
    intcoSet set(4, 50);
    EXPECT_EQ(&set.add(0), &intcoSet::nil());
    EXPECT_EQ(set.size(), 1);
    EXPECT_NE(&set.find(0), &intcoSet::nil());
    EXPECT_TRUE(set.contains(0));
    EXPECT_NE(&set.add(0), &intcoSet::nil());
}

TEST(coSet, nil_itself_is_never_put_in) {
    intcoSet set(4, 50);
    EXPECT_EQ(&set.add(intcoSet::nil()), &intcoSet::nil());
    EXPECT_EQ(set.size(), 0);
}

TEST(coSet, an_element_that_comes_to_equal_nil_later_opens_no_hole) {
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
    for (const int gone : {3, 0, 6}) {
        EXPECT_EQ(set.remove(gone), gone);
        EXPECT_FALSE(set.contains(gone));
    }
    EXPECT_EQ(contents_of(set), (std::set<int>{1, 2, 4, 5, 7, 8, 9, 10, 11}));
}

TEST(coSet, answers_like_a_plain_set_through_random_changes) {
    for (unsigned seed = 1; seed <= 5; ++seed) {
        expect_same_as_the_plain_set_through_random_changes(seed, intcoSet(0, 99));
        expect_same_as_the_plain_set_through_random_changes(seed, intcoSet(4, 50));
        expect_same_as_the_plain_set_through_random_changes(seed, CollidingSet(2, 75));
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

TEST(coSet, walks_each_element_once_and_is_ready_to_walk_again) {
    intcoSet set{5, 6, 7};
    intcoSet::coIterator it(set);
    for (int walk = 0; walk < 2; ++walk) {
        int count = 0;
        while (++it) ++count;
        EXPECT_EQ(count, 3);
    }
}

TEST(coSet, tells_subsets) {
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

TEST(coSet, operates_on_itself_as_mathematics_has_it) {
    intcoSet set{1, 2, 3};
    const intcoSet& same = set;
    set += same;
    EXPECT_EQ(contents_of(set), (std::set<int>{1, 2, 3}));
    set *= same;
    EXPECT_EQ(contents_of(set), (std::set<int>{1, 2, 3}));
    set -= same;
    EXPECT_EQ(set.size(), 0);
}

TEST(coSet, becomes_a_copy_that_is_its_own) {
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

TEST(coSet, removes_an_element_that_is_named_by_its_own_stored_copy) {
    NamedSet set(4, 50);
    set.add({1, "one"});
    const Named& stored = set.find({1, ""});
    EXPECT_EQ(set.remove(stored).name, "one");
    EXPECT_EQ(set.size(), 0);
}

TEST(coSet, gives_numbers_at_equal_distances_different_hashes) {
    for (const int distance : {1, 2, 16, 1000, 4096, 65536, 65537}) {
        std::set<unsigned int> hashes;
        for (int i = 0; i < 1024; ++i) {
            hashes.insert(coObjInterface<int>::obj_hash(i * distance));
        }
        EXPECT_EQ(hashes.size(), 1024U) << distance;
    }
}

TEST(coSet, gives_negative_numbers_hashes_of_their_own) {
    std::set<unsigned int> hashes;
    for (int i = -1000; i < 1000; ++i) hashes.insert(coObjInterface<int>::obj_hash(i));
    for (long long i = 1; i <= 1000; ++i) {
        hashes.insert(coObjInterface<long long>::obj_hash(i << 32));
    }
    EXPECT_EQ(hashes.size(), 3000U);
}

TEST(coSet, keeps_the_running_hash_right_for_an_element_whose_hash_is_0) {
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

TEST(coSet, makes_nil_once_however_many_threads_ask_first) {
    struct FirstAskedHere {
        int number = 0;
        bool operator==(const FirstAskedHere&) const = default;
    };
    std::array<const FirstAskedHere*, 8> answers{};
    std::vector<std::thread> threads;
    for (const FirstAskedHere*& answer : answers) {
        threads.emplace_back([&answer] { answer = &coSet<FirstAskedHere>::nil(); });
    }
    for (std::thread& thread : threads) thread.join();
    for (const FirstAskedHere* answer : answers) EXPECT_EQ(answer, answers[0]);
}

TEST(coSet, is_a_set_core_with_copying_and_joining) {
    static_assert(std::is_base_of_v<basecoSet<int>, coSet<int>>);
    static_assert(std::is_base_of_v<coHash<int>, basecoSet<int>>);
    basecoSet<int> core(4, 50);
    EXPECT_EQ(&core.add(7), &core.nil());
    EXPECT_EQ(core.add(7), 7);
    basecoSetcoIterator<int> walk(core);
    EXPECT_NE(++walk, 0);
    EXPECT_EQ(*walk, 7);
    EXPECT_EQ(++walk, 0);
}

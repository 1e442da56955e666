#include <collections/plain_bal_bin_tree.h>
#include <gtest/gtest.h>
#include <nmktoolbox/collections/nmkBalBinTree.h>
#include <utils/utAssert.h>

#include <algorithm>
#include <climits>
#include <deque>
#include <random>
#include <utility>
#include <vector>

namespace {

using Comparisons = std::vector<std::pair<int, int>>;

// Items are compared by their keys; `order` distinguishes equal items.
struct Item {
    int key;
    int order;
};

Comparisons recorded;  // the `order` of the items that were compared, call by call
int asserted = 0;

const Item& item_at(const void* pointer) { return *static_cast<const Item*>(pointer); }

int compare_items(const void* a, const void* b) {
    recorded.emplace_back(item_at(a).order, item_at(b).order);
    return item_at(a).key - item_at(b).key;
}

int compare_to_the_extremes(const void* a, const void* b) {
    if (item_at(a).key == item_at(b).key) return 0;
    return item_at(a).key < item_at(b).key ? INT_MIN : INT_MAX;
}

void count_assertion(const char*, const char*, int, const char*) { ++asserted; }

class Tree {
  public:
    explicit Tree(const std::vector<int>& keys, nmkBalBinTree::Compare compare = compare_items)
        : tree(compare) {
        for (const int key : keys) add(key);
    }

    void add(int key) {
        m_items.push_back({key, static_cast<int>(m_items.size())});
        tree.add(&m_items.back());
    }

    std::vector<int> walk() const {
        std::vector<int> keys;
        for (const void* item = tree.top(); item != nullptr; item = tree.next()) {
            keys.push_back(item_at(item).key);
        }
        return keys;
    }

    nmkBalBinTree tree;

  private:
    std::deque<Item> m_items;
};

// The root is the first item that a search is compared with.
int root_order(Tree& tree) {
    recorded.clear();
    const Item nowhere{INT_MAX / 2, -1};
    tree.tree.exist(&nowhere);
    return recorded.at(0).second;
}

std::vector<int> random_keys(unsigned seed, int count, unsigned different) {
    std::mt19937 random(seed);
    std::vector<int> keys;
    for (int i = 0; i < count; ++i) keys.push_back(static_cast<int>(random() % different));
    return keys;
}

Comparisons comparisons_of_the_plain_tree(const std::vector<int>& keys, std::vector<int>& walk) {
    Comparisons comparisons;
    PlainBalBinTree plain([&](int a, int b) {
        comparisons.emplace_back(a, b);
        return keys[static_cast<std::size_t>(a)] - keys[static_cast<std::size_t>(b)];
    });
    for (std::size_t i = 0; i < keys.size(); ++i) plain.add(static_cast<int>(i));
    EXPECT_TRUE(plain.is_balanced());
    walk = plain.walk();
    return comparisons;
}

void expect_the_comparisons_of_the_plain_tree(const std::vector<int>& keys) {
    recorded.clear();
    const Tree tree(keys);
    const Comparisons comparisons = recorded;
    std::vector<int> plain_walk;
    ASSERT_EQ(comparisons, comparisons_of_the_plain_tree(keys, plain_walk));
    std::vector<int> walk;
    for (const void* item = tree.tree.top(); item != nullptr; item = tree.tree.next()) {
        walk.push_back(item_at(item).order);
    }
    ASSERT_EQ(walk, plain_walk);
}

}  // namespace

TEST(nmkBalBinTree, top_of_an_empty_tree_is_null_and_leaves_it_a_tree) {
    Tree tree({});
    EXPECT_EQ(tree.tree.top(), nullptr);
    EXPECT_EQ(tree.tree.next(), nullptr);
    tree.add(1);
    tree.add(2);
    EXPECT_EQ(tree.walk(), (std::vector<int>{2, 1}));
}

TEST(nmkBalBinTree, rebalances_ascending_items_with_a_single_rotation) {
    Tree tree({1, 2, 3});
    EXPECT_EQ(root_order(tree), 1);
    EXPECT_EQ(tree.walk(), (std::vector<int>{3, 2, 1}));
}

TEST(nmkBalBinTree, rebalances_an_inner_grandchild_with_a_double_rotation) {
    Tree right_then_left({1, 3, 2});
    EXPECT_EQ(root_order(right_then_left), 2);
    Tree left_then_right({3, 1, 2});
    EXPECT_EQ(root_order(left_then_right), 2);
    EXPECT_EQ(left_then_right.walk(), (std::vector<int>{3, 2, 1}));
}

TEST(nmkBalBinTree, keeps_all_equal_items) {
    const Tree tree({5, 5, 3, 5, 3});
    EXPECT_EQ(tree.walk(), (std::vector<int>{5, 5, 5, 3, 3}));
}

TEST(nmkBalBinTree, finds_the_item_nearest_to_the_root_of_several_equal_ones) {
    Tree tree({5, 5, 5});  // a rotation makes the second one the root
    const Item five{5, -1};
    const void* const found = tree.tree.exist(&five);
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(item_at(found).order, 1);
}

TEST(nmkBalBinTree, finds_exactly_the_items_that_were_added) {
    const std::vector<int> keys = random_keys(3, 500, 1000);
    Tree tree(keys);
    for (int key = -1; key <= 1000; ++key) {
        const Item wanted{key, -1};
        const void* const found = tree.tree.exist(&wanted);
        const bool there = std::find(keys.begin(), keys.end(), key) != keys.end();
        ASSERT_EQ(found != nullptr, there) << key;
        if (there) {
            ASSERT_EQ(item_at(found).key, key);
        }
    }
    Tree empty({});
    const Item wanted{1, -1};
    EXPECT_EQ(empty.tree.exist(&wanted), nullptr);
}

TEST(nmkBalBinTree, passes_the_new_item_first_and_the_one_in_the_tree_second) {
    recorded.clear();
    Tree tree({1, 2});
    // Once on the way down, once more from the pivot.
    EXPECT_EQ(recorded, (Comparisons{{1, 0}, {1, 0}}));
    recorded.clear();
    const Item wanted{1, 77};
    tree.tree.exist(&wanted);
    EXPECT_EQ(recorded, (Comparisons{{77, 0}}));
}

TEST(nmkBalBinTree, uses_only_the_sign_of_a_comparison) {
    const std::vector<int> keys = random_keys(4, 300, 100);
    Tree tree(keys, compare_to_the_extremes);
    const Item wanted{keys[0], -1};
    EXPECT_NE(tree.tree.exist(&wanted), nullptr);
    std::vector<int> expected = keys;
    std::sort(expected.rbegin(), expected.rend());
    EXPECT_EQ(tree.walk(), expected);
}

TEST(nmkBalBinTree, a_second_top_starts_again_from_the_head) {
    const Tree tree({2, 9, 4, 7});
    const void* const head = tree.tree.top();
    tree.tree.next();
    recorded.clear();
    EXPECT_EQ(tree.tree.top(), head);
    EXPECT_EQ(tree.walk(), (std::vector<int>{9, 7, 4, 2}));
    EXPECT_EQ(tree.walk(), (std::vector<int>{9, 7, 4, 2}));
    EXPECT_TRUE(recorded.empty());
}

TEST(nmkBalBinTree, next_stays_null_past_the_end) {
    const Tree tree({1});
    EXPECT_NE(tree.tree.top(), nullptr);
    EXPECT_EQ(tree.tree.next(), nullptr);
    EXPECT_EQ(tree.tree.next(), nullptr);
    EXPECT_NE(tree.tree.top(), nullptr);
}

TEST(nmkBalBinTree, next_before_any_top_is_null) { EXPECT_EQ(Tree({1}).tree.next(), nullptr); }

TEST(nmkBalBinTree, reports_an_assertion_and_adds_nothing_once_it_is_flattened) {
    const utAssertHandler before = ut_set_assert_handler(count_assertion);
    Tree tree({1, 2, 3});
    tree.walk();
    asserted = 0;
    tree.add(4);
    EXPECT_EQ(asserted, 1);
    const Item wanted{2, -1};
    EXPECT_EQ(tree.tree.exist(&wanted), nullptr);
    EXPECT_EQ(asserted, 2);
    EXPECT_EQ(tree.walk(), (std::vector<int>{3, 2, 1}));
    ut_set_assert_handler(before);
}

TEST(nmkBalBinTree, shares_an_allocator_with_other_trees) {
    fbaAllocatorcoPrf allocator = nmkBalBinTree::get_allocator(10);
    const Item low{1, 0};
    const Item high{2, 1};
    {
        nmkBalBinTree first(compare_items, allocator);
        nmkBalBinTree second(compare_items, allocator);
        EXPECT_EQ(allocator.use_count(), 3);
        first.add(&low);
        second.add(&high);
        EXPECT_EQ(allocator->pages(), 1);
        EXPECT_EQ(first.top(), &low);
        EXPECT_EQ(second.top(), &high);
    }
    EXPECT_EQ(allocator.use_count(), 1);
}

TEST(nmkBalBinTree, makes_its_own_allocator_when_the_given_one_is_null) {
    fbaAllocatorcoPrf none;
    nmkBalBinTree tree(compare_items, none);
    const Item item{1, 0};
    tree.add(&item);
    EXPECT_EQ(tree.top(), &item);
    EXPECT_EQ(none.get(), nullptr);
}

TEST(nmkBalBinTree, takes_the_shape_of_the_plain_tree_for_every_order_of_seven_items) {
    std::vector<int> keys{1, 2, 3, 4, 5, 6, 7};
    do {
        expect_the_comparisons_of_the_plain_tree(keys);
        if (HasFatalFailure()) return;
    } while (std::next_permutation(keys.begin(), keys.end()));
}

TEST(nmkBalBinTree, takes_the_shape_of_the_plain_tree_for_random_items) {
    for (unsigned seed = 1; seed <= 20; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        expect_the_comparisons_of_the_plain_tree(random_keys(seed, 300, 1000000));
        expect_the_comparisons_of_the_plain_tree(random_keys(seed, 300, 12));  // many equal
        if (HasFatalFailure()) return;
    }
}

TEST(nmkBalBinTree, takes_the_shape_of_the_plain_tree_for_sorted_items) {
    std::vector<int> keys(300);
    for (std::size_t i = 0; i < keys.size(); ++i) keys[i] = static_cast<int>(i);
    expect_the_comparisons_of_the_plain_tree(keys);
    std::reverse(keys.begin(), keys.end());
    expect_the_comparisons_of_the_plain_tree(keys);
}

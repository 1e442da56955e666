// nmkBalBinTree_benchmark: a million additions and the walk over them, beside std::multiset.
//
// Both hold pointers to the same items and compare them with the same three-way function, called
// through a pointer. Items come in random order and in ascending order. Each time is the best of
// several rounds, ours and the peer's in turn.

#include <nmktoolbox/collections/nmkBalBinTree.h>

#include <algorithm>
#include <random>
#include <set>
#include <vector>

#include "stopwatch.h"

namespace {

const int items_count = stopwatch::size(1000000, 20000);
constexpr int rounds = 5;
constexpr double target = 1.0;

int compare_numbers(const void* a, const void* b) {
    const int left = *static_cast<const int*>(a);
    const int right = *static_cast<const int*>(b);
    return left < right ? -1 : left > right ? 1 : 0;
}

// Descending, as the tree is read.
struct Before {
    int (*compare)(const void*, const void*);
    bool operator()(const void* a, const void* b) const { return compare(a, b) > 0; }
};

// A checksum that depends on the order of the items.
unsigned step(unsigned sum, const void* item) {
    return sum * 31U + static_cast<unsigned>(*static_cast<const int*>(item));
}

unsigned run_tree(const std::vector<int>& items, int (*compare)(const void*, const void*)) {
    nmkBalBinTree tree(compare);
    for (const int& item : items) tree.add(&item);
    unsigned sum = 0;
    for (const void* item = tree.top(); item != nullptr; item = tree.next()) sum = step(sum, item);
    return sum;
}

unsigned run_multiset(const std::vector<int>& items, int (*compare)(const void*, const void*)) {
    std::multiset<const void*, Before> set(Before{compare});
    for (const int& item : items) set.insert(&item);
    unsigned sum = 0;
    for (const void* item : set) sum = step(sum, item);
    return sum;
}

bool measure(const char* name, const std::vector<int>& items) {
    int (*volatile compare)(const void*, const void*) = compare_numbers;
    const auto taken = stopwatch::in_turns(
        rounds, [&] { return run_tree(items, compare); },
        [&] { return run_multiset(items, compare); });
    return stopwatch::report(name, taken.ours, taken.peer, target, taken.same);
}

}  // namespace

int main() {
    std::vector<int> items(static_cast<std::size_t>(items_count));
    for (std::size_t i = 0; i < items.size(); ++i) items[i] = static_cast<int>(i);
    const bool ascending = measure("nmkBalBinTree_1e6_ascending_and_walk", items);
    std::shuffle(items.begin(), items.end(), std::mt19937(1));
    const bool shuffled = measure("nmkBalBinTree_1e6_random_and_walk", items);
    return ascending && shuffled ? 0 : 1;
}

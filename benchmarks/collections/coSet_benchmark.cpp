// coSet_benchmark: a million additions and a million finds, beside std::unordered_set.
//
// Random 32-bit numbers; half of what is looked for is there. Each time is the best of several
// rounds, ours and the peer's in turn.

#include <ncamcontainer/builtin_containers.h>

#include <algorithm>
#include <random>
#include <unordered_set>
#include <vector>

#include "stopwatch.h"

namespace {

const int numbers_count = stopwatch::size(1000000, 20000);
constexpr int rounds = 5;
constexpr double target_random = 0.25;
constexpr double target_ascending = 1.2;

struct Numbers {
    std::vector<int> to_add;
    std::vector<int> to_find;
};

int run_ours(const Numbers& numbers) {
    intcoSet set(4, 50);
    for (const int number : numbers.to_add) set.add(number);
    int found = 0;
    for (const int number : numbers.to_find) found += &set.find(number) != &intcoSet::nil() ? 1 : 0;
    return found;
}

int run_peer(const Numbers& numbers) {
    std::unordered_set<int> set;
    for (const int number : numbers.to_add) set.insert(number);
    int found = 0;
    for (const int number : numbers.to_find) found += set.find(number) != set.end() ? 1 : 0;
    return found;
}

bool measure(const char* name, const Numbers& numbers, double target) {
    const auto taken = stopwatch::in_turns(
        rounds, [&] { return run_ours(numbers); }, [&] { return run_peer(numbers); });
    return stopwatch::report(name, taken.ours, taken.peer, target, taken.same);
}

Numbers random_numbers() {
    std::mt19937 random(1);
    Numbers numbers;
    for (int i = 0; i < numbers_count; ++i) numbers.to_add.push_back(static_cast<int>(random()));
    numbers.to_find = numbers.to_add;
    for (std::size_t i = 0; i < numbers.to_find.size(); i += 2) {
        numbers.to_find[i] = static_cast<int>(random());
    }
    std::shuffle(numbers.to_find.begin(), numbers.to_find.end(), random);
    return numbers;
}

Numbers ascending_numbers() {
    Numbers numbers;
    for (int i = 0; i < numbers_count; ++i) {
        numbers.to_add.push_back(i);
        numbers.to_find.push_back(2 * i);
    }
    return numbers;
}

}  // namespace

int main() {
    const bool random_reached =
        measure("coSet_1e6_random_adds_and_finds", random_numbers(), target_random);
    const bool ascending_reached =
        measure("coSet_1e6_ascending_adds_and_finds", ascending_numbers(), target_ascending);
    return random_reached && ascending_reached ? 0 : 1;
}

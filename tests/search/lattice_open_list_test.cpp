// The open list of a lattice, beside a sort that keeps the order of equals.
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>
#include <utility>
#include <vector>

#include "search/lattice_open_list.h"

namespace {

using nmk_search::LatticeOpenList;

constexpr auto last_age = std::numeric_limits<std::uint32_t>::max();

// Few different scores, so that there are many ties.
double score_of(int tag) { return tag * 7919 % 5 - 2.0; }
double score_of_entry(const LatticeOpenList::Entry& entry) {
    return score_of(static_cast<int>(entry.g));
}

void push(LatticeOpenList& open, int tag) {
    open.push({tag, -tag}, {giPoint2(tag, 0), static_cast<double>(tag), 0}, score_of(tag));
}

int pop(LatticeOpenList& open) {
    const auto slot = open.first();
    const auto cell = open.cell(slot);
    EXPECT_EQ(cell.row, -cell.column);
    EXPECT_EQ(open.entry(slot).g, cell.column);
    open.drop_first();
    return cell.column;
}

// By score, and among equals by age, which rises with the tag.
int take_best(std::vector<int>& tags) {
    const auto best = std::min_element(tags.begin(), tags.end(), [](int a, int b) {
        return std::pair(score_of(a), a) < std::pair(score_of(b), b);
    });
    const int tag = *best;
    tags.erase(best);
    return tag;
}

TEST(LatticeOpenList, pops_the_best_and_of_equals_the_oldest_also_after_ages_ran_out) {
    const unsigned seed = 20261121;
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    LatticeOpenList open(last_age - 100);
    std::vector<int> tags;
    int renewals = 0;
    for (int tag = 0; tag < 3000; ++tag) {
        if (open.ages_left() == 0) {
            open.score_with_new_ages(score_of_entry);
            ++renewals;
        }
        push(open, tag);
        tags.push_back(tag);
        if (tag % 97 == 0) open.score(score_of_entry);
        for (auto pops = random() % 3; pops > 0 && !open.is_empty(); --pops) {
            ASSERT_EQ(pop(open), take_best(tags));
        }
    }
    EXPECT_EQ(renewals, 1);
    while (!tags.empty()) ASSERT_EQ(pop(open), take_best(tags));
    EXPECT_TRUE(open.is_empty());
}

TEST(LatticeOpenList, lists_its_entries_by_age) {
    LatticeOpenList open;
    for (int tag = 0; tag < 20; ++tag) push(open, tag);
    std::vector<int> left;
    for (int tag = 0; tag < 20; ++tag) left.push_back(tag);
    for (int pops = 0; pops < 7; ++pops) EXPECT_EQ(pop(open), take_best(left));
    push(open, 20);  // in a slot that was used before
    left.push_back(20);
    std::vector<int> by_age;
    for (const auto slot : open.slots_by_age()) by_age.push_back(open.cell(slot).column);
    EXPECT_EQ(by_age, left);
}

}  // namespace

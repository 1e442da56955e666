// best_order: the order of the type best, which no other type of the tool betters.

#include <gtest/gtest.h>
#include <nmkprogressbreak/nmkProgressBreak.h>

#include <algorithm>
#include <filesystem>
#include <numeric>
#include <random>
#include <string>
#include <vector>

#include "app/commands/order/random_jobs.h"
#include "app/shell/command_runner.h"
#include "commands/order/order_figures.h"
#include "commands/order/order_job.h"
#include "formats/job_files/read_job.h"
#include "real_inputs.h"
#include "scratch_directory.h"

namespace nmk_order {
namespace {

// Of one order, measured from both of its ends.
constexpr double rounding = 1e-12;

double travel_of(const nmk_job::MachiningJob& job, OrderType type, const TravelEnds& ends) {
    OrderRequest request;
    request.type = type;
    request.ends = ends;
    request.tolerance = 0.1;
    return measure_order(job, order_job(job, request, nullptr)).total.after.travel;
}

void expect_none_shorter(const nmk_job::MachiningJob& job, const TravelEnds& ends,
                         const std::vector<nmkSortType>& others, const std::string& what) {
    const double best = travel_of(job, best_order, ends);
    for (const nmkSortType other : others) {
        const double travel = travel_of(job, other, ends);
        EXPECT_LE(best, travel * (1.0 + rounding)) << what << ", type " << other;
    }
}

// Where the compiler does not optimise the same takes twenty times as long.
#ifdef NDEBUG
constexpr unsigned random_sets = 3000;
constexpr std::size_t most_items = 2000;
#else
constexpr unsigned random_sets = 150;
constexpr std::size_t most_items = 60;
#endif

TEST(best_order, is_never_longer_than_the_file_closest_and_shortest_on_random_sets) {
    for (unsigned seed = 1; seed <= random_sets; ++seed) {
        std::mt19937 words(seed);
        const std::size_t count = 1 + words() % 30;
        const nmk_job::MachiningJob job = random_items(words, count, seed % 3 == 0);
        std::vector<nmkSortType> others = {nmkSortTypeNone, nmkSortTypeClosest};
        if (count < 6 || seed % 30 == 0) others.push_back(nmkSortTypeShortest);
        expect_none_shorter(job, all_ends[seed % std::size(all_ends)], others,
                            "seed " + std::to_string(seed));
    }
}

TEST(best_order, is_never_longer_than_shortest_on_small_random_sets) {
    for (unsigned seed = 1; seed <= random_sets; ++seed) {
        std::mt19937 words(seed);
        const std::size_t count = 2 + words() % 7;
        const nmk_job::MachiningJob job = random_items(words, count, seed % 3 == 0);
        expect_none_shorter(job, all_ends[seed % std::size(all_ends)], {nmkSortTypeShortest},
                            "seed " + std::to_string(seed));
    }
}

TEST(best_order, is_never_longer_than_the_file_closest_and_shortest_on_real_files) {
    int compared = 0;
    for (const std::string kind : {"drill", "tsp"}) {
        if (const auto missing = real_inputs::missing(kind)) GTEST_SKIP() << *missing;
        for (const auto& entry : std::filesystem::directory_iterator(real_inputs::path(kind))) {
            const auto job = nmk_job_files::read_job_file(entry.path().string(), std::nullopt);
            if (!job || job->items.empty() || job->items.size() > most_items) continue;
            for (const TravelEnds& ends : {all_ends[1], all_ends[0]}) {
                expect_none_shorter(*job, ends,
                                    {nmkSortTypeNone, nmkSortTypeClosest, nmkSortTypeShortest},
                                    entry.path().string());
                if (job->items.size() > 600) break;  // once is long enough
            }
            ++compared;
        }
    }
    EXPECT_GE(compared, 3);
}

#ifdef NDEBUG
TEST(best_order, saves_six_percent_of_the_travel_of_shortest_on_real_drill_files) {
    if (const auto missing = real_inputs::missing("drill")) GTEST_SKIP() << *missing;
    double best = 0.0;
    double shortest = 0.0;
    for (const auto& entry : std::filesystem::directory_iterator(real_inputs::path("drill"))) {
        const auto job = nmk_job_files::read_job_file(entry.path().string(), std::nullopt);
        if (!job) continue;
        best += travel_of(*job, best_order, {});
        shortest += travel_of(*job, nmkSortTypeShortest, {});
    }
    EXPECT_LE(best, 0.94 * shortest);
}
#endif

TEST(best_order, of_few_items_is_the_shortest_of_all_between_the_ends) {
    for (unsigned seed = 1; seed <= 140; ++seed) {
        std::mt19937 words(seed);
        const std::size_t count = 1 + words() % 5;
        const nmk_job::MachiningJob job = random_items(words, count, seed % 2 == 0);
        for (const TravelEnds& ends : all_ends) {
            const double expected = shortest_travel(job, ends);
            EXPECT_NEAR(travel_of(job, best_order, ends), expected, rounding * (1.0 + expected))
                << seed;
        }
    }
}

TEST(best_order, has_every_item_once_whatever_the_ends) {
    std::mt19937 words(5);
    const nmk_job::MachiningJob job = random_items(words, 40, true);
    for (const TravelEnds& ends : all_ends) {
        OrderRequest request;
        request.ends = ends;
        std::vector<bool> is_there(job.items.size(), false);
        for (const nmk_job::JobCut& cut : order_job(job, request, nullptr).after) {
            EXPECT_FALSE(is_there[cut.item]);
            EXPECT_TRUE(job.items[cut.item].end || !cut.reversed);
            is_there[cut.item] = true;
        }
        EXPECT_EQ(std::count(is_there.begin(), is_there.end(), false), 0);
    }
}

TEST(best_order, effort_is_the_number_of_steps_for_each_item) {
    std::mt19937 words(11);
    const nmk_job::MachiningJob job = random_items(words, 300, false);
    double last = 1e9;
    for (const std::int64_t effort : {0, 1}) {
        OrderRequest request;
        request.effort = effort;
        const double travel =
            measure_order(job, order_job(job, request, nullptr)).total.after.travel;
        EXPECT_LT(travel, last) << effort;
        last = travel;
    }
}

TEST(best_order, a_deadline_that_is_over_ends_the_search_with_a_complete_order_and_a_note) {
    std::mt19937 words(3);
    const nmk_job::MachiningJob job = random_items(words, 400, true);
    OrderRequest request;
    request.deadline = OrderRequest::Clock::now();
    const OrderedJob ordered = order_job(job, request, nullptr);
    EXPECT_FALSE(ordered.stopped);
    ASSERT_EQ(ordered.notes.size(), 1U);
    EXPECT_EQ(ordered.notes[0], "T1: the search ended at the time limit");
    EXPECT_EQ(ordered.after.size(), job.items.size());
    const OrderFigures figures = measure_order(job, ordered);
    EXPECT_LE(figures.total.after.travel, figures.total.before.travel);
}

/// Presses Ctrl-C at one look of the search, counted from 1.
struct StopAtLook : nmkProgressBreak {
    explicit StopAtLook(int at) : look(at) {}
    int jump_to(double) override { return ++looks >= look ? 1 : 0; }
    int look;
    int looks = 0;
};

TEST(best_order, a_stop_keeps_the_best_order_so_far) {
    std::mt19937 words(3);
    const nmk_job::MachiningJob job = random_items(words, 400, false);
    OrderRequest request;
    request.effort = 3;
    const double whole = measure_order(job, order_job(job, request, nullptr)).total.after.travel;
    StopAtLook stop(2);
    const OrderedJob ordered = order_job(job, request, &stop);
    EXPECT_TRUE(ordered.stopped);
    ASSERT_EQ(ordered.notes.size(), 1U);
    EXPECT_EQ(ordered.notes[0], "T1: stopped; its order is the best so far");
    const OrderFigures figures = measure_order(job, ordered);
    EXPECT_LT(figures.total.after.travel, figures.total.before.travel);
    EXPECT_GT(figures.total.after.travel, whole);
}

TEST(best_order, each_tool_begins_at_the_start_again_unless_across_tools) {
    nmk_job::MachiningJob job = job_of({hole(30, 0), hole(10, 0), hole(20, 0), hole(40, 0)});
    job.tools.push_back({"T2", 2.0});
    job.items[1].tool = job.items[2].tool = 1;
    OrderRequest request;
    request.ends.end = giPoint3(0, 0, 0);
    const OrderFigures each = measure_order(job, order_job(job, request, nullptr));
    EXPECT_DOUBLE_EQ(each.tools[0].after.travel, 80.0);
    EXPECT_DOUBLE_EQ(each.tools[1].after.travel, 40.0);
    EXPECT_DOUBLE_EQ(each.total.after.start_leg + each.total.after.end_leg, 100.0);
    request.across_tools = true;
    const OrderFigures all = measure_order(job, order_job(job, request, nullptr));
    EXPECT_DOUBLE_EQ(all.total.after.travel, 80.0);
}

TEST(best_order, across_tools_the_start_counts_before_the_first_fence_and_the_end_behind_the_last) {
    nmk_job::MachiningJob job = job_of({hole(10, 0), hole(20, 0), hole(50, 0), hole(60, 0)});
    job.fences = {2};
    OrderRequest request;
    request.across_tools = true;
    request.ends.end = giPoint3(100, 0, 0);
    const OrderFigures figures = measure_order(job, order_job(job, request, nullptr));
    ASSERT_EQ(figures.tools.size(), 2U);
    EXPECT_DOUBLE_EQ(figures.tools[0].after.travel, 20.0);
    EXPECT_DOUBLE_EQ(figures.tools[1].after.travel, 50.0);
}

TEST(best_order, a_closed_order_begins_at_the_item_nearest_to_the_start) {
    const nmk_job::MachiningJob job =
        job_of({hole(90, 90), hole(10, 90), hole(90, 10), hole(10, 10)});
    OrderRequest request;
    request.ends.is_closed = true;
    const OrderedJob ordered = order_job(job, request, nullptr);
    EXPECT_EQ(ordered.after.front().item, 3U);
    const TravelFigures after = measure_order(job, ordered).total.after;
    EXPECT_DOUBLE_EQ(after.travel, 320.0 + std::sqrt(200.0));
    EXPECT_DOUBLE_EQ(after.end_leg, 80.0);
}

TEST(best_order, with_a_free_start_the_sorters_begin_at_0_0_and_the_first_leg_is_left_out) {
    const nmk_job::MachiningJob job = job_of({hole(70, 0), hole(50, 0), hole(60, 0)});
    OrderRequest request;
    request.type = nmkSortTypeClosest;
    const OrderedJob with_leg = order_job(job, request, nullptr);
    request.ends.start.reset();
    const OrderedJob without = order_job(job, request, nullptr);
    EXPECT_EQ(without.after.front().item, with_leg.after.front().item);
    EXPECT_DOUBLE_EQ(measure_order(job, with_leg).total.after.travel, 70.0);
    EXPECT_DOUBLE_EQ(measure_order(job, without).total.after.travel, 20.0);
}

TEST(best_order, is_the_default_and_the_same_for_any_number_of_workers) {
    const ScratchDirectory folder;
    std::string text = "x,y,z,tool,diameter\n";
    std::mt19937 words(9);
    for (int i = 0; i < 1600; ++i) {
        text += std::to_string(words() % 1000) + "," + std::to_string(words() % 1000) + ",0,T" +
                std::to_string(i % 4) + ",1\n";
    }
    const std::string name = folder.file("a.csv", text);
    const auto json_of = [&](std::vector<std::string> more) {
        std::vector<std::string> all = {"order", name, "--json", "--effort", "0"};
        all.insert(all.end(), more.begin(), more.end());
        return nmk_shell::run(all).out;
    };
    const std::string alone = json_of({});
    EXPECT_NE(alone.find("\"type\": \"best\""), std::string::npos);
    for (const std::string jobs : {"1", "2", "5"}) {
        EXPECT_EQ(json_of({"--jobs", jobs}), alone);
    }
}

}  // namespace
}  // namespace nmk_order

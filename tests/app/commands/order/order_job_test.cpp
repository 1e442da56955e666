// order_job: the order of the library, with every item in it exactly once.

#include "commands/order/order_job.h"

#include <gtest/gtest.h>
#include <nmktoolbox/ordering/nmkPointSorter.h>
#include <nmktoolbox/ordering/nmkSortItemLine.h>

#include <algorithm>
#include <cmath>
#include <deque>
#include <numeric>

#include "commands/order/order_figures.h"
#include "formats/job_files/read_job.h"
#include "shell/level_option.h"

namespace {

using namespace nmk_order;

const nmkSortType all_types[] = {nmkSortTypeNone,    nmkSortTypeShortest,
                                 nmkSortTypeClosest, nmkSortTypeConcentric,
                                 nmkSortTypeRadial,  nmkSortTypeX,
                                 nmkSortTypeY,       nmkSortTypeDiag1,
                                 nmkSortTypeDiag2,   nmkSortTypeXZ,
                                 nmkSortTypeYZ,      nmkSortTypeDiag1Z,
                                 nmkSortTypeDiag2Z,  nmkSortTypeShortestOneWay};

nmk_job::MachiningJob sample() {
    auto read =
        nmk_job_files::read_job_file(NMK_SOURCE_DIR "/samples/cover_plate.drl", std::nullopt);
    EXPECT_TRUE(bool(read));
    return *std::move(read);
}

using Cuts = std::span<const nmk_job::JobCut>;

std::vector<std::size_t> items_of(Cuts cuts) {
    std::vector<std::size_t> result;
    for (const nmk_job::JobCut& cut : cuts) result.push_back(cut.item);
    return result;
}

bool is_complete(const nmk_job::MachiningJob& job, const nmk_job::JobOrder& order) {
    std::vector<std::size_t> items = items_of(order);
    std::sort(items.begin(), items.end());
    return items == items_of(nmk_job::order_of_file(job));
}

/// The result of the library when it is called without the tool.
struct Direct {
    std::vector<std::size_t> order;  // of the items of the job
    std::vector<bool> reversed;
};

Direct ask_library(const nmk_job::MachiningJob& job, Cuts cuts, nmkSortType type,
                   double tolerance) {
    const auto item_of = [&](std::size_t i) -> const nmk_job::JobItem& {
        return job.items[cuts[i].item];
    };
    const bool lines = std::any_of(cuts.begin(), cuts.end(), [&](const nmk_job::JobCut& cut) {
        return job.items[cut.item].end.has_value();
    });
    std::deque<nmkSortItemLine> borrowed;
    nmkPointSorter sorter(type);
    for (std::size_t i = 0; i < cuts.size(); ++i) {
        const nmk_job::JobItem& item = item_of(i);
        borrowed.emplace_back(item.start, lines ? item.end.value_or(item.start) : giPoint3());
        borrowed.back().set_index(static_cast<int>(borrowed.size() - 1));
        sorter.add_item(&borrowed.back());
    }
    Direct direct;
    nmkSortList& list = sorter.sort(tolerance, giPoint3(0.0, 0.0, 0.0), nullptr);
    while (list.forwards() != 0) {
        const auto i = static_cast<std::size_t>(list.read()->index());
        direct.order.push_back(cuts[i].item);
        direct.reversed.push_back(item_of(i).end && borrowed[i].reversed() != 0);
    }
    return direct;
}

/// Without the ways from the start and to the end, unless a test gives them.
OrderRequest request_of(OrderType type) {
    OrderRequest request;
    request.ends = {};
    request.type = type;
    request.tolerance = 0.1;
    return request;
}

TEST(order_job, gives_the_order_of_the_library_for_every_type) {
    const nmk_job::MachiningJob job = sample();
    for (const nmkSortType type : all_types) {
        const OrderedJob ordered = order_job(job, request_of(type), nullptr);
        ASSERT_EQ(ordered.runs.size(), job.tools.size());
        EXPECT_TRUE(ordered.notes.empty()) << type;
        for (const OrderRun& run : ordered.runs) {
            Direct direct = ask_library(job, run.of(ordered.before), type, 0.1);
            const Cuts cuts = run.of(ordered.after);
            // A ring of slots may be opened elsewhere: rotate the library's to the same beginning.
            const auto first = std::find(direct.order.begin(), direct.order.end(), cuts[0].item);
            const auto shift = first - direct.order.begin();
            const bool is_ring = job.items[cuts[0].item].end &&
                                 (type == nmkSortTypeShortest || type == nmkSortTypeShortestOneWay);
            EXPECT_TRUE(is_ring || shift == 0);
            std::rotate(direct.order.begin(), first, direct.order.end());
            std::rotate(direct.reversed.begin(), direct.reversed.begin() + shift,
                        direct.reversed.end());
            EXPECT_EQ(items_of(cuts), direct.order) << type << " " << run.name;
            for (std::size_t i = 0; i < cuts.size(); ++i) {
                EXPECT_EQ(cuts[i].reversed, direct.reversed[i]);
            }
        }
    }
}

TEST(order_job, reverses_slots_only_for_the_type_shortest) {
    const nmk_job::MachiningJob job = sample();
    const auto reversed_count = [&](nmkSortType type) {
        const OrderedJob ordered = order_job(job, request_of(type), nullptr);
        return std::count_if(ordered.after.begin(), ordered.after.end(),
                             [](const nmk_job::JobCut& cut) { return cut.reversed; });
    };
    EXPECT_GT(reversed_count(nmkSortTypeShortest), 0);
    EXPECT_EQ(reversed_count(nmkSortTypeShortestOneWay), 0);
    EXPECT_EQ(reversed_count(nmkSortTypeClosest), 0);
}

TEST(order_job, opens_the_ring_of_slots_at_its_longest_move) {
    const nmk_job::MachiningJob job = sample();
    const OrderedJob ordered = order_job(job, request_of(nmkSortTypeShortest), nullptr);
    const Cuts slots = ordered.runs.back().of(ordered.after);
    const nmk_job::JobItem& first = job.items[slots.front().item];
    const nmk_job::JobItem& last = job.items[slots.back().item];
    ASSERT_TRUE(first.end);
    const double closing = nmk_job::exit_of(last, slots.back().reversed)
                               .distance(nmk_job::entry_of(first, slots.front().reversed));
    EXPECT_LE(measure_travel(job.items, slots).longest, closing);
}

TEST(order_job, orders_all_items_in_one_run_across_tools) {
    const nmk_job::MachiningJob job = sample();
    OrderRequest request = request_of(nmkSortTypeClosest);
    request.across_tools = true;
    const OrderedJob ordered = order_job(job, request, nullptr);
    ASSERT_EQ(ordered.runs.size(), 1U);
    EXPECT_EQ(ordered.runs[0].name, "all");
    EXPECT_EQ(items_of(ordered.before), items_of(nmk_job::order_of_file(job)));
    EXPECT_TRUE(is_complete(job, ordered.after));
    const auto tool_changes = [&](const nmk_job::JobOrder& order) {
        std::size_t runs = 0;
        nmk_job::each_tool_run(job, order, [&](std::size_t, Cuts) { ++runs; });
        return runs - 1;
    };
    EXPECT_EQ(ordered.tool_changes_before, tool_changes(nmk_job::order_of_file(job)));
    EXPECT_EQ(ordered.tool_changes_after, tool_changes(ordered.after));
    EXPECT_GT(ordered.tool_changes_after, ordered.tool_changes_before);
}

nmk_job::JobItem hole(double x, double y) { return {giPoint3(x, y, 0.0), std::nullopt, 0}; }

nmk_job::JobItem slot(double x, double y, double x2, double y2) {
    return {giPoint3(x, y, 0.0), giPoint3(x2, y2, 0.0), 0};
}

nmk_job::MachiningJob one_tool_job(std::vector<nmk_job::JobItem> items) {
    nmk_job::MachiningJob job;
    job.tools.push_back({"T1", 1.0});
    job.items = std::move(items);
    return job;
}

TEST(order_job, takes_holes_and_slots_of_one_tool_together) {
    const nmk_job::MachiningJob job =
        one_tool_job({hole(0, 0), slot(30, 0, 10, 0), hole(40, 0), slot(60, 0, 50, 0), hole(5, 0)});
    for (const nmkSortType type : all_types) {
        const OrderedJob ordered = order_job(job, request_of(type), nullptr);
        EXPECT_TRUE(is_complete(job, ordered.after)) << type;
        for (const nmk_job::JobCut& cut : ordered.after) {
            EXPECT_TRUE(job.items[cut.item].end || !cut.reversed);
        }
    }
}

TEST(order_job, returns_a_complete_order_of_no_one_and_coincident_holes) {
    for (const nmkSortType type : all_types) {
        EXPECT_TRUE(order_job(nmk_job::MachiningJob{}, request_of(type), nullptr).after.empty());
        for (std::size_t count = 0; count <= 6; ++count) {
            const nmk_job::MachiningJob job =
                one_tool_job(std::vector<nmk_job::JobItem>(count, hole(3.0, 4.0)));
            EXPECT_TRUE(is_complete(job, order_job(job, request_of(type), nullptr).after));
        }
    }
}

/// The shortest open path through a few slots, by trying every order and every direction.
nmk_job::JobOrder shortest_open_path(const nmk_job::MachiningJob& job) {
    std::vector<std::uint32_t> order(job.items.size());
    std::iota(order.begin(), order.end(), 0U);
    nmk_job::JobOrder best = nmk_job::order_of_file(job);
    do {
        for (unsigned directions = 0; directions < 1U << order.size(); ++directions) {
            nmk_job::JobOrder path;
            for (std::size_t i = 0; i < order.size(); ++i) {
                path.push_back({order[i], ((directions >> i) & 1U) != 0});
            }
            const double travel = measure_travel(job.items, path).travel;
            if (travel < measure_travel(job.items, best).travel) best = path;
        }
    } while (std::next_permutation(order.begin(), order.end()));
    return best;
}

TEST(order_job, shortest_keeps_the_order_of_the_file_if_that_is_shorter) {
    // The library looks for a short ring, and the shortest open path is not always part of it.
    int kept = 0;
    unsigned word = 1;
    const auto draw = [&] { return (word = word * 1664525U + 1013904223U) >> 24U; };
    for (int round = 0; round < 8; ++round) {
        SCOPED_TRACE(round);
        nmk_job::MachiningJob slots = one_tool_job({});
        for (int i = 0; i < 5; ++i) slots.items.push_back(slot(draw(), draw(), draw(), draw()));
        nmk_job::MachiningJob job = one_tool_job({});
        for (const nmk_job::JobCut& cut : shortest_open_path(slots)) {
            const nmk_job::JobItem& item = slots.items[cut.item];
            job.items.push_back(
                {nmk_job::entry_of(item, cut.reversed), nmk_job::exit_of(item, cut.reversed), 0});
        }
        const OrderedJob ordered = order_job(job, request_of(nmkSortTypeShortest), nullptr);
        EXPECT_LE(measure_travel(job.items, ordered.after).travel,
                  measure_travel(job.items, ordered.before).travel);
        if (!ordered.notes.empty()) {
            ++kept;
            EXPECT_EQ(items_of(ordered.after), items_of(ordered.before));
            EXPECT_NE(ordered.notes[0].find("order of the file is shorter"), std::string::npos);
        }
    }
    EXPECT_GT(kept, 0);
}

/// Asks for a stop at one step, counted from 1 over all tools.
struct StopAt : nmkProgressBreak {
    explicit StopAt(int at) : step(at) {}
    int increment() override { return ++steps >= step ? 1 : 0; }
    int step;
    int steps = 0;
};

TEST(order_job, a_stop_of_the_type_closest_keeps_what_was_ordered) {
    const nmk_job::MachiningJob job = sample();
    const OrderedJob whole = order_job(job, request_of(nmkSortTypeClosest), nullptr);
    StopAt stop(51);
    const OrderedJob ordered = order_job(job, request_of(nmkSortTypeClosest), &stop);
    EXPECT_TRUE(ordered.stopped);
    EXPECT_TRUE(is_complete(job, ordered.after));
    const auto done = items_of(ordered.runs[0].of(ordered.after));
    const auto expected = items_of(whole.runs[0].of(whole.after));
    EXPECT_TRUE(std::equal(done.begin(), done.begin() + 50, expected.begin()));
    EXPECT_TRUE(std::is_sorted(done.begin() + 50, done.end()));
    for (const OrderRun& run : std::span(ordered.runs).subspan(1)) {
        EXPECT_EQ(items_of(run.of(ordered.after)), items_of(run.of(ordered.before)));
    }
    EXPECT_EQ(ordered.notes.size(), job.tools.size());
}

TEST(order_job, a_stop_while_annealing_finishes_the_tool_and_leaves_the_others) {
    const nmk_job::MachiningJob job = sample();
    const OrderedJob whole = order_job(job, request_of(nmkSortTypeShortest), nullptr);
    StopAt stop(10);
    const OrderedJob ordered = order_job(job, request_of(nmkSortTypeShortest), &stop);
    EXPECT_TRUE(ordered.stopped);
    const OrderRun& first = ordered.runs[0];
    EXPECT_EQ(items_of(first.of(ordered.after)), items_of(first.of(whole.after)));
    for (const OrderRun& run : std::span(ordered.runs).subspan(1)) {
        EXPECT_EQ(items_of(run.of(ordered.after)), items_of(run.of(ordered.before)));
    }
    EXPECT_EQ(ordered.notes.size(), job.tools.size() - 1);
}

TEST(order_job, a_stop_of_the_elastic_net_loses_no_item) {
    std::string error;
    ASSERT_TRUE(nmk_shell::apply_level_option("itemsorter=0", error)) << error;
    const nmk_job::MachiningJob job = sample();
    StopAt stop(20);
    const OrderedJob ordered = order_job(job, request_of(nmkSortTypeShortest), &stop);
    const OrderedJob whole = order_job(job, request_of(nmkSortTypeShortest), nullptr);
    ASSERT_TRUE(nmk_shell::apply_level_option("itemsorter=default", error)) << error;
    EXPECT_TRUE(ordered.stopped);
    EXPECT_TRUE(is_complete(job, ordered.after));
    EXPECT_TRUE(is_complete(job, whole.after));
    EXPECT_FALSE(whole.stopped);
}

TEST(order_figures, travel_goes_from_each_exit_to_the_next_entry) {
    const std::vector<nmk_job::JobItem> items = {hole(0, 0), slot(3, 4, 13, 4), hole(13, 10)};
    nmk_job::JobOrder order = {{0, false}, {1, false}, {2, false}};
    const TravelFigures figures = measure_travel(items, order);
    EXPECT_DOUBLE_EQ(figures.travel, 5.0 + 6.0);
    EXPECT_DOUBLE_EQ(figures.per_axis, 4.0 + 6.0);
    EXPECT_DOUBLE_EQ(figures.seconds, 2.0 * std::sqrt(0.004) + 2.0 * std::sqrt(0.006));
    EXPECT_DOUBLE_EQ(figures.longest, 6.0);
    EXPECT_EQ(figures.longest_from, giPoint3(13, 4, 0));
    EXPECT_EQ(figures.longest_to, giPoint3(13, 10, 0));
    order[1].reversed = true;
    EXPECT_DOUBLE_EQ(measure_travel(items, order).longest, std::sqrt(13.0 * 13.0 + 4.0 * 4.0));
    EXPECT_EQ(measure_travel({}, {}).travel, 0.0);
    EXPECT_EQ(saved_percent(0.0, 0.0), 0.0);
    EXPECT_DOUBLE_EQ(saved_percent(200.0, 50.0), 75.0);
}

}  // namespace

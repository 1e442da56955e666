// order_job: the library's order, with every item in it exactly once.

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

std::vector<std::size_t> indices(const std::vector<nmk_job::JobItem>& items) {
    std::vector<std::size_t> result;
    for (const nmk_job::JobItem& item : items) result.push_back(item.source_index);
    return result;
}

std::vector<std::size_t> all_indices(const std::vector<nmk_job::JobTool>& tools) {
    std::vector<std::size_t> result;
    for (const nmk_job::JobTool& tool : tools) {
        for (const nmk_job::JobItem& item : tool.items) result.push_back(item.source_index);
    }
    std::sort(result.begin(), result.end());
    return result;
}

/// What the library says when it is asked without the tool: source indices, and who is turned.
struct Direct {
    std::vector<std::size_t> order;
    std::vector<bool> turned;
};

Direct ask_library(const std::vector<nmk_job::JobItem>& items, nmkSortType type, double tolerance) {
    const bool lines = std::any_of(items.begin(), items.end(), [](const nmk_job::JobItem& item) {
        return item.end.has_value();
    });
    std::deque<nmkSortItemLine> borrowed;
    nmkPointSorter sorter(type);
    for (const nmk_job::JobItem& item : items) {
        borrowed.emplace_back(item.start, lines ? item.end.value_or(item.start) : giPoint3());
        borrowed.back().set_index(static_cast<int>(borrowed.size() - 1));
        sorter.add_item(&borrowed.back());
    }
    Direct direct;
    nmkSortList& list = sorter.sort(tolerance, giPoint3(0.0, 0.0, 0.0), nullptr);
    while (list.forwards() != 0) {
        const auto i = static_cast<std::size_t>(list.read()->index());
        direct.order.push_back(items[i].source_index);
        direct.turned.push_back(items[i].end && borrowed[i].reversed() != 0);
    }
    return direct;
}

OrderRequest request_of(nmkSortType type) {
    OrderRequest request;
    request.type = type;
    request.tolerance = 0.1;
    return request;
}

TEST(order_job, gives_the_order_of_the_library_for_every_type) {
    const nmk_job::MachiningJob job = sample();
    for (const nmkSortType type : all_types) {
        const OrderedJob ordered = order_job(job, request_of(type), nullptr);
        ASSERT_EQ(ordered.after.size(), job.tools.size());
        EXPECT_TRUE(ordered.notes.empty()) << type;
        for (std::size_t tool = 0; tool < job.tools.size(); ++tool) {
            Direct direct = ask_library(job.tools[tool].items, type, 0.1);
            const std::vector<nmk_job::JobItem>& items = ordered.after[tool].items;
            // A ring of slots may be cut elsewhere: turn the library's to the same beginning.
            const auto first =
                std::find(direct.order.begin(), direct.order.end(), items[0].source_index);
            const auto turn = first - direct.order.begin();
            const bool ring =
                items[0].end && (type == nmkSortTypeShortest || type == nmkSortTypeShortestOneWay);
            EXPECT_TRUE(ring || turn == 0);
            std::rotate(direct.order.begin(), first, direct.order.end());
            std::rotate(direct.turned.begin(), direct.turned.begin() + turn, direct.turned.end());
            EXPECT_EQ(indices(items), direct.order) << type << " " << job.tools[tool].name;
            for (std::size_t i = 0; i < items.size(); ++i) {
                EXPECT_EQ(items[i].reversed, direct.turned[i]);
            }
        }
    }
}

TEST(order_job, turns_slots_only_where_they_may_be_turned) {
    const nmk_job::MachiningJob job = sample();
    const auto turned = [&](nmkSortType type) {
        std::size_t count = 0;
        for (const nmk_job::JobTool& tool : order_job(job, request_of(type), nullptr).after) {
            count += static_cast<std::size_t>(
                std::count_if(tool.items.begin(), tool.items.end(),
                              [](const nmk_job::JobItem& item) { return item.reversed; }));
        }
        return count;
    };
    EXPECT_GT(turned(nmkSortTypeShortest), 0U);
    EXPECT_EQ(turned(nmkSortTypeShortestOneWay), 0U);
    EXPECT_EQ(turned(nmkSortTypeClosest), 0U);
}

TEST(order_job, cuts_the_ring_of_slots_at_its_longest_move) {
    const nmk_job::MachiningJob job = sample();
    const OrderedJob ordered = order_job(job, request_of(nmkSortTypeShortest), nullptr);
    const std::vector<nmk_job::JobItem>& slots = ordered.after.back().items;
    ASSERT_TRUE(slots.front().end);
    const double closing = slots.back().exit().distance(slots.front().entry());
    EXPECT_LE(measure_travel(slots).longest, closing);
}

TEST(order_job, across_tools_keeps_every_item_with_its_tool) {
    const nmk_job::MachiningJob job = sample();
    OrderRequest request = request_of(nmkSortTypeClosest);
    request.across_tools = true;
    const OrderedJob ordered = order_job(job, request, nullptr);
    ASSERT_EQ(ordered.after.size(), 1U);
    EXPECT_EQ(all_indices(ordered.job.tools), all_indices(job.tools));
    std::vector<std::string> tool_of(ordered.after[0].items.size());
    for (const nmk_job::JobTool& tool : job.tools) {
        for (const nmk_job::JobItem& item : tool.items) tool_of[item.source_index] = tool.name;
    }
    std::vector<std::size_t> walked;
    for (const nmk_job::JobTool& run : ordered.job.tools) {
        for (const nmk_job::JobItem& item : run.items) {
            EXPECT_EQ(tool_of[item.source_index], run.name);
            walked.push_back(item.source_index);
        }
    }
    EXPECT_EQ(walked, indices(ordered.after[0].items));
    EXPECT_EQ(ordered.tool_changes_after, ordered.job.tools.size() - 1);
}

nmk_job::JobItem hole(double x, double y, std::size_t index) {
    return {giPoint3(x, y, 0.0), std::nullopt, index, false};
}

nmk_job::JobItem slot(double x, double y, double x2, double y2, std::size_t index) {
    return {giPoint3(x, y, 0.0), giPoint3(x2, y2, 0.0), index, false};
}

nmk_job::MachiningJob one_tool_job(std::vector<nmk_job::JobItem> items) {
    nmk_job::MachiningJob job;
    job.tools.push_back({"T1", 1.0, std::move(items)});
    return job;
}

TEST(order_job, takes_holes_and_slots_of_one_tool_together) {
    const nmk_job::MachiningJob job =
        one_tool_job({hole(0, 0, 0), slot(30, 0, 10, 0, 1), hole(40, 0, 2), slot(60, 0, 50, 0, 3),
                      hole(5, 0, 4)});
    for (const nmkSortType type : all_types) {
        const OrderedJob ordered = order_job(job, request_of(type), nullptr);
        EXPECT_EQ(all_indices(ordered.after), (std::vector<std::size_t>{0, 1, 2, 3, 4})) << type;
        for (const nmk_job::JobItem& item : ordered.after[0].items) {
            EXPECT_TRUE(item.end || !item.reversed);
        }
    }
}

TEST(order_job, empty_jobs_single_and_coincident_holes_come_back_whole) {
    for (const nmkSortType type : all_types) {
        EXPECT_TRUE(order_job(nmk_job::MachiningJob{}, request_of(type), nullptr).after.empty());
        for (std::size_t count = 0; count <= 6; ++count) {
            std::vector<nmk_job::JobItem> items;
            for (std::size_t i = 0; i < count; ++i) items.push_back(hole(3.0, 4.0, i));
            const nmk_job::MachiningJob job = one_tool_job(items);
            EXPECT_EQ(all_indices(order_job(job, request_of(type), nullptr).after),
                      all_indices(job.tools));
        }
    }
}

/// The shortest open way through a few slots, by trying every order and every turning.
std::vector<nmk_job::JobItem> shortest_open_way(const std::vector<nmk_job::JobItem>& slots) {
    std::vector<std::size_t> order(slots.size());
    std::iota(order.begin(), order.end(), 0U);
    std::vector<nmk_job::JobItem> best = slots;
    do {
        for (unsigned turns = 0; turns < 1U << slots.size(); ++turns) {
            std::vector<nmk_job::JobItem> way;
            for (std::size_t i = 0; i < order.size(); ++i) {
                way.push_back(slots[order[i]]);
                way.back().reversed = ((turns >> i) & 1U) != 0;
            }
            if (measure_travel(way).travel < measure_travel(best).travel) best = way;
        }
    } while (std::next_permutation(order.begin(), order.end()));
    return best;
}

TEST(order_job, shortest_keeps_the_order_of_the_file_where_that_is_shorter) {
    // The library looks for a short ring, and the shortest open way is not always part of it.
    int kept = 0;
    unsigned word = 1;
    const auto draw = [&] { return (word = word * 1664525U + 1013904223U) >> 24U; };
    for (int round = 0; round < 8; ++round) {
        SCOPED_TRACE(round);
        std::vector<nmk_job::JobItem> slots;
        for (std::size_t i = 0; i < 5; ++i)
            slots.push_back(slot(draw(), draw(), draw(), draw(), i));
        std::vector<nmk_job::JobItem> file;
        for (const nmk_job::JobItem& item : shortest_open_way(slots)) {
            const giPoint3 from = item.entry();
            const giPoint3 to = item.exit();
            file.push_back({from, to, file.size(), false});
        }
        const OrderedJob ordered =
            order_job(one_tool_job(file), request_of(nmkSortTypeShortest), nullptr);
        EXPECT_LE(measure_travel(ordered.after[0].items).travel, measure_travel(file).travel);
        if (!ordered.notes.empty()) {
            ++kept;
            EXPECT_EQ(indices(ordered.after[0].items), indices(file));
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

TEST(order_job, a_break_while_taking_the_closest_keeps_what_was_done) {
    const nmk_job::MachiningJob job = sample();
    const OrderedJob whole = order_job(job, request_of(nmkSortTypeClosest), nullptr);
    StopAt stop(51);
    const OrderedJob ordered = order_job(job, request_of(nmkSortTypeClosest), &stop);
    EXPECT_TRUE(ordered.stopped);
    EXPECT_EQ(all_indices(ordered.after), all_indices(job.tools));
    const auto done = indices(ordered.after[0].items);
    const auto expected = indices(whole.after[0].items);
    EXPECT_TRUE(std::equal(done.begin(), done.begin() + 50, expected.begin()));
    EXPECT_TRUE(std::is_sorted(done.begin() + 50, done.end()));
    for (std::size_t tool = 1; tool < job.tools.size(); ++tool) {
        EXPECT_EQ(indices(ordered.after[tool].items), indices(job.tools[tool].items));
    }
    EXPECT_EQ(ordered.notes.size(), job.tools.size());
}

TEST(order_job, a_break_while_annealing_lets_the_tool_finish_and_leaves_the_others) {
    const nmk_job::MachiningJob job = sample();
    const OrderedJob whole = order_job(job, request_of(nmkSortTypeShortest), nullptr);
    StopAt stop(10);
    const OrderedJob ordered = order_job(job, request_of(nmkSortTypeShortest), &stop);
    EXPECT_TRUE(ordered.stopped);
    EXPECT_EQ(indices(ordered.after[0].items), indices(whole.after[0].items));
    for (std::size_t tool = 1; tool < job.tools.size(); ++tool) {
        EXPECT_EQ(indices(ordered.after[tool].items), indices(job.tools[tool].items));
    }
    EXPECT_EQ(ordered.notes.size(), job.tools.size() - 1);
}

TEST(order_job, a_break_in_the_elastic_net_loses_no_item) {
    std::string error;
    ASSERT_TRUE(nmk_shell::apply_level_option("itemsorter=0", error)) << error;
    const nmk_job::MachiningJob job = sample();
    StopAt stop(20);
    const OrderedJob ordered = order_job(job, request_of(nmkSortTypeShortest), &stop);
    const OrderedJob whole = order_job(job, request_of(nmkSortTypeShortest), nullptr);
    ASSERT_TRUE(nmk_shell::apply_level_option("itemsorter=default", error)) << error;
    EXPECT_TRUE(ordered.stopped);
    EXPECT_EQ(all_indices(ordered.after), all_indices(job.tools));
    EXPECT_EQ(all_indices(whole.after), all_indices(job.tools));
    EXPECT_FALSE(whole.stopped);
}

TEST(order_figures, travel_goes_from_each_exit_to_the_next_entry) {
    std::vector<nmk_job::JobItem> items = {hole(0, 0, 0), slot(3, 4, 13, 4, 1), hole(13, 10, 2)};
    TravelFigures figures = measure_travel(items);
    EXPECT_DOUBLE_EQ(figures.travel, 5.0 + 6.0);
    EXPECT_DOUBLE_EQ(figures.per_axis, 4.0 + 6.0);
    EXPECT_DOUBLE_EQ(figures.longest, 6.0);
    EXPECT_EQ(figures.longest_after, 1U);
    items[1].reversed = true;
    EXPECT_DOUBLE_EQ(measure_travel(items).longest, std::sqrt(13.0 * 13.0 + 4.0 * 4.0));
    EXPECT_EQ(measure_travel({}).travel, 0.0);
    EXPECT_EQ(saved_percent(0.0, 0.0), 0.0);
    EXPECT_DOUBLE_EQ(saved_percent(200.0, 50.0), 75.0);
    EXPECT_DOUBLE_EQ(rapid_seconds(500.0, 10000.0), 3.0);
}

}  // namespace

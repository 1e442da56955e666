// Where the travel begins and ends: --start, --end, --closed and --across-tools in every
// combination with every type, beside sums of the test's own.

#include <gtest/gtest.h>

#include <cmath>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "app/commands/order/random_jobs.h"
#include "commands/order/order_figures.h"
#include "commands/order/order_job.h"
#include "commands/order/sort_type_names.h"

namespace nmk_order {
namespace {

// Two tools, so few items that the type best finds the shortest order.
nmk_job::MachiningJob job_of_two_tools(unsigned seed) {
    std::mt19937 words(seed);
    nmk_job::MachiningJob job = random_items(words, 11, true);
    job.tools.push_back({"T2", 2.0});
    for (std::size_t i = 0; i < job.items.size(); ++i) job.items[i].tool = i % 3 == 0 ? 1 : 0;
    return job;
}

struct PlainTravel {
    double start_legs = 0.0, between = 0.0, end_legs = 0.0;
    double total() const { return start_legs + between + end_legs; }
};

double straight(const giPoint3& a, const giPoint3& b) {
    return std::sqrt((a.x - b.x) * (a.x - b.x) + (a.y - b.y) * (a.y - b.y) +
                     (a.z - b.z) * (a.z - b.z));
}

/// Adds the travel of the cuts from `begin` to before `end`.
void add_travel(const nmk_job::MachiningJob& job, const nmk_job::JobOrder& order, std::size_t begin,
                std::size_t end, const TravelEnds& ends, PlainTravel& sum) {
    std::vector<giPoint3> entries, exits;
    for (std::size_t i = begin; i < end; ++i) {
        const nmk_job::JobItem& item = job.items[order[i].item];
        const giPoint3 other = item.end.value_or(item.start);
        entries.push_back(order[i].reversed ? other : item.start);
        exits.push_back(order[i].reversed ? item.start : other);
    }
    for (std::size_t i = 1; i < entries.size(); ++i) {
        sum.between += straight(exits[i - 1], entries[i]);
    }
    if (ends.start) sum.start_legs += straight(*ends.start, entries.front());
    if (ends.end) sum.end_legs += straight(exits.back(), *ends.end);
    if (ends.is_closed) sum.end_legs += straight(exits.back(), entries.front());
}

PlainTravel plain_travel(const nmk_job::MachiningJob& job, const OrderedJob& ordered,
                         const OrderRequest& request) {
    PlainTravel sum;
    const nmk_job::JobOrder& order = ordered.after;
    std::size_t begin = 0;
    for (std::size_t i = 1; i <= order.size(); ++i) {
        const bool is_change = i < order.size() && !request.across_tools &&
                               job.items[order[i].item].tool != job.items[order[begin].item].tool;
        if (i < order.size() && !is_change) continue;
        add_travel(job, order, begin, i, request.ends, sum);
        begin = i;
    }
    return sum;
}

void expect_every_item_once(const nmk_job::MachiningJob& job, const nmk_job::JobOrder& order) {
    std::vector<int> count(job.items.size());
    for (const nmk_job::JobCut& cut : order) {
        ++count[cut.item];
        EXPECT_TRUE(job.items[cut.item].end || !cut.reversed);
    }
    EXPECT_EQ(count, std::vector<int>(job.items.size(), 1));
}

TEST(order_ends, count_alike_for_every_type_and_no_type_is_shorter_than_best) {
    for (unsigned seed = 1; seed <= 5; ++seed) {
        const nmk_job::MachiningJob job = job_of_two_tools(seed);
        for (const TravelEnds& ends : all_ends) {
            for (const bool across_tools : {false, true}) {
                std::optional<double> best;
                for (const nmk_shell::Choice<OrderType>& type : sort_types()) {
                    OrderRequest request;
                    request.type = type.value;
                    request.ends = ends;
                    request.across_tools = across_tools;
                    request.tolerance = 0.1;
                    const OrderedJob ordered = order_job(job, request, nullptr);
                    SCOPED_TRACE(testing::Message()
                                 << type.name << ", ends " << &ends - all_ends << ", seed " << seed
                                 << (across_tools ? ", across tools" : ""));
                    expect_every_item_once(job, ordered.after);
                    const TravelFigures after = measure_order(job, ordered).total.after;
                    const PlainTravel plain = plain_travel(job, ordered, request);
                    EXPECT_NEAR(after.travel, plain.total(), 1e-9);
                    EXPECT_NEAR(after.start_leg, plain.start_legs, 1e-9);
                    EXPECT_NEAR(after.end_leg, plain.end_legs, 1e-9);
                    if (type.value == best_order) best = after.travel;
                    ASSERT_TRUE(best) << "the type best is the first";
                    EXPECT_LE(*best, after.travel + 1e-9);
                }
            }
        }
    }
}

}  // namespace
}  // namespace nmk_order

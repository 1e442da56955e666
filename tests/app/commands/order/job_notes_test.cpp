// job_notes: items that coincide, compared with the plain way over all pairs.

#include "commands/order/job_notes.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "formats/job/machining_job.h"

namespace nmk_order {
namespace {

/// Items of three tools at a few places of two heights, some of them slots.
nmk_job::MachiningJob crowded_job(unsigned seed) {
    std::mt19937 words(seed);
    const auto draw = [&] { return static_cast<double>(words() % 3); };
    nmk_job::MachiningJob job;
    job.tools = {{"T1", 1.0}, {"T2", 2.0}, {"T3", 3.0}};
    const std::size_t count = words() % 60;
    for (std::size_t i = 0; i < count; ++i) {
        const double x = draw() == 0.0 ? -0.0 : draw();
        nmk_job::JobItem item{giPoint3(x, draw(), draw()), {}, 0};
        item.tool = static_cast<std::uint32_t>(words() % 3);
        if (words() % 3 == 0) {
            item.end = giPoint3(draw(), item.start.y, item.start.z);
        }
        job.items.push_back(item);
    }
    return job;
}

bool coincide(const nmk_job::JobItem& a, const nmk_job::JobItem& b) {
    return a.tool == b.tool && a.start == b.start &&
           a.end.value_or(a.start) == b.end.value_or(b.start);
}

std::vector<std::string> plain_notes(const nmk_job::MachiningJob& job) {
    std::vector<std::size_t> counts(job.tools.size(), 0);
    for (std::size_t i = 0; i < job.items.size(); ++i) {
        bool is_again = false;
        for (std::size_t j = 0; j < i; ++j) {
            is_again = is_again || coincide(job.items[i], job.items[j]);
        }
        counts[job.items[i].tool] += is_again ? 1U : 0U;
    }
    std::vector<std::string> notes;
    for (std::size_t tool = 0; tool < counts.size(); ++tool) {
        if (counts[tool] > 0) {
            notes.push_back(job.tools[tool].name + ": " + std::to_string(counts[tool]) +
                            (counts[tool] == 1 ? " item coincides" : " items coincide") +
                            " with another one of this tool");
        }
    }
    return notes;
}

TEST(job_notes, count_the_items_that_coincide_with_an_earlier_one_of_their_tool) {
    int notes = 0;
    for (unsigned seed = 1; seed <= 200; ++seed) {
        const nmk_job::MachiningJob job = crowded_job(seed);
        EXPECT_EQ(job_notes(job), plain_notes(job)) << seed;
        notes += static_cast<int>(plain_notes(job).size());
    }
    EXPECT_GT(notes, 300);
}

}  // namespace
}  // namespace nmk_order

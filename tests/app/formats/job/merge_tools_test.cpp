// merge_tools: one tool in place of several with one diameter.

#include "formats/job/merge_tools.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace nmk_job {
namespace {

/// A job with an item for each of `items`, which are positions of tools.
MachiningJob job_with(std::vector<JobTool> tools, const std::vector<std::uint32_t>& items) {
    MachiningJob job;
    job.tools = std::move(tools);
    for (std::size_t i = 0; i < job.tools.size(); ++i) {
        job.tools[i].source = i;
    }
    for (const std::uint32_t tool : items) {
        job.items.push_back({giPoint3(static_cast<double>(job.items.size()), 0.0, 0.0), {}, tool});
    }
    merge_tools(job);
    return job;
}

std::vector<std::uint32_t> tools_of_items(const MachiningJob& job) {
    std::vector<std::uint32_t> tools;
    for (const JobItem& item : job.items) {
        tools.push_back(item.tool);
    }
    return tools;
}

std::string names_of(const MachiningJob& job) {
    std::string names;
    for (const JobTool& tool : job.tools) {
        names += tool.name + " ";
    }
    return names;
}

TEST(merge_tools, the_first_tool_of_a_diameter_cuts_the_items_of_all) {
    const MachiningJob job =
        job_with({{"T7", 0.8}, {"T2", 1.0}, {"T3", 0.8}, {"T1", 1.0}}, {0, 1, 2, 3, 0, 2});
    EXPECT_EQ(names_of(job), "T7 T2 ");
    EXPECT_EQ(tools_of_items(job), (std::vector<std::uint32_t>{0, 1, 0, 1, 0, 0}));
    EXPECT_EQ(job.tools[1].source, 1U);
    EXPECT_EQ(job.items[5].start.x, 5.0);
    EXPECT_EQ(job.notes,
              (std::vector<std::string>{"T3: merged into T7, which has the same diameter",
                                        "T1: merged into T2, which has the same diameter"}));
}

TEST(merge_tools, a_tool_without_a_diameter_is_never_merged) {
    const MachiningJob job = job_with({{"a", {}}, {"b", 1.0}, {"c", {}}, {"d", 1.0}}, {0, 1, 2, 3});
    EXPECT_EQ(names_of(job), "a b c ");
    EXPECT_EQ(tools_of_items(job), (std::vector<std::uint32_t>{0, 1, 2, 1}));
}

TEST(merge_tools, diameters_that_differ_in_the_last_bit_are_two) {
    EXPECT_EQ(names_of(job_with({{"a", 0.3}, {"b", 0.1 + 0.2}}, {0, 1})), "a b ");
}

TEST(merge_tools, a_job_without_tools_of_one_diameter_stays_as_it_is) {
    const MachiningJob job = job_with({{"a", 1.0}, {"b", 2.0}}, {1, 0});
    EXPECT_EQ(names_of(job), "a b ");
    EXPECT_TRUE(job.notes.empty());
    EXPECT_EQ(names_of(job_with({}, {})), "");
}

TEST(merge_tools, a_tool_stays_on_both_sides_of_a_fence_under_one_name) {
    MachiningJob job;
    job.tools = {{"T1", 1.0, 0}, {"T2", 1.0, 1}, {"T2", 1.0, 2}, {"T1", 1.0, 3}, {"T2", 1.0, 4}};
    for (const std::uint32_t tool : {0U, 1U, 2U, 3U, 4U}) {
        job.items.push_back({giPoint3(0.0, 0.0, 0.0), {}, tool});
    }
    job.fences = {2, 3};
    merge_tools(job);
    EXPECT_EQ(names_of(job), "T1 T1 T1 ");
    EXPECT_EQ(tools_of_items(job), (std::vector<std::uint32_t>{0, 0, 1, 2, 2}));
    EXPECT_EQ(job.notes,
              std::vector<std::string>{"T2: merged into T1, which has the same diameter"});
}

}  // namespace
}  // namespace nmk_job

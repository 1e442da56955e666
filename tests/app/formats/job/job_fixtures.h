// job_fixtures.h: operations that the tests of readers and writers share.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "formats/job/job_order.h"

namespace nmk_job {

inline std::string bytes_of_file(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file.good()) << path;
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// The job, or a failure that shows the error and an empty job.
inline MachiningJob job_of(const nmk_text::Result<MachiningJob>& result) {
    if (!result) {
        ADD_FAILURE() << result.error().text();
        return {};
    }
    return *result;
}

/// The text of the error, or "" if the file was read.
inline std::string error_of(const nmk_text::Result<MachiningJob>& result) {
    const nmk_text::Error* error = result ? nullptr : &result.error();
    return error == nullptr ? "" : error->text();
}

/// The name of a test case, with characters other than letters and digits replaced.
struct CaseName {
    template <class Case>
    std::string operator()(const testing::TestParamInfo<Case>& given) const {
        std::string name = given.param.name;
        std::replace_if(
            name.begin(), name.end(),
            [](char letter) { return std::isalnum(static_cast<unsigned char>(letter)) == 0; }, '_');
        return name;
    }
};

/// A complete order of the job: tools and their items shuffled, about half of the slots reversed.
inline JobOrder shuffled_order(const MachiningJob& job, unsigned seed) {
    std::mt19937 random(seed);
    std::vector<JobOrder> runs(job.tools.size());
    for (std::size_t i = 0; i < job.items.size(); ++i) {
        const bool reversed = job.items[i].end && random() % 2 == 0;
        runs[job.items[i].tool].push_back({static_cast<std::uint32_t>(i), reversed});
    }
    std::shuffle(runs.begin(), runs.end(), random);
    JobOrder order;
    for (JobOrder& run : runs) {
        std::shuffle(run.begin(), run.end(), random);
        order.insert(order.end(), run.begin(), run.end());
    }
    return order;
}

/// The order by tool from its last cut to its first, every slot reversed.
inline JobOrder backward_order(const MachiningJob& job) {
    JobOrder order = order_by_tool(job);
    std::reverse(order.begin(), order.end());
    for (JobCut& cut : order) {
        cut.reversed = job.items[cut.item].end.has_value();
    }
    return order;
}

/// Reads every prefix of the text, each from a buffer of exactly its size, so that a sanitizer
/// detects any read past its end. `read` takes a std::string; any result without a crash is
/// accepted.
template <class Read>
void read_every_prefix(const std::string& text, Read read) {
    for (std::size_t length = 0; length <= text.size(); ++length) {
        std::string prefix(text, 0, length);
        prefix.shrink_to_fit();
        const nmk_text::Result<MachiningJob> result = read(std::move(prefix));
        if (!result) {
            ASSERT_FALSE(result.error().message.empty()) << "prefix of " << length << " bytes";
            ASSERT_EQ(result.error().message.find('\n'), std::string::npos);
        }
    }
}

}  // namespace nmk_job

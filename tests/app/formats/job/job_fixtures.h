// job_fixtures.h: what the tests of readers and writers share.
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

#include "formats/job/machining_job.h"

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

/// The text of the error, or "" where the file was read.
inline std::string error_of(const nmk_text::Result<MachiningJob>& result) {
    const nmk_text::Error* error = result ? nullptr : &result.error();
    return error == nullptr ? "" : error->text();
}

inline std::size_t item_count(const MachiningJob& job) {
    std::size_t count = 0;
    for (const JobTool& tool : job.tools) {
        count += tool.items.size();
    }
    return count;
}

/// The name of a case of a table of tests, what is neither letter nor digit replaced.
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

/// Another order of the same cuts: tools and their items shuffled, every other slot turned.
inline MachiningJob shuffled(MachiningJob job, unsigned seed) {
    std::mt19937 random(seed);
    std::shuffle(job.tools.begin(), job.tools.end(), random);
    for (JobTool& tool : job.tools) {
        std::shuffle(tool.items.begin(), tool.items.end(), random);
        for (JobItem& item : tool.items) {
            item.reversed = item.end && random() % 2 == 0;
        }
    }
    return job;
}

/// Reads every prefix of the text, each from a buffer of exactly its size, so that a sanitizer sees
/// any look past its end. `read` takes a std::string; every answer will do but a crash.
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

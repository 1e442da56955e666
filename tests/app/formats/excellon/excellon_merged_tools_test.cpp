// excellon_merged_tools: drill programs whose tools of one diameter were merged.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <random>
#include <tuple>

#include "app/formats/job/job_fixtures.h"
#include "formats/excellon/excellon_reader.h"
#include "formats/excellon/excellon_writer.h"
#include "formats/job/merge_tools.h"
#include "formats/job_files/read_job.h"
#include "real_inputs.h"

namespace nmk_excellon {
namespace {

struct MergedCase {
    const char* name;
    std::string before;
    std::string after;  // by tool, in the order of the file
};

std::ostream& operator<<(std::ostream& out, const MergedCase& merged) { return out << merged.name; }

std::string merged_text(const std::string& text) {
    nmk_job::MachiningJob job = nmk_job::job_of(read_excellon("plate.drl", text, std::nullopt));
    nmk_job::merge_tools(job);
    const auto merged = write_excellon(job, nmk_job::order_by_tool(job));
    return merged ? *merged : "error " + merged.error().text();
}

class merged_program : public testing::TestWithParam<MergedCase> {};

TEST_P(merged_program, is_written_with_the_tools_that_stay) {
    EXPECT_EQ(merged_text(GetParam().before), GetParam().after);
}

const std::string head = "M48\nMETRIC,TZ\nT1C0.8\nT2C1.0\n";

const MergedCase merged_cases[] = {
    {"the_definition_goes_and_the_holes_follow_those_of_the_first_tool",
     "M48\r\nMETRIC,TZ\r\nT1F20C0.8\r\nT2C1.0\r\nT03C0.800\r\n%\r\n"
     "T3\r\nX1Y1\r\nT2\r\nX2Y2\r\nT01\r\nX3Y3G85X4Y3\r\nM30\r\n",
     "M48\r\nMETRIC,TZ\r\nT2C1.0\r\nT03C0.800\r\n%\r\n"
     "T3\r\nX1Y1\r\nX3Y3G85X4Y3\r\nT2\r\nX2Y2\r\nM30\r\n"},
    {"nothing_changes_without_tools_of_one_diameter", head + "%\nT1\nX1Y1\nT2\nX2Y2\nM30\n",
     head + "%\nT1\nX1Y1\nT2\nX2Y2\nM30\n"},
    {"tools_without_a_diameter_stay",
     "M48\nMETRIC,TZ\nT1\nT2\n%\nT1\nX1Y1\nT2\nX2Y2\nT1\nX3Y3\nM30\n",
     "M48\nMETRIC,TZ\nT1\nT2\n%\nT1\nX1Y1\nX3Y3\nT2\nX2Y2\nM30\n"},
    {"a_definition_of_a_tool_that_cuts_nothing_stays",
     head + "T3C0.8\nT4C0.8\n%\nT1\nX1Y1\nT3\nX2Y2\nM30\n",
     head + "T4C0.8\n%\nT1\nX1Y1\nX2Y2\nM30\n"},
    {"a_selection_that_cuts_nothing_goes_with_the_tool",
     head + "T3C0.8\n%\nT3\nT1\nX1Y1\nT3\nX2Y2\nM30\n", head + "%\nT1\nX1Y1\nX2Y2\nM30\n"},
    {"a_selection_after_the_last_hole_goes_with_the_tool",
     head + "T3C0.8\n%\nT3\nX1Y1\nT1\nX2Y2\nT1\n;end\nT0\nM30\n",
     "M48\nMETRIC,TZ\nT2C1.0\nT3C0.8\n%\nT3\nX1Y1\nX2Y2\n;end\nT0\nM30\n"},
    {"a_line_that_does_more_than_select_a_tool_that_goes_is_refused",
     head + "T3C0.8\n%\nT3\nX1Y1\nT1\nX2Y2\nT1M30\n",
     "error plate.drl: the holes cannot be written in another order: unknown tool T1; the file "
     "defines T2, T3"},
    {"remarks_move_to_the_tool_that_stays",
     head + "T3C0.8\n%\nT1\n;one\nX1Y1\n;before three\nT3\n;three\nX2Y2\nM30\n",
     head + "%\n;before three\nT1\n;one\n;three\nX1Y1\nX2Y2\nM30\n"},
    {"a_remark_before_a_definition_stays_in_the_head",
     head + ";vias\nT3C0.8\n(vias) T4C0.8 ;more\n%\nT1\nX1Y1\nT3\nX2Y2\nT4\nX3Y3\nM30\n",
     head + ";vias\n%\nT1\nX1Y1\nX2Y2\nX3Y3\nM30\n"},
    {"a_definition_in_the_body_goes", "METRIC,TZ\nT1C0.8\nX1Y1\nT2C0.8\nX2Y2\nM30\n",
     "METRIC,TZ\nT1C0.8\nX1Y1\nX2Y2\nM30\n"},
    {"a_tool_that_a_routed_path_uses_keeps_its_definition",
     head + "T3C0.8\n%\nT1\nX1Y1\nT3\nX2Y2\nG00X3Y3\nM15\nG01X4Y4\nM16\nG05\nX5Y5\nT1\nX6Y6\nM30\n",
     head +
         "T3C0.8\n%\nT1\nX1Y1\nX2Y2\nT3\nG00X3Y3\nM15\nG01X4Y4\nM16\nG05\nT1\nX5Y5\nX6Y6\nM30\n"},
};

INSTANTIATE_TEST_SUITE_P(programs, merged_program, testing::ValuesIn(merged_cases),
                         nmk_job::CaseName());

/// What is cut, whatever the order and the names of the tools.
auto cuts_of(const nmk_job::MachiningJob& job) {
    std::vector<std::tuple<double, double, double, double, double>> cuts;
    for (const nmk_job::JobItem& item : job.items) {
        giPoint3 a = item.start;
        giPoint3 b = item.end.value_or(a);
        if (std::tuple(b.x, b.y) < std::tuple(a.x, a.y)) {
            std::swap(a, b);
        }
        cuts.emplace_back(job.tools[item.tool].diameter.value_or(-1.0), a.x, a.y, b.x, b.y);
    }
    std::sort(cuts.begin(), cuts.end());
    return cuts;
}

/// Merges, shuffles, writes and reads again: the same cuts with the same diameters. Returns the
/// number of tools that the program lost.
std::size_t expect_same_cuts(const nmk_job::MachiningJob& job, unsigned seed,
                             const std::string& what) {
    nmk_job::MachiningJob merged = job;
    nmk_job::merge_tools(merged);
    nmk_job::JobOrder order = nmk_job::order_by_tool(merged);
    if (merged.fences.empty()) {
        order = nmk_job::shuffled_order(merged, seed);
    }
    const auto text = write_excellon(merged, order);
    EXPECT_TRUE(text) << what << ": " << (text ? "" : text.error().text());
    if (!text) {
        return 0;
    }
    const auto again = nmk_job::job_of(read_excellon(job.file_name, *text, job.units));
    EXPECT_EQ(cuts_of(again), cuts_of(job)) << what;
    EXPECT_EQ(again.tools.size(), merged.tools.size()) << what;
    return job.tools.size() - again.tools.size();
}

/// A program with a few diameters for many tools, which cut in turns; with routed paths if asked.
std::string random_program(std::mt19937& words, bool has_paths) {
    const std::size_t tools = 2 + words() % 7;
    std::string text = "M48\nMETRIC,TZ\n";
    for (std::size_t tool = 1; tool <= tools; ++tool) {
        text += ";tool " + std::to_string(tool) + "\nT" + std::to_string(tool);
        text += words() % 6 == 0 ? "\n" : "C" + std::to_string(1 + words() % 3) + ".5\n";
    }
    text += "%\n";
    const auto point = [&] {
        return "X" + std::to_string(words() % 9000) + "Y" + std::to_string(words() % 9000);
    };
    for (int run = 0; run < 12; ++run) {
        text += "T" + std::to_string(1 + words() % tools) + "\n;run " + std::to_string(run) + "\n";
        for (std::size_t hole = words() % 4; hole > 0; --hole) {
            text += point() + (words() % 4 == 0 ? "G85" + point() : "") + "\n";
        }
        if (has_paths && words() % 4 == 0) {
            text += "G00" + point() + "\nM15\nG01" + point() + "\nM16\nG05\n";
        }
    }
    return text + "M30\n";
}

TEST(merged_programs, have_every_cut_once_with_its_diameter) {
    std::size_t lost = 0;
    for (unsigned seed = 1; seed <= 300; ++seed) {
        std::mt19937 words(seed);
        const std::string text = random_program(words, seed % 2 == 0);
        const auto job = nmk_job::job_of(read_excellon("random.drl", text, std::nullopt));
        lost += expect_same_cuts(job, seed, "seed " + std::to_string(seed) + "\n" + text);
    }
    EXPECT_GT(lost, 300U);
}

TEST(merged_programs, of_real_files_have_every_cut_once) {
    if (const auto missing = real_inputs::missing("drill")) GTEST_SKIP() << *missing;
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(real_inputs::path("drill"))) {
        const auto job = nmk_job_files::read_job_file(entry.path().string(), std::nullopt);
        if (!job || job->items.empty() || job->format != nmk_job::JobFormat::excellon) continue;
        expect_same_cuts(*job, 1, entry.path().string());
        ++files;
    }
    EXPECT_GE(files, 3);
}

}  // namespace
}  // namespace nmk_excellon

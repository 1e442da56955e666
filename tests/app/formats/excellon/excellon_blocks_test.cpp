// excellon_blocks: routed paths, patterns and comments in parentheses are kept, and the holes stay
// on their side of them.

#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>
#include <random>
#include <sstream>

#include "app/formats/job/job_fixtures.h"
#include "formats/excellon/excellon_reader.h"
#include "formats/excellon/excellon_writer.h"

namespace nmk_excellon {
namespace {

const std::string header = "M48\nMETRIC,TZ\nT1C1.0\nT2C2.0\n%\n";
const std::string slot = "G00X9000Y9000\nM15\nG01X8000Y9000\nM16\nG05\n";

nmk_text::Result<nmk_job::MachiningJob> read(const std::string& text) {
    return read_excellon("plate.drl", text, std::nullopt);
}

/// The program with the cuts of each tool backwards, or the error.
std::string backward_in_each_tool(const std::string& text) {
    const nmk_job::MachiningJob job = nmk_job::job_of(read(text));
    nmk_job::JobOrder order;
    nmk_job::each_tool_run(job, nmk_job::order_by_tool(job),
                           [&](std::size_t, std::span<const nmk_job::JobCut> cuts) {
                               order.insert(order.end(), cuts.rbegin(), cuts.rend());
                           });
    const auto written = write_excellon(job, order);
    return written ? *written : "error " + written.error().text();
}

struct BlockCase {
    const char* name;
    std::string body;
    std::string written;
};

std::ostream& operator<<(std::ostream& out, const BlockCase& block) { return out << block.name; }

class excellon_block : public testing::TestWithParam<BlockCase> {};

TEST_P(excellon_block, is_written_between_the_same_holes) {
    EXPECT_EQ(backward_in_each_tool(header + GetParam().body), header + GetParam().written);
}

INSTANTIATE_TEST_SUITE_P(
    programs, excellon_block,
    testing::Values(
        BlockCase{"a_routed_slot", "T1\nX1Y1\nX2Y2\n" + slot + "X3Y3\nX4Y4\nT2\nX5Y5\nM30\n",
                  "T1\nX2Y2\nX1Y1\n" + slot + "X4Y4\nX3Y3\nT2\nX5Y5\nM30\n"},
        BlockCase{"a_slot_after_the_last_hole_gets_its_tool_again",
                  "T1\nX1Y1\nT2\nX2Y2\nT1\nX3Y3\n" + slot + "M30\n",
                  "T1\nX3Y3\nX1Y1\nT2\nX2Y2\nT1\n" + slot + "M30\n"},
        BlockCase{"a_slot_without_y_gets_that_of_the_hole_before_it",
                  "T1\nX1Y1\nX2Y2\nG00X9\nM15\nG01Y8\nM16\nG05\nM30\n",
                  "T1\nX2Y2\nX1Y1\nG00X9Y2\nM15\nG01Y8\nM16\nG05\nM30\n"},
        BlockCase{"a_slot_without_x_gets_that_of_the_hole_before_it",
                  "T1\nX1Y1\nX2Y2\n G00 Y9\nM15\nG01Y8\nM16\nG05\nM30\n",
                  "T1\nX2Y2\nX1Y1\n G00 X2Y9\nM15\nG01Y8\nM16\nG05\nM30\n"},
        BlockCase{"a_path_from_the_hole_before_it_moves_there_first",
                  "T1\nX1Y1\nX2Y2\nM15\nG01X9Y2\nM16\nG05\nX3Y3\nM30\n",
                  "T1\nX2Y2\nX1Y1\nG00X2Y2\nM15\nG01X9Y2\nM16\nG05\nX3Y3\nM30\n"},
        BlockCase{"an_arc_from_the_hole_before_it_moves_there_first",
                  "T1\nX1Y1\nX2Y2\nG02X9Y2I1J0\nG05\nM30\n",
                  "T1\nX2Y2\nX1Y1\nG00X2Y2\nG02X9Y2I1J0\nG05\nM30\n"},
        BlockCase{"a_hole_after_a_slot_may_leave_out_an_axis",
                  "T1\nX1Y1\n" + slot + "Y7\nX6\nM30\n",
                  "T1\nX1Y1\n" + slot + "X6Y7\nX8000Y7\nM30\n"},
        BlockCase{"a_path_up_to_the_end_of_the_program", "T1\nX1Y1\nX2Y2\nG00X9Y9\nG01X8Y8\nM30\n",
                  "T1\nX2Y2\nX1Y1\nG00X9Y9\nG01X8Y8\nM30\n"},
        BlockCase{"a_path_up_to_the_end_of_the_file", "T1\nX1Y1\nX2Y2\nG00X9Y9\nG01X8Y8",
                  "T1\nX2Y2\nX1Y1\nG00X9Y9\nG01X8Y8\n"},
        BlockCase{"a_tool_selected_in_a_path",
                  "T1\nX1Y1\nX2Y2\nG00X9Y9\nT2\nG01X8Y8\nG05\nX3Y3\nX4Y4\nT1\nX5Y5\nM30\n",
                  "T1\nX2Y2\nX1Y1\nG00X9Y9\nT2\nG01X8Y8\nG05\nX4Y4\nX3Y3\nT1\nX5Y5\nM30\n"},
        BlockCase{"a_path_before_the_first_hole", "T1\n" + slot + "X1Y1\nX2Y2\nM30\n",
                  "T1\n" + slot + "X2Y2\nX1Y1\nM30\n"},
        BlockCase{"a_path_before_the_tool_of_the_first_hole",
                  "T1\n" + slot + "T2\nX1Y1\nX2Y2\nM30\n", "T1\n" + slot + "T2\nX2Y2\nX1Y1\nM30\n"},
        BlockCase{"remarks_before_a_path", "T1\nX1Y1\nX2Y2\n;slot\n" + slot + "X3Y3\nM30\n",
                  "T1\nX2Y2\nX1Y1\n;slot\n" + slot + "X3Y3\nM30\n"},
        BlockCase{"a_pattern",
                  "T1\nX1Y1\nX2Y2\nM25\nX3Y3\nX4\nM01\nM02X100\nM02Y100\nM08\nX5Y5\nX6Y6\nM30\n",
                  "T1\nX2Y2\nX1Y1\nM25\nX3Y3\nX4\nM01\nM02X100\nM02Y100\nM08\nX6Y6\nX5Y5\nM30\n"},
        BlockCase{"a_pattern_without_m08_and_a_slot_after_it",
                  "T1\nX1Y1\nX2Y2\nM25\nY3\nM01\nM02X100M70\n" + slot + "X5Y5\nM30\n",
                  "T1\nX2Y2\nX1Y1\nM25\nX2Y3\nM01\nM02X100M70\n" + slot + "X5Y5\nM30\n"},
        BlockCase{"comments_in_parentheses",
                  "(plate)\nT1 (drill)\nX1Y1 (first)\n(second)\nX2Y2\nG85X3 (slot) ;end\nM30\n",
                  "(plate)\nT1\n(drill)\n(first)\n(second)\n(slot) ;end\nX2Y2G85X3Y2\nX2Y2\nX1Y1\n"
                  "M30\n"},
        BlockCase{"comments_between_the_words_of_holes_and_tools",
                  "(a) T1(drill)F2 (b)\nX1(left)Y1\n(c)X2 (d)(e) Y2 (f) ;g\nX3(h;i)G85(j)Y4\n"
                  "M30\n",
                  "T1F2\n(a) (drill) (b)\n(left)\n(c) (d) (e) (f) ;g\n(h;i) (j)\nX3Y2G85X3Y4\n"
                  "X2Y2\nX1Y1\nM30\n"},
        BlockCase{"comments_between_the_words_of_a_path",
                  "T1\nX1Y1\nX2Y2\n(a)G00(b)Y9\nM15\n(c) G01 Y8\nM16\nG05\nM30\n",
                  "T1\nX2Y2\nX1Y1\n(a)G00(b)X2Y9\nM15\n(c) G01 Y8\nM16\nG05\nM30\n"},
        BlockCase{"parentheses_in_a_message", "T1\n(a) M47, to (b) do ;c\nX1Y1\nX2Y2\nM30\n",
                  "T1\nM47, to (b) do \n(a) ;c\nX2Y2\nX1Y1\nM30\n"},
        BlockCase{"a_comment_without_an_end", "T1\nX1Y1 (a\nX2Y2\nM30\n",
                  "T1\n(a\nX2Y2\nX1Y1\nM30\n"}),
    nmk_job::CaseName());

TEST(excellon_blocks, comments_in_the_header_stay_between_the_words_of_a_tool) {
    const std::string commented = "M48\n(a) METRIC,TZ\nT1(drill)C0.8(b)\nT2C2.0\n%\n";
    const nmk_job::MachiningJob job = nmk_job::job_of(read(commented + "T1\nX1Y1\n"));
    EXPECT_EQ(job.tools[0].diameter, 0.8);
    EXPECT_EQ(backward_in_each_tool(commented + "T1\nX1Y1\nX2Y2\nM30\n"),
              commented + "T1\nX2Y2\nX1Y1\nM30\n");
}

TEST(excellon_blocks, zeros_behind_a_comment_show_which_the_file_keeps) {
    const std::string no_zeros = "M48\nMETRIC\nT1C1.0\n%\nT1\n";
    const nmk_job::MachiningJob job =
        nmk_job::job_of(read(no_zeros + "X1(X10)Y012\n(Y20;)X01Y01\nM30\n"));
    EXPECT_EQ(job.items[0].start.y, 12.0) << "leading zeros are kept, trailing ones are not";
}

TEST(excellon_blocks, an_order_across_a_path_is_refused) {
    const nmk_job::MachiningJob job =
        nmk_job::job_of(read(header + "T1\nX1Y1\nX2Y2\n" + slot + "X3Y3\nM30\n"));
    EXPECT_EQ(job.fences, (std::vector<std::size_t>{2}));
    ASSERT_EQ(job.tools.size(), 2U);
    EXPECT_EQ(job.tools[0].name, job.tools[1].name);
    const auto written = write_excellon(job, nmk_job::JobOrder{{0, false}, {2, false}, {1, false}});
    ASSERT_FALSE(bool(written));
    EXPECT_EQ(written.error().text(),
              "plate.drl: the order moves item 2 across a routed path or a pattern");
}

TEST(excellon_blocks, are_counted_in_a_note) {
    const nmk_job::MachiningJob job = nmk_job::job_of(
        read(header + "T1\nX1Y1\n" + slot + slot + "M25\nX3Y3\nM01\nM02X1\nX4Y4\nM30\n"));
    EXPECT_EQ(job.notes, (std::vector<std::string>{"2 routed paths and 1 pattern (from line 8) are "
                                                   "kept unchanged; no hole is moved across"}));
    EXPECT_EQ(job.fences, (std::vector<std::size_t>{1}));
    EXPECT_EQ(job.items.size(), 2U);
}

struct RefusedBlock {
    const char* name;
    std::string body;
    const char* error;
};

std::ostream& operator<<(std::ostream& out, const RefusedBlock& block) { return out << block.name; }

class excellon_block_refusal : public testing::TestWithParam<RefusedBlock> {};

TEST_P(excellon_block_refusal, names_the_line_and_the_reason) {
    EXPECT_EQ(nmk_job::error_of(read(header + GetParam().body)),
              std::string("plate.drl:") + GetParam().error);
}

INSTANTIATE_TEST_SUITE_P(
    programs, excellon_block_refusal,
    testing::Values(
        RefusedBlock{"the_end_of_a_pattern_without_its_beginning", "T1\nX1Y1\nM01\n",
                     "8: M01 without a pattern before it; expected M25 before the holes of the "
                     "pattern"},
        RefusedBlock{"a_repeat_of_no_pattern", "T1\nX1Y1\nM02X1\n",
                     "8: M02 without a pattern before it; expected M25 before the holes of the "
                     "pattern"},
        RefusedBlock{"a_repeat_within_a_pattern", "T1\nM25\nX1Y1\nM02X1\nM01\n",
                     "9: M02 at this place; expected M25, the holes of the pattern, M01 and "
                     "repeats (M02)"},
        RefusedBlock{"a_pattern_within_a_path", "T1\nG00X1Y1\nM25\nX1Y1\nM01\n",
                     "8: M25 at this place; expected M25, the holes of the pattern, M01 and "
                     "repeats (M02)"},
        RefusedBlock{"a_pattern_without_an_end", "T1\nM25\nX1Y1\nM30\n",
                     "9: the pattern that begins on line 7 has no end; expected M01"},
        RefusedBlock{"a_pattern_up_to_the_end_of_the_file", "T1\nM25\nX1Y1\n",
                     "8: the pattern that begins on line 7 has no end; expected M01"},
        RefusedBlock{"a_hole_without_y_after_a_pattern", "T1\nM25\nX1Y1\nM01\nM02X5\nX7\n",
                     "11: X or Y is missing after a pattern; expected both"},
        RefusedBlock{"a_path_from_the_end_of_a_pattern", "T1\nM25\nX1Y1\nM01\nM02X5\nG01X1Y1\n",
                     "11: the routed path begins at an unknown position; expected G00 with X and "
                     "Y"},
        RefusedBlock{"a_path_without_y_after_a_pattern", "T1\nM25\nX1Y1\nM01\nG00X5\n",
                     "10: X or Y is missing after a pattern; expected both"},
        RefusedBlock{"a_path_in_increments", "T1\nG91\nX1Y1\nG00X5Y5\n",
                     "9: a routed path in increments cannot be kept; expected G90 before it"},
        RefusedBlock{"increments_within_a_path", "T1\nG00X5Y5\nG91\n",
                     "8: G91 within a routed path; expected only words that move, cut or retract"},
        RefusedBlock{"units_within_a_pattern", "T1\nM25\nINCH\n",
                     "8: \"INCH\" within a pattern; expected it in the header"},
        RefusedBlock{"a_header_within_a_path", "T1\nG00X5Y5\nM48\n",
                     "8: M48 within a routed path; expected only words that move, cut or retract"},
        RefusedBlock{"mirrored_axes_before_the_repeats", "T1\nM25\nM70\n",
                     "8: M70 within a pattern; expected only words that move, cut or retract"},
        RefusedBlock{"an_unknown_tool_within_a_path", "T1\nG00X5Y5\nT7\n",
                     "8: unknown tool T7; the file defines T1, T2"},
        RefusedBlock{"a_comment_within_the_digits", "T1\nX1(a)2Y1\n",
                     "7: cannot read \"2Y1\"; expected words of a drill program such as T1, "
                     "X1.5Y2 or M30"},
        RefusedBlock{"a_comment_within_a_statement_of_a_header", "M48\nMETRIC(a),TZ\n%\nT1\nX1Y1\n",
                     "7: a comment within \"METRIC(a),TZ\"; expected it at the end of the line"},
        RefusedBlock{"an_unknown_tool_with_a_comment", "T7 (cut)\nX1Y1\n",
                     "6: unknown tool T7; the file defines T1, T2"},
        RefusedBlock{"an_unknown_tool_with_an_inner_comment", "T7(cut)F3\nX1Y1\n",
                     "6: unknown tool T7; the file defines T1, T2"}),
    nmk_job::CaseName());

/// What a plain reading of the generated programs finds: the holes of each segment as "tool X Y",
/// sorted, and after each segment the tool and the text of its block.
std::vector<std::vector<std::string>> segments_of(const std::string& program) {
    std::vector<std::vector<std::string>> segments(1);
    std::istringstream lines(program.substr(program.find("%\n") + 2));
    std::string tool;
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("G00") || line.starts_with("M25")) {
            std::sort(segments.back().begin(), segments.back().end());
            std::string block = tool + " " + line;
            while (line != "G05" && line != "M08" && std::getline(lines, line)) block += "/" + line;
            segments.push_back({block});
            segments.emplace_back();
        } else if (line[0] == 'T') {
            tool = line;
        } else if (line[0] == 'X') {
            segments.back().push_back(tool + " " + line);
        }
    }
    std::sort(segments.back().begin(), segments.back().end());
    return segments;
}

/// The tools in their order, the cuts of each shuffled.
nmk_job::JobOrder shuffled_in_each_tool(const nmk_job::MachiningJob& job, std::mt19937& random) {
    nmk_job::JobOrder order;
    nmk_job::each_tool_run(
        job, nmk_job::order_by_tool(job), [&](std::size_t, std::span<const nmk_job::JobCut> cuts) {
            const std::size_t begin = order.size();
            order.insert(order.end(), cuts.begin(), cuts.end());
            std::shuffle(order.begin() + static_cast<std::ptrdiff_t>(begin), order.end(), random);
        });
    return order;
}

TEST(excellon_blocks, of_generated_programs_keep_their_place_in_every_order) {
    constexpr unsigned seed = 23;
    std::mt19937 random(seed);
    for (int round = 0; round < 200; ++round) {
        std::string text = header;
        const auto number = [&] { return std::to_string(random() % 90000); };
        int tool = 0;
        for (int part = 0; part < 12; ++part) {
            if (tool == 0 || random() % 3 == 0) {
                tool = static_cast<int>(1 + random() % 2);
                text += "T" + std::to_string(tool) + "\n";
            }
            const auto kind = random() % 6;
            if (kind == 0) {
                text +=
                    "G00X" + number() + "Y" + number() + "\nM15\nG01X" + number() + "\nM16\nG05\n";
            } else if (kind == 1) {
                text += "M25\nX" + number() + "Y" + number() + "\nM01\nM02X" + number() + "\nM08\n";
            } else {
                for (unsigned i = 0; i <= random() % 4; ++i) {
                    text += "X" + number() + "Y" + number() + "\n";
                }
            }
        }
        text += "M30\n";
        const nmk_job::MachiningJob job = nmk_job::job_of(read(text));
        const auto written = write_excellon(job, shuffled_in_each_tool(job, random));
        ASSERT_TRUE(bool(written)) << written.error().text() << "\n" << text;
        EXPECT_EQ(segments_of(*written), segments_of(text)) << "round " << round << "\n" << text;
    }
}

}  // namespace
}  // namespace nmk_excellon

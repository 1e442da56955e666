// excellon_reader: the meaning of each word of a drill program, and the errors of bad files.

#include "formats/excellon/excellon_reader.h"

#include <gtest/gtest.h>

#include <ostream>

#include "app/formats/excellon/plain_excellon.h"
#include "app/formats/job/job_fixtures.h"
#include "files/read_whole_file.h"
#include "formats/excellon/excellon_parser.h"
#include "formats/excellon/excellon_writer.h"
#include "formats/job_files/read_job.h"
#include "real_inputs.h"

namespace nmk_excellon {
namespace {

const std::string metric_header = "M48\nMETRIC,TZ\nT1C1.0\nT2C2.0\n%\n";

nmk_text::Result<nmk_job::MachiningJob> read(const std::string& text) {
    return read_excellon("plate.drl", text, std::nullopt);
}

/// "T1 1,2 3,4>5,6 T2 ...": the cuts in millimetres, for comparison.
std::string cuts_of(const nmk_job::MachiningJob& job) {
    std::ostringstream text;
    const auto add_run = [&](std::size_t tool, std::span<const nmk_job::JobCut> cuts) {
        text << (text.tellp() > 0 ? " " : "") << job.tools[tool].name;
        for (const nmk_job::JobCut& cut : cuts) {
            const nmk_job::JobItem& item = job.items[cut.item];
            text << " " << item.start.x << "," << item.start.y;
            if (item.end) {
                text << ">" << item.end->x << "," << item.end->y;
            }
        }
    };
    nmk_job::each_tool_run(job, nmk_job::order_by_tool(job), add_run);
    return text.str();
}

struct ProgramCase {
    const char* name;
    std::string text;
    const char* cuts;
};

std::ostream& operator<<(std::ostream& out, const ProgramCase& program) {
    return out << program.name;
}

class excellon_program : public testing::TestWithParam<ProgramCase> {};

TEST_P(excellon_program, is_read_as_its_cuts) {
    EXPECT_EQ(cuts_of(nmk_job::job_of(read(GetParam().text))), GetParam().cuts);
}

INSTANTIATE_TEST_SUITE_P(
    programs, excellon_program,
    testing::Values(
        ProgramCase{"one_hole", metric_header + "T1\nX1000Y2000\nM30\n", "T1 1,2"},
        ProgramCase{"modal_coordinates", metric_header + "T1\nX1000Y2000\nX3000\nY4000\nM30\n",
                    "T1 1,2 3,2 3,4"},
        ProgramCase{"a_coordinate_never_given_is_zero", metric_header + "T1\nY4000\nM30\n",
                    "T1 0,4"},
        ProgramCase{"y_before_x", metric_header + "T1\nY4000X1000\nM30\n", "T1 1,4"},
        ProgramCase{"leading_zeros_in_tool_numbers", metric_header + "T01\nX1Y1\nT002\nX2Y2\n",
                    "T1 0.001,0.001 T2 0.002,0.002"},
        ProgramCase{"a_tool_selected_twice_is_one_tool",
                    metric_header + "T1\nX1000Y0\nT2\nX2000\nT1\nX3000\nM30\n",
                    "T1 1,0 3,0 T2 2,0"},
        ProgramCase{"a_tool_and_a_hole_on_one_line", metric_header + "T1X1000Y2000\nM30\n",
                    "T1 1,2"},
        ProgramCase{"a_slot", metric_header + "T1\nX1000Y2000G85X3000Y4000\nM30\n", "T1 1,2>3,4"},
        ProgramCase{"a_slot_with_a_modal_end", metric_header + "T1\nX1000Y2000G85X3000\nY5000\n",
                    "T1 1,2>3,2 3,5"},
        ProgramCase{"a_slot_from_the_current_position",
                    metric_header + "T1\nX1000Y2000\nG85X3000Y4000\n", "T1 1,2 1,2>3,4"},
        ProgramCase{"repeats_continue_from_the_hole",
                    metric_header + "T1\nX1000Y0\nR2X500\nR1Y-1000\nM30\n",
                    "T1 1,0 1.5,0 2,0 2,-1"},
        ProgramCase{"repeats_step_in_absolute_programs_too",
                    metric_header + "G90\nT1\nX1000Y1000\nR3X10Y20\nX0\n",
                    "T1 1,1 1.01,1.02 1.02,1.04 1.03,1.06 0,1.06"},
        ProgramCase{"increments", metric_header + "T1\nG91\nX1000Y1000\nX500\nG90\nX500\nM30\n",
                    "T1 1,1 1.5,1 0.5,1"},
        ProgramCase{"increments_from_the_header",
                    "M48\nMETRIC,TZ\nICI,ON\nT1C1\n%\nT1\nX1000\nX1000\nM30\n", "T1 1,0 2,0"},
        ProgramCase{"a_slot_in_increments",
                    metric_header + "T1\nG91\nX1000Y1000\nX0Y0G85X500\nM30\n", "T1 1,1 1,1>1.5,1"},
        ProgramCase{"a_mode_before_the_hole", metric_header + "T1\nG91X1000\nG91X1000\n",
                    "T1 1,0 2,0"},
        ProgramCase{"comments_and_blanks", metric_header + " T1 ; first\n X1000 Y2000 ;here\n\n;\n",
                    "T1 1,2"},
        ProgramCase{"lower_case", "m48\nmetric,tz\nt1c1\n%\nt1\nx1000y1000\n", "T1 1,1"},
        ProgramCase{"carriage_returns", "M48\r\nMETRIC,TZ\r\nT1C1\r\n%\r\nT1\r\nX1000Y1000\r\nM30",
                    "T1 1,1"},
        ProgramCase{"carriage_returns_alone", "M48\rMETRIC,TZ\rT1C1\r%\rT1\rX1000Y1000\rM30\r",
                    "T1 1,1"},
        ProgramCase{"m95_ends_the_header", "M48\nMETRIC,TZ\nT1C1\nM95\nT1\nX1000Y1000\nM30\n",
                    "T1 1,1"},
        ProgramCase{"a_second_header",
                    "M48\nMETRIC,TZ\nT1C1\n%\nT1\nX1000Y0\nM48\nT2C2\n%\nT2\nX2000\n",
                    "T1 1,0 T2 2,0"},
        ProgramCase{"no_header_at_all", "M71\nT1C0.8\nX1000Y1000\nT1\nX2000\nM30\n", "T1 1,1 2,1"},
        ProgramCase{"a_number_format_as_a_picture",
                    "M48\nMETRIC,TZ,0000.00\nT1C1\n%\nT1\nX100Y200\n", "T1 1,2"},
        ProgramCase{"a_format_in_a_comment",
                    "M48\n;FILE_FORMAT=2:3\nINCH,LZ\nT1C1\n%\nT1\nX01Y0005\n", "T1 25.4,1.27"},
        ProgramCase{"a_format_and_its_zeros_in_a_comment",
                    "M48\n;FORMAT={3:2/ absolute / metric / suppress trailing zeros}\nMETRIC\n"
                    "T1C1\n%\nT1\nX001Y00025\n",
                    "T1 1,0.25"},
        ProgramCase{"millimetres_stated_after_the_header",
                    "M48\nT1C1\n%\nM71\nG93X0Y0\nT1\nX40500Y6270\n", "T1 40.5,6.27"},
        ProgramCase{"inches_if_no_unit_is_stated", "M48\nT1C1\n%\nT1\nX10000Y20000\n",
                    "T1 25.4,50.8"},
        ProgramCase{"speeds_and_feeds", metric_header + "T1F20S100\nS200\nX1000F30\nM30\n",
                    "T1 1,0"},
        ProgramCase{"drill_mode_and_messages",
                    metric_header + "G05\nM47,clean X1 off\nT1\nG81\nX1000\nM30\n", "T1 1,0"},
        ProgramCase{"no_holes", metric_header + "T1\nM30\n", ""},
        ProgramCase{"text_after_the_end", metric_header + "T1\nX1000\nM30\n;LEADER\nblah\n",
                    "T1 1,0"}),
    nmk_job::CaseName());

struct RefusedCase {
    const char* name;
    std::string text;
    const char* error;
};

std::ostream& operator<<(std::ostream& out, const RefusedCase& refused) {
    return out << refused.name;
}

class excellon_refusal : public testing::TestWithParam<RefusedCase> {};

TEST_P(excellon_refusal, names_the_line_and_the_reason) {
    EXPECT_EQ(nmk_job::error_of(read(GetParam().text)),
              std::string("plate.drl:") + GetParam().error);
}

INSTANTIATE_TEST_SUITE_P(
    programs, excellon_refusal,
    testing::Values(
        RefusedCase{"no_tool", "M48\nMETRIC,TZ\nT1C1\n%\nX1Y1\n",
                    "5: a hole before any tool is selected; expected a line such as T1 above it"},
        RefusedCase{"the_tool_is_deselected", metric_header + "T1\nX1\nT0\nX2\n",
                    "9: a hole before any tool is selected; expected a line such as T1 above it"},
        RefusedCase{"an_unknown_tool", metric_header + "T9\nX1Y1\n",
                    "6: unknown tool T9; the file defines T1, T2"},
        RefusedCase{"no_tool_is_defined", "M48\nMETRIC\n%\nT1\nX1Y1\n",
                    "4: unknown tool T1; the file defines no tool"},
        RefusedCase{
            "a_sign_within_a_number", metric_header + "T1\nX1-2Y1\n",
            "7: cannot read the coordinate X\"1-2\"; expected a number of at most a million "
            "units and nine decimals"},
        RefusedCase{"a_coordinate_without_number", metric_header + "T1\nXY1\n",
                    "7: cannot read the coordinate X\"\"; expected a number of at most a million "
                    "units and nine decimals"},
        RefusedCase{"not_a_number", metric_header + "T1\nXNANY1\n",
                    "7: cannot read the coordinate X\"\"; expected a number of at most a million "
                    "units and nine decimals"},
        RefusedCase{"an_exponent", metric_header + "T1\nX1E3Y1\n",
                    "7: cannot read \"E3Y1\"; expected words of a drill program such as "
                    "T1, X1.5Y2 or M30"},
        RefusedCase{"a_huge_coordinate", metric_header + "T1\nX99999999999999999999\n",
                    "7: cannot read the coordinate X\"99999999999999999999\"; expected a number of "
                    "at most a million units and nine decimals"},
        RefusedCase{"a_coordinate_given_twice", metric_header + "T1\nX1Y1X2\n",
                    "7: cannot read \"X2\"; expected words of a drill program such as "
                    "T1, X1.5Y2 or M30"},
        RefusedCase{"increments_out_of_range", metric_header + "T1\nG91\nX900000.\nX900000.\n",
                    "9: the increments add up to more than a million units"},
        RefusedCase{"a_header_without_end", "M48\nMETRIC,TZ\nT1C1\n",
                    "3: the header that begins on line 1 has no end; expected % or M95"},
        RefusedCase{
            "a_hole_in_the_header", "M48\nMETRIC,TZ\nT1C1\nT1\nX1Y1\n",
            "5: a coordinate in the header that begins on line 1; expected % or M95 before it"},
        RefusedCase{"the_end_in_the_header", "M48\nMETRIC,TZ\nM30\n",
                    "3: the header that begins on line 1 has no end; expected % or M95 before this "
                    "line"},
        RefusedCase{"a_diameter_that_is_not_a_number", "M48\nT1C1.x\n%\n",
                    "2: cannot read \"C1.x\" in the definition of T1"},
        RefusedCase{"a_diameter_without_number", "M48\nT1C\n%\n",
                    "2: cannot read the number \"\" of T1C"},
        RefusedCase{"a_negative_diameter", "M48\nT1C-1\n%\n",
                    "2: T1 has the diameter -1; expected 0 to 1000"},
        RefusedCase{"mirrored_axes", metric_header + "M80\n",
                    "6: M80 is not supported in a drill program"},
        RefusedCase{"a_slot_without_end", metric_header + "T1\nX1Y1G85\n",
                    "7: the slot (G85) has no end; expected X, Y or both after it"},
        RefusedCase{"a_repeat_without_hole", metric_header + "T1\nR5X100\n",
                    "7: a repeat (R) without a hole of the same tool before it"},
        RefusedCase{"a_repeat_of_a_slot", metric_header + "T1\nX0Y0G85X1\nR5X100\n",
                    "8: a repeat (R) without a hole of the same tool before it"},
        RefusedCase{"a_repeat_without_step", metric_header + "T1\nX0Y0\nR5\n",
                    "8: cannot read the repeat; expected a line such as R5X1000Y200"},
        RefusedCase{"a_repeat_without_count", metric_header + "T1\nX0Y0\nRX5\n",
                    "8: cannot read the count of the repeat \"\"; expected 1 to 99999"},
        RefusedCase{"a_billion_repeats", metric_header + "T1\nX0Y0\nR999999999X1\n",
                    "8: cannot read the count of the repeat \"999999999\"; expected 1 to 99999"},
        RefusedCase{"many_long_repeats", metric_header + "T1\nX0Y0\nR99999X1\nR99999X1\n",
                    "9: more than 100000 repeated holes"},
        RefusedCase{
            "units_that_change", metric_header + "T1\nX1\nM72\nX2\n",
            "8: units change between the holes; expected one number format for the whole file"},
        RefusedCase{"zeros_that_change", metric_header + "T1\nX1\nMETRIC,LZ\nX2\n",
                    "8: the kept zeros change between the holes; expected one number format for "
                    "the whole file"},
        RefusedCase{"a_zero_point_that_moves", metric_header + "T1\nX1\nG93X100Y0\nX2\n",
                    "8: the zero point moves between the holes; expected it before the first hole"},
        RefusedCase{"a_tool_that_changes", metric_header + "T1\nX1\nM48\nT1C3\n%\n",
                    "9: T1 changes its diameter after it has cut; its holes cannot be reordered"},
        RefusedCase{"too_many_digits", "M48\n;FILE_FORMAT=9:9\n%\n",
                    "2: number format 9:9; expected at most 6 digits on either side of the point"},
        RefusedCase{"holes_after_the_end", metric_header + "T1\nX1\nM30\nX2\n",
                    "9: a coordinate after the end of the program (M30 or M00)"},
        RefusedCase{
            "binary_junk",
            "\x7f"
            "ELF\x02\x01\x01",
            "1: cannot read \"\\x7fELF\\x02\\x01\\x01\"; expected words of a drill program such as "
            "T1, X1.5Y2 or M30"},
        RefusedCase{"a_tool_number_out_of_range", metric_header + "T99999999999\n",
                    "6: cannot read the tool number \"99999999999\""}),
    nmk_job::CaseName());

TEST(excellon_reader, uses_the_given_units_only_if_the_file_states_none) {
    const std::string holes = "%\nT1\nX1000Y1000\nM30\n";
    const auto metric = nmk_job::JobUnits::millimetres;
    const nmk_job::MachiningJob unstated =
        nmk_job::job_of(read_excellon("a.drl", "M48\nT1C1\n" + holes, metric));
    EXPECT_EQ(cuts_of(unstated), "T1 1,1");
    EXPECT_EQ(unstated.units, nmk_job::JobUnits::millimetres);
    EXPECT_EQ(unstated.tools.at(0).diameter, 1.0);
    const nmk_job::MachiningJob stated =
        nmk_job::job_of(read_excellon("a.drl", "M48\nINCH\nT1C1\n" + holes, metric));
    EXPECT_EQ(cuts_of(stated), "T1 2.54,2.54");
}

TEST(excellon_reader, returns_diameters_in_millimetres) {
    const nmk_job::MachiningJob job =
        nmk_job::job_of(read("M48\nINCH,TZ\nT1C0.1\nT2F00S00\n%\nT2\nX1\nT1\nX2\nM30\n"));
    EXPECT_EQ(job.tools.at(0).diameter, std::nullopt);
    EXPECT_DOUBLE_EQ(job.tools.at(1).diameter.value_or(0.0), 2.54);
}

TEST(excellon_reader, returns_the_items_in_the_order_of_the_file) {
    const nmk_job::MachiningJob job =
        nmk_job::job_of(read(metric_header + "T1\nX1\nT2\nX2\nR2X1\nT1\nX3\nM30\n"));
    ASSERT_EQ(job.tools.size(), 2U);
    std::vector<std::uint32_t> tools;
    std::vector<double> x;
    for (const nmk_job::JobItem& item : job.items) {
        tools.push_back(item.tool);
        x.push_back(item.start.x);
    }
    EXPECT_EQ(tools, (std::vector<std::uint32_t>{0, 1, 1, 1, 0}));
    EXPECT_EQ(x, (std::vector<double>{0.001, 0.002, 0.003, 0.004, 0.003}));
}

TEST(excellon_reader, reads_every_prefix_of_a_good_file_within_its_bounds) {
    for (const char* name :
         {"metric_decimal_slots.drl", "inch_leading.drl", "repeats.drl", "increments.drl",
          "two_headers.drl", "remarks.drl", "routed_slots.drl", "pattern.drl"}) {
        nmk_job::read_every_prefix(
            nmk_job::bytes_of_file(std::string(NMK_CASES_DIR "/excellon/") + name),
            [](std::string text) { return read_excellon("a.drl", std::move(text), std::nullopt); });
    }
}

TEST(excellon_reader, reads_two_million_holes) {
    std::string text = metric_header + "T1\n";
    for (int i = 0; i < 2'000'000; ++i) {
        text += "X" + std::to_string(i % 100'000) + "Y" + std::to_string(i / 1000) + "\n";
    }
    text += "M30\n";
    EXPECT_EQ(nmk_job::job_of(read(text)).items.size(), 2'000'000U);
}

TEST(excellon_reader, refuses_more_than_five_million_holes) {
#ifndef NDEBUG
    GTEST_SKIP() << "five million holes take half a minute without optimisation";
#endif
    std::string text = metric_header + "T1\n";
    for (std::size_t i = 0; i <= nmk_job::max_items; ++i) {
        text += "X1\n";
    }
    EXPECT_EQ(nmk_job::error_of(read(text)), "plate.drl:" + std::to_string(nmk_job::max_items + 7) +
                                                 ": more than 5000000 holes and slots");
}

struct RealFile {
    const char* name;
    PlainFormat format;
    nmk_job::JobUnits units;
    std::size_t tools;
};

class real_drill_file : public testing::TestWithParam<RealFile> {};

TEST_P(real_drill_file, has_the_cuts_of_a_plain_reading) {
    const std::string name = std::string("drill/") + GetParam().name;
    if (const auto missing = real_inputs::missing(name)) GTEST_SKIP() << *missing;
    const std::string path = real_inputs::path(name);
    const nmk_job::MachiningJob job =
        nmk_job::job_of(nmk_job_files::read_job_file(path, std::nullopt));
    EXPECT_EQ(job.units, GetParam().units);
    EXPECT_EQ(job.tools.size(), GetParam().tools);
    const double unit = job.units == nmk_job::JobUnits::inches ? 25.4 : 1.0;
    std::vector<PlainCut> cuts;
    for (const nmk_job::JobTool& tool : job.tools) {
        EXPECT_TRUE(tool.diameter.has_value());
    }
    for (const nmk_job::JobItem& item : job.items) {
        const auto fixed = [&](double value) { return std::llround(value / unit * 1e5); };
        const giPoint3 end = item.end.value_or(item.start);
        PlainCut cut{std::atoi(job.tools[item.tool].name.c_str() + 1), fixed(item.start.x),
                     fixed(item.start.y), fixed(end.x), fixed(end.y)};
        if (std::pair(cut[3], cut[4]) < std::pair(cut[1], cut[2])) {
            std::swap(cut[1], cut[3]);
            std::swap(cut[2], cut[4]);
        }
        cuts.push_back(cut);
    }
    const std::vector<PlainCut> plain =
        PlainExcellon(GetParam().format).read(nmk_job::bytes_of_file(path));
    EXPECT_EQ(cuts.size(), plain.size());
    EXPECT_EQ(PlainExcellon::sorted(cuts), PlainExcellon::sorted(plain));
}

constexpr PlainFormat inch_tz{true, 2, 4};
constexpr PlainFormat inch_lz_2_3{false, 2, 3};
constexpr PlainFormat metric_tz{true, 3, 3};
constexpr PlainFormat metric_lz{false, 3, 3};

INSTANTIATE_TEST_SUITE_P(
    files, real_drill_file,
    testing::Values(RealFile{"gerbv_ekf2_drill0.exc", inch_tz, nmk_job::JobUnits::inches, 12},
                    RealFile{"gerbv_nolle.ncd", metric_tz, nmk_job::JobUnits::millimetres, 6},
                    RealFile{"gerbv_protel_SE_SG.txt", inch_lz_2_3, nmk_job::JobUnits::inches, 10},
                    RealFile{"gerbv_repeat.exc", inch_tz, nmk_job::JobUnits::inches, 1},
                    RealFile{"gerbv_tz.exc", metric_lz, nmk_job::JobUnits::millimetres, 8},
                    RealFile{"p2g_multivibrator.drl", metric_tz, nmk_job::JobUnits::millimetres, 2},
                    RealFile{"p2g_slots.drl", metric_tz, nmk_job::JobUnits::millimetres, 3},
                    RealFile{"ts_arduino-uno.drd", inch_tz, nmk_job::JobUnits::inches, 6},
                    RealFile{"ts_core.TXT", inch_tz, nmk_job::JobUnits::inches, 3}),
    nmk_job::CaseName());

TEST(real_drill_files, with_routed_paths_are_kept_as_they_are) {
    if (const auto missing = real_inputs::missing("drill")) GTEST_SKIP() << *missing;
    for (const char* name : {"ts_linear-route.drl", "ts_arc-route.drl"}) {
        const auto job = nmk_job::job_of(nmk_job_files::read_job_file(
            real_inputs::path(std::string("drill/") + name), std::nullopt));
        EXPECT_TRUE(job.items.empty());
        EXPECT_EQ(job.notes, (std::vector<std::string>{
                                 "1 routed path (from line 7) is kept unchanged; no hole "
                                 "is moved across"}));
        const auto written = write_excellon(job, {});
        ASSERT_TRUE(bool(written));
        EXPECT_EQ(*written, job.text);
    }
}

}  // namespace
}  // namespace nmk_excellon

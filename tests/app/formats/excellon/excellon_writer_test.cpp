// Tests of writing drill programs in another order: every cut once, everything else kept.

#include "formats/excellon/excellon_writer.h"

#include <gtest/gtest.h>

#include <set>

#include "app/formats/excellon/plain_excellon.h"
#include "app/formats/job/job_fixtures.h"
#include "formats/excellon/excellon_reader.h"
#include "formats/job_files/read_job.h"
#include "formats/job_files/write_job.h"
#include "real_inputs.h"

namespace nmk_excellon {
namespace {

std::string written(const nmk_job::MachiningJob& job) {
    const auto text = write_excellon(job);
    if (!text) {
        return "error " + text.error().text();
    }
    return *text;
}

nmk_job::MachiningJob job_of_text(const std::string& text) {
    return nmk_job::job_of(read_excellon("plate.drl", text, std::nullopt));
}

nmk_job::MachiningJob backwards(nmk_job::MachiningJob job) {
    std::reverse(job.tools.begin(), job.tools.end());
    for (nmk_job::JobTool& tool : job.tools) {
        std::reverse(tool.items.begin(), tool.items.end());
        for (nmk_job::JobItem& item : tool.items) {
            item.reversed = item.end.has_value();
        }
    }
    return job;
}

TEST(excellon_writer, keeps_the_file_to_the_byte_where_the_order_is_the_same) {
    const std::string text =
        "M48\r\n;plate\r\nMETRIC,TZ\r\nT1C1.0\r\nT2C2.0\r\n%\r\nG90\r\nT01\r\nX1000Y2000\r\n"
        "X3000Y-100\r\nT2\r\nX1Y1G85X2Y1\r\nT0\r\nM30\r\n;LEADER\r\n";
    EXPECT_EQ(written(job_of_text(text)), text);
}

TEST(excellon_writer, keeps_a_program_without_holes_to_the_byte) {
    const std::string text = "M48\nMETRIC,TZ\nT1C1.0\n%\nT1\nG91\nM30\n";
    EXPECT_EQ(written(job_of_text(text)), text);
}

TEST(excellon_writer, keeps_a_byte_order_mark_in_front_of_everything) {
    const std::string text = "\xef\xbb\xbfM48\nMETRIC,TZ\nT1C1.0\n%\nT1\nX1Y1\nX2Y2\nM30\n";
    EXPECT_EQ(written(job_of_text(text)), text);
    const std::string bare = "\xef\xbb\xbfT1C1.0\nX1.0Y1.0\nX2.0Y2.0\nM30\n";
    EXPECT_EQ(written(job_of_text(bare)), bare);
    EXPECT_EQ(written(backwards(job_of_text(bare))),
              "\xef\xbb\xbfT1C1.0\nX2.0Y2.0\nX1.0Y1.0\nM30\n");
}

TEST(excellon_writer, turns_slots_and_writes_modal_coordinates_out) {
    const std::string head = "M48\nMETRIC,TZ\nT1C1.0\nT2C2.0\n%\n";
    EXPECT_EQ(written(backwards(job_of_text(head + "T1\nX1000Y2000\nX3000\nT2\nX1Y1G85X2\nM30\n"))),
              head + "T2\nX2Y1G85X1Y1\nT1\nX3000Y2000\nX1000Y2000\nM30\n");
}

TEST(excellon_writer, writes_repeats_out_in_the_format_of_the_file) {
    const std::string head = "M48\nINCH,LZ\nT1C1.0\n%\n";
    EXPECT_EQ(written(job_of_text(head + "T1\nX01Y0\nR2X005Y-0025\nM30\n")),
              head + "T1\nX01Y0\nX015Y-0025\nX02Y-005\nM30\n");
}

TEST(excellon_writer, writes_increments_as_positions_behind_a_g90) {
    const std::string head = "M48\nMETRIC,TZ\nT1C1.0\n%\nG91\n";
    EXPECT_EQ(written(backwards(job_of_text(head + "T1\nX1000Y1000\nX500\nM30\n"))),
              head + "G90\nT1\nX1500Y1000\nX1000Y1000\nM30\n");
}

TEST(excellon_writer, writes_sums_of_decimal_numbers_with_a_point) {
    const std::string head = "M48\nMETRIC,TZ\nT1C1.0\n%\n";
    EXPECT_EQ(written(job_of_text(head + "T1\nX0.1Y0.5\nR2X0.1\nM30\n")),
              head + "T1\nX0.1Y0.5\nX0.2Y0.5\nX0.3Y0.5\nM30\n");
}

TEST(excellon_writer, moves_remarks_with_the_tool_whose_holes_they_stood_before) {
    const std::string head = "M48\nMETRIC,TZ\nT1C1.0\nT2C2.0\n%\n;head\n";
    EXPECT_EQ(
        written(backwards(job_of_text(
            head + "T1\n;one\nX1Y1\n;two\nT2\nG05\nX2Y2 ;here\n;one again\nT1\nX3Y3\nM30\n"))),
        head + ";two\nT2\nG05\n;here\nX2Y2\n;one again\nT1\n;one\nX3Y3\nX1Y1\nM30\n");
}

TEST(excellon_writer, keeps_a_remark_behind_the_last_hole) {
    const std::string head = "M48\nMETRIC,TZ\nT1C1.0\n%\n";
    EXPECT_EQ(written(job_of_text(head + "T1 ;first\nX1Y1\nX2Y2;last\n;end\nM30\n")),
              head + "T1\n;first\n;last\nX1Y1\nX2Y2\n;end\nM30\n");
}

TEST(excellon_writer, writes_points_where_the_kept_zeros_would_no_longer_show) {
    const std::string head = "M48\nMETRIC\nT1C1.0\n%\n";
    EXPECT_EQ(written(job_of_text(head + "T1\nX1Y1\nG91\nX001Y02\nM30\n")),
              head + "G90\nT1\nX100.0Y100.0\nX101.0Y120.0\nM30\n");
}

TEST(excellon_writer, keeps_a_tool_table_that_stands_outside_a_header) {
    const std::string text = "METRIC,TZ\nT1C1.0\nT2C2.0\nT3C3.0\n%\nT1\nX1Y1\nT2\nX2Y2\nM30\n";
    EXPECT_EQ(written(backwards(job_of_text(text))),
              "METRIC,TZ\nT1C1.0\nT2C2.0\nT3C3.0\n%\nT2\nX2Y2\nT1\nX1Y1\nM30\n");
}

TEST(excellon_writer, moves_a_second_header_before_the_first_tool) {
    const std::string text = "M48\nMETRIC,TZ\nT1C1.0\n%\nT1\nX1Y1\nM48\nT2C2.0\n%\nT2\nX2Y2\nM30\n";
    EXPECT_EQ(written(backwards(job_of_text(text))),
              "M48\nMETRIC,TZ\nT1C1.0\n%\nM48\nT2C2.0\n%\nT2\nX2Y2\nT1\nX1Y1\nM30\n");
}

TEST(excellon_writer, takes_a_tool_up_again_where_the_order_comes_back_to_it) {
    const std::string head = "M48\nMETRIC,TZ\nT1C1.0\nT2C2.0\n%\n";
    nmk_job::MachiningJob job = job_of_text(head + "T1\nX1Y1\nX2Y2\nT2\nX3Y3\nM30\n");
    nmk_job::JobTool second_run{"T1", 1.0, {job.tools[0].items[1]}};
    job.tools[0].items.pop_back();
    job.tools.push_back(second_run);
    EXPECT_EQ(written(job), head + "T1\nX1Y1\nT2\nX3Y3\nT1\nX2Y2\nM30\n");
}

TEST(excellon_writer, refuses_an_order_that_is_no_order_of_the_file) {
    const nmk_job::MachiningJob job =
        job_of_text("M48\nMETRIC,TZ\nT1C1.0\nT2C1.0\n%\nT1\nX1Y1\nX2Y2\nT2\nX3Y3\nM30\n");
    nmk_job::MachiningJob lost = job;
    lost.tools[0].items.pop_back();
    EXPECT_EQ(written(lost), "error plate.drl: the order leaves out 1 of 3 items");
    nmk_job::MachiningJob doubled = job;
    doubled.tools[0].items[1] = doubled.tools[0].items[0];
    EXPECT_EQ(written(doubled),
              "error plate.drl: item 0 of the order is not in the file or stands "
              "twice in the order");
    nmk_job::MachiningJob swapped = job;
    std::swap(swapped.tools[0].name, swapped.tools[1].name);
    EXPECT_EQ(written(swapped),
              "error plate.drl: item 0 is ordered with T2, which does not cut it");
    nmk_job::MachiningJob turned = job;
    turned.tools[0].items[0].reversed = true;
    EXPECT_EQ(written(turned), "error plate.drl: item 0 is turned but has no end");
    nmk_job::MachiningJob moved = job;
    moved.tools[0].items[0].start.x += 1.0;
    EXPECT_EQ(written(moved), "error plate.drl: its holes cannot be written in another order");
}

/// The lines before the first tool, and those of the tool table, have to come through.
void expect_same_header(const std::string& before, const std::string& after) {
    std::istringstream lines(before);
    std::string line;
    while (std::getline(lines, line)) {
        if (line.find('C') != std::string::npos || line.starts_with(';')) {
            EXPECT_NE(after.find(line), std::string::npos) << line;
        }
    }
}

struct WrittenFile {
    const char* name;
    PlainFormat format;
};

class written_drill_file : public testing::TestWithParam<WrittenFile> {};

TEST_P(written_drill_file, holds_every_cut_once_by_a_plain_reading) {
    std::string path = GetParam().name;
    if (path.starts_with("samples/")) {
        path = NMK_SOURCE_DIR "/" + path;
    } else if (const auto missing = real_inputs::missing("drill/" + path)) {
        GTEST_SKIP() << *missing;
    } else {
        path = real_inputs::path("drill/" + path);
    }
    const std::string before = nmk_job::bytes_of_file(path);
    const auto plain_before = PlainExcellon(GetParam().format).read(before);
    const nmk_job::MachiningJob job =
        nmk_job::job_of(nmk_job_files::read_job_file(path, std::nullopt));
    ASSERT_EQ(nmk_job::item_count(job), plain_before.size());
    for (unsigned seed = 1; seed <= 5; ++seed) {
        const std::string after = written(nmk_job::shuffled(job, seed));
        const auto plain_after = PlainExcellon(GetParam().format).read(after);
        EXPECT_NE(plain_after, plain_before) << "seed " << seed;
        EXPECT_EQ(PlainExcellon::sorted(plain_after), PlainExcellon::sorted(plain_before))
            << "seed " << seed;
        expect_same_header(before, after);
    }
}

INSTANTIATE_TEST_SUITE_P(files, written_drill_file,
                         testing::Values(WrittenFile{"samples/cover_plate.drl", {true, 3, 3}},
                                         WrittenFile{"gerbv_ekf2_drill0.exc", {true, 2, 4}},
                                         WrittenFile{"gerbv_nolle.ncd", {true, 3, 3}},
                                         WrittenFile{"gerbv_protel_SE_SG.txt", {false, 2, 3}},
                                         WrittenFile{"gerbv_repeat.exc", {true, 2, 4}},
                                         WrittenFile{"gerbv_tz.exc", {false, 3, 3}},
                                         WrittenFile{"p2g_multivibrator.drl", {true, 3, 3}},
                                         WrittenFile{"p2g_slots.drl", {true, 3, 3}},
                                         WrittenFile{"ts_arduino-uno.drd", {true, 2, 4}},
                                         WrittenFile{"ts_core.TXT", {true, 2, 4}}),
                         nmk_job::CaseName());

/// A random program of all that can be ordered, and its number format.
std::string random_program(unsigned seed, PlainFormat& format) {
    std::mt19937 random(seed);
    const bool metric = random() % 2 == 0;
    format = {random() % 2 == 0, metric ? 3 : 2, metric ? 3 : 4};
    std::string text = std::string("M48\n") + (metric ? "METRIC," : "INCH,") +
                       (format.trailing_kept ? "TZ" : "LZ") + "\nT1C1\nT2C2\nT3C3\n%\nT1\n";
    const auto number = [&] {
        std::string digits = std::to_string(random() % 1000000);
        digits.insert(0, 6 - digits.size(), '0');
        if (format.trailing_kept) {
            digits.erase(0, std::min<std::size_t>(digits.find_first_not_of('0'), 5));
        } else {
            digits.erase(std::max<std::size_t>(digits.find_last_not_of('0') + 1, 1));
        }
        return (random() % 4 == 0 ? "-" : "") + digits;
    };
    for (int i = 0; i < 60; ++i) {
        switch (random() % 9) {
            case 0:
                text += "T" + std::to_string(1 + random() % 3) + "\n";
                break;
            case 1:
                text += random() % 2 == 0 ? "G91\n" : "G90\n";
                break;
            case 2:
                text += ";remark\n";
                break;
            case 3:
                text += "X" + number() + "\n";
                break;
            case 4:
                text += "Y" + number() + "\n";
                break;
            case 5:
                text += "X" + number() + "Y" + number() + "G85X" + number() + "\n";
                break;
            case 6:
                text += "X" + number() + "\nR3X" + number() + "Y" + number() + "\n";
                break;
            default:
                text += "X" + number() + "Y" + number() + "\n";
                break;
        }
    }
    return text + "T0\nM30\n";
}

TEST(excellon_writer, writes_random_programs_in_random_orders) {
    for (unsigned seed = 1; seed <= 500; ++seed) {
        PlainFormat format;
        const std::string before = random_program(seed, format);
        const nmk_job::MachiningJob job = job_of_text(before);
        const std::string after = written(nmk_job::shuffled(job, seed));
        ASSERT_EQ(PlainExcellon::sorted(PlainExcellon(format).read(after)),
                  PlainExcellon::sorted(PlainExcellon(format).read(before)))
            << "seed " << seed << "\n"
            << before << "\n"
            << after;
    }
}

}  // namespace
}  // namespace nmk_excellon

// excellon_writer: every cut once in the new order, all other text kept.

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

/// The text of the job in the order, or the error after a word that no program begins with.
std::string written(const nmk_job::MachiningJob& job, const nmk_job::JobOrder& order) {
    const auto text = write_excellon(job, order);
    return text ? *text : "error " + text.error().text();
}

nmk_job::MachiningJob job_of_text(const std::string& text) {
    return nmk_job::job_of(read_excellon("plate.drl", text, std::nullopt));
}

std::string written_by_tool(const std::string& text) {
    const nmk_job::MachiningJob job = job_of_text(text);
    return written(job, nmk_job::order_by_tool(job));
}

std::string written_backward(const std::string& text) {
    const nmk_job::MachiningJob job = job_of_text(text);
    return written(job, nmk_job::backward_order(job));
}

TEST(excellon_writer, keeps_the_file_to_the_byte_if_the_order_is_the_same) {
    const std::string text =
        "M48\r\n;plate\r\nMETRIC,TZ\r\nT1C1.0\r\nT2C2.0\r\n%\r\nG90\r\nT01\r\nX1000Y2000\r\n"
        "X3000Y-100\r\nT2\r\nX1Y1G85X2Y1\r\nT0\r\nM30\r\n;LEADER\r\n";
    EXPECT_EQ(written_by_tool(text), text);
}

TEST(excellon_writer, keeps_a_program_without_holes_to_the_byte) {
    const std::string text = "M48\nMETRIC,TZ\nT1C1.0\n%\nT1\nG91\nM30\n";
    EXPECT_EQ(written_by_tool(text), text);
}

TEST(excellon_writer, keeps_a_byte_order_mark_first) {
    const std::string text = "\xef\xbb\xbfM48\nMETRIC,TZ\nT1C1.0\n%\nT1\nX1Y1\nX2Y2\nM30\n";
    EXPECT_EQ(written_by_tool(text), text);
    const std::string bare = "\xef\xbb\xbfT1C1.0\nX1.0Y1.0\nX2.0Y2.0\nM30\n";
    EXPECT_EQ(written_by_tool(bare), bare);
    EXPECT_EQ(written_backward(bare), "\xef\xbb\xbfT1C1.0\nX2.0Y2.0\nX1.0Y1.0\nM30\n");
}

TEST(excellon_writer, reverses_slots_and_writes_modal_coordinates_out) {
    const std::string head = "M48\nMETRIC,TZ\nT1C1.0\nT2C2.0\n%\n";
    EXPECT_EQ(written_backward(head + "T1\nX1000Y2000\nX3000\nT2\nX1Y1G85X2\nM30\n"),
              head + "T2\nX2Y1G85X1Y1\nT1\nX3000Y2000\nX1000Y2000\nM30\n");
}

TEST(excellon_writer, writes_repeats_out_in_the_format_of_the_file) {
    const std::string head = "M48\nINCH,LZ\nT1C1.0\n%\n";
    EXPECT_EQ(written_by_tool(head + "T1\nX01Y0\nR2X005Y-0025\nM30\n"),
              head + "T1\nX01Y0\nX015Y-0025\nX02Y-005\nM30\n");
}

TEST(excellon_writer, writes_increments_as_positions_after_a_g90) {
    const std::string head = "M48\nMETRIC,TZ\nT1C1.0\n%\nG91\n";
    EXPECT_EQ(written_backward(head + "T1\nX1000Y1000\nX500\nM30\n"),
              head + "G90\nT1\nX1500Y1000\nX1000Y1000\nM30\n");
}

TEST(excellon_writer, writes_sums_of_decimal_numbers_with_a_point) {
    const std::string head = "M48\nMETRIC,TZ\nT1C1.0\n%\n";
    EXPECT_EQ(written_by_tool(head + "T1\nX0.1Y0.5\nR2X0.1\nM30\n"),
              head + "T1\nX0.1Y0.5\nX0.2Y0.5\nX0.3Y0.5\nM30\n");
}

TEST(excellon_writer, moves_remarks_with_the_tool_whose_holes_they_precede) {
    const std::string head = "M48\nMETRIC,TZ\nT1C1.0\nT2C2.0\n%\n;head\n";
    EXPECT_EQ(written_backward(
                  head + "T1\n;one\nX1Y1\n;two\nT2\nG05\nX2Y2 ;here\n;one again\nT1\nX3Y3\nM30\n"),
              head + ";two\nT2\nG05\n;here\nX2Y2\n;one again\nT1\n;one\nX3Y3\nX1Y1\nM30\n");
}

TEST(excellon_writer, keeps_a_remark_after_the_last_hole) {
    const std::string head = "M48\nMETRIC,TZ\nT1C1.0\n%\n";
    EXPECT_EQ(written_by_tool(head + "T1 ;first\nX1Y1\nX2Y2;last\n;end\nM30\n"),
              head + "T1\n;first\n;last\nX1Y1\nX2Y2\n;end\nM30\n");
}

TEST(excellon_writer, writes_decimal_points_if_the_kept_zeros_would_no_longer_show) {
    const std::string head = "M48\nMETRIC\nT1C1.0\n%\n";
    EXPECT_EQ(written_by_tool(head + "T1\nX1Y1\nG91\nX001Y02\nM30\n"),
              head + "G90\nT1\nX100.0Y100.0\nX101.0Y120.0\nM30\n");
}

TEST(excellon_writer, keeps_a_tool_table_outside_a_header) {
    const std::string text = "METRIC,TZ\nT1C1.0\nT2C2.0\nT3C3.0\n%\nT1\nX1Y1\nT2\nX2Y2\nM30\n";
    EXPECT_EQ(written_backward(text),
              "METRIC,TZ\nT1C1.0\nT2C2.0\nT3C3.0\n%\nT2\nX2Y2\nT1\nX1Y1\nM30\n");
}

TEST(excellon_writer, moves_a_second_header_before_the_first_tool) {
    const std::string text = "M48\nMETRIC,TZ\nT1C1.0\n%\nT1\nX1Y1\nM48\nT2C2.0\n%\nT2\nX2Y2\nM30\n";
    EXPECT_EQ(written_backward(text),
              "M48\nMETRIC,TZ\nT1C1.0\n%\nM48\nT2C2.0\n%\nT2\nX2Y2\nT1\nX1Y1\nM30\n");
}

TEST(excellon_writer, selects_a_tool_again_when_the_order_returns_to_it) {
    const std::string head = "M48\nMETRIC,TZ\nT1C1.0\nT2C2.0\n%\n";
    const nmk_job::MachiningJob job =
        job_of_text(head + ";one\nT1\n;first\nX1Y1\nX2Y2\nT2\nX3Y3\nM30\n");
    EXPECT_EQ(written(job, {{0, false}, {2, false}, {1, false}}),
              head + ";one\nT1\n;first\nX1Y1\nT2\nX3Y3\nT1\nX2Y2\nM30\n");
}

struct BadOrder {
    const char* name;
    nmk_job::JobOrder order;
    const char* error;
};

std::ostream& operator<<(std::ostream& out, const BadOrder& bad) { return out << bad.name; }

class excellon_writer_order : public testing::TestWithParam<BadOrder> {};

TEST_P(excellon_writer_order, is_refused_when_it_is_not_complete) {
    const nmk_job::MachiningJob job =
        job_of_text("M48\nMETRIC,TZ\nT1C1.0\nT2C1.0\n%\nT1\nX1Y1\nX2Y2\nT2\nX3Y3\nM30\n");
    EXPECT_EQ(written(job, GetParam().order), std::string("error plate.drl: ") + GetParam().error);
}

INSTANTIATE_TEST_SUITE_P(orders, excellon_writer_order,
                         testing::Values(BadOrder{"an_item_is_missing",
                                                  {{2, false}, {1, false}},
                                                  "the order leaves out 1 of 3 items"},
                                         BadOrder{"an_item_is_in_it_twice",
                                                  {{0, false}, {1, false}, {0, false}},
                                                  "the order has item 0 twice"},
                                         BadOrder{"an_item_does_not_exist",
                                                  {{0, false}, {1, false}, {3, false}},
                                                  "the order has item 3; the file has 3 items"},
                                         BadOrder{"a_hole_is_reversed",
                                                  {{0, true}, {1, false}, {2, false}},
                                                  "the order reverses item 0, which is a hole"}),
                         nmk_job::CaseName());

TEST(excellon_writer, refuses_items_that_are_not_those_of_the_program) {
    nmk_job::MachiningJob job =
        job_of_text("M48\nMETRIC,TZ\nT1C1.0\nT2C1.0\n%\nT1\nX1Y1\nT2\nX3Y3\nM30\n");
    const nmk_job::JobOrder order = nmk_job::order_of_file(job);
    nmk_job::MachiningJob moved = job;
    moved.items[0].start.x += 1.0;
    EXPECT_EQ(written(moved, order),
              "error plate.drl: the holes cannot be written in another order");
    nmk_job::MachiningJob slot = job_of_text("M48\nMETRIC,TZ\nT1C1.0\n%\nT1\nX1Y1G85X2Y1\nM30\n");
    slot.items[0].start.x += 1.0;
    EXPECT_EQ(written(slot, {{0, false}}),
              "error plate.drl: the holes cannot be written in another order");
    job.items.pop_back();
    EXPECT_EQ(written(job, order), "error plate.drl: not a job that was read from a drill file");
    job.source = nullptr;
    EXPECT_EQ(written(job, order), "error plate.drl: not a job that was read from a drill file");
}

/// Expects the lines before the first tool, and those of the tool table, in both texts.
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

TEST_P(written_drill_file, has_every_cut_once_by_a_plain_reading) {
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
    ASSERT_EQ(job.items.size(), plain_before.size());
    for (unsigned seed = 1; seed <= 5; ++seed) {
        const std::string after = written(job, nmk_job::shuffled_order(job, seed));
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

/// A random program with every kind of cut, and its number format.
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
        const std::string after = written(job, nmk_job::shuffled_order(job, seed));
        ASSERT_EQ(PlainExcellon::sorted(PlainExcellon(format).read(after)),
                  PlainExcellon::sorted(PlainExcellon(format).read(before)))
            << "seed " << seed << "\n"
            << before << "\n"
            << after;
    }
}

}  // namespace
}  // namespace nmk_excellon

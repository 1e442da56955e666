// csv_reader, csv_writer: tables of points and lines, good and bad ones, in another order.

#include "formats/csv/csv_reader.h"

#include <gtest/gtest.h>

#include <ostream>
#include <sstream>

#include "app/formats/job/job_fixtures.h"
#include "comma_locale.h"
#include "formats/csv/csv_writer.h"
#include "formats/job_files/read_job.h"
#include "formats/job_files/write_job.h"

namespace nmk_csv {
namespace {

nmk_text::Result<nmk_job::MachiningJob> read(const std::string& text) {
    return read_csv("holes.csv", text, std::nullopt);
}

std::string point_text(const giPoint3& point) {
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << point.x << "," << point.y << "," << point.z;
    return text.str();
}

/// "1,2,0 3,4,0>5,6,0": the items in millimetres.
std::string items_of(const nmk_job::MachiningJob& job) {
    std::string text;
    for (const nmk_job::JobItem& item : job.items) {
        text += (text.empty() ? "" : " ") + point_text(item.start);
        text += item.end ? ">" + point_text(*item.end) : "";
    }
    return text;
}

struct TableCase {
    const char* name;
    const char* text;
    const char* items;
};

std::ostream& operator<<(std::ostream& out, const TableCase& table) { return out << table.name; }

class csv_table : public testing::TestWithParam<TableCase> {};

TEST_P(csv_table, is_read_as_its_items) {
    EXPECT_EQ(items_of(nmk_job::job_of(read(GetParam().text))), GetParam().items);
}

INSTANTIATE_TEST_SUITE_P(
    tables, csv_table,
    testing::Values(TableCase{"points", "1,2\n3.5,-4\n", "1,2,0 3.5,-4,0"},
                    TableCase{"a_header", "x,y\n1,2\n", "1,2,0"},
                    TableCase{"points_in_space", "1,2,3\n4,5,6\n", "1,2,3 4,5,6"},
                    TableCase{"lines", "1,2,3,4,5,6\n", "1,2,3>4,5,6"},
                    TableCase{"a_point_among_lines", "1,2,3,4,5,6\n7,8,9,,,\n",
                              "1,2,3>4,5,6 7,8,9"},
                    TableCase{"semicolons", "1;2\n", "1,2,0"}, TableCase{"tabs", "1\t2\n", "1,2,0"},
                    TableCase{"blanks_around_cells", " 1 ,  2 \n", "1,2,0"},
                    TableCase{"quotation_marks", "\"x\",\"y\"\n\"1\",\"2\"\n", "1,2,0"},
                    TableCase{"carriage_returns", "x,y\r\n1,2\r\n", "1,2,0"},
                    TableCase{"a_byte_order_mark",
                              "\xef\xbb\xbf"
                              "1,2\n",
                              "1,2,0"},
                    TableCase{"exponents_and_bare_points", "1e2,.5\n+3,-4.\n", "100,0.5,0 3,-4,0"},
                    TableCase{"empty_rows_and_remarks", "\n# x\n1,2\n\n3,4\n", "1,2,0 3,4,0"},
                    TableCase{"no_last_line_end", "1,2", "1,2,0"},
                    TableCase{"points_with_tools", "x,y,tool\n1,2,T1\n3,4,T2\n", "1,2,0 3,4,0"},
                    TableCase{"lines_with_tools_and_diameters",
                              "x,y,z,x2,y2,z2,Tool,Diameter\n1,2,3,4,5,6,T1,0.8\n7,8,9,,,,T1,0.8\n",
                              "1,2,3>4,5,6 7,8,9"},
                    TableCase{"only_a_header", "x,y\n", ""}, TableCase{"nothing", "", ""}),
    nmk_job::CaseName());

struct RefusedTable {
    const char* name;
    const char* text;
    const char* error;
};

std::ostream& operator<<(std::ostream& out, const RefusedTable& table) { return out << table.name; }

class csv_refusal : public testing::TestWithParam<RefusedTable> {};

TEST_P(csv_refusal, names_the_line_and_the_reason) {
    EXPECT_EQ(nmk_job::error_of(read(GetParam().text)),
              std::string("holes.csv:") + GetParam().error);
}

INSTANTIATE_TEST_SUITE_P(
    tables, csv_refusal,
    testing::Values(
        RefusedTable{"ragged_rows", "1,2\n3,4\n1,2,3\n",
                     "3: 3 columns; expected 2 as in the rows above"},
        RefusedTable{"another_separator_in_a_later_row", "x,y\n1;2\n",
                     "2: 1 column; expected 2 as in the rows above"},
        RefusedTable{"a_row_under_a_wider_header", "x,y,z\n1,2\n",
                     "2: 2 columns; expected 3 as in the rows above"},
        RefusedTable{"another_diameter_of_a_tool", "x,y,tool,diameter\n1,2,T1,0.8\n1,2,T1,0.9\n",
                     "3: another diameter of the tool \"T1\"; expected that of the rows above"},
        RefusedTable{"a_row_without_its_tool", "x,y,tool\n1,2,\n",
                     "2: the tool is empty; expected the name of a tool"},
        RefusedTable{"a_negative_diameter", "x,y,tool,diameter\n1,2,T1,-1\n",
                     "2: the diameter is negative; expected a number from 0 up"},
        RefusedTable{"tools_without_coordinates", "x,tool\n1,T1\n",
                     "1: 2 columns; expected x,y or x,y,z or x,y,z,x2,y2,z2"},
        RefusedTable{"one_column", "1\n", "1: 1 column; expected x,y or x,y,z or x,y,z,x2,y2,z2"},
        RefusedTable{"four_columns", "1,2,3,4\n",
                     "1: 4 columns; expected x,y or x,y,z or x,y,z,x2,y2,z2"},
        RefusedTable{
            "columns_past_the_largest_table_are_counted",
            ",,,,,,,,,,,,,,,,,,,,,,,,,,,,,,,,,,,,,,,,,,,,,,,,,,,,,,,,,,,,,,,,,,,,,,,,,,,,,,",
            "1: 79 columns; expected x,y or x,y,z or x,y,z,x2,y2,z2"},
        RefusedTable{"a_second_header", "x,y\nx,y\n",
                     "2: cannot read \"x\" in column 1; expected a number from -1e9 to 1e9 with a "
                     "decimal point"},
        RefusedTable{"an_empty_cell", "1,\n",
                     "1: cannot read \"\" in column 2; expected a number from -1e9 to 1e9 with a "
                     "decimal point"},
        RefusedTable{
            "not_a_number", "nan,1\n",
            "1: cannot read \"nan\" in column 1; expected a number from -1e9 to 1e9 with a "
            "decimal point"},
        RefusedTable{
            "a_row_of_nan_is_not_a_header", "nan,nan\n",
            "1: cannot read \"nan\" in column 1; expected a number from -1e9 to 1e9 with a "
            "decimal point"},
        RefusedTable{
            "infinity", "1,-inf\n",
            "1: cannot read \"-inf\" in column 2; expected a number from -1e9 to 1e9 with a "
            "decimal point"},
        RefusedTable{
            "out_of_the_range_of_a_double", "1e999,1e999\n",
            "1: cannot read \"1e999\" in column 1; expected a number from -1e9 to 1e9 with "
            "a decimal point"},
        RefusedTable{
            "out_of_the_range_of_a_coordinate", "1,2\n1,2e9\n",
            "2: cannot read \"2e9\" in column 2; expected a number from -1e9 to 1e9 with a "
            "decimal point"},
        RefusedTable{
            "a_decimal_comma", "1;2,5\n",
            "1: cannot read \"2,5\" in column 2; expected a number from -1e9 to 1e9 with a "
            "decimal point"},
        RefusedTable{
            "hexadecimal", "0x10,1\n",
            "1: cannot read \"0x10\" in column 1; expected a number from -1e9 to 1e9 with a "
            "decimal point"},
        RefusedTable{"half_an_end", "1,2,3,4,,\n",
                     "1: cannot read \"\" in column 5; expected a number from -1e9 to 1e9 with a "
                     "decimal point"}),
    nmk_job::CaseName());

TEST(csv_reader, scales_inches) {
    const nmk_job::MachiningJob job =
        nmk_job::job_of(read_csv("holes.csv", "1,2\n", nmk_job::JobUnits::inches));
    EXPECT_EQ(items_of(job), "25.4,50.8,0");
}

TEST(csv_reader, reads_every_prefix_of_a_good_file_within_its_bounds) {
    for (const char* name : {"points.csv", "lines.csv", "semicolons.csv", "tabs.csv"}) {
        nmk_job::read_every_prefix(
            nmk_job::bytes_of_file(std::string(NMK_CASES_DIR "/csv/") + name),
            [](std::string text) { return read_csv("a.csv", std::move(text), std::nullopt); });
    }
}

void expect_numbers_with_points() {
    const nmk_job::MachiningJob job = nmk_job::job_of(read("1234.5,2.25\n"));
    ASSERT_EQ(job.items.size(), 1U);
    EXPECT_EQ(job.items[0].start.x, 1234.5);
    EXPECT_EQ(job.items[0].start.y, 2.25);
    const auto json = nmk_job_files::job_text(job, nmk_job::order_of_file(job), "a.json");
    EXPECT_NE(json->find("[1234.5, 2.25, 0]"), std::string::npos);
}

TEST(csv_reader, reads_decimal_points_in_a_locale_of_decimal_commas) {
    const CommaLocale commas;
    ASSERT_TRUE(commas.holds_for_the_c_library());
    expect_numbers_with_points();
}

std::string written(const nmk_job::MachiningJob& job) {
    return write_csv(job, nmk_job::order_of_file(job));
}

TEST(csv_writer, keeps_the_digits_of_the_table) {
    const std::string text = "x;y\r\n1.50;2e1\r\n3;4.0\r\n";
    EXPECT_EQ(written(nmk_job::job_of(read(text))), text);
}

TEST(csv_writer, reverses_lines_and_leaves_points_among_them) {
    const nmk_job::MachiningJob job =
        nmk_job::job_of(read("x,y,z,x2,y2,z2\n1,2,3,4,5,6\n7,8,9,,,\n"));
    const nmk_job::JobOrder order = {{1, false}, {0, true}};
    EXPECT_EQ(write_csv(job, order), "x,y,z,x2,y2,z2\n7,8,9,,,\n4,5,6,1,2,3\n");
}

TEST(csv_writer, writes_no_character_that_could_be_read_as_a_separator) {
    const nmk_job::MachiningJob job = nmk_job::job_of(read("1,24,5,6,5,62\t\n"));
    const nmk_job::JobOrder order = {{0, true}};
    EXPECT_EQ(write_csv(job, order), "6,5,62,1,24,5\n");
}

TEST(csv_writer, writes_inches_as_the_table_has_them) {
    const nmk_job::MachiningJob job =
        nmk_job::job_of(read_csv("holes.csv", "0.1,0.3\n", nmk_job::JobUnits::inches));
    EXPECT_EQ(written(job), "0.1,0.3\n");
}

TEST(csv_writer, writes_a_drill_file_as_a_table_with_the_same_cuts) {
    const std::string path = NMK_SOURCE_DIR "/samples/cover_plate.drl";
    const nmk_job::MachiningJob job =
        nmk_job::job_of(nmk_job_files::read_job_file(path, std::nullopt));
    const nmk_job::JobOrder order = nmk_job::shuffled_order(job, 7);
    const auto text = nmk_job_files::job_text(job, order, "plate.csv");
    const nmk_job::MachiningJob table = nmk_job::job_of(read(*text));
    ASSERT_EQ(table.items.size(), job.items.size());
    for (std::size_t i = 0; i < order.size(); ++i) {
        const nmk_job::JobItem& item = job.items[order[i].item];
        const nmk_job::JobItem& same = table.items[i];
        EXPECT_EQ(same.start, nmk_job::entry_of(item, order[i].reversed));
        EXPECT_EQ(same.end.value_or(same.start), nmk_job::exit_of(item, order[i].reversed));
    }
}

TEST(csv_reader, tools_are_in_the_order_of_their_first_rows_with_their_diameters) {
    const auto job =
        nmk_job::job_of(read_csv("t.csv", "x,y,tool,diameter\n1,2,B,0.028\n3,4,A,\n5,6,B,0.028\n",
                                 nmk_job::JobUnits::inches));
    ASSERT_EQ(job.tools.size(), 2U);
    EXPECT_EQ(job.tools[0].name, "B");
    EXPECT_EQ(job.tools[0].diameter, 0.7112);
    EXPECT_EQ(job.tools[1].diameter, std::nullopt);
    EXPECT_EQ(job.items[2].tool, 0U);
    EXPECT_EQ(job.items[1].start.x, 76.2);
}

TEST(csv_writer, a_reversed_line_keeps_its_tool) {
    const auto job =
        nmk_job::job_of(read("x,y,z,x2,y2,z2,tool,diameter\n1,2,3,4,5,6,T1,0.8\n7,8,9,,,,T2,\n"));
    EXPECT_EQ(write_csv(job, nmk_job::JobOrder{{1, false}, {0, true}}),
              "x,y,z,x2,y2,z2,tool,diameter\n7,8,9,,,,T2,\n4,5,6,1,2,3,T1,0.8\n");
}

}  // namespace
}  // namespace nmk_csv

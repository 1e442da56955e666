// nmk curve on files: info, compare, closest and split, and what is written.

#include <ngk/ngkPolyline.h>
#include <nmktoolbox/curves/nmkNgkWriteUtils.h>

#include <cmath>
#include <numbers>
#include <ostream>
#include <sstream>

#include "app/commands/curve/curve_runner.h"
#include "app/shell/standard_input.h"
#include "scratch_directory.h"

namespace nmk_curve {
namespace {

using nmk_shell::Printed;
using nmk_shell::text_of;

class curve_files : public testing::Test {
  protected:
    std::string path(const std::string& name) const { return scratch.path() + "/" + name; }
    std::string file(const std::string& name, const std::string& text) const {
        return scratch.file(name, text);
    }

    /// The name of a table with the points of a shape.
    std::string table_of(const std::string& name, std::vector<std::string> words) const {
        words.insert(words.end(), {"-o", path(name), "--quiet"});
        const Printed printed = curve(words);
        EXPECT_EQ(printed.code, 0) << printed.err;
        EXPECT_EQ(printed.out, "");
        return path(name);
    }

    ScratchDirectory scratch;
};

TEST_F(curve_files, info_lists_the_curves_of_a_drawing) {
    const Printed printed = curve({"info", bracket});
    EXPECT_EQ(printed.code, 0) << printed.err;
    EXPECT_TRUE(printed.out.starts_with(bracket + ": 9 curves\n\n")) << printed.out;
    EXPECT_NE(printed.out.find("8  SPLINE in line 146"), std::string::npos) << printed.out;
    EXPECT_TRUE(printed.out.ends_with("Left out: 1 TEXT.\n")) << printed.out;
}

TEST_F(curve_files, info_prints_ends_below_each_curve_where_a_line_has_no_room_for_them) {
    const std::string text = curve({"info", bracket}).out;
    EXPECT_NE(text.find("\n    from 12 0 0 to 12 0 0\n"), std::string::npos) << text;
    EXPECT_EQ(text.find("start"), std::string::npos);
    const std::string pieces = curve({"split", bracket, "--curve", "1"}).out;
    EXPECT_EQ(pieces.find("from"), std::string::npos) << pieces;
    EXPECT_NE(pieces.find("closed"), std::string::npos) << pieces;
    EXPECT_NE(pieces.find("start"), std::string::npos) << pieces;
}

TEST_F(curve_files, every_text_fits_a_terminal) {
    std::string drawing = "0\nSECTION\n2\nENTITIES\n";
    for (const char* const far : {"-123456789.123456", "987654321.654321"}) {
        drawing += std::string("0\nLINE\n10\n") + far + "\n20\n-0.123456\n30\n" + far +
                   "\n11\n1.234567\n21\n" + far + "\n31\n" + far + "\n";
    }
    const std::string lines = file("far.dxf", drawing + "0\nENDSEC\n0\nEOF\n");
    const std::vector<std::vector<std::string>> commands = {
        {"info", bracket},
        {"info", lines},
        {"info", lines, "--curve", "1"},
        {"split", bracket, "--curve", "1"},
        {"compare", lines, lines, "--curve", "2"},
        {"compare", lines, bracket, "--curve", "2"},
        {"closest", lines, "-123456789.123456,1,2", "--curve", "2"}};
    for (const std::vector<std::string>& command : commands) {
        std::istringstream text(curve(command).out);
        std::string line;
        std::getline(text, line);  // has the name of the file
        while (std::getline(text, line)) EXPECT_LE(line.size(), 80U) << line;
    }
}

TEST_F(curve_files, info_prints_one_curve_of_a_drawing) {
    const nlohmann::json facts = facts_of({"info", bracket, "--curve", "6"});
    EXPECT_EQ(facts["kind"], "circle");
    EXPECT_EQ(facts["radius"], 7.0);
    EXPECT_EQ(facts["centre"], nlohmann::json({100.0, 20.0, 0.0}));
    EXPECT_EQ(facts["origin"], "CIRCLE in line 126");
}

TEST_F(curve_files, info_reads_a_table_as_a_polyline) {
    const nlohmann::json facts = facts_of({"info", file("a.csv", "x,y\n0,0\n3,0\n3,4\n")});
    EXPECT_EQ(facts["kind"], "polyline");
    EXPECT_EQ(facts["length"], 7.0);
    EXPECT_EQ(facts["segments"], 2);
}

TEST_F(curve_files, info_multiplies_by_the_unit_that_is_given) {
    const std::string name = file("a.csv", "1,2,3\n2,2,3\n");
    EXPECT_EQ(facts_of({"info", name, "--units", "inch"})["start"],
              nlohmann::json({25.4, 50.8, 76.19999999999999}));
}

TEST_F(curve_files, coordinates_in_inches_are_rounded_once) {
    const std::string name = file("a.csv", "1.9,0.44,8.3\n2,2,3\n");
    EXPECT_EQ(facts_of({"info", name, "--units", "inch"})["start"],
              nlohmann::json({48.26, 11.176, 210.82}));
}

TEST_F(curve_files, info_reads_standard_input) {
    const ::StandardInput input("0,0\n3,4\n");
    const Printed printed = curve({"info", "-"});
    EXPECT_EQ(printed.code, 0) << printed.err;
    EXPECT_TRUE(printed.out.starts_with("standard input: 1 curve\n")) << printed.out;
}

TEST_F(curve_files, info_says_that_the_unit_is_not_stated) {
    const std::string name =
        file("a.dxf", "0\nSECTION\n2\nENTITIES\n0\nCIRCLE\n10\n0\n20\n0\n40\n1\n0\nENDSEC\n0\nEOF");
    const char* const note = "does not state its unit";
    EXPECT_NE(curve({"info", name}).out.find(note), std::string::npos);
    EXPECT_EQ(curve({"info", name, "--units", "mm"}).out.find(note), std::string::npos);
}

TEST_F(curve_files, the_samples_of_a_table_are_its_points_again) {
    const std::string name = table_of("a.csv", {"arc", "0,0", "0.1,0.3", "1,0", "--points", "7"});
    const std::string again = curve({"info", name, "--csv"}).out;
    EXPECT_EQ(again, text_of(name));
    EXPECT_EQ(std::count(again.begin(), again.end(), '\n'), 8);
}

TEST_F(curve_files, samples_are_equally_far_along_the_curve) {
    const nlohmann::json report =
        json_of({"circle", "0,0", "--radius", "1", "--points", "5", "--tolerance", "1e-6"});
    const nlohmann::json& points = report["points"];
    ASSERT_EQ(points.size(), 5U);
    for (std::size_t i = 0; i < points.size(); ++i) {
        const double angle = static_cast<double>(i) * std::numbers::pi / 2;
        EXPECT_NEAR(points[i][0], std::cos(angle), 1e-5) << i;
        EXPECT_NEAR(points[i][1], std::sin(angle), 1e-5) << i;
    }
}

TEST_F(curve_files, an_output_has_the_same_json_as_is_printed) {
    const Printed printed = curve({"line", "0,0", "3,4", "--json"});
    table_of("a.json", {"line", "0,0", "3,4"});
    EXPECT_EQ(text_of(path("a.json")), printed.out);
}

TEST_F(curve_files, an_archive_keeps_a_curve_to_the_last_bit) {
    const std::vector<std::vector<std::string>> shapes = {
        {"arc", "0,0", "0.1,0.3", "1,0"},
        {"circle", "1,2,3", "--radius", "0.7", "--normal", "1,2,3"},
        {"line", "0.1,0.2,0.3", "1,1,1"},
        {"half-line", "1,2", "--direction", "3,1"},
        {"infinite-line", "1,2", "--direction", "3,1"},
        {"point", "1,2,3"},
        {"polyline", "0,0", "1,0", "1,0.1"},
        {"rectangle", "0,0", "--size", "3,2"},
        {"filleted-rectangle", "0,0", "--size", "6,4", "--radius", "1"},
        {"bezier", "0,0", "1,2", "2,0", "3,3"}};
    for (const std::vector<std::string>& shape : shapes) {
        const std::string name = table_of("a.ngk", shape);
        nlohmann::json made = facts_of(shape);
        EXPECT_EQ(facts_of({"info", name}), made) << shape[0];
    }
}

TEST_F(curve_files, an_archive_keeps_the_spline_of_a_drawing) {
    const std::string name = table_of("a.ngk", {"info", bracket, "--curve", "8"});
    nlohmann::json spline = facts_of({"info", bracket, "--curve", "8"});
    spline["origin"] = nullptr;
    EXPECT_EQ(facts_of({"info", name}), spline);
    EXPECT_EQ(curve({"compare", name, bracket, "--curve", "8"}).code, 0);
}

TEST_F(curve_files, an_archive_is_read_from_standard_input) {
    const ::StandardInput input(text_of(table_of("a.ngk", {"line", "0,0", "3,4"})));
    EXPECT_EQ(facts_of({"info", "-"})["length"], 5.0);
}

TEST_F(curve_files, every_prefix_of_an_archive_is_refused) {
    const std::string bytes = text_of(table_of("a.ngk", {"arc", "0,0", "1,1", "2,0"}));
    ASSERT_GT(bytes.size(), 100U);
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        const Printed printed = curve({"info", file("cut.ngk", bytes.substr(0, size))});
        EXPECT_EQ(printed.code, 2) << size << printed.out;
        EXPECT_EQ(std::count(printed.err.begin(), printed.err.end(), '\n'), 1) << size;
    }
}

TEST_F(curve_files, compare_finds_a_curve_the_same_as_itself) {
    const Printed printed = curve({"compare", bracket, bracket, "--curve", "8"});
    EXPECT_EQ(printed.code, 0) << printed.err;
    EXPECT_TRUE(printed.out.starts_with("The same within 0.001 mm.\n")) << printed.out;
    EXPECT_EQ(json_of({"compare", bracket, bracket, "--curve", "8"})["same"], true);
}

TEST_F(curve_files, compare_reports_starts_that_differ) {
    const std::string a = file("a.csv", "0,0\n5,0\n9,3\n");
    const std::string b = file("b.csv", "0,0.5\n5,0\n9,3\n");
    const nlohmann::json report = json_of({"compare", a, b}, 1);
    EXPECT_EQ(report["same"], false);
    EXPECT_EQ(report["difference"], "start");
    EXPECT_EQ(report["distance"], 0.5);
    EXPECT_EQ(report["allowed"], 0.001);
    EXPECT_TRUE(curve({"compare", a, b}).out.starts_with("Different: the starts are 0.5 mm apart"));
}

TEST_F(curve_files, compare_reports_ends_that_differ) {
    const std::string a = file("a.csv", "0,0\n5,0\n9,3\n");
    const std::string b = file("b.csv", "0,0\n5,0\n9,3.25\n");
    const nlohmann::json report = json_of({"compare", a, b}, 1);
    EXPECT_EQ(report["difference"], "end");
    EXPECT_EQ(report["at_length"], 10.0);
    EXPECT_EQ(report["distance"], 0.25);
}

TEST_F(curve_files, compare_reports_the_first_place_at_which_the_courses_part) {
    const std::string a = file("a.csv", "0,0\n50,0\n100,0\n");
    const std::string b = file("b.csv", "0,0\n50,0\n60,5\n70,0\n100,0\n");
    const nlohmann::json report = json_of({"compare", a, b, "--tolerance", "0.01"}, 1);
    EXPECT_EQ(report["difference"], "course");
    // Equal parts of the length: the longer curve is 2.36 mm ahead at its end, by a part of it.
    EXPECT_GT(report["distance"], 0.03);
    EXPECT_LT(report["distance"], 0.04);
    EXPECT_LT(report["at_length"], 2.0);
    EXPECT_NE(curve({"compare", a, b}).out.find("Samples are up to"), std::string::npos);
}

TEST_F(curve_files, compare_finds_a_curve_and_its_reverse_different) {
    const std::string a = file("a.csv", "0,0\n5,0\n9,3\n");
    const std::string b = file("b.csv", "9,3\n5,0\n0,0\n");
    EXPECT_EQ(curve({"compare", a, b}).code, 1);
}

TEST_F(curve_files, compare_takes_a_tolerance) {
    const std::string a = file("a.csv", "0,0\n5,0\n9,3\n");
    const std::string b = file("b.csv", "0,0.5\n5,0\n9,3\n");
    EXPECT_EQ(curve({"compare", a, b, "--tolerance", "0.5"}).code, 0);
    EXPECT_EQ(curve({"compare", a, b, "--tolerance", "0.49"}).code, 1);
}

TEST_F(curve_files, closest_finds_the_nearest_point_of_all) {
    const std::string name = file("a.csv", "0,0\n10,0\n10,10\n0,10\n");
    const nlohmann::json report = json_of({"closest", name, "7,4"});
    EXPECT_EQ(report["point"], nlohmann::json({10.0, 4.0, 0.0}));
    EXPECT_EQ(report["distance"], 3.0);
    EXPECT_EQ(report["segment"], 1);
    EXPECT_EQ(report["value"], 0.4);
    EXPECT_EQ(curve({"closest", name, "7,4"}).out,
              "Point           10 4 0\nDistance, mm    3\nParameter       0.4 of segment 1\n");
}

TEST_F(curve_files, split_takes_a_composite_apart) {
    const nlohmann::json report = json_of({"split", bracket, "--curve", "1"});
    ASSERT_EQ(report["curves"].size(), 8U);
    EXPECT_EQ(report["curves"][0]["kind"], "line");
    EXPECT_EQ(report["curves"][1]["kind"], "arc");
}

TEST_F(curve_files, split_leaves_a_polyline_whole) {
    const std::string name = file("a.csv", "0,0\n1,0\n1,1\n");
    EXPECT_EQ(json_of({"split", name})["curves"].size(), 1U);
}

TEST_F(curve_files, split_cuts_a_polyline_into_pieces_that_share_their_ends) {
    const std::string name = file("a.csv", "0,0\n1,0\n2,0\n3,0\n4,0\n5,0\n");
    const nlohmann::json report = json_of({"split", name, "--piece", "3"});
    ASSERT_EQ(report["curves"].size(), 3U);
    EXPECT_EQ(report["curves"][0]["end"], report["curves"][1]["start"]);
    EXPECT_EQ(report["curves"][2]["segments"], 1);
    EXPECT_EQ(json_of({"split", name, "--piece", "2000000000"})["curves"].size(), 1U);
}

TEST_F(curve_files, split_refuses_more_pieces_than_memory_should_hold) {
    std::string table;
    for (int i = 0; i <= 250001; ++i) table += std::to_string(i) + ",0\n";
    const std::string name = file("a.csv", table);
    nmk_shell::expect_refused(curve({"split", name, "--piece", "2"}),
                              "makes 250001 pieces; expected at most 250000");
    EXPECT_EQ(curve({"split", name, "--piece", "3", "--quiet"}).code, 0);
}

TEST_F(curve_files, a_curve_without_points_is_listed_and_drawn) {
    nmkNgkWriteUtils::write_single_curve(path("a.ngk").c_str(), ngkCurvePtr3(new ngkPolyline3()));
    EXPECT_EQ(facts_of({"info", path("a.ngk")})["segments"], 0);
    EXPECT_EQ(curve({"info", path("a.ngk"), "--svg", path("a.svg")}).code, 0);
    EXPECT_EQ(text_of(path("a.svg")).find("nan"), std::string::npos);
    nmk_shell::expect_refused(curve({"closest", path("a.ngk"), "0,0"}), "has no nearest point");
    nmk_shell::expect_refused(curve({"info", path("a.ngk"), "--csv"}), "no points to list");
}

struct FileCase {
    const char* name;
    std::vector<std::string> words;  // DIR is the scratch directory
    const char* message;
};

std::ostream& operator<<(std::ostream& out, const FileCase& each) { return out << each.name; }

class curve_file_refused : public testing::TestWithParam<FileCase> {
  protected:
    ScratchDirectory scratch;
};

TEST_P(curve_file_refused, prints_one_line_and_exits_with_2) {
    const std::string drawing = text_of(bracket);
    scratch.file("half.dxf", drawing.substr(0, drawing.size() / 2));
    scratch.file("none.dxf", "0\nSECTION\n2\nENTITIES\n0\nENDSEC\n0\nEOF\n");
    scratch.file("one.csv", "1,2\n");
    scratch.file("two.csv", "1,2\n3,4\n");
    scratch.file("lines.csv", "1,2,3,4,5,6\n");
    scratch.file("nan.csv", "1,2\nnan,4\n");
    scratch.file("binary", std::string("a\0b", 3));
    scratch.file("binary.dxf", std::string("Any Program Binary DXF\r\n\x1a\0\0\0SECTION", 34));
    std::vector<std::string> words = GetParam().words;
    for (std::string& word : words) {
        if (word.starts_with("DIR")) word.replace(0, 3, scratch.path());
    }
    nmk_shell::expect_refused(curve(words), GetParam().message);
}

const FileCase refused[] = {
    {"info_without_a_file", {"info"}, "info: expected one file"},
    {"info_of_two_files", {"info", "DIR/two.csv", "DIR/two.csv"}, "info: expected one file"},
    {"compare_of_one_file", {"compare", "DIR/two.csv"}, "compare: expected two files"},
    {"closest_without_a_point", {"closest", "DIR/two.csv"}, "expected a file and a point X,Y,Z"},
    {"closest_to_words", {"closest", "DIR/two.csv", "here"}, "point \"here\": expected X,Y"},
    {"an_empty_name", {"info", ""}, "expected the name of a file"},
    {"a_missing_file", {"info", "DIR/missing.dxf"}, "missing.dxf: "},
    {"a_directory", {"info", "DIR"}, ": "},
    {"half_a_drawing", {"info", "DIR/half.dxf"}, "half.dxf:1"},
    {"a_binary_file", {"info", "DIR/binary"}, "binary:1: a zero byte; expected a text file"},
    {"a_binary_drawing",
     {"info", "DIR/binary.dxf"},
     "binary.dxf: a binary DXF file; expected one in text form"},
    {"a_drawing_without_curves", {"closest", "DIR/none.dxf", "0,0"}, "has no curves"},
    {"a_picture_of_no_curves", {"info", "DIR/none.dxf", "--svg", "DIR/a.svg"}, "has 0 curves"},
    {"one_point", {"info", "DIR/one.csv"}, "one.csv: 1 point; expected at least two"},
    {"a_table_of_lines", {"info", "DIR/lines.csv"}, "a table of lines; expected one of points"},
    {"nan_in_a_table", {"info", "DIR/nan.csv"}, "nan.csv:2: cannot read \"nan\""},
    {"several_curves", {"closest", bracket, "0,0"}, "has 9 curves; expected --curve N"},
    {"several_curves_to_list",
     {"info", bracket, "--csv"},
     "has 9 curves; expected one to write or list"},
    {"a_curve_that_is_not_there",
     {"info", bracket, "--curve", "10"},
     "has 9 curves; there is none with the number 10"},
    {"curve_0", {"info", bracket, "--curve", "0"}, "expected a number from 1 up"},
    {"standard_input_twice", {"compare", "-", "-"}, "standard input can be read only once"},
    {"a_piece_of_1_point", {"split", "DIR/two.csv", "--piece", "1"}, "a whole number from 2 up"},
    {"a_piece_of_an_arc",
     {"split", bracket, "--curve", "3", "--piece", "4"},
     "expected a polyline"},
    {"points_of_compare", {"compare", "a", "b", "--points", "3"}, "--points does not apply"},
    {"an_output_of_split", {"split", "a", "-o", "b.csv"}, "-o does not apply to split"},
    {"the_input_for_an_output",
     {"info", "DIR/two.csv", "-o", "DIR/two.csv"},
     "expected another name for the output"},
};

INSTANTIATE_TEST_SUITE_P(all, curve_file_refused, testing::ValuesIn(refused),
                         [](const auto& each) { return std::string(each.param.name); });

}  // namespace
}  // namespace nmk_curve

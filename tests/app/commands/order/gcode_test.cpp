// `nmk order -o NAME.nc`: its options, where G-code goes, and what is refused.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <ostream>
#include <string>
#include <vector>

#include "app/shell/command_runner.h"
#include "commands/order/gcode_output.h"
#include "scratch_directory.h"

namespace nmk_order {
namespace {

using Words = std::vector<std::string>;

const Words heights = {"--depth", "2", "--retract", "5", "--plunge-feed", "120"};
const char* const three_holes = "x,y\n1,2\n3,2\n3,9\n";
const char* const program_of_three_holes =
    "%\n(h.csv)\nG21 G17 G40 G49 G80 G90 G94\n(tool all)\nT1 M6\nM0\nG0 Z5.\nG0 X0. Y0.\n"
    "G0 X1. Y2.\nG1 Z-2. F120.\nG0 Z5.\nG0 X3. Y2.\nG1 Z-2. F120.\nG0 Z5.\nG0 X3. Y9.\n"
    "G1 Z-2. F120.\nG0 Z5.\n"
    "M30\n%\n";

Words with(Words words, const Words& more) {
    words.insert(words.end(), more.begin(), more.end());
    return words;
}

class order_gcode : public testing::Test {
  protected:
    std::string file(const std::string& name) const { return folder.path() + "/" + name; }
    std::string write(const std::string& name, const std::string& text) const {
        return folder.file(name, text);
    }

    ScratchDirectory folder;
};

TEST_F(order_gcode, is_chosen_by_the_extension_of_the_output) {
    const std::string holes = write("h.csv", three_holes);
    for (const std::string name : {"a.nc", "a.ngc", "a.GCODE"}) {
        const nmk_shell::Printed printed =
            nmk_shell::run(with({"order", holes, "-o", file(name), "--quiet"}, heights));
        EXPECT_EQ(printed.code, 0) << printed.err;
        EXPECT_EQ(nmk_shell::text_of(file(name)), program_of_three_holes) << name;
    }
}

TEST_F(order_gcode, is_chosen_by_the_option_for_standard_output_and_tap) {
    const std::string holes = write("h.csv", three_holes);
    const Words words = with({"order", holes, "--gcode", "--quiet"}, heights);
    const nmk_shell::Printed to_stream = nmk_shell::run(with(words, {"-o", "-"}));
    EXPECT_EQ(to_stream.code, 0) << to_stream.err;
    EXPECT_EQ(to_stream.out, program_of_three_holes);
    EXPECT_EQ(nmk_shell::run(with(words, {"-o", file("a.tap")})).code, 0);
    EXPECT_EQ(nmk_shell::text_of(file("a.tap")), program_of_three_holes);
    const nmk_shell::Printed as_read = nmk_shell::run({"order", holes, "-o", "-", "--quiet"});
    EXPECT_EQ(as_read.out, three_holes);
}

TEST_F(order_gcode, gets_the_extension_nc_in_an_output_folder) {
    std::filesystem::create_directory(file("out"));
    const std::string a = write("a.csv", three_holes);
    const std::string b = write("b", three_holes);
    const nmk_shell::Printed printed = nmk_shell::run(
        with({"order", a, b, "--gcode", "--output-folder", file("out"), "--quiet"}, heights));
    EXPECT_EQ(printed.code, 0) << printed.err;
    EXPECT_NE(nmk_shell::text_of(file("out/a.nc")).find("\n(a.csv)\n"), std::string::npos);
    EXPECT_NE(nmk_shell::text_of(file("out/b.nc")).find("\n(b)\n"), std::string::npos);
    nmk_shell::expect_refused(
        nmk_shell::run(with({"order", a, write("a.txt", three_holes), "--gcode", "--output-folder",
                             file("out"), "--quiet"},
                            heights)),
        "is the name of two outputs");
}

TEST_F(order_gcode, leaves_an_input_with_an_extension_of_gcode_in_its_format) {
    const std::string input = write("a.nc", three_holes);
    EXPECT_EQ(nmk_shell::run({"order", input, "-o", file("b.nc"), "--quiet"}).code, 0);
    EXPECT_EQ(nmk_shell::text_of(file("b.nc")), three_holes);
    EXPECT_EQ(nmk_shell::run({"order", input, "--in-place", "--quiet"}).code, 0);
    EXPECT_EQ(nmk_shell::text_of(input), three_holes);
    EXPECT_EQ(
        nmk_shell::run(with({"order", input, "-o", file("c.nc"), "--gcode", "--quiet"}, heights))
            .code,
        0);
    EXPECT_NE(nmk_shell::text_of(file("c.nc")).find("G1 Z-2. F120.\n"), std::string::npos);
}

TEST_F(order_gcode, has_heights_and_feeds_in_the_unit_of_the_command_line) {
    const std::string holes = write("h.csv", "x,y\n1,2\n");
    const Words inches = {"--depth", "0.1", "--retract", "0.2", "--plunge-feed", "4"};
    EXPECT_EQ(nmk_shell::run(
                  with({"order", holes, "-o", file("a.nc"), "--quiet", "--units", "inch"}, inches))
                  .code,
              0);
    const std::string text = nmk_shell::text_of(file("a.nc"));
    EXPECT_NE(text.find("\nG20 "), text.npos) << text;
    EXPECT_NE(text.find("G0 Z0.2\nG0 X0. Y0.\nG0 X1. Y2.\nG1 Z-0.1 F4.\nG0 Z0.2\n"), text.npos)
        << text;
}

TEST_F(order_gcode, keeps_odd_names_within_comments) {
    const std::string holes = write("odd (1)\nG0 Z-9 ;%.csv",
                                    "x,y,z,x2,y2,z2,tool\n"
                                    "1,2,0,,,,a) G0 Z-9 (b\n");
    EXPECT_EQ(nmk_shell::run(with({"order", holes, "-o", file("a.nc"), "--quiet"}, heights)).code,
              0);
    const std::string text = nmk_shell::text_of(file("a.nc"));
    EXPECT_EQ(text.find("%\n(odd _1__G0 Z-9 __.csv)\nG21"), 0U) << text;
    EXPECT_NE(text.find("\n(tool a_ G0 Z-9 _b)\n"), text.npos) << text;
}

TEST_F(order_gcode, leaves_out_what_keep_outs_block) {
    const std::string holes = write("h.csv", three_holes);
    const Words words = with({"order", holes, "-o", file("a.nc"), "--quiet", "--avoid",
                              write("k.csv", "circle,3,9,1\n")},
                             heights);
    EXPECT_EQ(nmk_shell::run(words).code, 1);
    EXPECT_FALSE(std::filesystem::exists(file("a.nc")));
    EXPECT_EQ(nmk_shell::run(with(words, {"--skip-blocked"})).code, 0);
    const std::string text = nmk_shell::text_of(file("a.nc"));
    EXPECT_NE(text.find("(1 of 3 items left out)"), text.npos) << text;
    EXPECT_EQ(text.find("X3. Y9."), text.npos) << text;
}

TEST_F(order_gcode, carries_the_bends_that_other_outputs_cannot) {
    const std::string holes = write("h.csv", "x,y\n0,0\n10,0\n");
    const Words words = {"order", holes, "--avoid", write("k.csv", "rectangle,4,-1,6,3\n")};
    const std::string note = "1 move around keep-outs cannot be written to this output";
    const auto printed = [&](const Words& more) { return nmk_shell::run(with(words, more)).out; };
    EXPECT_NE(printed({"-o", file("o.csv")}).find(note), std::string::npos);
    EXPECT_EQ(printed({}).find(note), std::string::npos);
    EXPECT_EQ(printed(with({"-o", file("o.nc")}, heights)).find(note), std::string::npos);
    EXPECT_NE(
        nmk_shell::text_of(file("o.nc")).find("G0 X4. Y-1.0011\nG0 X6. Y-1.0011\nG0 X10. Y0.\n"),
        std::string::npos)
        << nmk_shell::text_of(file("o.nc"));
}

struct BadWords {
    const char* name;
    Words words;
    const char* expected;

    friend std::ostream& operator<<(std::ostream& out, const BadWords& bad) {
        return out << bad.name;
    }
};

class order_gcode_error : public testing::TestWithParam<BadWords> {};

TEST_P(order_gcode_error, is_one_line_and_nothing_is_written) {
    const ScratchDirectory folder;
    Words words = {"order", folder.file("h.csv", "x,y,z,x2,y2,z2\n1,2,3,,,\n1,2,0,5,6,0\n")};
    for (const std::string& word : GetParam().words) {
        words.push_back(word.starts_with("o.") ? folder.path() + "/" + word
                        : word == "DIR"        ? folder.path()
                                               : word);
    }
    nmk_shell::expect_refused(nmk_shell::run(words), GetParam().expected);
    const auto files = std::filesystem::directory_iterator(folder.path());
    EXPECT_EQ(std::distance(begin(files), end(files)), 1);
}

INSTANTIATE_TEST_SUITE_P(
    bad_words, order_gcode_error,
    testing::Values(
        BadWords{"no_heights",
                 {"-o", "o.nc"},
                 "G-code needs --depth, --retract and --plunge-feed; missing --depth and --retract "
                 "and --plunge-feed\n"},
        BadWords{"no_plunge_feed",
                 {"-o", "o.nc", "--depth", "1", "--retract", "5"},
                 "missing --plunge-feed\n"},
        BadWords{"no_heights_on_standard_output", {"-o", "-", "--gcode"}, "missing --depth"},
        BadWords{"no_feed_for_slots", with({"-o", "o.nc"}, heights),
                 "h.csv: cannot write G-code: slots need --feed\n"},
        BadWords{
            "retract_at_the_highest_item",
            {"-o", "o.nc", "--depth", "1", "--retract", "3", "--plunge-feed", "9", "--feed", "9"},
            "h.csv: cannot write G-code: the highest item is at z 3 mm; expected a retract "
            "height above it and above 0\n"},
        BadWords{"depth_that_vanishes",
                 {"-o", "o.nc", "--depth", "1e-9", "--retract", "4", "--plunge-feed", "9", "--feed",
                  "9"},
                 "expected a depth of at least 0.001 mm"},
        BadWords{
            "feed_that_vanishes",
            {"-o", "o.nc", "--depth", "1", "--retract", "4", "--plunge-feed", "9", "--feed", "0.1"},
            "expected feeds of at least 1 mm per minute"},
        BadWords{"start_too_far_away",
                 with({"-o", "o.nc", "--feed", "9", "--start", "1e9,0"}, heights),
                 "expected places within 100000 mm of the origin"},
        BadWords{"spindle_at_rest", with({"-o", "o.nc", "--spindle", "0"}, heights),
                 "expected a number from 1 to 1000000"},
        BadWords{"spindle_without_gcode",
                 {"-o", "o.csv", "--spindle", "9000"},
                 "--spindle is for G-code; expected -o with .nc, .ngc or .gcode, or --gcode"},
        BadWords{"gcode_in_place", with({"--gcode", "--in-place"}, heights),
                 "--gcode and --in-place exclude each other; expected --output-folder"},
        BadWords{"gcode_without_an_output", with({"--gcode"}, heights),
                 "--gcode needs -o or --output-folder"},
        BadWords{"gcode_as_a_table", with({"--gcode", "-o", "o.csv"}, heights),
                 "with --gcode expected the extension .nc, .ngc, .gcode or .tap, or -"},
        BadWords{"tap_without_the_option", with({"-o", "o.tap", "--feed", "90"}, heights),
                 "a drill file can only be written from a drill file; expected .nc, .csv or "
                 ".json"}),
    [](const auto& given) { return std::string(given.param.name); });

}  // namespace
}  // namespace nmk_order

// route_command: the output of `nmk route` for a person and for a program.

#include "commands/route/route_command.h"

#include <gtest/gtest.h>
#include <nmkprogressbreak/nmkProgressBreak.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <regex>

#include "app/formats/job/job_fixtures.h"
#include "app/shell/command_runner.h"
#include "app/text/plain_syntax.h"
#include "commands/route/route_options.h"
#include "scratch_directory.h"

namespace nmk_route {
namespace {

const std::string workshop = NMK_SOURCE_DIR "/samples/workshop.map";
const std::string clamps = NMK_SOURCE_DIR "/samples/clamps.csv";
const char* const small_map = "type octile\nheight 3\nwidth 4\nmap\n....\n.@@.\n....\n";
const char* const walled_map = "type octile\nheight 2\nwidth 4\nmap\n.@..\n.@..\n";

class route_command : public testing::Test {
  protected:
    std::string write(const std::string& name, const std::string& text) const {
        return folder.file(name, text);
    }
    std::string file(const std::string& name) const { return folder.path() + "/" + name; }

    ScratchDirectory folder;
};

TEST_F(route_command, prints_the_length_the_nodes_and_how_many_were_expanded) {
    const std::string name = write("s.map", small_map);
    const nmk_shell::Printed printed =
        nmk_shell::run({"route", name, "--start", "0,1", "--goal", "3,1"});
    EXPECT_EQ(printed.code, 0);
    EXPECT_EQ(printed.err, "");
    EXPECT_EQ(printed.out, name +
                               ": 4 x 3 cells, 2 blocked; corners kept clear\n"
                               "\n"
                               "Start           (0, 1)\n"
                               "Goal            (3, 1)\n"
                               "Arrival         (3, 1)\n"
                               "Length          5\n"
                               "Nodes           6\n"
                               "Nodes expanded  9\n"
                               "\n"
                               "Route:\n"
                               "  (0, 1) (0, 2) (1, 2) (2, 2) (3, 2) (3, 1)\n");
}

TEST_F(route_command, the_examples_of_its_help_work) {
    const std::string help =
        std::regex_replace(nmk_shell::run({"help", "route"}).out, std::regex(" \\\\\n +"), " ");
    EXPECT_NE(help.find("nmk route samples/workshop.map --start 3,36 --goal 92,36"),
              std::string::npos);
    EXPECT_NE(help.find("nmk route samples/clamps.csv --start 0,5 --goal 8,8 --goal-kind "
                        "moving-line --gradient 0.5 --forward"),
              std::string::npos);
    EXPECT_EQ(nmk_shell::run(
                  {"route", workshop, "--start", "3,36", "--goal", "92,36", "--svg", file("r.svg")})
                  .code,
              0);
    const nmk_shell::Printed moving =
        nmk_shell::run({"route", clamps, "--start", "0,5", "--goal", "8,8", "--goal-kind",
                        "moving-line", "--gradient", "0.5", "--forward"});
    EXPECT_EQ(moving.code, 0) << moving.err;
    EXPECT_NE(moving.out.find("Goal moved to   (17, 8)"), std::string::npos) << moving.out;
}

TEST_F(route_command, json_and_pictures_are_well_formed_with_any_file_name) {
    for (const std::string name : {"plain.map", "q\"uote\\.map", "tab\t\x01.map", "<a&b>'.map"}) {
        for (const char* const text : {small_map, walled_map}) {
            const nmk_shell::Printed printed = nmk_shell::run(
                {"route", write(name, text), "--start", "0,0", "--goal", "3,1", "--json", "--svg",
                 file("a"), "--html", file("b"), "--csv", file("c")});
            EXPECT_EQ(printed.code, text == walled_map ? 1 : 0) << printed.err;
            EXPECT_TRUE(plain_syntax::Json::is_valid(printed.out)) << printed.out;
            EXPECT_TRUE(plain_syntax::Xml::is_well_formed(nmk_shell::text_of(file("a")))) << name;
            EXPECT_TRUE(plain_syntax::Xml::is_well_formed(nmk_shell::text_of(file("b")))) << name;
        }
    }
}

TEST_F(route_command, the_page_lists_the_figures_without_a_total_row) {
    const std::string name = write("s.map", small_map);
    ASSERT_EQ(
        nmk_shell::run({"route", name, "--start", "0,0", "--goal", "1,0", "--html", file("a.html")})
            .code,
        0);
    const std::string page = nmk_shell::text_of(file("a.html"));
    EXPECT_NE(page.find("<tr><td>Nodes expanded</td><td>"), std::string::npos);
    EXPECT_EQ(page.find("<tfoot>"), std::string::npos);
}

TEST_F(route_command, every_goal_kind_can_be_drawn) {
    for (const std::string kind : {"point", "line", "line-with-gradient", "moving-line"}) {
        std::vector<std::string> words = {"route",  clamps,       "--start",     "0,5",
                                          "--goal", "8,8",        "--goal-kind", kind,
                                          "--svg",  file("r.svg")};
        if (kind.ends_with("gradient") || kind == "moving-line") {
            words.insert(words.end(), {"--gradient", "0.5"});
        }
        EXPECT_EQ(nmk_shell::run(words).code, 0);
        const std::string svg = nmk_shell::text_of(file("r.svg"));
        EXPECT_TRUE(plain_syntax::Xml::is_well_formed(svg));
        EXPECT_EQ(svg.find("nan"), std::string::npos);
        EXPECT_EQ(svg.find("inf"), std::string::npos);
    }
}

TEST_F(route_command, the_table_of_the_route_has_a_row_for_each_node) {
    EXPECT_EQ(nmk_shell::run({"route", write("s.map", small_map), "--start", "0,0", "--goal", "2,0",
                              "--csv", file("r.csv"), "--quiet"})
                  .out,
              "");
    EXPECT_EQ(nmk_shell::text_of(file("r.csv")), "x,y,length\n0,0,0\n1,0,1\n2,0,2\n");
}

TEST_F(route_command, the_numbers_of_the_table_are_read_back_exactly) {
    const std::string name = write("l.csv", "box,0,0,1,1\nsteps,0.1\n0.2,0\n");
    nmk_shell::run({"route", name, "--start", "0,0", "--goal", "0.3,0", "--csv", file("r.csv")});
    const std::string table = nmk_shell::text_of(file("r.csv"));
    const std::size_t length = table.rfind(',') + 1;
    const double diagonal = std::sqrt(0.1 * 0.1 + 0.1 * 0.1);
    EXPECT_NEAR(std::stod(table.substr(length)), 0.1 + 2 * diagonal, 1e-15) << table;
}

TEST_F(route_command, steps_of_a_tenth_arrive_at_a_goal_of_three_tenths) {
    const std::string name = write("l.csv", "box,0,0,1,1\nsteps,0.1\n0.2,0\n");
    const nmk_shell::Printed printed =
        nmk_shell::run({"route", name, "--start", "0,0", "--goal", "0.3,0"});
    EXPECT_EQ(printed.code, 0) << printed.err;
    EXPECT_NE(printed.out.find("(0, 0) (0.1, 0) (0.2, 0.1) (0.3, 0)"), std::string::npos)
        << printed.out;
}

TEST_F(route_command, reports_that_there_is_no_route_and_the_nearest_cell) {
    const std::string name = write("w.map", walled_map);
    const nmk_shell::Printed printed =
        nmk_shell::run({"route", name, "--start", "0,0", "--goal", "3,1", "--quiet", "--svg",
                        file("w.svg"), "--csv", file("w.csv")});
    EXPECT_EQ(printed.code, 1);
    EXPECT_EQ(printed.out, "");
    EXPECT_EQ(printed.err,
              "nmk route: no route from (0, 0) to (3, 1); the nearest of 2 visited cells is "
              "(0, 1), 3 short of the goal\n");
    EXPECT_NE(nmk_shell::text_of(file("w.svg")).find("nearest to the goal"), std::string::npos);
    EXPECT_EQ(nmk_shell::text_of(file("w.csv")), "x,y,length\n");
}

struct StopAtOnce : nmkProgressBreak {
    int jump_to(double) override { return 1; }
};

TEST_F(route_command, a_stop_returns_1_and_writes_nothing) {
    std::string rows;
    for (int i = 0; i < 64; ++i) rows += std::string(62, '.') + "@.\n";
    const std::string name = write("f.map", "type octile\nheight 64\nwidth 64\nmap\n" + rows);
    StopAtOnce stop;
    std::ostringstream out;
    std::ostringstream err;
    const auto options = nmk_shell::read_options(
        declare_route_options,
        {name, "--start", "0,0", "--goal", "63,63", "--json", "--svg", file("f.svg")});
    ASSERT_TRUE(bool(options));
    EXPECT_EQ(run_route(*options, out, err, &stop), 1);
    EXPECT_EQ(out.str(), "");
    EXPECT_EQ(err.str(), "nmk route: stopped after 1024 cells; no route was found\n");
    EXPECT_EQ(folder.file_count(), 1U);
}

TEST_F(route_command, blocked_points_off_the_lattice_are_reported) {
    const std::string name = write("l.csv", "box,0,0,4,4\nsteps,1\n1.5,1\n2,2\n9,9\n");
    const nmk_shell::Printed printed =
        nmk_shell::run({"route", name, "--start", "0,0", "--goal", "4,4"});
    EXPECT_EQ(printed.code, 0);
    EXPECT_NE(printed.out.find("2 of 3 blocked points are outside the box or off the lattice"),
              std::string::npos)
        << printed.out;
}

struct BadUse {
    const char* name;
    std::vector<std::string> words;  // "MAP", "LIST" and "BARE" are replaced by files
    const char* expected;
};

class route_command_error : public testing::TestWithParam<BadUse> {};

TEST_P(route_command_error, is_one_line_and_exit_code_2) {
    const ScratchDirectory folder;
    const std::string map = folder.file("s.map", small_map);
    const std::string list = folder.file("l.csv", "box,0,0,4,4\nsteps,1\n1,1\n");
    const std::string bare = folder.file("b.csv", "1,1\n");
    std::vector<std::string> words = {"route"};
    for (const std::string& word : GetParam().words) {
        words.push_back(word == "MAP" ? map : word == "LIST" ? list : word == "BARE" ? bare : word);
    }
    words.insert(words.end(), {"--svg", folder.path() + "/out.svg"});
    nmk_shell::expect_refused(nmk_shell::run(words), GetParam().expected);
    EXPECT_EQ(folder.file_count(), 3U);
}

INSTANTIATE_TEST_SUITE_P(
    bad_uses, route_command_error,
    testing::Values(
        BadUse{"no_file", {"--start", "0,0", "--goal", "1,0"}, "expected FILE; see nmk help route"},
        BadUse{"two_files", {"MAP", "LIST"}, "expected one FILE; found"},
        BadUse{"no_start", {"MAP", "--goal", "1,0"}, "expected --start X,Y"},
        BadUse{"no_goal", {"MAP", "--start", "1,0"}, "expected --goal X,Y"},
        BadUse{"start_that_is_not_a_number",
               {"MAP", "--start", "nan,0", "--goal", "1,0"},
               "--start \"nan,0\": expected X,Y"},
        BadUse{"start_outside",
               {"MAP", "--start", "4,0", "--goal", "1,0"},
               "the start (4, 0) is outside"},
        BadUse{"start_blocked",
               {"MAP", "--start", "1,1", "--goal", "1,0"},
               "the start (1, 1) is blocked"},
        BadUse{"goal_outside",
               {"MAP", "--start", "0,0", "--goal", "0,3"},
               "the goal (0, 3) is outside"},
        BadUse{"goal_blocked",
               {"MAP", "--start", "0,0", "--goal", "2,1"},
               "the goal (2, 1) is blocked"},
        BadUse{"goal_off_the_lattice",
               {"LIST", "--start", "0,0", "--goal", "0.5,1"},
               "the goal (0.5, 1) is off the lattice; the nearest cell is (0, 1)"},
        BadUse{"gradient_of_zero",
               {"MAP", "--start", "0,0", "--goal", "3,0", "--goal-kind", "moving-line",
                "--gradient", "0"},
               "--gradient \"0\": expected a number above 0"},
        BadUse{"gradient_that_is_not_a_number",
               {"MAP", "--start", "0,0", "--goal", "3,0", "--goal-kind", "moving-line",
                "--gradient", "nan"},
               "--gradient \"nan\": expected a number above 0"},
        BadUse{"gradient_that_is_too_small",
               {"MAP", "--start", "0,0", "--goal", "3,0", "--goal-kind", "moving-line",
                "--gradient", "1e-300"},
               "is too small"},
        BadUse{"gradient_missing",
               {"MAP", "--start", "0,0", "--goal", "3,0", "--goal-kind", "line-with-gradient"},
               "needs a --gradient"},
        BadUse{"gradient_that_does_not_apply",
               {"MAP", "--start", "0,0", "--goal", "3,0", "--gradient", "1"},
               "--gradient does not apply to --goal-kind point"},
        BadUse{"unknown_kind",
               {"MAP", "--goal-kind", "circle"},
               "--goal-kind \"circle\": expected point, line"},
        BadUse{"unknown_corners",
               {"MAP", "--corners", "round"},
               "--corners \"round\": expected cut or clear"},
        BadUse{"steps_of_zero",
               {"LIST", "--start", "0,0", "--goal", "1,0", "--steps", "0,1"},
               "--steps \"0,1\": expected steps of one or two numbers above 0.00001"},
        BadUse{"steps_that_are_not_a_number",
               {"LIST", "--steps", "nan"},
               "--steps \"nan\": expected steps"},
        BadUse{"box_that_ends_before_it_begins",
               {"LIST", "--box", "4,4,0,0"},
               "--box \"4,4,0,0\": the box goes from x 4 to 0"},
        BadUse{"box_of_a_map",
               {"MAP", "--start", "0,0", "--goal", "1,0", "--box", "0,0,1,1"},
               "--box applies to lists of blocked points"},
        BadUse{"no_box",
               {"BARE", "--start", "0,0", "--goal", "1,0"},
               "has no box; expected a row box,X0,Y0,X1,Y1"},
        BadUse{"no_steps",
               {"BARE", "--start", "0,0", "--goal", "1,0", "--box", "0,0,1,1"},
               "has no steps; expected a row steps,SX,SY"},
        BadUse{
            "unknown_option", {"MAP", "--fast"}, "unknown option \"--fast\"; see nmk help route"},
        BadUse{"one_output_twice",
               {"MAP", "--start", "0,0", "--goal", "1,0", "--csv", "x", "--html", "x"},
               "is the name of two outputs"},
        BadUse{"one_output_under_two_names",
               {"MAP", "--start", "0,0", "--goal", "1,0", "--csv", "./x", "--html", "x"},
               "\"x\" is the name of two outputs"},
        BadUse{"output_that_is_read",
               {"LIST", "--start", "0,0", "--goal", "1,0", "--csv", "LIST"},
               "is the input file; expected another name for the output"},
        BadUse{"missing_file",
               {"/nowhere/s.map", "--start", "0,0", "--goal", "1,0"},
               "/nowhere/s.map: cannot be opened"},
        BadUse{"endless_line",
               {"/dev/zero", "--start", "0,0", "--goal", "1,0"},
               "/dev/zero:1: a line longer than 65536 bytes"}),
    nmk_job::CaseName());

TEST_F(route_command, binary_files_are_refused_with_their_line) {
    const std::string name = write("b.map", std::string("type octile\nhei\0ght 3\n", 21));
    nmk_shell::expect_refused(nmk_shell::run({"route", name, "--start", "0,0", "--goal", "1,0"}),
                              name + ":2: a zero byte; expected a text file");
}

TEST_F(route_command, a_file_of_a_gigabyte_is_refused) {
    const std::string name = write("g.map", "type octile\n");
    std::filesystem::resize_file(name, std::uintmax_t{1} << 30U);
    nmk_shell::expect_refused(nmk_shell::run({"route", name, "--start", "0,0", "--goal", "1,0"}),
                              "larger than 256 MiB");
}

TEST_F(route_command, outputs_that_cannot_be_written_leave_no_file) {
    const std::string name = write("s.map", small_map);
    for (const std::string bad : {"/nowhere/out.svg", "/dev/full"}) {
        const nmk_shell::Printed printed =
            nmk_shell::run({"route", name, "--start", "0,0", "--goal", "3,0", "--csv",
                            file("first.csv"), "--html", bad});
        nmk_shell::expect_refused(printed, bad + ": ");
        EXPECT_EQ(folder.file_count(), 1U);
    }
}

}  // namespace
}  // namespace nmk_route

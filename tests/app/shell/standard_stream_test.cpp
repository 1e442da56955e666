// standard_stream: "-" is standard input and standard output in every command.

#include <gtest/gtest.h>

#include "app/formats/job/job_fixtures.h"
#include "app/shell/command_runner.h"
#include "app/shell/standard_input.h"
#include "scratch_directory.h"
#include "shell/standard_output.h"

namespace nmk_shell {
namespace {

const std::string samples = NMK_SOURCE_DIR "/samples/";

Printed run_with_input(const std::string& input, const std::vector<std::string>& words) {
    const StandardInput standard_input(input);
    return run(words);
}

std::string sample(const std::string& name) { return nmk_job::bytes_of_file(samples + name); }

TEST(standard_stream, order_recognises_each_format_and_writes_the_one_that_was_read) {
    const std::string instance =
        "NAME: four\nTYPE: TSP\nDIMENSION: 3\nEDGE_WEIGHT_TYPE: EUC_2D\nNODE_COORD_SECTION\n"
        "1 0 0\n2 9.50 0\n3 1 0\nEOF\n";
    struct Input {
        std::string text, begin;
        bool is_like_file;
    };
    for (const Input& input :
         {Input{sample("cover_plate.drl"), "M48\n", true}, Input{sample("holes.csv"), "", true},
          Input{instance, "NAME: four\n", false}}) {
        const Printed printed =
            run_with_input(input.text, {"order", "-", "--type", "closest", "-o", "-"});
        EXPECT_EQ(printed.code, 0) << printed.err;
        EXPECT_TRUE(printed.out.starts_with(input.begin)) << printed.out;
        EXPECT_TRUE(printed.err.starts_with("standard input: ")) << printed.err;
        EXPECT_NE(printed.err.find("\ntotal "), std::string::npos);
        EXPECT_EQ(printed.out.size(), run_with_input(printed.out, {"order", "-", "--type", "none",
                                                                   "-o", "-", "--quiet"})
                                          .out.size());
    }
}

TEST(standard_stream, order_writes_the_same_bytes_as_into_a_file) {
    const ScratchDirectory folder;
    const std::string file = folder.path() + "/o.drl";
    EXPECT_EQ(run({"order", samples + "cover_plate.drl", "--type", "x", "-o", file}).code, 0);
    const Printed piped = run_with_input(sample("cover_plate.drl"),
                                         {"order", "-", "--type", "x", "-o", "-", "--quiet"});
    EXPECT_EQ(piped.out, text_of(file));
    EXPECT_EQ(piped.err, "");
}

TEST(standard_stream, the_figures_go_to_standard_error_beside_any_output) {
    const Printed drawn =
        run({"order", samples + "holes.csv", "--type", "x", "--svg", "-", "--json"});
    EXPECT_TRUE(drawn.out.starts_with("<svg"));
    EXPECT_TRUE(drawn.out.ends_with("</svg>\n"));
    EXPECT_TRUE(drawn.err.starts_with("{"));
    const Printed route = run_with_input(
        sample("workshop.map"), {"route", "-", "--start", "3,36", "--goal", "92,36", "--csv", "-"});
    EXPECT_EQ(route.code, 0) << route.err;
    EXPECT_TRUE(route.out.starts_with("x,y,length\n3,36,0\n"));
    EXPECT_TRUE(route.err.starts_with("standard input: 96 x ")) << route.err;
    const Printed solved = run({"solve", "polynomial", "-1", "0", "1", "--svg", "-"});
    EXPECT_TRUE(solved.out.starts_with("<svg"));
    EXPECT_TRUE(solved.err.starts_with("-1 + x^2 = 0: 2 solutions\n")) << solved.err;
}

TEST(standard_stream, solve_reads_a_table) {
    EXPECT_EQ(run_with_input("polynomial,-2,1\n", {"solve", "--csv", "-"}).out,
              "1: -2 + x = 0: 1 solution\n  x  residual\n  2  0\n");
}

TEST(standard_stream, errors_name_standard_input) {
    expect_refused(run_with_input("1,2\n1,2,3,4\n", {"order", "-"}), "standard input:2: ");
    expect_refused(run_with_input("hello\n", {"order", "-"}), "standard input: unknown format");
    expect_refused(run_with_input("normal\n", {"solve", "--csv", "-"}), "standard input:1: ");
    expect_refused(
        run_with_input("type octile\n", {"route", "-", "--start", "0,0", "--goal", "1,1"}),
        "standard input:");
}

TEST(standard_stream, the_format_option_decides_where_the_content_does_not) {
    const std::string remark = "; nothing but a remark\n";
    expect_refused(run_with_input(remark, {"order", "-"}), "unknown format");
    const std::string table =
        run_with_input("1,2\n3,4\n", {"order", "-", "--format", "drill", "-o", "-", "--quiet"}).out;
    EXPECT_EQ(table, "1,2\n3,4\n");
    const Printed decided = run_with_input(remark, {"order", "-", "--format", "drill"});
    EXPECT_EQ(decided.err.find("unknown format"), std::string::npos) << decided.err;
    expect_refused(run({"order", "-", "--format", "dril"}), "did you mean drill?");
}

TEST(standard_stream, takes_one_output_and_one_input) {
    expect_refused(run({"order", samples + "holes.csv", "-o", "-", "--svg", "-"}),
                   "\"-\" is the name of two outputs");
    expect_refused(run({"order", "-", "-"}), "standard input can be read once");
    expect_refused(run({"order", "-", "--in-place"}), "standard input cannot be replaced");
}

TEST(standard_stream, a_file_of_this_name_is_reached_by_a_path) {
    const ScratchDirectory folder;
    const std::string name = folder.file("-", "1,2\n3,4\n");
    EXPECT_EQ(run({"order", name, "-o", name}).code, 0);
}

TEST(standard_stream, full_standard_output_leaves_no_new_file) {
    const ScratchDirectory folder;
    std::ostringstream out;
    std::ostringstream err;
    out.setstate(std::ios::badbit);
    EXPECT_EQ(run_tool(tool_commands,
                       {"order", samples + "holes.csv", "--type", "x", "-o", "-", "--svg",
                        folder.path() + "/new.svg", "--quiet"},
                       out, err),
              2);
    EXPECT_EQ(folder.file_count(), 0U);
}

}  // namespace
}  // namespace nmk_shell

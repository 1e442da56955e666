// solution_table: the answers of nmk solve as CSV.

#include "commands/solve/solution_table.h"

#include <gtest/gtest.h>

#include "app/shell/command_runner.h"
#include "scratch_directory.h"

namespace nmk_solve {
namespace {

TEST(solution_table, has_a_row_for_each_solution_and_the_columns_of_all_kinds) {
    const ScratchDirectory folder;
    const std::string problems =
        folder.file("p.csv", "polynomial,-1,0,1\nnormal,0\npolynomial,1,0,1\nangles1,1,0,1\n");
    const nmk_shell::Printed printed =
        nmk_shell::run({"solve", "--csv", problems, "-o", "-", "--quiet"});
    EXPECT_EQ(printed.code, 0) << printed.err;
    EXPECT_EQ(printed.err, "");
    EXPECT_TRUE(printed.out.starts_with("line,problem,solution,x,residual,probability,error,cos,"))
        << printed.out;
    EXPECT_NE(printed.out.find("\n1,-1 + x^2 = 0,1,-1,0,,,"), std::string::npos) << printed.out;
    EXPECT_NE(printed.out.find("\n1,-1 + x^2 = 0,2,1,0,,,"), std::string::npos);
    EXPECT_NE(printed.out.find("\n2,probability of a value of at most 0,1,,,0.5"),
              std::string::npos);
    EXPECT_NE(printed.out.find("\n3,1 + x^2 = 0,,,,,,"), std::string::npos);
}

TEST(solution_table, quotes_what_a_reader_would_take_apart) {
    Answer answer;
    answer.problem = "R = 1, phi \"free\"";
    answer.note = "one, two";
    SolutionTable table;
    table.add(answer, 0);
    EXPECT_EQ(table.text(),
              "line,problem,solution,note\n,\"R = 1, phi \"\"free\"\"\",,\"one, two\"\n");
}

TEST(solution_table, is_written_into_a_file_beside_the_text) {
    const ScratchDirectory folder;
    const std::string file = folder.path() + "/solved.csv";
    const nmk_shell::Printed printed =
        nmk_shell::run({"solve", "polynomial", "-2", "1", "-o", file});
    EXPECT_EQ(printed.out, "-2 + x = 0: 1 solution\n  x  residual\n  2  0\nWrote " + file + ".\n");
    EXPECT_EQ(nmk_shell::text_of(file),
              "line,problem,solution,x,residual,note\n,-2 + x = 0,1,2,0,\n");
}

TEST(solution_table, refuses_to_replace_the_table_that_is_read) {
    const ScratchDirectory folder;
    const std::string file = folder.file("p.csv", "normal,1\n");
    nmk_shell::expect_refused(nmk_shell::run({"solve", "--csv", file, "-o", file}),
                              "is the input file");
    nmk_shell::expect_refused(nmk_shell::run({"solve", "--csv", file, "-o", "/nowhere/o.csv"}),
                              "/nowhere/o.csv: ");
}

}  // namespace
}  // namespace nmk_solve

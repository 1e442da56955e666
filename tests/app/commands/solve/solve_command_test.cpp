// solve_command: the output of `nmk solve` for a person and for a program.

#include "commands/solve/solve_command.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

#include "app/formats/job/job_fixtures.h"
#include "app/shell/command_runner.h"
#include "app/text/plain_syntax.h"
#include "commands/solve/problem_table.h"
#include "scratch_directory.h"

namespace nmk_solve {
namespace {

const std::string problems = NMK_SOURCE_DIR "/samples/problems.csv";

class solve_command : public testing::Test {
  protected:
    std::string file(const std::string& name) const { return folder.path() + "/" + name; }

    ScratchDirectory folder;
};

TEST_F(solve_command, prints_solutions_with_their_residuals) {
    const nmk_shell::Printed printed = nmk_shell::run({"solve", "polynomial", "2", "-3", "0", "1"});
    EXPECT_EQ(printed.code, 0);
    EXPECT_EQ(printed.err, "");
    EXPECT_EQ(printed.out,
              "2 - 3 x + x^3 = 0: 3 solutions\n"
              "  x   residual\n"
              "  -2  0\n"
              "  1   0\n"
              "  1   0\n");
    EXPECT_EQ(nmk_shell::run({"solve", "polynomial", "1", "0", "1"}).out,
              "1 + x^2 = 0: no solution\n");
}

TEST_F(solve_command, certified_prints_brackets_of_neighbouring_doubles) {
    EXPECT_EQ(nmk_shell::run({"solve", "polynomial", "0", "0", "-2", "0", "1", "--certified"}).out,
              "-2 x^2 + x^4 = 0: 3 solutions\n"
              "  x                    low                  high                multiplicity\n"
              "  -1.4142135623730951  -1.4142135623730951  -1.414213562373095  1\n"
              "  0                    0                    0                   2\n"
              "  1.4142135623730951   1.414213562373095    1.4142135623730951  1\n"
              "  residual\n"
              "  8.881784197001254e-16\n"
              "  0\n"
              "  8.881784197001254e-16\n");
    EXPECT_EQ(nmk_shell::run({"solve", "polynomial", "1", "1e-320", "--certified"}).out.find("nan"),
              std::string::npos);
    EXPECT_EQ(nmk_shell::run(
                  {"solve", "polynomial", "1", "1e-320", "--certified", "--svg", file("far.svg")})
                  .code,
              0);
    nmk_shell::expect_refused(nmk_shell::run({"solve", "normal", "1", "--certified"}),
                              "--certified proves the roots of polynomials");
}

TEST_F(solve_command, no_line_is_wider_than_80_columns) {
    std::string printed = nmk_shell::run({"solve", "--csv", problems}).out;
    printed +=
        nmk_shell::run({"solve", "polynomial", "0.1", "-0.314", "3", "0.389", "-2.58e-67"}).out;
    printed += nmk_shell::run({"solve", "polynomial", "0.1234567890123456", "-3.1234567890123456",
                               "3.1234567890123456", "0.3891234567890123", "-2.5812345678901e-17",
                               "--certified"})
                   .out;
    EXPECT_NE(printed.find("\n  residual 1 "), std::string::npos) << printed;
    std::istringstream lines(printed);
    for (std::string line; std::getline(lines, line);) {
        EXPECT_LE(line.size(), 80U) << line;
    }
}

TEST_F(solve_command, certified_solves_a_table_of_polynomials) {
    const std::string table = folder.file("t.csv", "-1,0,1e-12\n");
    const std::string out =
        nmk_shell::run({"solve", "polynomial", "--csv", table, "--certified"}).out;
    EXPECT_TRUE(out.starts_with("1: -1 + 1e-12 x^2 = 0: 2 solutions\n")) << out;
}

TEST_F(solve_command, numbers_have_enough_digits_to_read_them_back) {
    const std::string out = nmk_shell::run({"solve", "polynomial", "-2", "0", "1", "--json"}).out;
    ASSERT_TRUE(plain_syntax::Json::is_valid(out)) << out;
    const std::size_t at = out.rfind("\"x\": ");
    ASSERT_NE(at, std::string::npos);
    EXPECT_EQ(std::stod(out.substr(at + 5)), std::sqrt(2.0));
}

TEST_F(solve_command, the_examples_of_its_help_work) {
    const std::string help = nmk_shell::run({"help", "solve"}).out;
    for (const std::string example :
         {"nmk solve polynomial 1 -3 2 --svg roots.svg", "nmk solve angles4 1 0.5 0.3 0.4 1 2",
          "nmk solve --csv samples/problems.csv --json"}) {
        EXPECT_NE(help.find(example), std::string::npos) << example;
    }
    EXPECT_EQ(
        nmk_shell::run({"solve", "polynomial", "1", "-3", "2", "--svg", file("roots.svg")}).code,
        0);
    EXPECT_TRUE(plain_syntax::Xml::is_well_formed(nmk_shell::text_of(file("roots.svg"))));
    EXPECT_EQ(nmk_shell::run({"solve", "angles4", "1", "0.5", "0.3", "0.4", "1", "2"}).code, 0);
    const nmk_shell::Printed table = nmk_shell::run({"solve", "--csv", problems, "--json"});
    EXPECT_EQ(table.code, 0) << table.err;
    EXPECT_TRUE(plain_syntax::Json::is_valid(table.out)) << table.out;
    EXPECT_EQ(nmk_shell::run({"solve", "--csv", problems}).err, "");
}

TEST_F(solve_command, the_help_names_every_kind) {
    const std::string help = nmk_shell::run({"help", "solve"}).out;
    for (const KindFacts& facts : problem_kinds()) {
        EXPECT_NE(help.find("\n  " + std::string(facts.name) + " " + std::string(facts.letters)),
                  std::string::npos)
            << facts.name;
    }
}

TEST_F(solve_command, a_table_may_omit_a_kind_that_is_an_argument) {
    const std::string table = folder.file("t.csv", "c0;c1;c2\n# remark\n1;-2;1\n\n\"6\";-2;;\n");
    const nmk_shell::Printed printed = nmk_shell::run({"solve", "polynomial", "--csv", table});
    EXPECT_EQ(printed.code, 0) << printed.err;
    EXPECT_EQ(printed.out,
              "3: 1 - 2 x + x^2 = 0: 2 solutions\n"
              "  x  residual\n"
              "  1  0\n"
              "  1  0\n"
              "5: 6 - 2 x = 0: 1 solution\n"
              "  x  residual\n"
              "  3  0\n");
}

TEST_F(solve_command, prints_nothing_for_an_empty_table) {
    const std::string table = folder.file("t.csv", "");
    EXPECT_EQ(nmk_shell::run({"solve", "--csv", table}).out, "");
    EXPECT_EQ(nmk_shell::run({"solve", "--csv", table, "--json"}).out,
              "{\"schema\": 1, \"problems\": []}\n");
}

TEST_F(solve_command, a_bad_row_is_reported_before_the_first_answer) {
    const std::string table = folder.file("t.csv", "normal,1\nnormal,x\n");
    nmk_shell::expect_refused(nmk_shell::run({"solve", "--csv", table}),
                              table + ":2: cannot read \"x\" as a number of normal");
    nmk_shell::expect_refused(nmk_shell::run({"solve", "--csv", table, "--json"}), table + ":2: ");
}

TEST_F(solve_command, curves_of_any_size_can_be_drawn) {
    const std::vector<std::vector<std::string>> polynomials = {{"1", "-3", "2"},
                                                               {"0", "0", "0"},
                                                               {"5", "0"},
                                                               {"0", "1"},
                                                               {"1e300", "1", "1e300"},
                                                               {"1e-300", "-1e-300"},
                                                               {"1", "1e308", "1e308"},
                                                               {"0", "0", "1"},
                                                               {"-1e-12", "0", "1", "0", "1e-9"},
                                                               {"1e16", "-2e16", "1e16"},
                                                               {"0", "0", "0", "0", "3"}};
    for (std::vector<std::string> words : polynomials) {
        words.insert(words.begin(), {"solve", "polynomial"});
        words.insert(words.end(), {"--svg", file("c.svg"), "--quiet"});
        EXPECT_EQ(nmk_shell::run(words).code, 0);
        const std::string svg = nmk_shell::text_of(file("c.svg"));
        EXPECT_TRUE(plain_syntax::Xml::is_well_formed(svg)) << words[2];
        EXPECT_EQ(svg.find("nan"), std::string::npos) << words[2];
        EXPECT_EQ(svg.find("inf"), std::string::npos) << words[2];
        EXPECT_LT(svg.size(), 60000U) << words[2];
    }
}

struct BadUse {
    const char* name;
    std::vector<std::string> words;
    const char* expected;
};

class solve_command_error : public testing::TestWithParam<BadUse> {};

TEST_P(solve_command_error, is_one_line_and_exit_code_2) {
    std::vector<std::string> words = {"solve"};
    words.insert(words.end(), GetParam().words.begin(), GetParam().words.end());
    nmk_shell::expect_refused(nmk_shell::run(words), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    bad_uses, solve_command_error,
    testing::Values(
        BadUse{"nothing", {}, "expected a KIND: polynomial, root"},
        BadUse{"unknown_kind", {"quintic", "1"}, "KIND \"quintic\": expected polynomial, root"},
        BadUse{
            "too_few", {"angles1", "1", "2"}, "angles1 has 2 numbers; expected 3 numbers: A B C"},
        BadUse{"too_many",
               {"polynomial", "1", "2", "3", "4", "5", "6"},
               "polynomial has 6 numbers; expected 2 to 5 numbers"},
        BadUse{"one_number", {"polynomial", "1"}, "polynomial has 1 number; expected 2 to 5"},
        BadUse{"word", {"normal", "one"}, "cannot read \"one\" as a number of normal"},
        BadUse{"comma", {"normal", "1,5"}, "cannot read \"1,5\" as a number"},
        BadUse{"not_a_number", {"polynomial", "1", "nan"}, "cannot read \"nan\""},
        BadUse{"negative_not_a_number", {"polynomial", "1", "-nan"}, "cannot read \"-nan\""},
        BadUse{"infinite", {"polynomial", "1", "-inf"}, "cannot read \"-inf\""},
        BadUse{
            "above_the_range_of_a_double", {"polynomial", "1", "1e999"}, "cannot read \"1e999\""},
        BadUse{
            "below_the_range_of_a_double", {"polynomial", "1", "-1e999"}, "cannot read \"-1e999\""},
        BadUse{"negative_comma", {"polynomial", "1", "-1,5"}, "cannot read \"-1,5\" as a number"},
        BadUse{"bracket_that_ends_before_it_begins",
               {"root", "2", "1", "0", "1"},
               "root between \"2\" and \"1\"; expected the lower end before the upper"},
        BadUse{"unknown_option", {"normal", "1", "--fast"}, "unknown option \"--fast\""},
        BadUse{"picture_of_angles",
               {"angles1", "1", "2", "3", "--svg", "a.svg"},
               "--svg draws one polynomial"},
        BadUse{"picture_of_a_table",
               {"polynomial", "--csv", "a.csv", "--svg", "a.svg"},
               "--svg draws one polynomial"},
        BadUse{"numbers_and_a_table",
               {"normal", "1", "--csv", "a.csv"},
               "both as arguments and in --csv"},
        BadUse{"missing_table", {"--csv", "/nowhere/a.csv"}, "/nowhere/a.csv: cannot be opened"},
        BadUse{
            "endless_line", {"--csv", "/dev/zero"}, "/dev/zero:1: a line longer than 65536 bytes"},
        BadUse{"missing_directory",
               {"polynomial", "1", "2", "--svg", "/nowhere/a.svg"},
               "/nowhere/a.svg: "},
        BadUse{"full_disk", {"polynomial", "1", "2", "--svg", "/dev/full"}, "/dev/full: "}),
    nmk_job::CaseName());

struct BadRow {
    const char* name;
    std::string text;
    const char* expected;
};

class problem_table_error : public testing::TestWithParam<BadRow> {};

TEST_P(problem_table_error, names_the_line_and_the_expected_text) {
    const auto error =
        read_problem_table("a.csv", GetParam().text, nullptr, [](const Problem&, std::size_t) {});
    ASSERT_FALSE(error);
    EXPECT_EQ(error.error().text().substr(0, std::string(GetParam().expected).size()),
              GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    bad_rows, problem_table_error,
    testing::Values(
        BadRow{"unknown_kind", "normal,1\nquintic,1\n",
               "a.csv:2: unknown kind \"quintic\"; expected polynomial, root"},
        BadRow{"no_kind", "1,2,3\n", "a.csv:1: unknown kind \"1\""},
        BadRow{"too_few", "angles2,1,2\n", "a.csv:1: angles2 has 2 numbers; expected 6 numbers"},
        BadRow{"gap", "polynomial,1,,2\n", "a.csv:1: cannot read \"\" as a number of polynomial"},
        BadRow{"too_wide", "polynomial,1,2,3,4,5,6,7,8,9,10,11,12,13\n",
               "a.csv:1: 14 columns; expected at most 12"},
        BadRow{"binary", "normal,\x01\xff\n", "a.csv:1: cannot read \"\\x01\\xff\" as a number"}),
    nmk_job::CaseName());

TEST(problem_table, reads_every_prefix_of_a_table_within_its_bounds) {
    const std::string text = nmk_job::bytes_of_file(problems);
    std::size_t most = 0;
    for (std::size_t length = 0; length <= text.size(); ++length) {
        const std::vector<char> exact(text.begin(),
                                      text.begin() + static_cast<std::ptrdiff_t>(length));
        std::size_t count = 0;
        const auto read = read_problem_table("a.csv", {exact.data(), length}, nullptr,
                                             [&](const Problem&, std::size_t) { ++count; });
        ASSERT_TRUE(read || !read.error().message.empty()) << length;
        most = std::max(most, count);
    }
    EXPECT_EQ(most, 13U);
}

}  // namespace
}  // namespace nmk_solve

// run_tool: behaviour that all commands of the tool share.

#include "shell/run_tool.h"

#include <gtest/gtest.h>

#include <sstream>

#include "app/shell/command_runner.h"
#include "scratch_directory.h"

namespace nmk_shell {
namespace {

const std::string commands[] = {"order", "route", "solve", "levels", "registry"};

/// The lines of a text.
std::vector<std::string> lines_of(const std::string& text) {
    std::istringstream stream(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

TEST(run_tool, prints_its_version) {
    for (const std::vector<std::string>& words : {std::vector<std::string>{"--version"},
                                                  {"-V"},
                                                  {"order", "--version"},
                                                  {"solve", "normal", "-1", "-V"}}) {
        const Printed printed = run(words);
        EXPECT_EQ(printed.code, 0);
        EXPECT_TRUE(printed.out.starts_with("nmk ")) << printed.out;
        EXPECT_EQ(lines_of(printed.out).size(), 1U);
        EXPECT_EQ(printed.err, "");
    }
}

TEST(run_tool, prints_the_help_without_arguments) {
    const Printed printed = run({});
    EXPECT_EQ(printed.code, 0);
    EXPECT_EQ(printed.out, run({"help"}).out);
    EXPECT_EQ(printed.out, run({"--help"}).out);
    EXPECT_EQ(printed.err, "");
}

TEST(run_tool, refuses_an_unknown_command) {
    expect_refused(run({"fold"}), "unknown command \"fold\"; nmk help lists the commands");
    expect_refused(run({"ordr"}), "unknown command \"ordr\" (did you mean order?); nmk help");
    expect_refused(run({"help", "ordr"}), "did you mean order?");
    expect_refused(run({"caf\xC3\xA9\x1B[2J"}), "\"caf\xC3\xA9\\x1b[2J\"");
    expect_refused(run({"--level", "itemsorter=0"}), "expected a command");
    expect_refused(run({"--fast"}), "unknown option \"--fast\"");
}

TEST(run_tool, takes_options_before_the_command) {
    EXPECT_EQ(run({"--json", "levels", "itemsorter"}).out,
              run({"levels", "itemsorter", "--json"}).out);
    const Printed before = run({"--level", "itemsorter=previous", "levels", "itemsorter"});
    EXPECT_NE(before.out.find("state          previous"), std::string::npos);
    const Printed after = run({"--level=itemsorter=default", "levels", "itemsorter"});
    EXPECT_NE(after.out.find("state          default"), std::string::npos);
    EXPECT_EQ(run({"--help", "order"}).out, run({"help", "order"}).out);
}

TEST(run_tool, every_help_fits_into_80_columns_and_has_exit_codes_and_an_example) {
    std::vector<std::vector<std::string>> helps = {{"help"}, {"help", "help"}};
    for (const Command& command : tool_commands) {
        helps.push_back({"help", std::string(command.name)});
    }
    for (const std::vector<std::string>& words : helps) {
        const std::string help = run(words).out;
        for (const std::string& line : lines_of(help)) {
            EXPECT_LE(line.size(), 80U) << line;
            EXPECT_FALSE(line.ends_with(' ')) << line;
        }
        EXPECT_NE(help.find("\nExit codes:\n  0 "), std::string::npos) << help;
        EXPECT_NE(help.find("\nExample"), std::string::npos) << help;
        EXPECT_NE(help.find("\n  nmk ", help.find("\nExample")), std::string::npos) << help;
    }
}

TEST(run_tool, refuses_a_bad_level_with_every_command) {
    for (const std::string& command : commands) {
        expect_refused(run({command, "--level", "itemsorter"}), "expected NAME=previous");
        expect_refused(run({command, "--level", "nothing=1"}), "unknown level 'nothing'");
        expect_refused(run({command, "--level"}), "--level needs a value");
    }
}

TEST(run_tool, help_is_the_same_before_and_after_the_command) {
    for (const std::string& command : commands) {
        EXPECT_NE(run({"help"}).out.find("  " + command + " "), std::string::npos);
        const Printed help = run({"help", command});
        EXPECT_EQ(help.code, 0);
        EXPECT_TRUE(help.out.starts_with("nmk " + command));
        EXPECT_NE(help.out.find("samples/"), std::string::npos);
        EXPECT_EQ(run({command, "--help"}).out, help.out);
        EXPECT_EQ(run({command, "--json", "-h"}).out, help.out);
    }
}

TEST(run_tool, an_argument_after_two_dashes_is_not_a_request_for_help) {
    for (const std::string name : {"--help", "-h"}) {
        expect_refused(run({"order", "--", name}), name + ": cannot be opened");
        expect_refused(run({"route", "--start", "0,0", "--goal", "1,0", "--", name}),
                       name + ": cannot be opened");
        expect_refused(run({"solve", "--", name}), "KIND \"" + name + "\": expected polynomial");
        expect_refused(run({"levels", "--", name}), "unknown level '" + name + "'");
    }
}

TEST(run_tool, standard_output_that_cannot_be_written_is_reported_in_one_line) {
    const std::string samples = NMK_SOURCE_DIR "/samples/";
    for (const std::vector<std::string>& words :
         {std::vector<std::string>{"help"},
          {"order", "--help"},
          {"--version"},
          {"solve", "normal", "1"},
          {"solve", "--csv", samples + "problems.csv"},
          {"levels", "--json"},
          {"order", samples + "holes.csv", "--type", "x"},
          {"route", samples + "clamps.csv", "--start", "0,5", "--goal", "8,8"}}) {
        std::ostringstream out;
        std::ostringstream err;
        out.setstate(std::ios::badbit);
        const int code = run_tool(tool_commands, words, out, err);
        expect_refused({code, out.str(), err.str()}, "standard output: the ");
    }
}

TEST(run_tool, no_new_file_is_left_if_standard_output_cannot_be_written) {
    const std::string samples = NMK_SOURCE_DIR "/samples/";
    for (std::vector<std::string> words :
         {std::vector<std::string>{"solve", "polynomial", "1", "-3", "2"},
          {"order", samples + "holes.csv", "--type", "x"},
          {"route", samples + "clamps.csv", "--start", "0,5", "--goal", "8,8"}}) {
        const ScratchDirectory folder;
        words.insert(words.end(), {"--svg", folder.path() + "/new.svg"});
        std::ostringstream out;
        std::ostringstream err;
        out.setstate(std::ios::badbit);
        EXPECT_EQ(run_tool(tool_commands, words, out, err), 2);
        EXPECT_EQ(folder.file_count(), 0U) << words[0];
    }
}

}  // namespace
}  // namespace nmk_shell

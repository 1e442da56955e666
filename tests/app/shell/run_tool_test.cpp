// run_tool: behaviour that all commands of the tool share.

#include "shell/run_tool.h"

#include <gtest/gtest.h>

#include <sstream>

#include "app/shell/command_runner.h"
#include "scratch_directory.h"

namespace nmk_shell {
namespace {

const std::string commands[] = {"order", "route", "solve", "levels"};

TEST(run_tool, prints_its_version) { EXPECT_TRUE(run({"--version"}).out.starts_with("nmk ")); }

TEST(run_tool, refuses_an_unknown_command) {
    expect_refused(run({}), "expected a command");
    expect_refused(run({"fold"}), "unknown command 'fold'");
    expect_refused(run({"help", "fold"}), "unknown command 'fold'");
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
        expect_refused(run({"solve", "--", name}), "unknown kind \"" + name + "\"");
        expect_refused(run({"levels", "--", name}), "unknown level '" + name + "'");
    }
}

TEST(run_tool, standard_output_that_cannot_be_written_is_reported_in_one_line) {
    for (const std::vector<std::string>& words :
         {std::vector<std::string>{"help"},
          {"order", "--help"},
          {"--version"},
          {"solve", "normal", "1"},
          {"solve", "--csv", NMK_SOURCE_DIR "/samples/problems.csv"},
          {"levels", "--json"},
          {"order", NMK_SOURCE_DIR "/samples/holes.csv", "--type", "x"},
          {"route", NMK_SOURCE_DIR "/samples/clamps.csv", "--start", "0,5", "--goal", "8,8"}}) {
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

// completion: shells read the scripts, and propose what the tables declare.

#include "shell/completion.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <memory>
#include <ostream>
#include <set>
#include <sstream>

#include "app/shell/command_runner.h"
#include "scratch_directory.h"

namespace nmk_shell {
namespace {

using Words = std::set<std::string>;

/// What a command of the system prints, on standard error too.
std::string output_of(const std::string& command) {
    const std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen((command + " 2>&1").c_str(), "r"),
                                                     pclose);
    std::string text;
    for (int letter = 0; (letter = std::fgetc(pipe.get())) != EOF;) {
        text += static_cast<char>(letter);
    }
    return text;
}

bool is_installed(const std::string& program) {
    return !output_of("command -v " + program).empty();
}

Words lines_of(const std::string& text) {
    std::istringstream stream(text);
    Words lines;
    for (std::string line; std::getline(stream, line);) {
        lines.insert(line);
    }
    return lines;
}

class completion : public testing::Test {
  protected:
    std::string script(const std::string& shell) const {
        return folder.file("script." + shell, run({"completion", shell}).out);
    }

    /// What bash proposes after these words, the last of which is being typed.
    Words proposed(const std::string& words, int position) const {
        return lines_of(output_of("cd " + folder.path() + "/files && bash -c 'source " +
                                  script("bash") + "; COMP_WORDS=(" + words +
                                  "); COMP_CWORD=" + std::to_string(position) +
                                  "; _nmk; ((${#COMPREPLY[@]})) && printf \"%s\\n\" "
                                  "\"${COMPREPLY[@]}\"'"));
    }

    void SetUp() override {
        std::filesystem::create_directory(folder.path() + "/files");
        folder.file("files/plate one.drl", "");
        folder.file("files/other.csv", "");
    }

    ScratchDirectory folder;
};

TEST_F(completion, bash_proposes_commands_and_common_options) {
    const Words words = proposed("nmk \"\"", 1);
    for (const Command& command : tool_commands) {
        EXPECT_TRUE(words.contains(std::string(command.name))) << command.name;
    }
    EXPECT_TRUE(words.contains("help") && words.contains("--version"));
    EXPECT_EQ(proposed("nmk ord", 1), Words{"order"});
}

TEST_F(completion, bash_proposes_every_option_of_every_command) {
    for (const Command& command : tool_commands) {
        OptionTable table(command.name, command.summary);
        command.declare(table);
        const Words words = proposed("nmk " + table.command() + " -", 2);
        for (const Argument& option : table.options()) {
            EXPECT_TRUE(words.contains(option.long_name())) << option.names;
        }
    }
}

TEST_F(completion, bash_proposes_the_words_of_an_option) {
    EXPECT_EQ(proposed("nmk order --type cl", 3), Words{"closest"});
    EXPECT_EQ(proposed("nmk order --type = cl", 4), Words{"closest"});
    EXPECT_EQ(proposed("nmk order --units =", 3), (Words{"mm", "inch"}));
    EXPECT_EQ(proposed("nmk --level = a=b route --corners c", 6), (Words{"cut", "clear"}));
    EXPECT_EQ(proposed("nmk solve angles4", 2), (Words{"angles4", "angles4-one"}));
    EXPECT_EQ(proposed("nmk completion \"\"", 2), (Words{"bash", "zsh", "fish"}));
}

TEST_F(completion, bash_proposes_files_and_nothing_where_a_number_is_expected) {
    EXPECT_EQ(proposed("nmk order \"\"", 2), (Words{"plate one.drl", "other.csv"}));
    EXPECT_EQ(proposed("nmk order --svg o", 3), Words{"other.csv"});
    EXPECT_EQ(proposed("nmk order --start \"\"", 3), Words{});
    EXPECT_EQ(proposed("nmk levels \"\"", 2), Words{});
}

TEST_F(completion, zsh_reads_the_script_and_completes_with_it) {
    if (!is_installed("zsh")) {
        GTEST_SKIP() << "zsh is not installed";
    }
    EXPECT_EQ(output_of("zsh -n " + script("zsh")), "");
    EXPECT_EQ(output_of("cd " + folder.path() +
                        " && zsh -f -c 'autoload -U compinit; compinit -u -D; source " +
                        script("zsh") + "; print $_comps[nmk]'"),
              "_nmk\n");
}

TEST_F(completion, fish_reads_the_script_and_completes_with_it) {
    if (!is_installed("fish")) {
        GTEST_SKIP() << "fish is not installed";
    }
    const std::string file = script("fish");
    const auto fish = [&](const std::string& typed) {
        return output_of("HOME=" + folder.path() + " fish --no-config -c 'source " + file +
                         "; complete -C \"" + typed + "\"'");
    };
    EXPECT_EQ(output_of("fish -n " + file), "");
    EXPECT_TRUE(fish("nmk ord").starts_with("order\t"));
    EXPECT_TRUE(fish("nmk order --typ").starts_with("--type\thow to order"));
    EXPECT_TRUE(fish("nmk order --type clos").starts_with("closest"));
    EXPECT_EQ(fish("nmk route --corners cl").substr(0, 5), "clear");
}

TEST(completion_scripts, quote_descriptions_for_their_shell) {
    EXPECT_EQ(shell_text("a'b"), "'a'\\''b'");
    OptionTable table("odd", "it's [odd]: yes");
    bool flag = false;
    table.option("--flag", flag, "don't [use] it\\; really");
    const std::vector<OptionTable> tables{table};
    EXPECT_NE(zsh_completion(tables).find("'*--flag[don'\\''t \\[use\\] it\\\\]'"),
              std::string::npos)
        << zsh_completion(tables);
    EXPECT_NE(fish_completion(tables).find("-d 'it\\'s [odd]: yes'"), std::string::npos);
}

}  // namespace
}  // namespace nmk_shell

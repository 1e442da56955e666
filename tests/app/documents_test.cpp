// documents: every command in README and docs/ is run, and its output and picture are compared.

#include <gtest/gtest.h>

#include <ostream>
#include <regex>
#include <set>
#include <sstream>

#include "app/formats/job/job_fixtures.h"
#include "app/shell/command_runner.h"
#include "app/shell/standard_input.h"
#include "registry_scratch.h"
#include "scratch_directory.h"

namespace nmk_shell {
namespace {

const std::string root = NMK_SOURCE_DIR "/";

/// The words of a command; samples are read in the source tree, outputs go to the directory.
std::vector<std::string> words_of(const std::string& command, const std::string& directory) {
    std::istringstream text(command);
    std::vector<std::string> words;
    for (std::string word; text >> word;) {
        const bool is_converted = words.size() == 3 && words[1] == "convert";
        const bool is_written =
            !words.empty() && (is_converted || words.back() == "-o" || words.back() == "create" ||
                               words.back() == "--svg" || words.back() == "--debug-svg");
        words.push_back(is_written                     ? directory + "/" + word
                        : word.starts_with("samples/") ? root + word
                                                       : word);
    }
    return words;
}

std::string without(std::string text, const std::string& part) {
    for (std::size_t at; (at = text.find(part)) != std::string::npos;) text.erase(at, part.size());
    return text;
}

/// Walks one document: runs its commands, and compares the block and the picture after each.
class DocumentWalk {
  public:
    explicit DocumentWalk(const std::string& name) : m_lines(nmk_job::bytes_of_file(root + name)) {}

    void walk() {
        for (std::string line; std::getline(m_lines, line);) {
            if (line == "```") {
                read_block();
            } else if (line.starts_with("```")) {
                skip_block();  // of a shell, with programs that are not ours
            } else if (line.starts_with("![")) {
                compare_picture(
                    line.substr(line.find('(') + 1, line.find(')') - line.find('(') - 1));
            } else if (!line.empty()) {
                m_printed.clear();
            }
        }
    }

    int commands = 0, outputs = 0, pictures = 0;

  private:
    void read_block() {
        std::string block;
        for (std::string line; std::getline(m_lines, line) && line != "```";) {
            if (line.starts_with("nmk ")) {
                run_command(line.substr(4));
            } else {
                block += line + "\n";
            }
        }
        if (!block.empty() && !m_printed.empty()) {
            EXPECT_EQ(m_printed, block);
            ++outputs;
        }
    }

    void skip_block() {
        for (std::string line; std::getline(m_lines, line) && line != "```";) {
        }
    }

    /// A command that ends with " < NAME" reads standard input from that sample.
    void run_command(const std::string& line) {
        const std::size_t redirection = line.find(" < ");
        const std::string command = line.substr(0, redirection);
        const StandardInput input(
            redirection == std::string::npos
                ? ""
                : nmk_job::bytes_of_file(root + line.substr(redirection + 3)));
        const Printed printed = run(words_of(command, m_folder.path()));
        EXPECT_EQ(printed.code, 0) << command << "\n" << printed.err;
        m_printed = without(without(printed.out, root), m_folder.path() + "/");
        const std::size_t svg = command.find("--svg ");
        const std::size_t name = svg + 6;
        m_drawn =
            svg == std::string::npos ? "" : command.substr(name, command.find(' ', name) - name);
        ++commands;
    }

    void compare_picture(const std::string& picture) {
        EXPECT_EQ(nmk_job::bytes_of_file(m_folder.path() + "/" + m_drawn),
                  nmk_job::bytes_of_file(root + "docs/" + picture))
            << picture;
        ++pictures;
    }

    ScratchDirectory m_folder;
    std::istringstream m_lines;
    std::string m_printed;  // by the last command, until other text follows
    std::string m_drawn;    // the name of the picture of the last command
};

TEST(documents, show_commands_with_their_output_and_pictures) {
    int outputs = 0;
    for (const std::string name : {"order", "route", "solve"}) {
        DocumentWalk document("docs/nmk-" + name + ".md");
        document.walk();
        EXPECT_GE(document.commands, 1) << name;
        EXPECT_EQ(document.pictures, name == "order" ? 2 : 1) << name;
        outputs += document.outputs;
    }
    EXPECT_EQ(outputs, 1);
}

TEST(documents, show_the_tree_of_the_registry_as_text) {
    const RegistryScratch scratch;
    DocumentWalk document("docs/nmk-registry.md");
    document.walk();
    EXPECT_GE(document.commands, 6);
    EXPECT_EQ(document.outputs, 3);
}

// A page and what it holds: commands, their printed output, and pictures.
struct PageCase {
    const char* name;
    int commands;
    int outputs;
    int pictures;
};

std::ostream& operator<<(std::ostream& out, const PageCase& page) { return out << page.name; }

class document_pages : public testing::TestWithParam<PageCase> {};

TEST_P(document_pages, show_what_their_commands_print) {
    const PageCase& page = GetParam();
    DocumentWalk document(std::string("docs/nmk-") + page.name + ".md");
    document.walk();
    EXPECT_EQ(document.commands, page.commands);
    EXPECT_EQ(document.outputs, page.outputs);
    EXPECT_EQ(document.pictures, page.pictures);
}

INSTANTIATE_TEST_SUITE_P(pages, document_pages,
                         testing::Values(PageCase{"order-options", 13, 0, 13},
                                         PageCase{"id", 2, 2, 0}, PageCase{"electrode", 5, 3, 0},
                                         PageCase{"config", 2, 2, 0}, PageCase{"model", 3, 2, 1},
                                         PageCase{"curve", 6, 4, 2}),
                         nmk_job::CaseName());

/// The long options in a text.
std::set<std::string> options_in(const std::string& text) {
    std::set<std::string> options;
    const std::regex option("--[a-z][a-z-]*");
    for (std::sregex_iterator found(text.begin(), text.end(), option), end; found != end; ++found) {
        options.insert(found->str());
    }
    return options;
}

TEST(documents, list_the_options_of_the_help) {
    for (const std::string name :
         {"order", "route", "solve", "id", "registry", "electrode", "config", "model", "curve"}) {
        const std::set<std::string> options = options_in(run({"help", name}).out);
        EXPECT_GE(options.size(), 4U) << name;
        EXPECT_EQ(options_in(nmk_job::bytes_of_file(root + "docs/nmk-" + name + ".md")), options)
            << name;
    }
}

TEST(documents, name_output_files_that_the_clone_ignores) {
    std::set<std::string> ignored;
    std::istringstream rules(nmk_job::bytes_of_file(root + ".gitignore"));
    for (std::string rule; std::getline(rules, rule);) ignored.insert(rule);
    int outputs = 0;
    const std::regex written("(?:-o|--svg|--debug-svg|--html|--csv) ([a-z]+\\.[a-z]+)");
    for (const std::string name :
         {"README.md", "docs/nmk-order.md", "docs/nmk-route.md", "docs/nmk-solve.md",
          "docs/nmk-model.md", "docs/nmk-curve.md", "docs/nmk-order-options.md"}) {
        std::istringstream lines(nmk_job::bytes_of_file(root + name));
        for (std::string line; std::getline(lines, line);) {
            if (!line.starts_with("nmk ") && !line.starts_with("| `./nmk ")) continue;
            for (std::sregex_iterator found(line.begin(), line.end(), written), end; found != end;
                 ++found, ++outputs) {
                EXPECT_TRUE(ignored.contains("/" + found->str(1))) << name << ": " << found->str(1);
            }
        }
    }
    EXPECT_GE(outputs, 6);
}

TEST(documents, show_working_commands_on_the_first_page) {
    const ScratchDirectory folder;
    std::istringstream lines(nmk_job::bytes_of_file(root + "README.md"));
    int commands = 0;
    for (std::string line; std::getline(lines, line);) {
        constexpr std::string_view start = "| `./nmk ";
        if (line.starts_with(start)) {
            const std::string command = line.substr(start.size(), line.find("` |") - start.size());
            EXPECT_EQ(run(words_of(command, folder.path())).code, 0) << command;
            ++commands;
        }
    }
    EXPECT_EQ(commands, 6);
}

}  // namespace
}  // namespace nmk_shell

// nmk config: which file is chosen, what is wrong with a document, and what is refused.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "app/shell/command_runner.h"
#include "app/shell/standard_input.h"
#include "scratch_directory.h"

namespace {

using nmk_shell::Printed;

Printed config(std::vector<std::string> words) {
    words.insert(words.begin(), "config");
    return nmk_shell::run(words);
}

class config_command : public testing::Test {
  protected:
    config_command() {
        make("tool.01.xml", "1");
        make("tool.03.xml", "3");
    }

    void make(const std::string& name, const std::string& version) const {
        scratch.file(name, "<tool version=\"" + version + "\"/>");
    }
    std::string path(const std::string& name) const { return scratch.path() + "/" + name; }

    Printed show(const std::string& versions) const {
        return config({"show", path("tool"), "--versions", versions});
    }
    Printed validate(const std::string& text) const {
        scratch.file("a.xml", text);
        return config({"validate", path("a.xml")});
    }

    ScratchDirectory scratch;
};

struct ProblemCase {
    const char* name;
    std::string text;
    std::string problem;
};

std::ostream& operator<<(std::ostream& stream, const ProblemCase& each) {
    return stream << each.name;
}

class config_command_validate : public config_command,
                                public testing::WithParamInterface<ProblemCase> {};

TEST_P(config_command_validate, prints_the_problem_with_its_place_and_ends_with_1) {
    const Printed printed = validate(GetParam().text);
    EXPECT_EQ(printed.code, 1);
    EXPECT_EQ(printed.out, path("a.xml") + GetParam().problem + "\n");
    EXPECT_EQ(printed.err, "");
}

const ProblemCase problems[] = {
    {"a_document_that_is_cut", "<a>\n <b>",
     ":2:5: the document ends inside an element; expected </b>"},
    {"no_version", "\n  <a/>", ":2:3: Version attribute missing"},
    {"an_empty_version", "<a version=''/>", ":1:1: Version attribute missing"},
    {"a_version_that_is_a_word", "<a version='abc'/>",
     ":1:1: Incompatible version. It is \"abc\"; expected a whole number from 0 up"},
    {"a_negative_version", "<a version='-1'/>",
     ":1:1: Incompatible version. It is \"-1\"; expected a whole number from 0 up"},
    {"an_empty_file", "", ":1:1: the document has no root element; expected <"},
};

INSTANTIATE_TEST_SUITE_P(all, config_command_validate, testing::ValuesIn(problems),
                         [](const auto& each) { return std::string(each.param.name); });

struct RefusedCase {
    const char* name;
    std::vector<std::string> words;
    std::string message;
};

std::ostream& operator<<(std::ostream& stream, const RefusedCase& each) {
    return stream << each.name;
}

class config_command_refused : public testing::TestWithParam<RefusedCase> {};

TEST_P(config_command_refused, prints_one_line_and_exits_with_2) {
    nmk_shell::expect_refused(config(GetParam().words), GetParam().message);
}

const std::string bad_range = "expected MIN..MAX, two whole numbers from 0 to 9999";

const RefusedCase refused[] = {
    {"no_action", {}, "ACTION"},
    {"no_name", {"show"}, "NAME"},
    {"an_unknown_action", {"shew", "a.xml"}, "shew"},
    {"no_versions_to_choose_among", {"show", "tool"}, "--versions is needed"},
    {"a_directory_for_a_name", {"show", "tools/", "--versions", "1"}, "expected the name of a"},
    {"versions_in_descending_order", {"show", "a", "--versions", "3..1"}, bad_range},
    {"a_negative_version", {"show", "a", "--versions", "-1..1"}, bad_range},
    {"a_range_that_is_too_long", {"show", "a", "--versions", "1..2000000000"}, bad_range},
    {"half_a_range", {"show", "a", "--versions", "1.."}, bad_range},
    {"new_without_versions", {"new", "a.xml"}, "new needs --versions"},
    {"new_on_standard_output", {"new", "-", "--versions", "1"}, "new needs the name of a file"},
    {"new_with_json", {"new", "a.xml", "--versions", "1", "--json"}, "--json goes with show"},
    {"show_with_a_root", {"show", "a.xml", "--root", "b"}, "--root goes with new"},
    {"show_with_force", {"show", "a.xml", "--force"}, "--force goes with new"},
    {"a_name_that_is_not_utf8", {"show", "a\xFF.xml"}, "expected a name in UTF-8"},
};

INSTANTIATE_TEST_SUITE_P(all, config_command_refused, testing::ValuesIn(refused),
                         [](const auto& each) { return std::string(each.param.name); });

}  // namespace

TEST_F(config_command, show_prints_the_newest_file_in_the_range) {
    const Printed printed = show("1..2");
    EXPECT_EQ(printed.code, 0) << printed.err;
    EXPECT_EQ(printed.out, path("tool.01.xml") +
                               "\n  chosen   the newest file of versions 1 to 2\n"
                               "  root     tool\n  version  1\nNot chosen\n  " +
                               path("tool.03.xml") + "  newer than the versions\n");
}

TEST_F(config_command, show_falls_back_on_the_name_without_a_version) {
    make("tool.xml", "7");
    const Printed printed = show("4..5");
    EXPECT_EQ(printed.code, 1);
    EXPECT_TRUE(printed.out.starts_with(path("tool.xml") +
                                        "\n  chosen   there is no file of versions 4 to 5\n"
                                        "  root     tool\n  version  7\n"
                                        "  problem  1:1: Incompatible version. It is \"7\"; "
                                        "expected 4 to 5\n"));
}

TEST_F(config_command, show_reports_that_no_file_exists) {
    const Printed printed = show("4..5");
    EXPECT_EQ(printed.code, 1);
    EXPECT_TRUE(printed.out.starts_with(path("tool.xml") + "\n"));
    EXPECT_NE(printed.out.find("  problem  File not found.\n"), std::string::npos);
}

TEST_F(config_command, show_takes_a_broken_newest_file) {
    scratch.file("tool.04.xml", "<a><a>");
    const Printed printed = show("1..4");
    EXPECT_EQ(printed.code, 1);
    EXPECT_TRUE(printed.out.starts_with(path("tool.04.xml") + "\n"));
    EXPECT_NE(printed.out.find("  problem  1:7: the document ends"), std::string::npos);
}

TEST_F(config_command, show_leaves_out_files_whose_names_only_look_alike) {
    for (const char* name : {"tool.2.xml", "tool.002.xml", "tool.010.xml", "tool.x1.xml",
                             "tool.-1.xml", "tool.00.xml", "tool.12.xml.bak", "tools.02.xml"}) {
        make(name, "2");
    }
    const Printed printed = show("1..9");
    EXPECT_EQ(printed.code, 0) << printed.err;
    EXPECT_TRUE(printed.out.starts_with(path("tool.03.xml") + "\n"));
    EXPECT_TRUE(printed.out.ends_with("Not chosen\n  " + path("tool.01.xml") +
                                      "  older than the chosen one\n"))
        << printed.out;
}

TEST_F(config_command, validate_prints_one_line_for_a_valid_document) {
    const Printed printed = validate("<a version='12'/>");
    EXPECT_EQ(printed.code, 0);
    EXPECT_EQ(printed.out, path("a.xml") + ": valid, version 12\n");
}

TEST_F(config_command, validate_compares_with_the_range_of_a_file_too) {
    const Printed printed =
        config({"validate", path("tool.03.xml"), "--versions", "1..2", "--quiet"});
    EXPECT_EQ(printed.code, 1);
    EXPECT_EQ(printed.out, "");
}

TEST_F(config_command, validate_reads_standard_input) {
    const StandardInput input("<a version='1'>\n<b></a>");
    const Printed printed = config({"validate", "-"});
    EXPECT_EQ(printed.code, 1);
    EXPECT_EQ(printed.out, "standard input:2:4: the end tag of \"a\"; expected </b>\n");
}

TEST_F(config_command, validate_reads_a_document_of_one_long_line_from_standard_input) {
    const StandardInput input("<a version='1' b='" + std::string(100'000, 'x') + "'/>");
    const Printed printed = config({"validate", "-"});
    EXPECT_EQ(printed.code, 0) << printed.err;
    EXPECT_EQ(printed.out, "standard input: valid, version 1\n");
}

TEST_F(config_command, validate_reads_utf16_from_standard_input) {
    std::string text = "\xFF\xFE";
    for (const char letter : std::string("<a version='1'>\n</a>\n")) text += {letter, '\0'};
    const StandardInput input(text);
    const Printed printed = config({"validate", "-"});
    EXPECT_EQ(printed.code, 0) << printed.err;
    EXPECT_EQ(printed.out, "standard input: valid, version 1\n");
}

TEST_F(config_command, new_makes_a_document_of_the_newest_version) {
    const Printed printed =
        config({"new", path("tool"), "--versions", "1..12", "--root", "machine"});
    EXPECT_EQ(printed.code, 0) << printed.err;
    EXPECT_EQ(printed.out, "Wrote " + path("tool.12.xml") + ".\n");
    EXPECT_EQ(nmk_shell::text_of(path("tool.12.xml")),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<machine version=\"12\" />\n");
    EXPECT_EQ(show("1..12").code, 0);
}

TEST_F(config_command, new_takes_the_root_from_the_name) {
    EXPECT_EQ(config({"new", path("axis.05.xml"), "--versions", "2"}).code, 0);
    EXPECT_EQ(nmk_shell::text_of(path("axis.05.xml")),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<axis version=\"2\" />\n");
    nmk_shell::expect_refused(config({"new", path("5 axis"), "--versions", "2"}),
                              "the root \"5 axis\"; expected a name of XML (see --root)");
}

TEST_F(config_command, new_keeps_a_file_that_exists_without_force) {
    nmk_shell::expect_refused(config({"new", path("tool"), "--versions", "1..3"}),
                              path("tool.03.xml") + ": exists; --force replaces it");
    EXPECT_EQ(nmk_shell::text_of(path("tool.03.xml")), "<tool version=\"3\"/>");
    EXPECT_EQ(config({"new", path("tool"), "--versions", "1..3", "--force"}).code, 0);
    EXPECT_EQ(nmk_shell::text_of(path("tool.03.xml")),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<tool version=\"3\" />\n");
}

TEST_F(config_command, new_reports_a_file_that_cannot_be_written) {
    nmk_shell::expect_refused(config({"new", path("none/tool"), "--versions", "1"}),
                              path("none/tool.01.xml") +
                                  ": cannot be written; expected a name in a directory that exists "
                                  "and may be written to");
}

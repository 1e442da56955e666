// nmk levels, and the option --level that every command takes.

#include "commands/levels/levels_command.h"
#include "shell/level_option.h"

#include <nmktoolbox/runtime/nmkVersion.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "app/shell/command_runner.h"

namespace {

using nmk_shell::Printed;

Printed levels(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "levels");
    return nmk_shell::run(arguments);
}

std::ptrdiff_t lines(const std::string& text) { return std::count(text.begin(), text.end(), '\n'); }

bool contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

// Levels belong to the whole process; each test leaves them at their defaults.
class levels_command : public testing::Test {
  protected:
    ~levels_command() override {
        dbgLevelManager& manager = *nmkVersion::get_manager();
        for (int position = 0; position < manager.size(); ++position) {
            dynamic_cast<nmkVersion&>(*manager.level(position)).set_default();
        }
    }
};

class level_option : public levels_command {
  protected:
    bool apply(const std::string& text) { return nmk_shell::apply_level_option(text, error); }
    std::string error;
};

}  // namespace

TEST_F(levels_command, lists_every_level_on_a_line_of_its_own) {
    const Printed answer = levels({});
    EXPECT_EQ(answer.code, 0);
    EXPECT_EQ(lines(answer.out), 198);  // a heading, 196 levels, their number
    EXPECT_TRUE(contains(answer.out, "\n196 levels\n"));
    EXPECT_LT(answer.out.find("\nSafetyNetTolerance "), answer.out.find("\nzone_memory "));
    EXPECT_EQ(answer.err, "");
}

TEST_F(levels_command, finds_by_name_and_by_description_whatever_the_case) {
    const Printed by_name = levels({"--find", "ITEMSORTER"});
    EXPECT_EQ(lines(by_name.out), 3);
    EXPECT_TRUE(contains(by_name.out, "\nitemsorter "));
    const Printed by_description = levels({"--find=point ordering"});
    EXPECT_EQ(by_description.out, by_name.out);
}

TEST_F(levels_command, an_empty_selection_is_not_an_error) {
    const Printed answer = levels({"--find", "no such words"});
    EXPECT_EQ(answer.code, 0);
    EXPECT_TRUE(contains(answer.out, "\n0 levels\n"));
}

TEST_F(levels_command, filters_by_state) {
    const Printed answer = levels({"--state", "unavailable"});
    EXPECT_TRUE(contains(answer.out, "\n5 levels\n")) << answer.out;
    EXPECT_TRUE(contains(answer.out, "\ncutfile "));
    EXPECT_TRUE(contains(levels({"--state", "previous"}).out, "\n0 levels\n"));
    ASSERT_EQ(nmkVersion::get_from_manager("cutfile").set_previous(), 1);
    EXPECT_TRUE(contains(levels({"--state=previous"}).out, "\n1 level\n"));
}

TEST_F(levels_command, combines_both_filters) {
    const Printed answer = levels({"--find", "sort", "--state", "unavailable"});
    EXPECT_TRUE(contains(answer.out, "\n1 level\n")) << answer.out;
    EXPECT_TRUE(contains(answer.out, "\ncylinder_sort "));
}

TEST_F(levels_command, shows_one_level) {
    const Printed answer = levels({"itemsorter"});
    EXPECT_EQ(answer.code, 0);
    EXPECT_EQ(answer.out,
              "name           itemsorter\n"
              "state          default\n"
              "level          1\n"
              "previous       0\n"
              "default        1\n"
              "preview        -\n"
              "prerelease     no\n"
              "description    Point ordering algorithm\n"
              "documentation  https://nmktoolbox.invalid/nmk/doc/nmkVersion/itemsorter.htm\n");
}

TEST_F(levels_command, shows_one_level_for_programs) {
    const Printed answer = levels({"--json", "stitch_smoothing"});
    EXPECT_EQ(answer.out,
              "{\n"
              "  \"schema\": 1,\n"
              "  \"levels\": [\n"
              "    {\n"
              "      \"name\": \"stitch_smoothing\",\n"
              "      \"state\": \"default\",\n"
              "      \"level\": 2,\n"
              "      \"previous\": 0,\n"
              "      \"default\": 2,\n"
              "      \"preview\": 1,\n"
              "      \"prerelease\": false,\n"
              "      \"description\": \"Select stitch smoothing method to use:\\n PREVIOUS = old "
              "smoother | DEFAULT  = strip smoother | PREVIEW  = Gaussian smoother\",\n"
              "      \"documentation\": "
              "\"https://nmktoolbox.invalid/nmk/doc/nmkVersion/stitch_smoothing.htm\"\n"
              "    }\n"
              "  ]\n"
              "}\n");
}

TEST_F(levels_command, a_setting_that_does_not_exist_is_null_for_programs) {
    const Printed answer = levels({"SafetyNetTolerance", "--json"});
    EXPECT_TRUE(
        contains(answer.out, "\"previous\": null,\n      \"default\": 0,\n      \"preview\": 1"));
}

TEST_F(levels_command, shows_the_state_after_level_is_applied) {
    const Printed answer = levels({"--level", "itemsorter=previous", "itemsorter"});
    EXPECT_EQ(answer.code, 0);
    EXPECT_TRUE(contains(answer.out, "state          previous\nlevel          0\n"));
}

TEST_F(levels_command, quiet_prints_only_json) {
    for (const std::vector<std::string>& words :
         {std::vector<std::string>{"--quiet"}, {"itemsorter", "--quiet"}}) {
        const Printed answer = levels(words);
        EXPECT_EQ(answer.code, 0);
        EXPECT_EQ(answer.out, "");
        EXPECT_EQ(answer.err, "");
    }
    EXPECT_EQ(levels({"--quiet", "--json"}).out, levels({"--json"}).out);
    nmk_shell::expect_refused(levels({"itemsroter", "--quiet"}), "did you mean itemsorter");
}

TEST_F(levels_command, an_unknown_name_is_refused_with_similar_names) {
    nmk_shell::expect_refused(levels({"itemsroter"}), "did you mean itemsorter");
    nmk_shell::expect_refused(levels({"qqqqqqqqqq"}), "unknown level 'qqqqqqqqqq'");
}

TEST_F(levels_command, refuses_wrong_arguments_with_one_line) {
    nmk_shell::expect_refused(levels({"--state", "sleepy"}), "expected unavailable, default");
    nmk_shell::expect_refused(levels({"--find"}), "--find needs a value");
    nmk_shell::expect_refused(levels({"--frob"}), "unknown option \"--frob\"; see nmk help levels");
    nmk_shell::expect_refused(levels({"--finder=x"}), "unknown option");
    nmk_shell::expect_refused(levels({"sorter", "itemsorter"}),
                              "expected one NAME; found \"sorter\" and \"itemsorter\"");
    nmk_shell::expect_refused(levels({"sorter", "--find", "x"}),
                              "cannot be combined with --find or --state");
    nmk_shell::expect_refused(levels({"--two\nlines"}), "unknown option");
    nmk_shell::expect_refused(levels({"--level", "sorter"}), "NAME=NUMBER");
}

TEST_F(levels_command, reports_an_output_that_cannot_be_written) {
    std::ostringstream out;
    std::ostringstream err;
    out.setstate(std::ios::badbit);
    EXPECT_EQ(nmk_shell::run_tool(nmk_shell::tool_commands, {"levels"}, out, err), 2);
    EXPECT_TRUE(contains(err.str(), "cannot be written"));
}

TEST_F(level_option, sets_each_setting) {
    nmkVersion& level = nmkVersion::get_from_manager("curvature_smooth");
    EXPECT_TRUE(apply("curvature_smooth=previous"));
    EXPECT_EQ(level.get_level(), 0);
    EXPECT_TRUE(apply("curvature_smooth=preview"));
    EXPECT_EQ(level.get_level(), 2);
    EXPECT_TRUE(apply("curvature_smooth=default"));
    EXPECT_EQ(level.get_level(), 1);
    EXPECT_TRUE(apply("curvature_smooth=17"));
    EXPECT_EQ(level.get_level(), 17);
    EXPECT_TRUE(apply("curvature_smooth=-1"));
    EXPECT_EQ(level.get_level(), -1);
    EXPECT_EQ(error, "");
}

TEST_F(level_option, reports_a_setting_that_the_level_does_not_have) {
    EXPECT_FALSE(apply("itemsorter=preview"));
    EXPECT_EQ(error, "level itemsorter has no preview setting");
    EXPECT_EQ(nmkVersion::get_from_manager("itemsorter").get_level(), 1);
}

TEST_F(level_option, refuses_an_unknown_setting_and_keeps_the_level) {
    for (const std::string setting : {"Preview", "1.5", "1x", "-2", "99999999999", " 1", "+1"}) {
        EXPECT_FALSE(apply("itemsorter=" + setting)) << setting;
        EXPECT_TRUE(contains(error, "expected previous, default, preview")) << error;
    }
    EXPECT_EQ(nmkVersion::get_from_manager("itemsorter").get_level(), 1);
}

TEST_F(level_option, refuses_a_missing_name_setting_or_equals_sign) {
    for (const std::string text : {"", "=", "itemsorter", "itemsorter=", "=previous"}) {
        EXPECT_FALSE(apply(text)) << text;
        EXPECT_TRUE(contains(error, "expected NAME=previous")) << error;
    }
}

TEST_F(level_option, lists_similar_names_for_an_unknown_one) {
    EXPECT_FALSE(apply("ItemSorter=previous"));
    EXPECT_EQ(error, "unknown level 'ItemSorter'; did you mean itemsorter or sorter?");
    EXPECT_FALSE(apply(std::string("itemsorter\0x=previous", 21)));
    EXPECT_EQ(lines(error), 0);
}

TEST_F(level_option, lists_no_similar_names_for_an_endless_name) {
    const std::string name(1'000'000, 'a');
    EXPECT_TRUE(nmk_shell::similar_level_names(name).empty());
    EXPECT_FALSE(apply(name + "=1"));
    EXPECT_LT(error.size(), 400U);
}

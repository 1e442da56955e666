// merge_tools_command: `nmk order --merge-tools` with drill files, tables and several files.

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "app/shell/command_runner.h"
#include "scratch_directory.h"

namespace nmk_order {
namespace {

const char* const drill =
    "M48\nMETRIC,TZ,000.000\nT1C0.8\nT2C1.0\nT3C0.8\n%\n"
    "T1\nX1000Y0\nT2\nX5000Y0\nT3\nX1000Y0\nX2000Y0\nM30\n";
const char* const table =
    "x;y;tool;diameter\n1;0;A;0.8\n5;0;\"B\";1\n3;0;C;0.80\n2;0; C ;0.8\n9;0;D;\n8;0;E;\n";

class merge_tools_command : public testing::Test {
  protected:
    std::string file(const std::string& name) const { return folder.path() + "/" + name; }

    ScratchDirectory folder;
};

TEST_F(merge_tools_command, a_drill_file_is_written_with_one_tool_of_each_diameter) {
    const std::string name = folder.file("a.drl", drill);
    const nmk_shell::Printed printed =
        nmk_shell::run({"order", name, "--merge-tools", "-o", file("o.drl")});
    EXPECT_EQ(printed.code, 0) << printed.err;
    EXPECT_EQ(nmk_shell::text_of(file("o.drl")),
              "M48\nMETRIC,TZ,000.000\nT1C0.8\nT2C1.0\n%\n"
              "T1\nX1000Y0\nX1000Y0\nX2000Y0\nT2\nX5000Y0\nM30\n");
    EXPECT_NE(printed.out.find("4 items, 2 tools"), std::string::npos) << printed.out;
}

TEST_F(merge_tools_command, notes_are_those_of_the_merged_tools) {
    const std::string name = folder.file("a.drl", drill);
    const auto notes = [&](std::vector<std::string> more) {
        std::vector<std::string> words = {"order", name, "--json"};
        words.insert(words.end(), more.begin(), more.end());
        return nlohmann::json::parse(nmk_shell::run(words).out)["notes"];
    };
    EXPECT_EQ(notes({}), (nlohmann::json{"T1 and T3 have the same diameter, 0.8 mm"}));
    EXPECT_EQ(notes({"--merge-tools"}),
              (nlohmann::json{"T3: merged into T1, which has the same diameter",
                              "T1: 1 item coincides with another one of this tool"}));
    EXPECT_EQ(notes({"--merge-tools", "--across-tools"}), notes({"--merge-tools"}));
}

TEST_F(merge_tools_command, a_table_keeps_tools_without_a_diameter) {
    const std::string name = folder.file("a.csv", table);
    ASSERT_EQ(nmk_shell::run({"order", name, "--merge-tools", "-o", file("o.csv")}).code, 0);
    EXPECT_EQ(nmk_shell::text_of(file("o.csv")),
              "x;y;tool;diameter\n1;0;A;0.8\n2;0;A;0.8\n3;0;A;0.80\n5;0;B;1\n9;0;D;\n8;0;E;\n");
}

TEST_F(merge_tools_command, several_files_are_merged_each_by_itself) {
    const std::string a = folder.file("a.drl", drill);
    const std::string b = folder.file("b.csv", table);
    const nmk_shell::Printed printed =
        nmk_shell::run({"order", a, b, "--merge-tools", "--in-place", "--jobs", "2"});
    EXPECT_EQ(printed.code, 0) << printed.err;
    EXPECT_EQ(nmk_shell::text_of(a).find("T3"), std::string::npos);
    EXPECT_EQ(nmk_shell::text_of(b).find(";C;"), std::string::npos);
    EXPECT_NE(printed.out.find("a.drl: T3: merged into T1"), std::string::npos) << printed.out;
}

TEST_F(merge_tools_command, json_says_so_and_counts_the_merged_tools) {
    const std::string name = folder.file("a.drl", drill);
    const auto json =
        nlohmann::json::parse(nmk_shell::run({"order", name, "--merge-tools", "--json"}).out);
    EXPECT_EQ(json["merge_tools"], true);
    EXPECT_EQ(json["tools"].size(), 2U);
    EXPECT_EQ(json["tools"][0]["items"], 3);
    EXPECT_EQ(json["tool_changes"]["after"], 1);
}

TEST_F(merge_tools_command, without_it_tools_of_one_diameter_stay_apart) {
    const std::string name = folder.file("a.drl", drill);
    ASSERT_EQ(nmk_shell::run({"order", name, "-o", file("o.drl")}).code, 0);
    EXPECT_NE(nmk_shell::text_of(file("o.drl")).find("T3C0.8"), std::string::npos);
}

}  // namespace
}  // namespace nmk_order

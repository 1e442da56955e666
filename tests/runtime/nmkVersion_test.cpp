// The version levels: the table, compared row by row with lists under cases/, and the settings.

#include <nmktoolbox/runtime.h>

#include <gtest/gtest.h>

#include <climits>
#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace {

struct ListedLevel {
    std::string name;
    int previous = 0;
    int default_level = 0;
    int preview = 0;
};

std::vector<ListedLevel> listed_levels() {
    std::ifstream file(NMK_CASES_DIR "/version_levels.txt");
    std::vector<ListedLevel> levels;
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with('#')) continue;
        ListedLevel level;
        std::istringstream(line) >> level.name >> level.previous >> level.default_level >>
            level.preview;
        levels.push_back(level);
    }
    return levels;
}

std::string with_line_feeds(std::string text) {
    for (std::size_t at = 0; (at = text.find("\\n", at)) != std::string::npos;) {
        text.replace(at, 2, 1, '\n');
    }
    return text;
}

std::map<std::string, std::string> listed_descriptions() {
    std::ifstream file(NMK_CASES_DIR "/version_level_descriptions.txt");
    std::map<std::string, std::string> descriptions;
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with('#')) continue;
        const std::size_t tab = line.find('\t');
        descriptions[line.substr(0, tab)] = with_line_feeds(line.substr(tab + 1));
    }
    return descriptions;
}

nmkVersion& named(const std::string& name) { return nmkVersion::get_from_manager(name.c_str()); }

// Reads a level while the static objects of this program are made.
const int level_seen_while_statics_are_made = named("voronoi_offset").get_level();

// Sets every level to its default before and after each test.
class nmkVersionTest : public testing::Test {
  protected:
    nmkVersionTest() { set_defaults(); }
    ~nmkVersionTest() override { set_defaults(); }

  private:
    static void set_defaults() {
        for (const ListedLevel& each : listed_levels()) named(each.name).set_default();
    }
};

}  // namespace

class nmkVersion_table : public nmkVersionTest {};
class nmkVersion_settings : public nmkVersionTest {};
class nmkVersion_manager : public nmkVersionTest {};

TEST_F(nmkVersion_table, holds_every_listed_level_in_byte_order_of_the_names_and_no_other) {
    const std::vector<ListedLevel> listed = listed_levels();
    ASSERT_EQ(listed.size(), 196U);
    const dbgLevelManager& manager = *nmkVersion::get_manager();
    ASSERT_EQ(manager.size(), 196);
    for (int position = 0; position < 196; ++position) {
        EXPECT_EQ(manager.level(position)->get_name(), listed[std::size_t(position)].name);
    }
}

TEST_F(nmkVersion_table, gives_every_level_its_three_integers_and_starts_at_the_default) {
    for (const ListedLevel& each : listed_levels()) {
        const nmkVersion& level = named(each.name);
        EXPECT_EQ(level.get_name(), each.name);
        EXPECT_EQ(level.get_previous_level(), each.previous) << each.name;
        EXPECT_EQ(level.get_default_level(), each.default_level) << each.name;
        EXPECT_EQ(level.get_preview_level(), each.preview) << each.name;
        EXPECT_EQ(level.get_level(), each.default_level) << each.name;
    }
}

TEST_F(nmkVersion_table, is_complete_while_static_objects_are_made) {
    EXPECT_EQ(level_seen_while_statics_are_made, 2);
}

TEST_F(nmkVersion_table, has_exactly_the_listed_descriptions) {
    const auto descriptions = listed_descriptions();
    ASSERT_EQ(descriptions.size(), 61U);
    for (const auto& [name, description] : descriptions) {
        EXPECT_EQ(named(name).get_description(), description) << name;
    }
}

TEST_F(nmkVersion_table, leaves_seven_descriptions_empty_and_fills_all_others_on_one_line) {
    const auto descriptions = listed_descriptions();
    std::set<std::string> empty;
    for (const ListedLevel& each : listed_levels()) {
        const std::string description = named(each.name).get_description();
        if (description.empty()) empty.insert(each.name);
        if (!descriptions.contains(each.name)) {
            EXPECT_EQ(description.find('\n'), std::string::npos) << each.name;
        }
    }
    const std::set<std::string> expected = {
        "always_auto_save", "molarmill_template_project", "full_proj_pars", "minitoolpath",
        "query_unlock",     "setupsheet_strip_ext",       "toolpathtype"};
    EXPECT_EQ(empty, expected);
}

TEST_F(nmkVersion_table, has_a_line_feed_in_one_description) {
    const std::string description = named("stitch_smoothing").get_description();
    EXPECT_NE(description.find(":\n PREVIOUS = old smoother"), std::string::npos);
}

TEST_F(nmkVersion_table, marks_three_levels_as_prerelease) {
    std::set<std::string> marked;
    for (const ListedLevel& each : listed_levels()) {
        if (named(each.name).get_prerelease() != 0) marked.insert(each.name);
    }
    const std::set<std::string> expected = {"holetagging", "prerelease_dummy", "propagate_changes"};
    EXPECT_EQ(marked, expected);
    EXPECT_EQ(named("holetagging").get_prerelease(), 1);
}

TEST_F(nmkVersion_table, forms_each_link_from_host_folder_name_and_ending) {
    for (const ListedLevel& each : listed_levels()) {
        const std::string link = named(each.name).get_link();
        const std::string ending = "/nmk/doc/nmkVersion/" + each.name + ".htm";
        ASSERT_TRUE(link.ends_with(ending)) << link;
        EXPECT_TRUE(link.starts_with("https://")) << link;
        EXPECT_GT(link.size(), ending.size() + std::string("https://").size()) << link;
        EXPECT_EQ(named(each.name).get_source_file(), nullptr);
    }
}

TEST_F(nmkVersion_settings, set_previous_returns_0_when_there_is_no_previous_setting) {
    nmkVersion& level = named("SafetyNetTolerance");
    EXPECT_EQ(level.set_previous(), 0);
    EXPECT_EQ(level.get_level(), 0);
    EXPECT_STREQ(level.get_current(), "default");
}

TEST_F(nmkVersion_settings, a_level_with_a_negative_default_is_unavailable_until_it_is_set) {
    nmkVersion& level = named("cutfile");
    EXPECT_STREQ(level.get_current(), "unavailable");
    EXPECT_EQ(level.set_preview(), 1);
    EXPECT_EQ(level.get_level(), 0);
    EXPECT_STREQ(level.get_current(), "preview");
    EXPECT_EQ(level.set_previous(), 1);
    EXPECT_EQ(level.get_level(), 1);
    EXPECT_STREQ(level.get_current(), "previous");
    EXPECT_EQ(level.set_default(), 1);
    EXPECT_EQ(level.get_level(), -1);
    EXPECT_STREQ(level.get_current(), "unavailable");
}

TEST_F(nmkVersion_settings, a_negative_default_never_reads_default) {
    nmkVersion& level = named("blade_default_tool_axis_smoothing_unknown_setup");
    EXPECT_EQ(level.set_previous(), 0);
    EXPECT_STREQ(level.get_current(), "unavailable");
    EXPECT_EQ(level.set_preview(), 1);
    EXPECT_EQ(level.get_level(), 1);
    EXPECT_EQ(level.set_default(), 1);
    EXPECT_EQ(level.get_level(), -1);
    EXPECT_STREQ(level.get_current(), "unavailable");
}

TEST_F(nmkVersion_settings, a_level_that_matches_none_of_the_settings_reads_unknown) {
    nmkVersion& level = named("spun_profile");
    level.set_level(1);
    EXPECT_STREQ(level.get_current(), "unknown");
    level.set_level(INT_MAX);
    EXPECT_STREQ(level.get_current(), "unknown");
}

TEST_F(nmkVersion_settings, set_preview_returns_0_when_there_is_no_preview_setting) {
    nmkVersion& level = named("stockmodel_with_undercut");
    EXPECT_EQ(level.set_preview(), 0);
    EXPECT_EQ(level.get_level(), 2);
    EXPECT_STREQ(level.get_current(), "default");
}

TEST_F(nmkVersion_settings, zero_is_a_setting_like_any_other) {
    EXPECT_STREQ(named("SafetyNetTolerance").get_current(), "default");
    EXPECT_EQ(named("SafetyNetTolerance").get_level(), 0);
    EXPECT_EQ(named("spun_profile").set_preview(), 1);
    EXPECT_EQ(named("spun_profile").get_level(), 0);
    EXPECT_STREQ(named("spun_profile").get_current(), "preview");
}

TEST_F(nmkVersion_settings, any_negative_number_reads_unavailable) {
    nmkVersion& level = named("itemsorter");
    level.set_level(INT_MIN);
    EXPECT_STREQ(level.get_current(), "unavailable");
}

TEST_F(nmkVersion_settings, default_wins_over_equal_settings_and_previous_over_preview) {
    {
        nmkVersion all_equal("nmkVersion_test_equal", "", 4, 4, 4, "", 0);
        EXPECT_EQ(all_equal.set_preview(), 1);
        EXPECT_STREQ(all_equal.get_current(), "default");
    }
    nmkVersion two_equal("nmkVersion_test_two", "", 5, 4, 5, "", 0);
    EXPECT_EQ(two_equal.set_preview(), 1);
    EXPECT_STREQ(two_equal.get_current(), "previous");
}

TEST_F(nmkVersion_settings, every_level_accepts_exactly_the_settings_that_it_has) {
    for (const ListedLevel& each : listed_levels()) {
        nmkVersion& level = named(each.name);
        EXPECT_EQ(level.set_previous(), each.previous < 0 ? 0 : 1) << each.name;
        EXPECT_EQ(level.get_level(), each.previous < 0 ? each.default_level : each.previous);
        EXPECT_EQ(level.set_default(), 1) << each.name;
        EXPECT_EQ(level.set_preview(), each.preview < 0 ? 0 : 1) << each.name;
        EXPECT_EQ(level.get_level(), each.preview < 0 ? each.default_level : each.preview);
        level.set_default();
    }
}

TEST_F(nmkVersion_manager, a_new_level_is_found_until_it_is_destroyed) {
    {
        nmkVersion own("nmkVersion_test_own", "of a test", -1, 3, 7, "link", 1);
        EXPECT_EQ(&named("nmkVersion_test_own"), &own);
        EXPECT_EQ(nmkVersion::get_manager()->size(), 197);
        EXPECT_EQ(nmkVersion::get_manager()->level(196), &own);
        EXPECT_EQ(own.get_level(), 3);
        EXPECT_EQ(own.get_prerelease(), 1);
        EXPECT_STREQ(own.get_link(), "link");
    }
    EXPECT_EQ(nmkVersion::get_manager()->get_by_name("nmkVersion_test_own"), nullptr);
    EXPECT_EQ(nmkVersion::get_manager()->size(), 196);
}

TEST_F(nmkVersion_manager, an_unknown_name_gives_one_shared_object_that_is_not_registered) {
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    nmkVersion& unknown = named("no_such_level");
    EXPECT_EQ(&unknown, &named("nor_this"));
    EXPECT_EQ(&unknown, &nmkVersion::get_from_manager(nullptr));
    EXPECT_EQ(&unknown, &named("Itemsorter"));
    EXPECT_STREQ(unknown.get_current(), "unavailable");
    EXPECT_EQ(unknown.set_previous(), 0);
    EXPECT_EQ(unknown.set_preview(), 0);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(nmkVersion::get_manager()->get_by_name("no_such_level"), nullptr);
    EXPECT_EQ(nmkVersion::get_manager()->size(), 196);
}

TEST_F(nmkVersion_manager, a_plain_level_among_the_version_levels_counts_as_unknown) {
    dbgLevel plain("nmkVersion_test_plain", "", 1, "", nullptr, 0);
    nmkVersion::get_manager()->register_level(&plain);
    ASSERT_EQ(nmkVersion::get_manager()->get_by_name("nmkVersion_test_plain"), &plain);
    EXPECT_EQ(&named("nmkVersion_test_plain"), &named("no_such_level"));
}

TEST_F(nmkVersion_manager, a_change_through_an_unknown_name_is_lost) {
    named("no_such_level").set_level(7);
    EXPECT_EQ(named("nor_this").get_level(), -1);
    EXPECT_STREQ(named("no_such_level").get_current(), "unavailable");
}

TEST_F(nmkVersion_manager, is_level_recognises_exactly_the_names_of_version_levels) {
    EXPECT_TRUE(nmkVersion::is_level("itemsorter"));
    EXPECT_FALSE(nmkVersion::is_level("Itemsorter"));
    EXPECT_FALSE(nmkVersion::is_level("itemsorte"));
    EXPECT_FALSE(nmkVersion::is_level(""));
    EXPECT_FALSE(nmkVersion::is_level(nullptr));
    EXPECT_FALSE(nmkVersion::is_level("nmkutils:angleassert"));
    dbgLevel plain("nmkVersion_test_plain", "", 1, "", nullptr, 0);
    nmkVersion::get_manager()->register_level(&plain);
    EXPECT_FALSE(nmkVersion::is_level("nmkVersion_test_plain"));
}

TEST_F(nmkVersion_manager, is_not_the_manager_of_plain_levels) {
    EXPECT_NE(nmkVersion::get_manager(), dbgLevel::get_manager());
    EXPECT_EQ(dbgLevel::get_manager()->get_by_name("itemsorter"), nullptr);
}

TEST(dbgLevel_angleassert_nmkutils, is_a_plain_level_and_not_a_version_level) {
    const dbgLevel& level = dbgLevel_angleassert_nmkutils;
    EXPECT_STREQ(level.get_name(), "nmkutils:angleassert");
    EXPECT_STREQ(level.get_description(), "Check solutions to anglesolver.");
    EXPECT_EQ(level.get_level(), 0);
    EXPECT_TRUE(
        std::string(level.get_link()).ends_with("nmk/doc/dbgLevel/nmkutils/angleassert.htm"));
    EXPECT_EQ(dbgLevel::get_manager()->get_by_name("nmkutils:angleassert"), &level);
    EXPECT_EQ(nmkVersion::get_manager()->get_by_name("nmkutils:angleassert"), nullptr);
}

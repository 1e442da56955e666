// Debug levels and the managers that find them.

#include <debugncam/dbgLevel.h>
#include <debugncam/dbgLevelManager.h>

#include <string>

#include <gtest/gtest.h>

TEST(dbgLevel, returns_what_it_was_made_with) {
    dbgLevel level("dbgLevel_test", "of a test", 3, "link", "file.cpp", 1);
    EXPECT_STREQ(level.get_name(), "dbgLevel_test");
    EXPECT_STREQ(level.get_description(), "of a test");
    EXPECT_STREQ(level.get_link(), "link");
    EXPECT_STREQ(level.get_source_file(), "file.cpp");
    EXPECT_EQ(level.get_prerelease(), 1);
    EXPECT_EQ(level.get_level(), 3);
    level.set_level(-2);
    EXPECT_EQ(level.get_level(), -2);
}

TEST(dbgLevel, is_registered_with_the_manager_of_plain_levels_until_it_is_destroyed) {
    const int before = dbgLevel::get_manager()->size();
    {
        dbgLevel level("dbgLevel_test_short", "", 0, "", nullptr, 0);
        EXPECT_EQ(dbgLevel::get_manager()->get_by_name("dbgLevel_test_short"), &level);
    }
    EXPECT_EQ(dbgLevel::get_manager()->get_by_name("dbgLevel_test_short"), nullptr);
    EXPECT_EQ(dbgLevel::get_manager()->size(), before);
}

TEST(dbgLevelManager, lists_levels_in_the_order_of_registration) {
    dbgLevelManager manager;
    dbgLevel second("b", "", 0, "", nullptr, 0);
    dbgLevel first("c", "", 0, "", nullptr, 0);
    manager.register_level(&first);
    manager.register_level(&second);
    ASSERT_EQ(manager.size(), 2);
    EXPECT_EQ(manager.level(0), &first);
    EXPECT_EQ(manager.level(1), &second);
    EXPECT_EQ(manager.level(2), nullptr);
    EXPECT_EQ(manager.level(-1), nullptr);
}

TEST(dbgLevelManager, finds_the_first_level_with_exactly_the_name) {
    dbgLevelManager manager;
    const std::string same_text = "name";
    dbgLevel first("name", "", 0, "", nullptr, 0);
    dbgLevel second(same_text.c_str(), "", 0, "", nullptr, 0);
    manager.register_level(&first);
    manager.register_level(&second);
    EXPECT_EQ(manager.get_by_name("name"), &first);
    EXPECT_EQ(manager.get_by_name(same_text.c_str()), &first);
    EXPECT_EQ(manager.get_by_name("nam"), nullptr);
    EXPECT_EQ(manager.get_by_name("Name"), nullptr);
    EXPECT_EQ(manager.get_by_name(""), nullptr);
    EXPECT_EQ(manager.get_by_name(nullptr), nullptr);
}

TEST(dbgLevelManager, ignores_levels_without_a_name_in_a_search) {
    dbgLevelManager manager;
    dbgLevel unnamed(nullptr, nullptr, 0, nullptr, nullptr, 0);
    manager.register_level(&unnamed);
    EXPECT_EQ(manager.get_by_name("name"), nullptr);
    EXPECT_EQ(manager.get_by_name(nullptr), nullptr);
    EXPECT_EQ(manager.level(0), &unnamed);
}

TEST(dbgLevelManager, removing_a_level_of_another_manager_does_nothing) {
    dbgLevelManager manager;
    dbgLevel level("dbgLevel_test_other", "", 0, "", nullptr, 0);
    manager.remove_level(&level);
    EXPECT_EQ(dbgLevel::get_manager()->get_by_name("dbgLevel_test_other"), &level);
}

TEST(dbgLevelManager, ignores_null_and_a_second_registration) {
    dbgLevelManager manager;
    dbgLevel level("once", "", 0, "", nullptr, 0);
    manager.register_level(&level);
    manager.register_level(&level);
    manager.register_level(nullptr);
    manager.remove_level(nullptr);
    EXPECT_EQ(manager.size(), 1);
}

TEST(dbgLevelManager, a_level_registered_with_another_manager_moves) {
    dbgLevelManager manager;
    dbgLevel level("dbgLevel_test_moves", "", 0, "", nullptr, 0);
    manager.register_level(&level);
    EXPECT_EQ(dbgLevel::get_manager()->get_by_name("dbgLevel_test_moves"), nullptr);
    manager.remove_level(&level);
    EXPECT_EQ(manager.size(), 0);
}

TEST(dbgLevelManager, may_be_destroyed_before_its_levels) {
    dbgLevel level("dbgLevel_test_survivor", "", 5, "", nullptr, 0);
    {
        dbgLevelManager manager;
        manager.register_level(&level);
    }
    dbgLevelManager next;
    next.register_level(&level);
    EXPECT_EQ(next.get_by_name("dbgLevel_test_survivor"), &level);
    EXPECT_EQ(level.get_level(), 5);
}

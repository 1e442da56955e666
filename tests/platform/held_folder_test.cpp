#include <gtest/gtest.h>
#include <winapi/held_folder.h>
#include <winapi/last_error.h>

#include <filesystem>
#include <string>
#include <vector>

#include "scratch_folder.h"

namespace fs = std::filesystem;
using Removal = winapi_held_folder::Removal;

TEST(winapi_held_folder, opens_a_folder_but_no_link_file_or_missing_one) {
    const ScratchFolder scratch;
    fs::create_directory(scratch.path() + "/d");
    fs::create_directory_symlink("d", scratch.path() + "/link");
    EXPECT_TRUE(winapi_held_folder((scratch.path() + "/d").c_str()).is_open());
    EXPECT_FALSE(winapi_held_folder((scratch.path() + "/link").c_str()).is_open());
    EXPECT_FALSE(winapi_held_folder(scratch.file("f", "").c_str()).is_open());
    EXPECT_FALSE(winapi_held_folder((scratch.path() + "/missing").c_str()).is_open());
    EXPECT_EQ(GetLastError(), ERROR_FILE_NOT_FOUND);
    EXPECT_FALSE(winapi_held_folder(nullptr).is_open());
    EXPECT_FALSE(winapi_held_folder("").is_open());
}

TEST(winapi_held_folder, lists_by_byte_value_without_the_dots) {
    const ScratchFolder scratch;
    for (const char* name : {"b", "a", ".x", "\xFF"}) scratch.file(name, "");
    const winapi_held_folder folder(scratch.path().c_str());
    std::vector<std::string> names{"left over"};
    EXPECT_TRUE(folder.list(names));
    EXPECT_EQ(names, (std::vector<std::string>{".x", "a", "b", "\xFF"}));
    EXPECT_TRUE(folder.list(names));
    EXPECT_EQ(names.size(), 4U);
}

TEST(winapi_held_folder, goes_into_folders_and_not_into_links_to_them) {
    const ScratchFolder scratch;
    scratch.file("f", "");
    fs::create_directory(scratch.path() + "/d");
    fs::create_directory_symlink("d", scratch.path() + "/link");
    fs::create_symlink("nowhere", scratch.path() + "/broken");
    winapi_held_folder folder(scratch.path().c_str());
    for (const char* name : {"d", "link", "f", "broken"}) EXPECT_TRUE(folder.exists(name)) << name;
    EXPECT_FALSE(folder.exists("missing"));
    EXPECT_FALSE(folder.enter("link"));
    EXPECT_FALSE(folder.enter("f"));
    EXPECT_FALSE(folder.enter("missing"));
    EXPECT_TRUE(folder.exists("d"));
    EXPECT_TRUE(folder.enter("d"));
}

TEST(winapi_held_folder, goes_in_and_comes_back) {
    const ScratchFolder scratch;
    fs::create_directories(scratch.path() + "/a/b");
    winapi_held_folder folder(scratch.path().c_str());
    ASSERT_TRUE(folder.enter("a"));
    ASSERT_TRUE(folder.enter("b"));
    EXPECT_TRUE(folder.leave());
    EXPECT_TRUE(folder.exists("b"));
    EXPECT_TRUE(folder.leave());
    EXPECT_TRUE(folder.exists("a"));
}

TEST(winapi_held_folder, does_not_come_back_to_another_folder) {
    const ScratchFolder scratch;
    fs::create_directories(scratch.path() + "/a/b");
    fs::create_directory(scratch.path() + "/other");
    winapi_held_folder folder((scratch.path() + "/a").c_str());
    ASSERT_TRUE(folder.enter("b"));
    fs::rename(scratch.path() + "/a/b", scratch.path() + "/other/b");
    EXPECT_FALSE(folder.leave());
}

TEST(winapi_held_folder, deletes_files_links_and_empty_folders) {
    const ScratchFolder scratch;
    scratch.file("f", "");
    fs::permissions(scratch.file("read_only", ""), fs::perms::owner_read);
    fs::create_symlink("read_only", scratch.path() + "/link");
    fs::create_directories(scratch.path() + "/full/empty");
    const winapi_held_folder folder(scratch.path().c_str());
    EXPECT_EQ(folder.remove_file("f"), Removal::done);
    EXPECT_EQ(folder.remove_file("link"), Removal::done);
    EXPECT_EQ(folder.remove_file("missing"), Removal::done);
    EXPECT_EQ(folder.remove_file("read_only"), Removal::refused);
    EXPECT_EQ(GetLastError(), ERROR_ACCESS_DENIED);
    EXPECT_EQ(folder.remove_file("full"), Removal::is_folder);
    EXPECT_FALSE(folder.remove_folder("full"));
    EXPECT_EQ(GetLastError(), ERROR_DIR_NOT_EMPTY);
    EXPECT_TRUE(folder.remove_folder("missing"));
    fs::remove(scratch.path() + "/full/empty");
    EXPECT_TRUE(folder.remove_folder("full"));
    EXPECT_EQ(scratch.file_count(), 1U);
}

TEST(winapi_held_folder, gives_the_owner_the_right_to_write) {
    const ScratchFolder scratch;
    fs::permissions(scratch.path(), fs::perms::owner_read | fs::perms::owner_exec);
    winapi_held_folder(scratch.path().c_str()).let_write();
    EXPECT_EQ(fs::status(scratch.path()).permissions(), fs::perms::owner_all);
}

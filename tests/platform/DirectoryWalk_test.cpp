// Walking through a tree by open directories.
#include <filesystem/directory_walk.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <string>
#include <vector>

#include "disk_fault.h"
#include "scratch_directory.h"

namespace fs = std::filesystem;
using nmk_filesystem::DirectoryListing;
using nmk_filesystem::DirectoryWalk;
using Symlink = DirectoryWalk::Symlink;

namespace {

class StartedWalk : public DirectoryWalk {
  public:
    explicit StartedWalk(const std::string& name, Use use = Use::listing) : DirectoryWalk(use) {
        EXPECT_EQ(open(name.c_str(), Symlink::refused), 0);
    }
};

int open_refusing_symlinks(const std::string& name) {
    return DirectoryWalk(DirectoryWalk::Use::listing).open(name.c_str(), Symlink::refused);
}

std::vector<std::string> names_in(const DirectoryWalk& walk) {
    DirectoryListing entries;
    EXPECT_EQ(walk.list(entries), 0);
    std::vector<std::string> names;
    for (std::size_t i = 0; i < entries.size(); ++i) names.emplace_back(entries[i].name);
    return names;
}

}  // namespace

TEST(DirectoryWalk, opens_a_directory_but_no_symlink_file_or_missing_name) {
    const ScratchDirectory scratch;
    fs::create_directory(scratch.path() + "/d");
    fs::create_directory_symlink("d", scratch.path() + "/symlink");
    EXPECT_EQ(open_refusing_symlinks(scratch.path() + "/d"), 0);
    EXPECT_EQ(open_refusing_symlinks(scratch.path() + "/symlink"), ENOTDIR);
    EXPECT_EQ(open_refusing_symlinks(scratch.file("f", "")), ENOTDIR);
    EXPECT_EQ(open_refusing_symlinks(scratch.path() + "/missing"), ENOENT);
    EXPECT_EQ(open_refusing_symlinks(""), ENOENT);
}

TEST(DirectoryWalk, opens_a_symlink_to_a_directory_where_that_is_asked_for) {
    const ScratchDirectory scratch;
    fs::create_directory_symlink(".", scratch.path() + "/symlink");
    DirectoryWalk walk(DirectoryWalk::Use::listing);
    EXPECT_EQ(walk.open((scratch.path() + "/symlink").c_str(), Symlink::followed), 0);
    EXPECT_EQ(names_in(walk), std::vector<std::string>{"symlink"});
}

TEST(DirectoryWalk, lists_by_byte_value_without_the_dots) {
    const ScratchDirectory scratch;
    for (const char* name : {"b", "a", ".x", "..y", "\xFF"}) scratch.file(name, "");
    const StartedWalk walk(scratch.path());
    const std::vector<std::string> expected{"..y", ".x", "a", "b", "\xFF"};
    EXPECT_EQ(names_in(walk), expected);
    EXPECT_EQ(names_in(walk), expected) << "the second time";
}

TEST(DirectoryWalk, enters_directories_and_not_symlinks_to_them) {
    const ScratchDirectory scratch;
    scratch.file("f", "");
    fs::create_directory(scratch.path() + "/d");
    fs::create_directory_symlink("d", scratch.path() + "/symlink");
    fs::create_symlink("nowhere", scratch.path() + "/broken");
    StartedWalk walk(scratch.path());
    for (const char* name : {"d", "symlink", "f", "broken"}) EXPECT_TRUE(walk.exists(name)) << name;
    EXPECT_FALSE(walk.exists("missing"));
    EXPECT_EQ(walk.enter("symlink"), ENOTDIR);
    EXPECT_EQ(walk.enter("f"), ENOTDIR);
    EXPECT_EQ(walk.enter("missing"), ENOENT);
    EXPECT_TRUE(walk.exists("d")) << "the walk stays where it was";
    EXPECT_EQ(walk.enter("d"), 0);
}

TEST(DirectoryWalk, moves_down_and_back_up) {
    const ScratchDirectory scratch;
    fs::create_directories(scratch.path() + "/a/b");
    StartedWalk walk(scratch.path());
    ASSERT_EQ(walk.enter("a"), 0);
    ASSERT_EQ(walk.enter("b"), 0);
    EXPECT_EQ(walk.leave(), 0);
    EXPECT_TRUE(walk.exists("b"));
    EXPECT_EQ(walk.leave(), 0);
    EXPECT_TRUE(walk.exists("a"));
}

TEST(DirectoryWalk, does_not_move_back_to_another_directory) {
    const ScratchDirectory scratch;
    fs::create_directories(scratch.path() + "/a/b");
    fs::create_directory(scratch.path() + "/other");
    StartedWalk walk(scratch.path() + "/a");
    ASSERT_EQ(walk.enter("b"), 0);
    fs::rename(scratch.path() + "/a/b", scratch.path() + "/other/b");
    EXPECT_EQ(walk.leave(), ENOENT);
}

TEST(DirectoryWalk, deletes_files_symlinks_and_empty_directories) {
    const ScratchDirectory scratch;
    scratch.file("f", "");
    fs::permissions(scratch.file("read_only", ""), fs::perms::owner_read);
    fs::create_symlink("read_only", scratch.path() + "/symlink");
    fs::create_directories(scratch.path() + "/full/empty");
    const StartedWalk walk(scratch.path());
    EXPECT_EQ(walk.remove_file("f"), 0);
    EXPECT_EQ(walk.remove_file("symlink"), 0);
    EXPECT_EQ(walk.remove_file("missing"), 0);
    EXPECT_EQ(walk.remove_file("read_only"), EACCES);
    EXPECT_EQ(walk.remove_file("full"), EISDIR);
    EXPECT_EQ(walk.remove_directory("full"), ENOTEMPTY);
    EXPECT_EQ(walk.remove_directory("missing"), 0);
    fs::remove(scratch.path() + "/full/empty");
    EXPECT_EQ(walk.remove_directory("full"), 0);
    EXPECT_EQ(scratch.file_count(), 1U);
}

TEST(DirectoryWalk, creates_directories) {
    const ScratchDirectory scratch;
    scratch.file("f", "");
    const StartedWalk walk(scratch.path(), DirectoryWalk::Use::writing);
    EXPECT_EQ(walk.make_directory("d"), 0);
    EXPECT_TRUE(fs::is_directory(scratch.path() + "/d"));
    EXPECT_EQ(walk.make_directory("d"), EEXIST);
    EXPECT_EQ(walk.make_directory("f"), EEXIST);
    EXPECT_EQ(walk.make_directory("missing/d"), ENOENT);
}

TEST(DirectoryWalk, gives_the_owner_the_permission_to_write) {
    const ScratchDirectory scratch;
    fs::permissions(scratch.path(), fs::perms::owner_read | fs::perms::owner_exec);
    EXPECT_EQ(StartedWalk(scratch.path()).make_writeable(), 0);
    EXPECT_EQ(fs::status(scratch.path()).permissions(), fs::perms::owner_all);
    EXPECT_EQ(StartedWalk(scratch.path()).make_writeable(), 0);
    EXPECT_EQ(fs::status(scratch.path()).permissions(), fs::perms::owner_all);
}

TEST(DirectoryWalk, reports_what_the_disk_refuses) {
    const ScratchDirectory scratch;
    scratch.file("f", "");
    fs::create_directory(scratch.path() + "/d");
    StartedWalk walk(scratch.path());
    const Fault fault([](std::string_view, std::string_view) { return EIO; });
    EXPECT_EQ(walk.enter("d"), EIO);
    EXPECT_EQ(walk.remove_file("f"), EIO);
    EXPECT_EQ(walk.remove_directory("d"), EIO);
    EXPECT_EQ(walk.make_directory("e"), EIO);
    DirectoryListing entries;
    EXPECT_EQ(walk.list(entries), EIO);
    EXPECT_EQ(entries.size(), 0U);
}

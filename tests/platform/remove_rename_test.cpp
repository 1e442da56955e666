// Removing and renaming files with the rules of Windows.
#include <fcntl.h>
#include <filesystem/remove_rename.h>
#include <winapi/file_attributes.h>

#include <cerrno>

#include "platform/winapi_fixtures.h"

namespace {

int remove_it(const std::string& name) { return nmk_filesystem::remove_file(name.c_str()); }

int rename_it(const std::string& from, const std::string& to) {
    return nmk_filesystem::rename_file(from.c_str(), to.c_str());
}

}  // namespace

TEST(remove_file, removes_a_file_and_refuses_a_directory) {
    const OpenScratchDirectory scratch;
    const std::string file = scratch.file("file", "x");
    const std::string directory = scratch.directory("directory");
    EXPECT_EQ(remove_it(file), 0);
    EXPECT_FALSE(is_there(file));
    EXPECT_EQ(remove_it(file), ENOENT);
    EXPECT_EQ(remove_it(scratch.in("missing/file")), ENOENT);
    EXPECT_EQ(remove_it(directory), EACCES);
    EXPECT_TRUE(is_there(directory));
    EXPECT_EQ(remove_it(""), ENOENT);
    EXPECT_EQ(remove_it(scratch.in(std::string(10000, 'x'))), ENAMETOOLONG);
    EXPECT_EQ(remove_it(scratch.file("\xFF", "x")), 0);
}

TEST(remove_file, a_read_only_file_is_refused_to_root_too) {
    const OpenScratchDirectory scratch;
    const std::string file = scratch.file("file", "precious");
    ASSERT_EQ(::chmod(file.c_str(), 0466), 0);
    EXPECT_EQ(remove_it(file), EACCES);
    EXPECT_EQ(contents_of(file), "precious");
    ASSERT_TRUE(SetFileAttributesA(file.c_str(), 0));
    EXPECT_EQ(remove_it(file), 0);
}

TEST(remove_file, of_a_symlink_removes_the_symlink_itself) {
    const OpenScratchDirectory scratch;
    const std::string file = scratch.file("file", "x");
    ASSERT_EQ(::chmod(file.c_str(), 0444), 0);
    scratch.directory("directory");
    EXPECT_EQ(remove_it(scratch.symlink("to_file", "file")), 0);
    EXPECT_EQ(remove_it(scratch.symlink("to_directory", "directory")), 0);
    EXPECT_EQ(remove_it(scratch.symlink("dead", "nothing")), 0);
    EXPECT_TRUE(is_there(file));
    EXPECT_TRUE(is_there(scratch.in("directory")));
    EXPECT_EQ(scratch.file_count(), 2u);
}

TEST(remove_file, a_directory_without_permissions_keeps_its_files) {
    const OpenScratchDirectory scratch;
    const std::string closed = scratch.directory("closed");
    const std::string file = scratch.file("closed/file", "x");
    ASSERT_EQ(::chmod(closed.c_str(), 0555), 0);
    ASSERT_EQ(::chmod(file.c_str(), 0666), 0);
    EXPECT_EQ(without_rights([&] { return remove_it(file); }), EACCES);
    EXPECT_TRUE(is_there(file));
    ASSERT_EQ(::chmod(closed.c_str(), 0755), 0);
}

TEST(rename_file, gives_files_and_directories_another_name) {
    const OpenScratchDirectory scratch;
    const std::string file = scratch.file("file", "x");
    const std::string directory = scratch.directory("directory");
    EXPECT_EQ(rename_it(file, scratch.in("directory/moved")), 0);
    EXPECT_EQ(contents_of(scratch.in("directory/moved")), "x");
    EXPECT_EQ(rename_it(directory, scratch.in("renamed")), 0);
    EXPECT_EQ(contents_of(scratch.in("renamed/moved")), "x");
    EXPECT_EQ(rename_it(scratch.symlink("link", "nothing"), scratch.in("link2")), 0);
    EXPECT_TRUE(is_there(scratch.in("link2")));
}

TEST(rename_file, never_replaces_what_has_the_name_already) {
    const OpenScratchDirectory scratch;
    const std::string file = scratch.file("file", "new");
    const std::string existing = scratch.file("existing", "old");
    const std::string directory = scratch.directory("directory");
    for (const std::string& target :
         {existing, directory, file, scratch.symlink("dead", "nothing")}) {
        EXPECT_EQ(rename_it(file, target), EEXIST) << target;
    }
    EXPECT_EQ(contents_of(existing), "old");
    EXPECT_EQ(contents_of(file), "new");
    EXPECT_EQ(scratch.file_count(), 4u);
}

TEST(rename_file, reports_what_is_missing) {
    const OpenScratchDirectory scratch;
    const std::string file = scratch.file("file", "x");
    EXPECT_EQ(rename_it(scratch.in("missing"), scratch.in("new")), ENOENT);
    EXPECT_EQ(rename_it(scratch.in("missing/x"), scratch.in("new")), ENOENT);
    EXPECT_EQ(rename_it(file, scratch.in("missing/new")), ENOENT);
    EXPECT_EQ(rename_it("", scratch.in("new")), ENOENT);
    EXPECT_EQ(rename_it(file, ""), ENOENT);
    EXPECT_EQ(rename_it(file, scratch.in(std::string(10000, 'x'))), ENAMETOOLONG);
    EXPECT_EQ(contents_of(file), "x");
}

TEST(rename_file, a_file_may_go_to_another_disk_and_a_directory_may_not) {
    const OpenScratchDirectory scratch;
    struct stat here, there;
    if (::stat("/dev/shm", &there) != 0 || ::access("/dev/shm", W_OK) != 0 ||
        ::stat(scratch.path().c_str(), &here) != 0 || here.st_dev == there.st_dev) {
        GTEST_SKIP() << "no second disk";
    }
    const std::string target = "/dev/shm/nmk_winapi_test_" + std::to_string(::getpid());
    const std::string file = scratch.file("file", "x");
    EXPECT_EQ(rename_it(file, target), 0);
    EXPECT_EQ(contents_of(target), "x");
    EXPECT_FALSE(is_there(file));
    const std::string second = scratch.file("second", "y");
    EXPECT_EQ(rename_it(second, target), EEXIST);
    EXPECT_EQ(contents_of(target), "x");
    EXPECT_EQ(contents_of(second), "y");
    ASSERT_EQ(::unlink(target.c_str()), 0);
    EXPECT_EQ(rename_it(scratch.directory("directory"), target), EXDEV);
}

TEST(rename_file, keeps_its_rules_on_a_disk_that_cannot_rename_without_replacing) {
    const OpenScratchDirectory scratch;
    const std::string file = scratch.file("file", "new");
    const std::string existing = scratch.file("existing", "old");
    const std::string directory = scratch.directory("directory");
    const std::string empty = scratch.directory("empty");
    const Fault fault(
        [](std::string_view call, std::string_view) { return call == "renameat2" ? EINVAL : 0; });
    for (const std::string& target : {existing, directory, file}) {
        EXPECT_EQ(rename_it(file, target), EEXIST) << target;
    }
    EXPECT_EQ(rename_it(directory, empty), EEXIST);
    EXPECT_EQ(contents_of(existing), "old");
    EXPECT_EQ(rename_it(file, scratch.in("moved")), 0);
    EXPECT_EQ(contents_of(scratch.in("moved")), "new");
    EXPECT_FALSE(is_there(file));
    EXPECT_EQ(rename_it(directory, scratch.in("moved directory")), 0);
    EXPECT_EQ(rename_it(scratch.in("missing"), scratch.in("new")), ENOENT);
    EXPECT_EQ(scratch.file_count(), 4u);
}

// The old name is in a directory that the caller may not write to: it cannot be removed.
TEST(rename_file, that_cannot_take_the_old_name_away_leaves_no_new_one) {
    for (const int reason : {EXDEV, EINVAL}) {
        const OpenScratchDirectory scratch;
        const std::string closed = scratch.directory("closed");
        const std::string file = scratch.file("closed/file", "x");
        ASSERT_EQ(::chmod(file.c_str(), 0666), 0);
        ASSERT_EQ(::chmod(closed.c_str(), 0555), 0);
        const Fault fault([&](std::string_view call, std::string_view name) {
            return call == "renameat2" && name == file ? reason : 0;
        });
        EXPECT_EQ(without_rights([&] { return rename_it(file, scratch.in("new")); }), EACCES)
            << reason;
        EXPECT_EQ(contents_of(file), "x");
        EXPECT_FALSE(is_there(scratch.in("new"))) << reason;
        ASSERT_EQ(::chmod(closed.c_str(), 0755), 0);
    }
}

// Making and removing folders, removing and renaming files.
#include <fcntl.h>
#include <winapi/directories.h>
#include <winapi/file_attributes.h>
#include <winapi/remove_rename.h>

#include <cerrno>

#include "platform/winapi_fixtures.h"

namespace {

int make(const std::string& name) {
    return CreateDirectoryA(name.c_str(), nullptr) ? 0 : static_cast<int>(GetLastError());
}

int unmake(const std::string& name) {
    return RemoveDirectoryA(name.c_str()) ? 0 : static_cast<int>(GetLastError());
}

int last_error_unless(int result) { return result == 0 ? 0 : static_cast<int>(GetLastError()); }

int remove_it(const std::string& name) { return last_error_unless(winapi_remove(name.c_str())); }

int rename_it(const std::string& from, const std::string& to) {
    return last_error_unless(winapi_rename(from.c_str(), to.c_str()));
}

}  // namespace

TEST(CreateDirectoryA, makes_one_folder_in_a_folder_that_is_there) {
    const OpenScratchFolder scratch;
    EXPECT_EQ(make(scratch.in("folder")), 0);
    EXPECT_EQ(GetFileAttributesA(scratch.in("folder").c_str()), 0x10u);
    EXPECT_EQ(make(scratch.in("folder")), 183);
    EXPECT_EQ(make(scratch.in("folder/")), 183);
    EXPECT_EQ(make(scratch.file("file", "x")), 183);
    EXPECT_EQ(make(scratch.link("dead", "nothing")), 183);
    EXPECT_FALSE(is_there(scratch.in("nothing")));
    EXPECT_EQ(make(scratch.in("missing/folder")), 3);
    EXPECT_EQ(make(scratch.in("file/folder")), 3);
    EXPECT_EQ(make(""), 3);
    EXPECT_EQ(make(scratch.in(std::string(10000, 'x'))), 206);
    EXPECT_EQ(make(scratch.in("\xFF")), 0);
    const char security = 0;
    EXPECT_FALSE(CreateDirectoryA(scratch.in("x").c_str(), &security));
    EXPECT_EQ(GetLastError(), 87u);
}

TEST(CreateDirectoryA, a_folder_without_rights_or_a_full_disk_refuses) {
    const OpenScratchFolder scratch;
    const std::string closed = scratch.folder("closed");
    ASSERT_EQ(::chmod(closed.c_str(), 0555), 0);
    EXPECT_EQ(without_rights([&] { return make(closed + "/folder"); }), 5);
    const FaultHook hook([](std::string_view call, std::string_view) {
        return call == "CreateDirectoryA" ? ENOSPC : 0;
    });
    EXPECT_EQ(make(scratch.in("folder")), 112);
}

TEST(RemoveDirectoryA, removes_empty_folders_only) {
    const OpenScratchFolder scratch;
    const std::string folder = scratch.folder("folder");
    const std::string file = scratch.file("folder/file", "x");
    EXPECT_EQ(unmake(folder), 145);
    EXPECT_EQ(unmake(file), 3);
    ASSERT_EQ(::unlink(file.c_str()), 0);
    EXPECT_EQ(unmake(folder + "/"), 0);
    EXPECT_EQ(unmake(folder), 2);
    EXPECT_EQ(unmake(scratch.in("missing/folder")), 3);
    EXPECT_EQ(unmake(""), 3);
}

TEST(RemoveDirectoryA, a_link_to_a_folder_is_none) {
    const OpenScratchFolder scratch;
    const std::string folder = scratch.folder("folder");
    EXPECT_EQ(unmake(scratch.link("link", "folder")), 3);
    EXPECT_TRUE(is_there(folder));
    EXPECT_TRUE(is_there(scratch.in("link")));
}

TEST(RemoveDirectoryA, a_read_only_folder_is_refused_until_the_attribute_is_cleared) {
    const OpenScratchFolder scratch;
    const std::string folder = scratch.folder("folder");
    ASSERT_TRUE(SetFileAttributesA(folder.c_str(), FILE_ATTRIBUTE_READONLY));
    EXPECT_EQ(GetFileAttributesA(folder.c_str()), 0x11u);
    EXPECT_EQ(unmake(folder), 5);
    ASSERT_TRUE(SetFileAttributesA(folder.c_str(), 0x10));
    EXPECT_EQ(unmake(folder), 0);
}

TEST(winapi_remove, removes_a_file_and_refuses_a_folder) {
    const OpenScratchFolder scratch;
    const std::string file = scratch.file("file", "x");
    const std::string folder = scratch.folder("folder");
    EXPECT_EQ(remove_it(file), 0);
    EXPECT_FALSE(is_there(file));
    EXPECT_EQ(remove_it(file), 2);
    EXPECT_EQ(errno, ENOENT);
    EXPECT_EQ(remove_it(scratch.in("missing/file")), 3);
    EXPECT_EQ(remove_it(folder), 5);
    EXPECT_EQ(errno, EACCES);
    EXPECT_TRUE(is_there(folder));
    EXPECT_EQ(remove_it(""), 3);
    EXPECT_EQ(remove_it(scratch.in(std::string(10000, 'x'))), 206);
    EXPECT_EQ(remove_it(scratch.file("\xFF", "x")), 0);
}

TEST(winapi_remove, a_file_without_the_owners_right_to_write_is_refused_to_root_too) {
    const OpenScratchFolder scratch;
    const std::string file = scratch.file("file", "precious");
    ASSERT_EQ(::chmod(file.c_str(), 0466), 0);
    EXPECT_EQ(remove_it(file), 5);
    EXPECT_EQ(errno, EACCES);
    EXPECT_EQ(bytes_of(file), "precious");
    ASSERT_TRUE(SetFileAttributesA(file.c_str(), 0));
    EXPECT_EQ(remove_it(file), 0);
}

TEST(winapi_remove, of_a_link_takes_the_link_and_not_what_it_leads_to) {
    const OpenScratchFolder scratch;
    const std::string file = scratch.file("file", "x");
    ASSERT_EQ(::chmod(file.c_str(), 0444), 0);
    scratch.folder("folder");
    EXPECT_EQ(remove_it(scratch.link("to_file", "file")), 0);
    EXPECT_EQ(remove_it(scratch.link("to_folder", "folder")), 0);
    EXPECT_EQ(remove_it(scratch.link("dead", "nothing")), 0);
    EXPECT_TRUE(is_there(file));
    EXPECT_TRUE(is_there(scratch.in("folder")));
    EXPECT_EQ(scratch.file_count(), 2u);
}

TEST(winapi_remove, a_folder_without_rights_keeps_its_files) {
    const OpenScratchFolder scratch;
    const std::string closed = scratch.folder("closed");
    const std::string file = scratch.file("closed/file", "x");
    ASSERT_EQ(::chmod(closed.c_str(), 0555), 0);
    ASSERT_EQ(::chmod(file.c_str(), 0666), 0);
    EXPECT_EQ(without_rights([&] { return remove_it(file); }), 5);
    EXPECT_TRUE(is_there(file));
    ASSERT_EQ(::chmod(closed.c_str(), 0755), 0);
}

TEST(winapi_rename, gives_files_and_folders_another_name) {
    const OpenScratchFolder scratch;
    const std::string file = scratch.file("file", "x");
    const std::string folder = scratch.folder("folder");
    EXPECT_EQ(rename_it(file, scratch.in("folder/moved")), 0);
    EXPECT_EQ(bytes_of(scratch.in("folder/moved")), "x");
    EXPECT_EQ(rename_it(folder, scratch.in("renamed")), 0);
    EXPECT_EQ(bytes_of(scratch.in("renamed/moved")), "x");
    EXPECT_EQ(rename_it(scratch.link("link", "nothing"), scratch.in("link2")), 0);
    EXPECT_TRUE(is_there(scratch.in("link2")));
}

TEST(winapi_rename, never_replaces_what_has_the_name_already) {
    const OpenScratchFolder scratch;
    const std::string file = scratch.file("file", "new");
    const std::string existing = scratch.file("existing", "old");
    const std::string folder = scratch.folder("folder");
    for (const std::string& target : {existing, folder, file, scratch.link("dead", "nothing")}) {
        EXPECT_EQ(rename_it(file, target), 183) << target;
        EXPECT_EQ(errno, EACCES);
    }
    EXPECT_EQ(bytes_of(existing), "old");
    EXPECT_EQ(bytes_of(file), "new");
    EXPECT_EQ(scratch.file_count(), 4u);
}

TEST(winapi_rename, tells_what_is_missing) {
    const OpenScratchFolder scratch;
    const std::string file = scratch.file("file", "x");
    EXPECT_EQ(rename_it(scratch.in("missing"), scratch.in("new")), 2);
    EXPECT_EQ(rename_it(scratch.in("missing/x"), scratch.in("new")), 3);
    EXPECT_EQ(rename_it(file, scratch.in("missing/new")), 3);
    EXPECT_EQ(errno, ENOENT);
    EXPECT_EQ(rename_it("", scratch.in("new")), 3);
    EXPECT_EQ(rename_it(file, ""), 3);
    EXPECT_EQ(rename_it(file, scratch.in(std::string(10000, 'x'))), 206);
    EXPECT_EQ(bytes_of(file), "x");
}

TEST(winapi_rename, a_file_may_go_to_another_disk_and_a_folder_may_not) {
    const OpenScratchFolder scratch;
    struct stat here, there;
    if (::stat("/dev/shm", &there) != 0 || ::access("/dev/shm", W_OK) != 0 ||
        ::stat(scratch.path().c_str(), &here) != 0 || here.st_dev == there.st_dev) {
        GTEST_SKIP() << "no second disk";
    }
    const std::string target = "/dev/shm/nmk_winapi_test_" + std::to_string(::getpid());
    const std::string file = scratch.file("file", "x");
    EXPECT_EQ(rename_it(file, target), 0);
    EXPECT_EQ(bytes_of(target), "x");
    EXPECT_FALSE(is_there(file));
    const std::string second = scratch.file("second", "y");
    EXPECT_EQ(rename_it(second, target), 183);
    EXPECT_EQ(bytes_of(target), "x");
    EXPECT_EQ(bytes_of(second), "y");
    ASSERT_EQ(::unlink(target.c_str()), 0);
    EXPECT_EQ(rename_it(scratch.folder("folder"), target), 17);
    EXPECT_EQ(errno, EXDEV);
}

TEST(winapi_rename, keeps_its_rules_on_a_disk_that_cannot_rename_without_replacing) {
    const OpenScratchFolder scratch;
    const std::string file = scratch.file("file", "new");
    const std::string existing = scratch.file("existing", "old");
    const std::string folder = scratch.folder("folder");
    const std::string empty = scratch.folder("empty");
    const FaultHook hook(
        [](std::string_view call, std::string_view) { return call == "renameat2" ? EINVAL : 0; });
    for (const std::string& target : {existing, folder, file}) {
        EXPECT_EQ(rename_it(file, target), 183) << target;
        EXPECT_EQ(errno, EACCES);
    }
    EXPECT_EQ(rename_it(folder, empty), 183);
    EXPECT_EQ(bytes_of(existing), "old");
    EXPECT_EQ(rename_it(file, scratch.in("moved")), 0);
    EXPECT_EQ(bytes_of(scratch.in("moved")), "new");
    EXPECT_FALSE(is_there(file));
    EXPECT_EQ(rename_it(folder, scratch.in("moved folder")), 0);
    EXPECT_EQ(rename_it(scratch.in("missing"), scratch.in("new")), 2);
    EXPECT_EQ(scratch.file_count(), 4u);
}

// The old name stands in a folder that the caller may not write to: it cannot be taken away.
TEST(winapi_rename, that_cannot_take_the_old_name_away_leaves_no_new_one) {
    for (const int reason : {EXDEV, EINVAL}) {
        const OpenScratchFolder scratch;
        const std::string closed = scratch.folder("closed");
        const std::string file = scratch.file("closed/file", "x");
        ASSERT_EQ(::chmod(file.c_str(), 0666), 0);
        ASSERT_EQ(::chmod(closed.c_str(), 0555), 0);
        const FaultHook hook([reason](std::string_view call, std::string_view) {
            return call == "renameat2" ? reason : 0;
        });
        EXPECT_EQ(without_rights([&] { return rename_it(file, scratch.in("new")); }), 5) << reason;
        EXPECT_EQ(bytes_of(file), "x");
        EXPECT_FALSE(is_there(scratch.in("new"))) << reason;
        ASSERT_EQ(::chmod(closed.c_str(), 0755), 0);
    }
}

// Creating and removing directories.
#include <fcntl.h>
#include <winapi/directories.h>
#include <winapi/file_attributes.h>

#include <cerrno>

#include "platform/winapi_fixtures.h"

namespace {

int make(const std::string& name) {
    return CreateDirectoryA(name.c_str(), nullptr) ? 0 : static_cast<int>(GetLastError());
}

int unmake(const std::string& name) {
    return RemoveDirectoryA(name.c_str()) ? 0 : static_cast<int>(GetLastError());
}

}  // namespace

TEST(CreateDirectoryA, makes_one_directory_in_a_directory_that_is_there) {
    const OpenScratchDirectory scratch;
    EXPECT_EQ(make(scratch.in("directory")), 0);
    EXPECT_EQ(GetFileAttributesA(scratch.in("directory").c_str()), 0x10u);
    EXPECT_EQ(make(scratch.in("directory")), 183);
    EXPECT_EQ(make(scratch.in("directory/")), 183);
    EXPECT_EQ(make(scratch.file("file", "x")), 183);
    EXPECT_EQ(make(scratch.symlink("dead", "nothing")), 183);
    EXPECT_FALSE(is_there(scratch.in("nothing")));
    EXPECT_EQ(make(scratch.in("missing/directory")), 3);
    EXPECT_EQ(make(scratch.in("file/directory")), 3);
    EXPECT_EQ(make(""), 3);
    EXPECT_EQ(make(scratch.in(std::string(10000, 'x'))), 206);
    EXPECT_EQ(make(scratch.in("\xFF")), 0);
    const char security = 0;
    EXPECT_FALSE(CreateDirectoryA(scratch.in("x").c_str(), &security));
    EXPECT_EQ(GetLastError(), 87u);
}

TEST(CreateDirectoryA, a_directory_without_permissions_or_a_full_disk_is_a_failure) {
    const OpenScratchDirectory scratch;
    const std::string closed = scratch.directory("closed");
    ASSERT_EQ(::chmod(closed.c_str(), 0555), 0);
    EXPECT_EQ(without_rights([&] { return make(closed + "/directory"); }), 5);
    const Fault fault([](std::string_view call, std::string_view) {
        return call == "CreateDirectoryA" ? ENOSPC : 0;
    });
    EXPECT_EQ(make(scratch.in("directory")), 112);
}

TEST(RemoveDirectoryA, removes_empty_directories_only) {
    const OpenScratchDirectory scratch;
    const std::string directory = scratch.directory("directory");
    const std::string file = scratch.file("directory/file", "x");
    EXPECT_EQ(unmake(directory), 145);
    EXPECT_EQ(unmake(file), 3);
    ASSERT_EQ(::unlink(file.c_str()), 0);
    EXPECT_EQ(unmake(directory + "/"), 0);
    EXPECT_EQ(unmake(directory), 2);
    EXPECT_EQ(unmake(scratch.in("missing/directory")), 3);
    EXPECT_EQ(unmake(""), 3);
}

TEST(RemoveDirectoryA, a_symlink_to_a_directory_is_refused) {
    const OpenScratchDirectory scratch;
    const std::string directory = scratch.directory("directory");
    EXPECT_EQ(unmake(scratch.symlink("link", "directory")), 3);
    EXPECT_TRUE(is_there(directory));
    EXPECT_TRUE(is_there(scratch.in("link")));
}

TEST(RemoveDirectoryA, a_read_only_directory_is_refused_until_the_attribute_is_cleared) {
    const OpenScratchDirectory scratch;
    const std::string directory = scratch.directory("directory");
    ASSERT_TRUE(SetFileAttributesA(directory.c_str(), FILE_ATTRIBUTE_READONLY));
    EXPECT_EQ(GetFileAttributesA(directory.c_str()), 0x11u);
    EXPECT_EQ(unmake(directory), 5);
    ASSERT_TRUE(SetFileAttributesA(directory.c_str(), 0x10));
    EXPECT_EQ(unmake(directory), 0);
}

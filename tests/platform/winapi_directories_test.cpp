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
    const Fault fault([](std::string_view call, std::string_view) {
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

// Attributes, access and size of a name.
#include <fcntl.h>
#include <winapi/file_attributes.h>

#include <cerrno>
#include <thread>

#include "platform/winapi_fixtures.h"

namespace {

DWORD reason_of(const std::string& name) {
    SetLastError(untouched);
    return GetFileAttributesA(name.c_str()) == INVALID_FILE_ATTRIBUTES ? GetLastError() : 0;
}

}  // namespace

TEST(GetFileAttributesA, tells_directories_files_and_read_only_files_apart) {
    const OpenScratchDirectory scratch;
    const std::string file = scratch.file("file", "x");
    EXPECT_EQ(GetFileAttributesA(scratch.path().c_str()), 0x10u);
    EXPECT_EQ(GetFileAttributesA((scratch.path() + "/").c_str()), 0x10u);
    EXPECT_EQ(GetFileAttributesA(file.c_str()), 0x20u);
    ASSERT_EQ(::chmod(file.c_str(), 0444), 0);
    EXPECT_EQ(GetFileAttributesA(file.c_str()), 0x21u);
}

TEST(GetFileAttributesA, reports_what_is_missing) {
    const OpenScratchDirectory scratch;
    const std::string file = scratch.file("file", "x");
    EXPECT_EQ(reason_of(scratch.in("missing")), 2u);
    EXPECT_EQ(reason_of(scratch.in("missing/")), 2u);
    EXPECT_EQ(reason_of(scratch.in("missing/file")), 3u);
    EXPECT_EQ(reason_of(file + "/x"), 3u);
    EXPECT_EQ(reason_of(file + "/"), 3u);
    EXPECT_EQ(reason_of(""), 3u);
    EXPECT_EQ(GetFileAttributesA(nullptr), INVALID_FILE_ATTRIBUTES);
    EXPECT_EQ(reason_of("no_such_name_in_the_current_directory"), 2u);
    EXPECT_EQ(reason_of("/no_such_name_in_the_root"), 2u);
}

TEST(GetFileAttributesA, names_too_long_for_the_disk_are_reported_as_such) {
    const OpenScratchDirectory scratch;
    for (const std::size_t length : {300u, 1000u, 5000u, 10000u}) {
        EXPECT_EQ(reason_of(scratch.in(std::string(length, 'x'))), 206u) << length;
    }
    std::string deep = scratch.path();
    while (deep.size() < 10000) {
        deep += "/directory";
    }
    EXPECT_EQ(reason_of(deep), 206u);
}

TEST(GetFileAttributesA, keeps_the_last_error_when_it_succeeds) {
    const OpenScratchDirectory scratch;
    SetLastError(untouched);
    GetFileAttributesA(scratch.path().c_str());
    EXPECT_EQ(GetLastError(), untouched);
}

TEST(GetFileAttributesA, a_symlink_has_attributes_of_its_own_wherever_it_leads) {
    const OpenScratchDirectory scratch;
    scratch.directory("directory");
    scratch.file("file", "x");
    EXPECT_EQ(GetFileAttributesA(scratch.symlink("to_directory", "directory").c_str()), 0x400u);
    EXPECT_EQ(GetFileAttributesA(scratch.symlink("to_file", "file").c_str()), 0x400u);
    EXPECT_EQ(GetFileAttributesA(scratch.symlink("to_nothing", "nothing").c_str()), 0x400u);
    EXPECT_EQ(GetFileAttributesA(scratch.symlink("to_itself", "to_itself").c_str()), 0x400u);
    EXPECT_EQ(GetFileAttributesA(scratch.in("to_directory/").c_str()), 0x10u);
    EXPECT_EQ(reason_of(scratch.in("to_itself/x")), 3u);
}

TEST(GetFileAttributesA, a_pipe_is_neither_directory_nor_file) {
    const OpenScratchDirectory scratch;
    ASSERT_EQ(::mkfifo(scratch.in("pipe").c_str(), 0644), 0);
    EXPECT_EQ(GetFileAttributesA(scratch.in("pipe").c_str()), 0x40u);
}

TEST(GetFileAttributesA, invalid_text_and_separators_of_other_systems_are_names) {
    const OpenScratchDirectory scratch;
    for (const char* name : {"\xFF\xFE", "a|b", "a*b", "a?b", "a\\b", "trailing. ", "nul", "\n"}) {
        EXPECT_EQ(reason_of(scratch.in(name)), 2u) << name;
        scratch.file(name, "x");
        EXPECT_EQ(GetFileAttributesA(scratch.in(name).c_str()), 0x20u) << name;
    }
    EXPECT_EQ(reason_of(scratch.in("NUL")), 2u);  // the case of letters matters
}

TEST(GetFileAttributesA, a_directory_that_may_not_be_searched_denies_access) {
    const OpenScratchDirectory scratch;
    const std::string closed = scratch.directory("closed");
    scratch.file("closed/file", "x");
    ASSERT_EQ(::chmod(closed.c_str(), 0600), 0);
    EXPECT_EQ(without_rights([&] { return static_cast<int>(reason_of(closed + "/file")); }), 5);
    EXPECT_EQ(without_rights([&] { return static_cast<int>(reason_of(closed + "/none")); }), 5);
    ASSERT_EQ(::chmod(closed.c_str(), 0700), 0);
}

TEST(GetFileAttributesA, a_fault_can_be_injected) {
    const OpenScratchDirectory scratch;
    const std::string file = scratch.file("file", "x");
    const Fault fault([](std::string_view call, std::string_view name) {
        return call == "GetFileAttributesA" && name.ends_with("/file") ? EACCES : 0;
    });
    EXPECT_EQ(reason_of(file), 5u);
    EXPECT_EQ(reason_of(scratch.path()), 0u);
}

TEST(GetFileAttributesA, last_errors_belong_to_their_thread) {
    SetLastError(7);
    DWORD in_other_thread = 0;
    std::thread([&in_other_thread] {
        SetLastError(8);
        in_other_thread = GetLastError();
    }).join();
    EXPECT_EQ(in_other_thread, 8u);
    EXPECT_EQ(GetLastError(), 7u);
    EXPECT_EQ(in_a_child([] { return static_cast<int>(GetLastError()); }), 7);
    SetLastError(untouched);
    EXPECT_EQ(GetLastError(), untouched);
}

TEST(SetFileAttributesA, sets_and_clears_the_permission_to_write) {
    const OpenScratchDirectory scratch;
    const std::string file = scratch.file("file", "x");
    ASSERT_EQ(::chmod(file.c_str(), 0666), 0);
    EXPECT_TRUE(SetFileAttributesA(file.c_str(), FILE_ATTRIBUTE_READONLY));
    struct stat record;
    ASSERT_EQ(::stat(file.c_str(), &record), 0);
    EXPECT_EQ(record.st_mode & 0777, 0444u);
    EXPECT_TRUE(SetFileAttributesA(file.c_str(), FILE_ATTRIBUTE_NORMAL));
    ASSERT_EQ(::stat(file.c_str(), &record), 0);
    EXPECT_EQ(record.st_mode & 0777, 0644u);
    EXPECT_FALSE(SetFileAttributesA(scratch.in("missing").c_str(), 0));
    EXPECT_EQ(GetLastError(), 2u);
    EXPECT_FALSE(SetFileAttributesA("", 0));
    EXPECT_EQ(GetLastError(), 3u);
}

TEST(SetFileAttributesA, does_not_reach_through_a_symlink) {
    const OpenScratchDirectory scratch;
    const std::string file = scratch.file("file", "x");
    const std::string symlink = scratch.symlink("link", "file");
    EXPECT_FALSE(SetFileAttributesA(symlink.c_str(), FILE_ATTRIBUTE_READONLY));
    EXPECT_EQ(GetLastError(), 5u);
    ASSERT_EQ(::chmod(file.c_str(), 0444), 0);
    EXPECT_TRUE(SetFileAttributesA(symlink.c_str(), 0));
    EXPECT_EQ(GetFileAttributesA(file.c_str()), 0x21u);
}

TEST(SetFileAttributesA, only_the_owner_may) {
    const OpenScratchDirectory scratch;
    const std::string file = scratch.file("file", "x");
    if (::geteuid() != 0) {
        GTEST_SKIP() << "the test's own user owns the file";
    }
    EXPECT_EQ(without_rights([&] {
                  return SetFileAttributesA(file.c_str(), 1) ? 0 : static_cast<int>(GetLastError());
              }),
              5);
}

TEST(_access, a_read_only_file_is_refused_to_root_too) {
    const OpenScratchDirectory scratch;
    const std::string file = scratch.file("file", "x");
    EXPECT_EQ(_access(file.c_str(), 0), 0);
    EXPECT_EQ(_access(file.c_str(), 2), 0);
    EXPECT_EQ(_access(file.c_str(), 6), 0);
    ASSERT_EQ(::chmod(file.c_str(), 0444), 0);
    EXPECT_EQ(_access(file.c_str(), 2), -1);
    EXPECT_EQ(errno, EACCES);
    EXPECT_EQ(_access(file.c_str(), 4), 0);
    EXPECT_EQ(_access(scratch.path().c_str(), 2), 0);
    EXPECT_EQ(_access(scratch.in("missing").c_str(), 0), -1);
    EXPECT_EQ(errno, ENOENT);
    EXPECT_EQ(_access(file.c_str(), 1), -1);
    EXPECT_EQ(errno, EINVAL);
    EXPECT_EQ(_access(scratch.symlink("dead", "nothing").c_str(), 0), -1);
}

TEST(_access, somebody_elses_file_is_refused) {
    const OpenScratchDirectory scratch;
    const std::string file = scratch.file("file", "x");
    ASSERT_EQ(::chmod(file.c_str(), 0600), 0);
    if (::geteuid() != 0) {
        GTEST_SKIP() << "the test's own user owns the file";
    }
    EXPECT_EQ(without_rights([&] { return _access(file.c_str(), 2) == 0 ? 0 : 1; }), 1);
    EXPECT_EQ(without_rights([&] { return _access(file.c_str(), 4) == 0 ? 0 : 1; }), 1);
    EXPECT_EQ(without_rights([&] { return _access(file.c_str(), 0) == 0 ? 0 : 1; }), 0);
}

TEST(_stat64i32, tells_size_and_time) {
    const OpenScratchDirectory scratch;
    const std::string file = scratch.file("file", "12345");
    const timespec times[2] = {{1, 0}, {5000000000, 0}};  // past 32 bits
    ASSERT_EQ(::utimensat(AT_FDCWD, file.c_str(), times, 0), 0);
    struct _stat64i32 record;
    ASSERT_EQ(_stat64i32(file.c_str(), &record), 0);
    EXPECT_EQ(record.st_size, 5);
    EXPECT_EQ(record.st_mtime, 5000000000);
    ASSERT_EQ(_stat64i32(scratch.symlink("link", "file").c_str(), &record), 0);
    EXPECT_EQ(record.st_size, 5);
    EXPECT_EQ(_stat64i32(scratch.in("missing").c_str(), &record), -1);
    EXPECT_EQ(errno, ENOENT);
    EXPECT_EQ(_stat64i32("", &record), -1);
}

TEST(_stat64i32, a_size_past_32_bits_is_a_failure) {
    const OpenScratchDirectory scratch;
    const std::string file = scratch.file("file", "");
    struct _stat64i32 record;
    ASSERT_EQ(::truncate(file.c_str(), 0x7FFFFFFF), 0);
    ASSERT_EQ(_stat64i32(file.c_str(), &record), 0);
    EXPECT_EQ(record.st_size, 0x7FFFFFFF);
    ASSERT_EQ(::truncate(file.c_str(), 0x80000000), 0);
    EXPECT_EQ(_stat64i32(file.c_str(), &record), -1);
    EXPECT_EQ(errno, EOVERFLOW);
    EXPECT_EQ(record.st_size, 0x7FFFFFFF);
}

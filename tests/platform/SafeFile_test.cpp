// Files that appear under their name only when they are whole.
#include <fcntl.h>
#include <filesystem/safe_file.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <string>
#include <vector>

#include "child_process.h"
#include "disk_fault.h"
#include "file_contents.h"
#include "holding_child.h"
#include "scratch_directory.h"

namespace fs = std::filesystem;
using nmk_filesystem::is_temporary_name;
using nmk_filesystem::SafeFile;
using Existing = SafeFile::Existing;

namespace {

int write_whole(const std::string& name, const std::string& bytes,
                Existing existing = Existing::replaced) {
    SafeFile file;
    int error_number = file.create(name, 0666);
    if (error_number == 0) error_number = file.write(bytes);
    return error_number == 0 ? file.commit(existing) : error_number;
}

unsigned mode_of(const std::string& name) {
    struct stat record {};
    EXPECT_EQ(::stat(name.c_str(), &record), 0);
    return record.st_mode & 07777U;
}

const std::string leftover = ".nmk_part_0123456789abcdef";

}  // namespace

TEST(SafeFile, appears_when_it_is_committed_and_not_before) {
    const ScratchDirectory scratch;
    const std::string name = scratch.path() + "/f";
    SafeFile file;
    ASSERT_EQ(file.create(name, 0644), 0);
    EXPECT_EQ(file.write("one "), 0);
    EXPECT_EQ(file.write("two"), 0);
    EXPECT_FALSE(fs::exists(name));
    EXPECT_EQ(scratch.file_count(), 1U);
    EXPECT_EQ(file.commit(Existing::replaced), 0);
    EXPECT_EQ(contents_of(name), "one two");
    EXPECT_EQ(scratch.file_count(), 1U);
    file.flush_directory();
    file.discard();
    EXPECT_TRUE(fs::exists(name)) << "a committed file stays";
    EXPECT_EQ(file.commit(Existing::replaced), EBADF);
}

TEST(SafeFile, that_is_not_committed_leaves_nothing) {
    const ScratchDirectory scratch;
    const std::string name = scratch.file("f", "before");
    {
        SafeFile file;
        ASSERT_EQ(file.create(name, 0666), 0);
        EXPECT_EQ(file.write("half"), 0);
        ASSERT_EQ(file.create(name, 0666), 0) << "a second start discards the first";
        EXPECT_EQ(scratch.file_count(), 2U);
    }
    EXPECT_EQ(contents_of(name), "before");
    EXPECT_EQ(scratch.file_count(), 1U);
}

TEST(SafeFile, does_not_wait_for_the_disk_where_the_flush_is_skipped) {
    const ScratchDirectory scratch;
    const std::string name = scratch.path() + "/f";
    const Fault no_flush("fsync", EIO);
    SafeFile file;
    ASSERT_EQ(file.create(name, 0666), 0);
    EXPECT_EQ(file.write("all"), 0);
    file.skip_flush();
    EXPECT_EQ(file.commit(Existing::replaced), 0);
    EXPECT_EQ(contents_of(name), "all");
    EXPECT_EQ(write_whole(name, "more"), EIO) << "without it the disk is asked";
}

TEST(SafeFile, replaces_or_keeps_what_has_the_name) {
    const ScratchDirectory scratch;
    const std::string name = scratch.file("f", "before");
    EXPECT_EQ(write_whole(name, "after", Existing::kept), EEXIST);
    EXPECT_EQ(contents_of(name), "before");
    EXPECT_EQ(write_whole(name, "after"), 0);
    EXPECT_EQ(contents_of(name), "after");
    fs::create_symlink("f", scratch.path() + "/symlink");
    EXPECT_EQ(write_whole(scratch.path() + "/symlink", "new"), 0);
    EXPECT_FALSE(fs::is_symlink(scratch.path() + "/symlink"));
    EXPECT_EQ(contents_of(name), "after");
    EXPECT_EQ(scratch.file_count(), 2U);
}

TEST(SafeFile, can_be_committed_again_with_another_choice) {
    const ScratchDirectory scratch;
    const std::string name = scratch.file("f", "before");
    SafeFile file;
    ASSERT_EQ(file.create(name, 0666), 0);
    EXPECT_EQ(file.write("after"), 0);
    EXPECT_EQ(file.commit(Existing::kept), EEXIST);
    EXPECT_EQ(file.commit(Existing::replaced), 0);
    EXPECT_EQ(contents_of(name), "after");
}

TEST(SafeFile, refuses_names_of_directories_and_missing_directories) {
    const ScratchDirectory scratch;
    fs::create_directory(scratch.path() + "/d");
    EXPECT_EQ(write_whole(scratch.path() + "/missing/f", "x"), ENOENT);
    EXPECT_EQ(write_whole(scratch.path() + "/new/", "x"), EISDIR);
    EXPECT_EQ(write_whole(scratch.path() + "/.", "x"), EISDIR);
    EXPECT_EQ(write_whole(scratch.path() + "/d/..", "x"), EISDIR);
    EXPECT_EQ(write_whole("", "x"), EISDIR);
    EXPECT_EQ(write_whole(scratch.path() + "/d", "x"), EISDIR);
    EXPECT_EQ(write_whole(scratch.file("f", "") + "/g", "x"), ENOTDIR);
    EXPECT_EQ(scratch.file_count(), 2U);
}

TEST(SafeFile, has_its_mode_from_the_start_less_the_umask) {
    const ScratchDirectory scratch;
    const mode_t before = ::umask(027);
    SafeFile file;
    ASSERT_EQ(file.create(scratch.path() + "/f", 0666), 0);
    ::umask(before);
    struct stat record {};
    ASSERT_EQ(::fstat(file.descriptor(), &record), 0);
    EXPECT_EQ(record.st_mode & 07777U, 0640U);
    EXPECT_EQ(file.set_mode(0444), 0);
    EXPECT_EQ(file.commit(Existing::replaced), 0);
    EXPECT_EQ(mode_of(scratch.path() + "/f"), 0444U);
}

TEST(SafeFile, with_fewer_bytes_than_were_written_is_not_committed) {
    const ScratchDirectory scratch;
    SafeFile file;
    ASSERT_EQ(file.create(scratch.path() + "/f", 0666), 0);
    EXPECT_EQ(file.write("1234"), 0);
    EXPECT_EQ(::ftruncate(file.descriptor(), 2), 0);
    EXPECT_EQ(file.commit(Existing::replaced), EIO);
    EXPECT_FALSE(fs::exists(scratch.path() + "/f"));
}

TEST(SafeFile, that_cannot_be_flushed_is_not_committed) {
    const ScratchDirectory scratch;
    const Fault fault("fsync", EIO);
    EXPECT_EQ(write_whole(scratch.path() + "/f", "x"), EIO);
    EXPECT_EQ(scratch.file_count(), 0U);
}

TEST(SafeFile, on_a_full_disk_leaves_nothing) {
    const ScratchDirectory scratch;
    const int error_number = with_little_room(
        1000, [&] { return write_whole(scratch.path() + "/f", std::string(2000, 'x')); });
    EXPECT_EQ(error_number, EFBIG);
    EXPECT_EQ(scratch.file_count(), 0U);
}

TEST(SafeFile, of_another_owner_takes_the_privileges_of_root) {
    const ScratchDirectory scratch;
    fs::permissions(scratch.path(), fs::perms::all);
    const int error_number = without_rights([&] {
        SafeFile file;
        return file.create(scratch.path() + "/f", 0666) == 0 ? file.set_owner(0, 0) : 255;
    });
    EXPECT_EQ(error_number, EPERM);
}

TEST(SafeFile, many_are_flushed_together_and_committed_one_by_one) {
    const ScratchDirectory scratch;
    std::vector<SafeFile> files(10);
    std::vector<SafeFile*> pointers;
    for (SafeFile& file : files) {
        const std::string name = scratch.path() + "/" + std::to_string(pointers.size());
        ASSERT_EQ(file.create(name, 0666), 0);
        EXPECT_EQ(file.write(name), 0);
        pointers.push_back(&file);
    }
    SafeFile::flush_together(pointers);
    const Fault no_more_flushes("fsync", EIO);
    for (SafeFile& file : files) EXPECT_EQ(file.commit(Existing::kept), 0);
    EXPECT_EQ(contents_of(scratch.path() + "/7"), scratch.path() + "/7");
    EXPECT_EQ(scratch.file_count(), 10U);
}

TEST(SafeFile, recognises_its_temporary_names) {
    EXPECT_TRUE(is_temporary_name(".nmk_part_0123456789abcdef"));
    for (const char* name : {".nmk_part_0123456789abcde", ".nmk_part_0123456789abcdef0",
                             ".nmk_part_0123456789ABCDEF", "nmk_part_0123456789abcdef", "",
                             ".nmk_part_0123456789abcdeg", ".nmk_copy_0123456789abcdef"}) {
        EXPECT_FALSE(is_temporary_name(name)) << name;
    }
}

TEST(SafeFile, refuses_a_target_that_a_later_file_would_remove_as_a_leftover) {
    const ScratchDirectory scratch;
    EXPECT_EQ(write_whole(scratch.path() + "/" + leftover, "x"), EPERM);
    EXPECT_EQ(scratch.file_count(), 0U);
    EXPECT_EQ(write_whole(scratch.path() + "/.nmk_part_of_the_plan", "x"), 0);
}

TEST(SafeFile, removes_the_leftovers_of_killed_processes_and_nothing_else) {
    const ScratchDirectory scratch;
    scratch.file(leftover, "half");
    scratch.file(".nmk_part_of_the_plan", "kept");
    const std::string kept = scratch.file("kept", "kept");
    fs::create_directory(scratch.path() + "/.nmk_part_1111111111111111");
    ASSERT_EQ(::mkfifo((scratch.path() + "/.nmk_part_2222222222222222").c_str(), 0666), 0);
    fs::create_symlink("kept", scratch.path() + "/.nmk_part_3333333333333333");
    EXPECT_EQ(write_whole(scratch.path() + "/new", "x"), 0);
    EXPECT_FALSE(fs::exists(scratch.path() + "/" + leftover));
    EXPECT_EQ(contents_of(kept), "kept");
    EXPECT_EQ(scratch.file_count(), 6U);
}

TEST(SafeFile, leaves_a_temporary_file_alone_while_a_process_holds_it) {
    const ScratchDirectory scratch;
    SafeFile here;
    ASSERT_EQ(here.create(scratch.path() + "/here", 0666), 0);
    HoldingChild child([&] {
        auto* const there = new SafeFile;  // never destroyed: the child is killed
        if (there->create(scratch.path() + "/there", 0666) != 0) ::_exit(1);
    });
    EXPECT_EQ(scratch.file_count(), 2U);
    EXPECT_EQ(write_whole(scratch.path() + "/f", "x"), 0);
    EXPECT_EQ(scratch.file_count(), 3U) << "both are being written";
    child.kill();
    EXPECT_EQ(write_whole(scratch.path() + "/f", "x"), 0);
    EXPECT_EQ(scratch.file_count(), 2U) << "the killed one is removed, ours is not";
    EXPECT_EQ(here.commit(Existing::kept), 0);
}

TEST(SafeFile, without_locks_on_a_disk_removes_nothing) {
    const ScratchDirectory scratch;
    scratch.file(leftover, "perhaps in use");
    const Fault fault("flock", ENOLCK);
    EXPECT_EQ(write_whole(scratch.path() + "/f", "x"), 0);
    EXPECT_EQ(scratch.file_count(), 2U);
}

TEST(SafeFile, starts_again_when_another_process_removes_it_before_it_is_locked) {
    const ScratchDirectory scratch;
    int removed = 0;
    const Fault fault([&](std::string_view call, std::string_view) {
        if (call != "flock" || removed++ > 0) return 0;
        for (const auto& entry : fs::directory_iterator(scratch.path())) fs::remove(entry);
        return 0;
    });
    EXPECT_EQ(write_whole(scratch.path() + "/f", "x"), 0);
    EXPECT_EQ(contents_of(scratch.path() + "/f"), "x");
    EXPECT_GE(removed, 2);
}

TEST(SafeFile, gives_up_when_others_lock_every_name_it_tries) {
    const ScratchDirectory scratch;
    const Fault fault("flock", EWOULDBLOCK);
    EXPECT_EQ(write_whole(scratch.path() + "/f", "x"), EEXIST);
    EXPECT_EQ(scratch.file_count(), 0U);
}

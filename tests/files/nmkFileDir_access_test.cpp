// What is there, and what may be done with it.
#include <gtest/gtest.h>
#include <nmktoolbox/files/nmkFileDir.h>
#include <sys/stat.h>
#include <utime.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <string>

#include "child_process.h"
#include "disk_fault.h"
#include "name_samples.h"
#include "scratch_directory.h"
#include "tree_samples.h"
#include "working_directory.h"

namespace fs = std::filesystem;

TEST(nmkFileDir_access, tells_files_directories_and_what_is_missing_apart) {
    const ScratchDirectory scratch;
    const nmkFileDir directory = named(scratch.path());
    EXPECT_EQ(directory.exist(), 1);
    EXPECT_EQ(directory.is_dir(), 1);
    EXPECT_EQ(directory.is_file(), 0);
    const nmkFileDir file = named(scratch.file("f", ""));
    EXPECT_EQ(file.exist(), 1);
    EXPECT_EQ(file.is_dir(), 0);
    EXPECT_EQ(file.is_file(), 1);
    const nmkFileDir missing = named(scratch.path() + "/missing");
    EXPECT_EQ(missing.exist() + missing.is_dir() + missing.is_file(), 0);
    const nmkFileDir none;
    EXPECT_EQ(none.exist() + none.is_dir() + none.is_file(), 0);
}

TEST(nmkFileDir_access, what_may_not_be_looked_at_exists_but_is_neither_file_nor_directory) {
    const ScratchDirectory scratch;
    const nmkFileDir file = named(scratch.file("f", ""));
    const Fault fault("GetFileAttributesA", scratch.path() + "/f", EACCES);
    EXPECT_EQ(file.exist(), 1);
    EXPECT_EQ(file.is_file(), 0);
    EXPECT_EQ(file.is_dir(), 0);
}

TEST(nmkFileDir_access, a_file_in_a_directory_without_permissions_counts_as_existing) {
    const ScratchDirectory scratch;
    const std::string locked = scratch.path() + "/locked";
    fs::create_directory(locked);
    fs::permissions(scratch.path(), fs::perms::all);
    fs::permissions(locked, fs::perms::none);
    const int answer = without_rights([&] {
        const nmkFileDir inside = named(locked + "/anything");
        return inside.exist() * 10 + inside.is_file() + inside.is_dir();
    });
    fs::permissions(locked, fs::perms::owner_all);
    EXPECT_EQ(answer, 10);
}

TEST(nmkFileDir_access, a_symlink_to_a_directory_is_a_directory_and_any_other_a_file) {
    const ScratchDirectory scratch;
    fs::create_directory(scratch.path() + "/d");
    fs::create_directory_symlink("d", scratch.path() + "/to_d");
    fs::create_symlink("nowhere", scratch.path() + "/broken");
    EXPECT_EQ(named(scratch.path() + "/to_d").is_dir(), 1);
    EXPECT_EQ(named(scratch.path() + "/to_d").is_file(), 0);
    EXPECT_EQ(named(scratch.path() + "/broken").exist(), 1);
    EXPECT_EQ(named(scratch.path() + "/broken").is_file(), 1);
    EXPECT_EQ(named(scratch.path() + "/broken").is_dir(), 0);
}

TEST(nmkFileDir_access, a_file_is_writeable_by_its_mode) {
    const ScratchDirectory scratch;
    const std::string file = scratch.file("f", "kept");
    EXPECT_EQ(named(file).is_file_writeable(), 1);
    EXPECT_EQ(named(file).is_writeable(), 1);
    fs::permissions(file, fs::perms::owner_read);
    EXPECT_EQ(named(file).is_file_writeable(), 0);
    EXPECT_EQ(named(file).is_writeable(), 0);
    EXPECT_EQ(named(scratch.path() + "/missing").is_file_writeable(), 0);
    EXPECT_EQ(nmkFileDir().is_file_writeable(), 0);
    EXPECT_EQ(fs::file_size(file), 4U);
}

TEST(nmkFileDir_access, a_directory_is_writeable_when_a_file_can_be_made_and_none_stays) {
    const ScratchDirectory scratch;
    EXPECT_EQ(named(scratch.path()).is_dir_writeable(), 1);
    EXPECT_EQ(named(scratch.path()).is_writeable(), 1);
    EXPECT_EQ(scratch.file_count(), 0U);
    EXPECT_EQ(named(scratch.path() + "/missing").is_dir_writeable(), 0);
    EXPECT_EQ(named(scratch.file("f", "")).is_dir_writeable(), 0);
    EXPECT_EQ(nmkFileDir().is_dir_writeable(), 0);
}

TEST(nmkFileDir_access, the_file_made_in_a_directory_is_never_one_that_is_there) {
    const ScratchDirectory scratch;
    const std::string kept = scratch.file("kept", "kept");
    // Another process guesses the first two names: a file, and a symlink to a file.
    int guessed = 0;
    const Fault fault([&](std::string_view call, std::string_view about) {
        const std::string name = fs::path(about).filename().string();
        if (call != "GetFileAttributesA" || !name.starts_with("nmk_")) return 0;
        ++guessed;
        if (guessed == 1) scratch.file(name, "taken");
        if (guessed == 2) fs::create_symlink(kept, scratch.path() + "/" + name);
        return 0;
    });
    EXPECT_EQ(named(scratch.path()).is_dir_writeable(), 1);
    EXPECT_GE(guessed, 3);
    EXPECT_EQ(contents_of(kept), "kept");
    EXPECT_EQ(scratch.file_count(), 3U);
}

TEST(nmkFileDir_access, a_directory_without_permissions_is_not_writeable) {
    const ScratchDirectory scratch;
    fs::permissions(scratch.path(),
                    fs::perms::owner_all | fs::perms::others_read | fs::perms::others_exec);
    if (::geteuid() != 0) fs::permissions(scratch.path(), fs::perms::owner_read);
    const int answer = without_rights([&] {
        return named(scratch.path()).is_writeable() * 2 +
               named(scratch.path() + "/missing").is_writeable();
    });
    fs::permissions(scratch.path(), fs::perms::owner_all);
    EXPECT_EQ(answer, 0);
}

TEST(nmkFileDir_access, a_missing_file_in_a_writeable_directory_is_writeable_and_stays_missing) {
    const ScratchDirectory scratch;
    EXPECT_EQ(named(scratch.path() + "/missing").is_writeable(), 1);
    EXPECT_EQ(scratch.file_count(), 0U);
}

TEST(nmkFileDir_access, a_missing_file_whose_parent_is_missing_is_not_writeable) {
    const ScratchDirectory scratch;
    EXPECT_EQ(named(scratch.path() + "/missing/file").is_writeable(), 0);
    const WorkingDirectory here(scratch.path());
    EXPECT_EQ(named("no_parent_at_all").is_writeable(), 0);
    EXPECT_EQ(nmkFileDir().is_writeable(), 0);
}

TEST(nmkFileDir_access, a_directory_whose_name_cannot_be_decoded_is_writeable) {
    const ScratchDirectory scratch;
    const std::string odd = scratch.path() + "/" + bad_byte;
    fs::create_directory(odd);
    EXPECT_EQ(named(odd).is_writeable(), 1);
    EXPECT_EQ(named(odd + "/" + cut_off).is_writeable(), 1);
    EXPECT_TRUE(fs::is_empty(odd));
}

TEST(nmkFileDir_access, a_file_is_local_unless_its_drive_is_remote) {
    const ScratchDirectory scratch;
    const nmkFileDir file = named(scratch.file("f", ""));
    EXPECT_EQ(file.is_local_file(), 1);
    const RemoteDirectory remote(scratch.path());
    EXPECT_EQ(file.is_local_file(), 0);
}

TEST(nmkFileDir_access, a_relative_file_is_local_by_its_full_path) {
    const ScratchDirectory scratch;
    scratch.file("f", "");
    const WorkingDirectory here(scratch.path());
    EXPECT_EQ(named("f").is_local_file(), 1);
    const RemoteDirectory remote(scratch.path());
    EXPECT_EQ(named("f").is_local_file(), 0);
}

TEST(nmkFileDir_access, two_leading_slashes_mean_remote_and_one_means_local) {
    const ScratchDirectory scratch;
    const std::string file = scratch.file("f", "");
    EXPECT_EQ(named(file).is_local_file(), 1);
    ASSERT_EQ(named("/" + file).exist(), 1);
    EXPECT_EQ(named("/" + file).is_local_file(), 0);
}

TEST(nmkFileDir_access, a_drive_letter_or_any_character_before_a_colon_is_local_here) {
    const ScratchDirectory scratch;
    const WorkingDirectory here(scratch.path());
    for (const char* name : {"C:f", "\xC3\xA9:f"}) {
        scratch.file(name, "");
        EXPECT_EQ(named(name).is_local_file(), 1) << name;
        const RemoteDirectory remote(scratch.path());
        EXPECT_EQ(named(name).is_local_file(), 0) << name;
    }
}

TEST(nmkFileDir_access, what_leads_out_of_a_remote_drive_is_remote_by_its_letter) {
    const ScratchDirectory scratch;
    const WorkingDirectory here(scratch.path());
    fs::create_directory("C:");
    scratch.file("elsewhere", "");
    fs::create_symlink("../elsewhere", "C:/symlink");
    EXPECT_EQ(named("C:/symlink").is_local_file(), 1);
    const RemoteDirectory remote(scratch.path() + "/C:");
    EXPECT_EQ(named("C:/symlink").is_local_file(), 0);
}

TEST(nmkFileDir_access, a_missing_file_is_not_local) {
    EXPECT_EQ(nmkFileDir().is_local_file(), 0);
    EXPECT_EQ(named("/missing/file").is_local_file(), 0);
}

TEST(nmkFileDir_access, the_size_is_in_bytes) {
    const ScratchDirectory scratch;
    EXPECT_EQ(named(scratch.file("empty", "")).size(), 0);
    EXPECT_EQ(named(scratch.file("f", "12345")).size(), 5);
    EXPECT_EQ(named(scratch.path() + "/missing").size(), -1);
    EXPECT_EQ(nmkFileDir().size(), -1);
}

TEST(nmkFileDir_access, a_size_beyond_32_bits_is_a_failure) {
    const ScratchDirectory scratch;
    const std::string file = scratch.file("f", "");
    fs::resize_file(file, 0x7FFFFFFF);
    EXPECT_EQ(named(file).size(), 0x7FFFFFFF);
    fs::resize_file(file, 0x80000000);
    EXPECT_EQ(named(file).size(), -1);
}

TEST(nmkFileDir_access, a_name_without_a_full_path_has_no_size) {
    const ScratchDirectory scratch;
    const std::string deep = scratch.path() + "/" + std::string(250, 'd');
    fs::create_directory(deep);
    std::ofstream(deep + "/f") << "12345";
    EXPECT_EQ(named(deep + "/f").is_file(), 1);
    EXPECT_EQ(named(deep + "/f").size(), -1);
}

TEST(nmkFileDir_access, the_modification_time_is_in_seconds) {
    const ScratchDirectory scratch;
    const std::string file = scratch.file("f", "");
    const utimbuf times{5000000000, 5000000001};
    ASSERT_EQ(::utime(file.c_str(), &times), 0);
    EXPECT_EQ(named(file).modification_time(), 5000000001);
    EXPECT_EQ(named(scratch.path() + "/missing").modification_time(), 0);
    EXPECT_EQ(nmkFileDir().modification_time(), 0);
}

TEST(nmkFileDir_access, the_modification_time_of_what_cannot_be_read_is_0) {
    const ScratchDirectory scratch;
    const std::string file = scratch.file("f", "");
    const Fault fault("_stat64i32", file, EACCES);
    EXPECT_EQ(named(file).modification_time(), 0);
    EXPECT_EQ(named(file).size(), -1);
}

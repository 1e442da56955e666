// write_whole_file: a file is written as a whole or not at all.

#include "files/write_whole_file.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "app/formats/job/job_fixtures.h"
#include "child_process.h"
#include "scratch_directory.h"

namespace nmk_files {
namespace {

/// The problem if the file could not be written, or "".
std::string problem_of(const std::string& name, std::string_view text) {
    const nmk_text::Result<void> written = write_whole_file(name, text);
    return written ? "" : written.error().message;
}

TEST(write_whole_file, creates_a_file_with_the_default_mode) {
    const ScratchDirectory folder;
    const std::string name = folder.path() + "/a.txt";
    const mode_t mask = ::umask(027);
    EXPECT_EQ(problem_of(name, "hello"), "");
    ::umask(mask);
    EXPECT_EQ(nmk_job::bytes_of_file(name), "hello");
    struct stat facts {};
    ASSERT_EQ(::stat(name.c_str(), &facts), 0);
    EXPECT_EQ(facts.st_mode & 0777U, 0640U);
    EXPECT_EQ(folder.file_count(), 1U);
}

TEST(write_whole_file, replaces_a_file_and_keeps_its_mode) {
    const ScratchDirectory folder;
    const std::string name = folder.file("a.txt", "something longer than that");
    ::chmod(name.c_str(), 0600);
    EXPECT_EQ(problem_of(name, "new"), "");
    EXPECT_EQ(nmk_job::bytes_of_file(name), "new");
    struct stat facts {};
    ASSERT_EQ(::stat(name.c_str(), &facts), 0);
    EXPECT_EQ(facts.st_mode & 0777U, 0600U);
    EXPECT_EQ(folder.file_count(), 1U);
}

TEST(write_whole_file, replaces_a_file_and_keeps_its_owner) {
    if (::geteuid() != 0) {
        GTEST_SKIP() << "only root may give files away";
    }
    const ScratchDirectory folder;
    const std::string name = folder.file("a.txt", "old");
    constexpr uid_t somebody = 65534;
    ASSERT_EQ(::chown(name.c_str(), somebody, somebody), 0);
    EXPECT_EQ(problem_of(name, "new"), "");
    struct stat facts {};
    ASSERT_EQ(::stat(name.c_str(), &facts), 0);
    EXPECT_EQ(facts.st_uid, somebody);
    EXPECT_EQ(facts.st_gid, somebody);
}

TEST(write_whole_file, writes_an_empty_file) {
    const ScratchDirectory folder;
    EXPECT_EQ(problem_of(folder.path() + "/a", ""), "");
    EXPECT_EQ(nmk_job::bytes_of_file(folder.path() + "/a"), "");
}

TEST(write_whole_file, follows_a_symlink_to_its_target) {
    const ScratchDirectory folder;
    const std::string name = folder.file("a.txt", "old");
    const std::string symlink = folder.path() + "/symlink";
    ASSERT_EQ(::symlink("a.txt", symlink.c_str()), 0);
    EXPECT_EQ(problem_of(symlink, "new"), "");
    EXPECT_TRUE(std::filesystem::is_symlink(symlink));
    EXPECT_EQ(nmk_job::bytes_of_file(name), "new");
}

TEST(write_whole_file, refuses_a_symlink_without_a_target_and_keeps_it) {
    const ScratchDirectory folder;
    const std::string dangling = folder.path() + "/dangling";
    const std::string loop = folder.path() + "/loop";
    ASSERT_EQ(::symlink("missing.txt", dangling.c_str()), 0);
    ASSERT_EQ(::symlink("loop", loop.c_str()), 0);
    EXPECT_EQ(problem_of(dangling, "new"),
              "is a symlink whose target cannot be found (No such file or directory); expected an "
              "existing file or a new name");
    EXPECT_EQ(problem_of(loop, "new"),
              "is a symlink whose target cannot be found (Too many levels of symbolic links); "
              "expected an existing file or a new name");
    EXPECT_EQ(std::filesystem::read_symlink(dangling), "missing.txt");
    EXPECT_EQ(std::filesystem::read_symlink(loop), "loop");
    EXPECT_EQ(folder.file_count(), 2U);
}

TEST(write_whole_file, accepts_a_name_of_the_greatest_length) {
    const ScratchDirectory folder;
    const std::string name = folder.path() + "/" + std::string(255, 'a');
    EXPECT_EQ(problem_of(name, "x"), "");
    EXPECT_EQ(nmk_job::bytes_of_file(name), "x");
}

TEST(write_whole_file, reports_a_full_disk) {
    EXPECT_EQ(problem_of("/dev/full", "x"), "cannot be written: No space left on device");
    const ScratchDirectory folder;
    const std::string symlink = folder.path() + "/symlink";
    ASSERT_EQ(::symlink("/dev/full", symlink.c_str()), 0);
    EXPECT_EQ(problem_of(symlink, "x"), "cannot be written: No space left on device");
}

TEST(write_whole_file, writes_to_devices_without_replacing_them) {
    EXPECT_EQ(problem_of("/dev/null", "x"), "");
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
}

TEST(write_whole_file, refuses_a_directory_and_a_name_in_a_missing_directory) {
    const ScratchDirectory folder;
    EXPECT_EQ(problem_of(folder.path(), "x"), "is a directory; expected the name of a file");
    EXPECT_EQ(problem_of(folder.path() + "/none/a", "x"),
              "no file can be created in its directory: No such file or directory");
    EXPECT_EQ(folder.file_count(), 0U);
}

TEST(write_whole_file, refuses_a_directory_that_may_not_be_written) {
    const ScratchDirectory folder;
    ::chmod(folder.path().c_str(), 0555);
    const int code = without_rights([&] {
        return problem_of(folder.path() + "/a", "x") ==
                       "no file can be created in its directory: Permission denied"
                   ? 0
                   : 1;
    });
    EXPECT_EQ(code, 0);
    ::chmod(folder.path().c_str(), 0700);
}

TEST(write_whole_file, leaves_only_the_old_file_if_the_bytes_do_not_fit) {
    const ScratchDirectory folder;
    const std::string name = folder.file("a.txt", "old");
    const int status = with_little_room(100, [&] {
        return problem_of(name, std::string(1000, 'x')) == "cannot be written: File too large" ? 0
                                                                                               : 1;
    });
    EXPECT_EQ(status, 0);
    EXPECT_EQ(nmk_job::bytes_of_file(name), "old");
    EXPECT_EQ(folder.file_count(), 1U);
}

TEST(write_whole_file, leaves_one_complete_file_if_the_process_ends_at_any_time) {
    const ScratchDirectory folder;
    const std::string name = folder.file("a.txt", "old");
    const std::string text(500'000, 'x');
    for (useconds_t delay = 0; delay < 10'000; delay += 500) {
        const pid_t child = ::fork();
        if (child == 0) {
            for (;;) {
                problem_of(name, text);
            }
        }
        ::usleep(delay);
        ::kill(child, SIGTERM);
        int status = 0;
        ::waitpid(child, &status, 0);
        ASSERT_TRUE(WIFSIGNALED(status));
        ASSERT_EQ(folder.file_count(), 1U);
        const std::string bytes = nmk_job::bytes_of_file(name);
        ASSERT_TRUE(bytes == "old" || bytes == text) << bytes.size();
    }
}

}  // namespace
}  // namespace nmk_files

// write_all_files: several files are written, all of them or none.

#include "files/write_all_files.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "app/formats/job/job_fixtures.h"
#include "scratch_directory.h"

namespace nmk_files {
namespace {

TEST(write_all_files, reports_the_names_in_their_order_and_which_files_are_new) {
    const ScratchDirectory folder;
    const std::string old_name = folder.file("a.txt", "old");
    const std::string new_name = folder.path() + "/b.txt";
    const auto written = write_all_files({{old_name, "A"}, {"/dev/null", "N"}, {new_name, "B"}});
    ASSERT_TRUE(written) << written.error().text();
    EXPECT_EQ(written->names, (std::vector<std::string>{old_name, "/dev/null", new_name}));
    EXPECT_EQ(written->new_names, (std::vector<std::string>{new_name}));
    EXPECT_EQ(nmk_job::bytes_of_file(old_name), "A");
    EXPECT_EQ(nmk_job::bytes_of_file(new_name), "B");
    EXPECT_EQ(folder.file_count(), 2U);
}

TEST(write_all_files, touches_no_file_when_a_later_one_cannot_be_created) {
    const ScratchDirectory folder;
    const std::string name = folder.file("a.txt", "old");
    const auto written = write_all_files(
        {{name, "A"}, {folder.path() + "/b.txt", "B"}, {folder.path() + "/none/c.txt", "C"}});
    ASSERT_FALSE(written);
    EXPECT_EQ(written.error().text(), folder.path() +
                                          "/none/c.txt: no file can be created in its "
                                          "directory: No such file or directory");
    EXPECT_EQ(nmk_job::bytes_of_file(name), "old");
    EXPECT_EQ(folder.file_count(), 1U);
}

TEST(write_all_files, restores_a_replaced_file_when_a_device_is_full) {
    const ScratchDirectory folder;
    const std::string name = folder.file("a.txt", "old");
    const auto written =
        write_all_files({{"/dev/full", "x"}, {name, "A"}, {folder.path() + "/b.txt", "B"}});
    ASSERT_FALSE(written);
    EXPECT_EQ(written.error().text(), "/dev/full: cannot be written: No space left on device");
    EXPECT_EQ(nmk_job::bytes_of_file(name), "old");
    EXPECT_EQ(folder.file_count(), 1U);
}

TEST(write_all_files, restores_the_same_file_with_its_owner_and_mode) {
    const ScratchDirectory folder;
    const std::string name = folder.file("a.txt", "old");
    struct stat before {};
    struct stat after {};
    ASSERT_EQ(::stat(name.c_str(), &before), 0);
    EXPECT_FALSE(write_all_files({{name, "A"}, {"/dev/full", "x"}}));
    ASSERT_EQ(::stat(name.c_str(), &after), 0);
    EXPECT_EQ(before.st_ino, after.st_ino);
    EXPECT_EQ(before.st_mode, after.st_mode);
}

}  // namespace
}  // namespace nmk_files

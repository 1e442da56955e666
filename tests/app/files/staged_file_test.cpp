// staged_file: a file gets its name when it is complete, and can be taken back.

#include "files/staged_file.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstring>
#include <filesystem>

#include "app/formats/job/job_fixtures.h"
#include "scratch_directory.h"

namespace nmk_files {
namespace {

namespace fs = std::filesystem;

/// The problem of putting the file in place, or "".
std::string problem_of(StagedFile& file) {
    const nmk_text::Result<void> done = file.put_in_place();
    return done ? "" : done.error().text();
}

TEST(staged_file, has_its_name_only_after_put_in_place) {
    const ScratchDirectory folder;
    const std::string name = folder.path() + "/a.txt";
    auto file = StagedFile::stage(name, "new");
    ASSERT_TRUE(file) << file.error().text();
    EXPECT_FALSE(fs::exists(name));
    EXPECT_EQ(folder.file_count(), 1U);  // the temporary file
    EXPECT_EQ(problem_of(*file), "");
    EXPECT_EQ(nmk_job::bytes_of_file(name), "new");
    EXPECT_EQ(folder.file_count(), 1U);
}

TEST(staged_file, removes_its_temporary_file_if_it_is_never_put_in_place) {
    const ScratchDirectory folder;
    ASSERT_TRUE(StagedFile::stage(folder.path() + "/a.txt", "new"));
    EXPECT_EQ(folder.file_count(), 0U);
}

TEST(staged_file, take_back_removes_a_new_file_and_restores_a_replaced_one) {
    const ScratchDirectory folder;
    const std::string old_name = folder.file("old.txt", "old");
    const std::string new_name = folder.path() + "/new.txt";
    for (const std::string& name : {old_name, new_name}) {
        auto file = StagedFile::stage(name, "text");
        ASSERT_TRUE(file) << file.error().text();
        EXPECT_EQ(problem_of(*file), "");
        EXPECT_EQ(nmk_job::bytes_of_file(name), "text");
        file->take_back();
    }
    EXPECT_EQ(nmk_job::bytes_of_file(old_name), "old");
    EXPECT_EQ(folder.file_count(), 1U);
}

TEST(staged_file, is_put_in_place_if_the_replaced_file_was_removed_meanwhile) {
    const ScratchDirectory folder;
    const std::string name = folder.file("a.txt", "old");
    auto file = StagedFile::stage(name, "new");
    ASSERT_TRUE(file) << file.error().text();
    ASSERT_EQ(::unlink(name.c_str()), 0);
    EXPECT_EQ(problem_of(*file), "");
    EXPECT_EQ(nmk_job::bytes_of_file(name), "new");
    file->take_back();
    EXPECT_EQ(folder.file_count(), 0U);
}

TEST(staged_file, reports_that_its_temporary_file_was_removed_and_keeps_the_old_file) {
    const ScratchDirectory folder;
    const std::string name = folder.file("a.txt", "old");
    auto file = StagedFile::stage(name, "new");
    ASSERT_TRUE(file) << file.error().text();
    for (const auto& entry : fs::directory_iterator(folder.path())) {
        if (entry.path() != name) fs::remove(entry.path());
    }
    EXPECT_EQ(problem_of(*file),
              name + ": cannot be renamed from its temporary file: No such file or directory");
    EXPECT_EQ(nmk_job::bytes_of_file(name), "old");
    EXPECT_EQ(folder.file_count(), 1U);
}

TEST(staged_file, reports_a_device_that_cannot_be_opened) {
    const ScratchDirectory folder;
    const std::string name = folder.path() + "/socket";
    const int descriptor = ::socket(AF_UNIX, SOCK_STREAM, 0);
    ASSERT_GE(descriptor, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    ASSERT_LT(name.size(), sizeof address.sun_path);
    std::strcpy(address.sun_path, name.c_str());
    ASSERT_EQ(::bind(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    ::close(descriptor);
    auto file = StagedFile::stage(name, "new");
    ASSERT_TRUE(file) << file.error().text();
    EXPECT_TRUE(file->is_device());
    EXPECT_EQ(problem_of(*file),
              name + ": cannot be opened for writing: No such device or address");
}

}  // namespace
}  // namespace nmk_files

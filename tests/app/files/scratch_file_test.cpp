// ScratchFile: its bytes, its mode, and that nothing is left of it.

#include "files/scratch_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>

#include "app/files/other_temporary_directory.h"
#include "scratch_directory.h"

namespace nmk_files {
namespace {

TEST(ScratchFile, has_its_bytes_until_it_is_destroyed) {
    const ScratchDirectory scratch;
    const OtherTemporaryDirectory other(scratch.path());
    std::string bytes("a\0b\n", 4);
    bytes += std::string(200000, 'x');
    {
        const ScratchFile file(bytes);
        EXPECT_TRUE(file.name().starts_with(scratch.path())) << file.name();
        const auto read = file.bytes();
        ASSERT_TRUE(read);
        EXPECT_EQ(*read, bytes);
    }
    EXPECT_TRUE(std::filesystem::is_empty(scratch.path()));
}

TEST(ScratchFile, is_closed_to_other_users) {
    const ScratchFile file("secret");
    struct stat facts {};
    ASSERT_EQ(::stat(file.name().c_str(), &facts), 0);
    EXPECT_EQ(facts.st_mode & 0777U, 0600U);
}

TEST(ScratchFile, is_in_tmp_where_the_directory_for_temporary_files_does_not_exist) {
    const ScratchDirectory scratch;
    const std::string plain = scratch.file("plain", "");
    const OtherTemporaryDirectory other(plain);
    const ScratchFile file("a");
    EXPECT_TRUE(file.name().starts_with("/tmp/")) << file.name();
}

}  // namespace
}  // namespace nmk_files

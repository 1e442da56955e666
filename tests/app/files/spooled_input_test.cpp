// SpooledInput: the bytes of files and pipes, and that nothing is left of it.

#include "files/spooled_input.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "app/files/other_temporary_directory.h"
#include "app/shell/standard_input.h"
#include "child_process.h"
#include "file_contents.h"
#include "scratch_directory.h"

namespace nmk_files {
namespace {

const auto never_stop = [](std::int64_t) { return true; };

std::string with_every_byte(std::size_t size) {
    std::string bytes;
    for (std::size_t i = 0; i < size; ++i) bytes += static_cast<char>(i * 7 % 256);
    return bytes;
}

TEST(SpooledInput, has_the_bytes_of_a_file_and_no_name_in_any_directory) {
    const std::string bytes = with_every_byte(200'000);
    const StandardInput input(bytes);
    const ScratchDirectory scratch;
    const OtherTemporaryDirectory other(scratch.path());
    const auto spooled = SpooledInput::read(never_stop);
    ASSERT_TRUE(spooled);
    EXPECT_TRUE(spooled->is_whole());
    EXPECT_EQ(contents_of(spooled->name()), bytes);
    EXPECT_EQ(contents_of(spooled->name()), bytes) << "a second time";
    EXPECT_TRUE(std::filesystem::is_empty(scratch.path()));
}

TEST(SpooledInput, has_the_bytes_of_a_pipe) {
    const std::string bytes = with_every_byte(60'000);
    const PipedInput input(bytes);
    std::int64_t seen = 0;
    const auto spooled = SpooledInput::read([&seen](std::int64_t count) {
        seen = count;
        return true;
    });
    ASSERT_TRUE(spooled);
    EXPECT_EQ(contents_of(spooled->name()), bytes);
    EXPECT_EQ(seen, 60'000);
}

TEST(SpooledInput, of_nothing_is_an_empty_file) {
    const PipedInput input("");
    const auto spooled = SpooledInput::read(never_stop);
    ASSERT_TRUE(spooled);
    EXPECT_TRUE(spooled->is_whole());
    EXPECT_EQ(contents_of(spooled->name()), "");
}

TEST(SpooledInput, stops_waiting_for_bytes_when_the_watch_says_so) {
    const PipedInput input("begin", PipedInput::Writer::waiting);
    int calls = 0;
    const auto spooled = SpooledInput::read([&calls](std::int64_t) { return ++calls < 4; });
    ASSERT_TRUE(spooled);
    EXPECT_FALSE(spooled->is_whole());
    EXPECT_EQ(calls, 4);
}

TEST(SpooledInput, reports_an_input_that_cannot_be_read) {
    EXPECT_EQ(in_a_child([] {
                  ::close(STDIN_FILENO);
                  if (::open("/", O_RDONLY | O_DIRECTORY) != STDIN_FILENO) return 1;
                  const auto spooled = SpooledInput::read(never_stop);
                  const std::string expected = "standard input: cannot be read: Is a directory";
                  return !spooled && spooled.error().text() == expected ? 0 : 2;
              }),
              0);
}

TEST(SpooledInput, reports_a_disk_that_is_full) {
    const StandardInput input(with_every_byte(100'000));
    EXPECT_EQ(with_little_room(50'000,
                               [] {
                                   const auto spooled = SpooledInput::read(never_stop);
                                   const std::string expected =
                                       "standard input: a temporary file cannot be written: File "
                                       "too large";
                                   return !spooled && spooled.error().text() == expected ? 0 : 1;
                               }),
              0);
}

TEST(SpooledInput, reports_a_directory_that_takes_no_files) {
    const StandardInput input("x");
    EXPECT_EQ(without_rights([] {
                  ::setenv("TMPDIR", "/proc", 1);
                  const auto spooled = SpooledInput::read(never_stop);
                  return !spooled &&
                                 spooled.error().message.find("cannot be made") != std::string::npos
                             ? 0
                             : 1;
              }),
              0);
}

}  // namespace
}  // namespace nmk_files

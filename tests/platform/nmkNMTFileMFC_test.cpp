#include <gtest/gtest.h>
#include <nmknmt/nmkNMTFileMFC.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <ostream>
#include <random>
#include <string>

#include "child_process.h"
#include "file_contents.h"
#include "model_samples.h"
#include "scratch_directory.h"

using model_samples::MemoryFile;

namespace {

// All lines, read into a buffer of `size` bytes.
std::string lines_of(apINMKFile& file, int size) {
    std::string all;
    std::string buffer(static_cast<std::size_t>(size), 'x');
    while (file.gets(buffer.data(), size) != nullptr) all += std::string(buffer.c_str()) + "|";
    return all;
}

// A name that cannot be opened for reading.
struct RefusedCase {
    const char* name;
    void (*make)(const std::string& path);
};

std::ostream& operator<<(std::ostream& out, const RefusedCase& each) { return out << each.name; }

class nmkNMTFileMFC_refused : public testing::TestWithParam<RefusedCase> {};

}  // namespace

TEST(nmkNMTFileMFC, gets_keeps_the_newline) {
    MemoryFile file("one\n\ntwo\n");
    EXPECT_EQ(lines_of(file, 100), "one\n|\n|two\n|");
}

TEST(nmkNMTFileMFC, gets_continues_a_long_line_in_the_next_call) {
    MemoryFile file("abcdefg\nh\n");
    EXPECT_EQ(lines_of(file, 4), "abc|def|g\n|h\n|");
}

TEST(nmkNMTFileMFC, the_last_line_needs_no_newline) {
    MemoryFile file("one\ntwo");
    EXPECT_EQ(lines_of(file, 100), "one\n|two|");
}

TEST(nmkNMTFileMFC, gets_returns_null_for_a_buffer_without_room) {
    MemoryFile file("one");
    char byte = 'x';
    EXPECT_EQ(file.gets(&byte, 1), nullptr);
    EXPECT_EQ(file.gets(&byte, -1), nullptr);
    EXPECT_EQ(byte, 'x');
}

TEST(nmkNMTFileMFC, reads_lines_across_pieces) {
    std::string text;
    std::string expected;
    for (int i = 0; text.size() < 200000; ++i) {
        const std::string line =
            std::to_string(i) + std::string(static_cast<std::size_t>(i % 90), 'x') + "\n";
        text += line;
        expected += line + "|";
    }
    MemoryFile file(text);
    EXPECT_EQ(lines_of(file, 200), expected);
}

TEST(nmkNMTFileMFC, read_returns_the_bytes_that_there_are) {
    MemoryFile file("0123456789");
    char bytes[8] = {};
    EXPECT_EQ(file.read(bytes, 4, 2), 8U);
    EXPECT_EQ(file.read(bytes, 4, 2), 2U);
    EXPECT_EQ(file.read(bytes, 4, 2), 0U);
    EXPECT_EQ(file.read(bytes, SIZE_MAX, 2), 0U);
    EXPECT_EQ(file.length(), 10);
}

TEST(nmkNMTFileMFC, seek_counts_from_the_beginning_the_position_and_the_end) {
    MemoryFile file("0123456789");
    char byte = 0;
    EXPECT_EQ(file.seek(4, apNMKSeekBegin), 0);
    file.read(&byte, 1, 1);
    EXPECT_EQ(byte, '4');
    EXPECT_EQ(file.seek(2, apNMKSeekCurrent), 0);
    file.read(&byte, 1, 1);
    EXPECT_EQ(byte, '7');
    EXPECT_EQ(file.seek(-1, apNMKSeekEnd), 0);
    file.read(&byte, 1, 1);
    EXPECT_EQ(byte, '9');
}

TEST(nmkNMTFileMFC, seek_refuses_positions_before_the_beginning_and_unknown_origins) {
    MemoryFile file("0123456789");
    EXPECT_NE(file.seek(-1, apNMKSeekBegin), 0);
    EXPECT_NE(file.seek(0, 3), 0);
    EXPECT_NE(file.seek(0, -1), 0);
    EXPECT_NE(file.seek(INT64_MAX, apNMKSeekEnd), 0);
    EXPECT_EQ(file.seek(1000, apNMKSeekBegin), 0);
    char byte = 0;
    EXPECT_EQ(file.read(&byte, 1, 1), 0U);
}

TEST(nmkNMTFileMFC, a_null_handle_reads_as_empty_and_takes_nothing) {
    nmkNMTFileMFC file{CFilecoPrf()};
    char bytes[4] = {};
    EXPECT_FALSE(file.is_open());
    EXPECT_EQ(file.read(bytes, 1, 4), 0U);
    EXPECT_EQ(file.gets(bytes, 4), nullptr);
    EXPECT_EQ(file.write("x", 1, 1), 0U);
    EXPECT_EQ(file.length(), 0);
    EXPECT_EQ(file.close(), 0);
}

TEST(nmkNMTFileMFC, reads_a_framework_file_from_its_beginning) {
    const CFilecoPrf shared(new CMemFile);
    shared->Write("clipboard", 9);
    nmkNMTFileMFC file(shared);
    EXPECT_EQ(lines_of(file, 20), "clipboard|");
}

// Random writes, reads and seeks give the bytes of a plain string.
TEST(nmkNMTFileMFC, writes_as_a_string_is_written) {
    const ScratchDirectory scratch;
    const std::string name = scratch.path() + "/written";
    std::string plain;
    nmkNMTFileMFC file(name.c_str(), apNMKModeWrite);
    ASSERT_TRUE(file.is_open());
    std::mt19937 random(11);
    std::string bytes(100000, '\0');
    for (int round = 0; round < 200; ++round) {
        const std::size_t size = random() % (round % 10 == 0 ? bytes.size() : 300);
        const std::size_t at = plain.empty() ? 0 : random() % plain.size();
        for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<char>(random() % 26 + 'a');
        ASSERT_EQ(file.seek(static_cast<std::int64_t>(at), apNMKSeekBegin), 0);
        if (round % 3 == 0) {
            std::string read(size, '\0');
            read.resize(file.read(read.data(), 1, size));
            ASSERT_EQ(read, plain.substr(at, size)) << round;
            continue;
        }
        ASSERT_EQ(file.write(bytes.data(), 1, size), size);
        plain.replace(at, size, bytes, 0, size);
        ASSERT_EQ(file.length(), static_cast<std::int64_t>(plain.size()));
    }
    EXPECT_EQ(file.close(), 0);
    EXPECT_EQ(file.error(), nmkNMTErrNone);
    EXPECT_EQ(contents_of(name), plain);
}

TEST(nmkNMTFileMFC, opening_for_writing_empties_the_file) {
    const ScratchDirectory scratch;
    const std::string name = scratch.file("old", "old contents");
    nmkNMTFileMFC(name.c_str(), apNMKModeWrite).close();
    EXPECT_EQ(contents_of(name), "");
}

TEST(nmkNMTFileMFC, close_reports_what_a_full_disk_did_not_take) {
    const ScratchDirectory scratch;
    const std::string name = scratch.path() + "/written";
    EXPECT_EQ(
        with_little_room(
            1000,
            [&] {
                nmkNMTFileMFC file(name.c_str(), apNMKModeWrite);
                const std::string bytes(5000, 'x');
                const bool is_taken = file.write(bytes.data(), 1, bytes.size()) == bytes.size();
                return is_taken && file.close() == 1 && file.error() == nmkNMTErrWrite ? 0 : 1;
            }),
        0);
}

TEST(nmkNMTFileMFC, write_reports_what_a_full_disk_did_not_take) {
    const ScratchDirectory scratch;
    const std::string name = scratch.path() + "/written";
    EXPECT_EQ(with_little_room(1000,
                               [&] {
                                   nmkNMTFileMFC file(name.c_str(), apNMKModeWrite);
                                   const std::string bytes(200000, 'x');
                                   return file.write(bytes.data(), 1, bytes.size()) < bytes.size()
                                              ? 0
                                              : 1;
                               }),
              0);
}

TEST(nmkNMTFileMFC, set_error_keeps_the_first_failure) {
    MemoryFile file("");
    EXPECT_EQ(file.error(), nmkNMTErrNone);
    file.set_error(5, nmkNMTErrWrite);
    file.set_error(6, nmkNMTErrWrite);
    EXPECT_EQ(file.error(), nmkNMTErrWrite);
    EXPECT_EQ(file.error_code(), 5);
}

TEST(nmkNMTFileMFC, reads_through_a_symlink) {
    const ScratchDirectory scratch;
    const std::string name = scratch.file("model", "bytes");
    std::filesystem::create_symlink(name, scratch.path() + "/link");
    nmkNMTFileMFC file((scratch.path() + "/link").c_str(), apNMKModeRead);
    EXPECT_EQ(lines_of(file, 20), "bytes|");
}

TEST_P(nmkNMTFileMFC_refused, is_not_open_and_waits_for_nothing) {
    const ScratchDirectory scratch;
    const std::string path = scratch.path() + "/model";
    GetParam().make(path);
    EXPECT_FALSE(nmkNMTFileMFC(path.c_str(), apNMKModeRead).is_open());
}

INSTANTIATE_TEST_SUITE_P(
    names, nmkNMTFileMFC_refused,
    testing::Values(
        RefusedCase{"a_missing_file", [](const std::string&) {}},
        RefusedCase{"a_directory",
                    [](const std::string& path) { std::filesystem::create_directory(path); }},
        RefusedCase{"a_pipe",
                    [](const std::string& path) { ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0); }},
        RefusedCase{
            "a_device",
            [](const std::string& path) { std::filesystem::create_symlink("/dev/zero", path); }},
        RefusedCase{"a_symlink_to_itself",
                    [](const std::string& path) { std::filesystem::create_symlink(path, path); }}),
    testing::PrintToStringParamName());

TEST(nmkNMTFileMFC, a_null_name_is_not_open) {
    EXPECT_FALSE(nmkNMTFileMFC(utString(), apNMKModeRead).is_open());
    EXPECT_FALSE(nmkNMTFileMFC(utString(""), apNMKModeWrite).is_open());
}

TEST(nmkNMTFileMFC, a_pipe_is_not_opened_for_writing) {
    const ScratchDirectory scratch;
    const std::string path = scratch.path() + "/pipe";
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    EXPECT_FALSE(nmkNMTFileMFC(path.c_str(), apNMKModeWrite).is_open());
}

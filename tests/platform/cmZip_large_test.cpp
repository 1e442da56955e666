// Zip files with sizes and offsets past 4 GiB, in release builds: others take minutes.
#include <compress/cmUnZip.h>
#include <compress/cmZip.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "scratch_directory.h"
#include "zip_tools.h"

namespace {

constexpr std::int64_t four_gib = std::int64_t{1} << 32;
constexpr std::uintmax_t room_needed = std::uintmax_t{12} << 30;  // bytes on the disk

/// Writes an entry of 4 GiB and some zeros, and a small one behind it.
int write_large(const std::string& name, cmZipMethod method) {
    const std::vector<char> zeros(1 << 20);
    cmZip zip;
    int error = zip.open(name.c_str());
    if (error == 0) error = zip.open_new_file_in_zip("large", method, 1, nullptr, utString());
    for (int i = 0; i < 4097 && error == 0; ++i) {
        error = zip.write_in_file_in_zip(zeros.data(), static_cast<int>(zeros.size()));
    }
    if (error == 0) error = zip.open_new_file_in_zip("small", method, 1, nullptr, utString());
    if (error == 0) error = zip.write_in_file_in_zip("behind", 6);
    return error == 0 ? zip.close() : error;
}

class cmZip_large : public testing::TestWithParam<cmZipMethod> {};

}  // namespace

TEST_P(cmZip_large, entries_past_4_gib_are_written_and_read) {
#ifndef NDEBUG
    GTEST_SKIP() << "4 GiB take minutes in a debug build";
#endif
    const ScratchDirectory scratch;
    const std::string name = scratch.path() + "/z.zip";
    if (std::filesystem::space(scratch.path()).available < room_needed) {
        GTEST_SKIP() << "the disk has less than 12 GiB left";
    }
    ASSERT_EQ(write_large(name, GetParam()), 0);
    cmUnZip zip;
    std::int64_t size = 0, packed = 0;
    char bytes[8];
    ASSERT_EQ(zip.open(name.c_str()), 0) << zip.problem();
    ASSERT_EQ(zip.goto_file("large"), 0);
    ASSERT_EQ(zip.get_current_file_sizes(size, packed), 0);
    EXPECT_EQ(size, four_gib + (1 << 20));
    EXPECT_EQ(packed == size, GetParam() == cmZipMethodStored);
    ASSERT_EQ(zip.open_current_file(), 0) << zip.problem();
    EXPECT_EQ(zip.read_current_file(bytes, 8), 8);
    ASSERT_EQ(zip.goto_file("small"), 0);
    ASSERT_EQ(zip.open_current_file(), 0) << zip.problem();
    EXPECT_EQ(zip.read_current_file(bytes, 8), 6);
    EXPECT_EQ(std::string(bytes, 6), "behind");
    EXPECT_EQ(zip_tools::python(name,
                                "i = z.infolist(); print(i[0].file_size, z.read(\"small\"), "
                                "i[1].header_offset > 1 << 32)"),
              "4296015872 b'behind' " +
                  std::string(GetParam() == cmZipMethodStored ? "True" : "False") + "\nexit 0\n");
}

INSTANTIATE_TEST_SUITE_P(methods, cmZip_large,
                         testing::Values(cmZipMethodStored, cmZipMethodDeflate),
                         [](const auto& each) {
                             return std::string(each.param == cmZipMethodStored ? "stored"
                                                                                : "deflated");
                         });

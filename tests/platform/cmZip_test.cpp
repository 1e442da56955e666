// Zip files as they are written: what other programs read in them, and what a failure leaves.
#include <compress/cmUnZip.h>
#include <compress/cmZip.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <utils/ut_date.h>
#include <zip.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "child_process.h"
#include "disk_fault.h"
#include "file_contents.h"
#include "scratch_directory.h"
#include "zip_samples.h"
#include "zip_tools.h"

namespace fs = std::filesystem;
using Files = std::vector<std::pair<std::string, std::string>>;

namespace {

int date_of_tests[ut_date_size] = {2026, 2, 28, 23, 59, 58};

int add(cmZip& zip, const std::string& name, const std::string& bytes,
        cmZipMethod method = cmZipMethodDeflate, int level = -1) {
    int error = zip.open_new_file_in_zip(utString(name), method, level, date_of_tests, utString());
    if (error == 0) error = zip.write_in_file_in_zip(bytes.data(), static_cast<int>(bytes.size()));
    return error == 0 ? zip.close_file_in_zip() : error;
}

int write_zip(const std::string& name, const Files& files) {
    cmZip zip;
    int error = zip.open(name.c_str());
    for (const auto& [entry, bytes] : files) {
        if (error == 0) error = add(zip, entry, bytes);
    }
    return error == 0 ? zip.close() : error;
}

Files read_zip(const std::string& name) {
    cmUnZip zip;
    Files files;
    EXPECT_EQ(zip.open(name.c_str()), 0) << zip.problem();
    for (int error = zip.goto_first_file(); error == 0; error = zip.goto_next_file()) {
        utString entry;
        std::ostringstream bytes;
        EXPECT_EQ(zip.get_current_file_info(entry), 0);
        EXPECT_EQ(zip.open_current_file(), 0) << zip.problem();
        EXPECT_EQ(zip.unzip_current_file(bytes, 10240), 0) << zip.problem();
        files.emplace_back(entry.view(), bytes.str());
    }
    return files;
}

/// True where libzip finds nothing wrong with the file.
bool is_consistent(const std::string& name) {
    int error = 0;
    zip_t* const archive = ::zip_open(name.c_str(), ZIP_RDONLY | ZIP_CHECKCONS, &error);
    if (archive != nullptr) ::zip_discard(archive);
    return archive != nullptr;
}

const Files all_kinds = {
    {"empty", ""},
    {"text.txt", "some text"},
    {"deep/er/zeros", std::string(300000, '\0')},
    {"noise", zip_samples::noise(300000)},
    {"/surface/1", "a name that begins with a slash"},
    {"M\xC3\xBCller", "a name in UTF-8"},
    {"M\xFCller", "a name in no encoding"},
};

}  // namespace

TEST(cmZip, writes_what_is_read_again) {
    const ScratchDirectory scratch;
    ASSERT_EQ(write_zip(scratch.path() + "/z", all_kinds), 0);
    EXPECT_EQ(read_zip(scratch.path() + "/z"), all_kinds);
    EXPECT_EQ(scratch.file_count(), 1U);
}

TEST(cmZip, writes_what_unzip_python_and_libzip_find_sound) {
    const ScratchDirectory scratch;
    const std::string name = scratch.path() + "/z.zip";
    ASSERT_EQ(write_zip(name, all_kinds), 0);
    EXPECT_EQ(zip_tools::unzip_test(name), "exit 0\n");
    EXPECT_EQ(zip_tools::python(name, "print(z.testzip(), len(z.namelist()), z.namelist()[5:6])"),
              "None 7 ['Müller']\nexit 0\n");
    EXPECT_TRUE(is_consistent(name));
}

TEST(cmZip, gives_every_entry_its_date_and_a_mode_that_can_be_read) {
    const ScratchDirectory scratch;
    const std::string name = scratch.path() + "/z.zip";
    ASSERT_EQ(write_zip(name, {{"a", "1"}}), 0);
    EXPECT_EQ(zip_tools::python(name,
                                "i = z.infolist()[0]; print(i.date_time, "
                                "oct(i.external_attr >> 16), i.compress_type)"),
              "(2026, 2, 28, 23, 59, 58) 0o100644 8\nexit 0\n");
}

TEST(cmZip, takes_dates_outside_the_range_as_the_nearest) {
    const ScratchDirectory scratch;
    const std::string name = scratch.path() + "/z.zip";
    int early[] = {1970, 1, 1, 0, 0, 0}, late[] = {2500, 1, 1, 0, 0, 0};
    int odd[] = {2026, 13, 0, 99, -1, 61};
    cmZip zip;
    ASSERT_EQ(zip.open(name.c_str()), 0);
    for (int* const date : {early, late, odd, static_cast<int*>(nullptr)}) {
        ASSERT_EQ(zip.open_new_file_in_zip("a", cmZipMethodStored, -1, date, utString()), 0);
    }
    ASSERT_EQ(zip.close(), 0);
    EXPECT_EQ(zip_tools::python(name, "[print(i.date_time) for i in z.infolist()]"),
              "(1980, 1, 1, 0, 0, 0)\n(2107, 12, 31, 23, 59, 58)\n(2026, 12, 1, 23, 0, 58)\n"
              "(1980, 1, 1, 0, 0, 0)\nexit 0\n");
}

TEST(cmZip, writes_a_name_twice_as_two_entries) {
    const ScratchDirectory scratch;
    const Files twice = {{"a", "first"}, {"b", "between"}, {"a", "second"}};
    ASSERT_EQ(write_zip(scratch.path() + "/z", twice), 0);
    EXPECT_EQ(read_zip(scratch.path() + "/z"), twice);
    EXPECT_EQ(zip_tools::python(scratch.path() + "/z", "print(z.namelist(), z.testzip())"),
              "['a', 'b', 'a'] None\nexit 0\n");
}

TEST(cmZip, writes_stored_entries_and_every_level) {
    const ScratchDirectory scratch;
    const std::string name = scratch.path() + "/z";
    const std::string bytes = zip_samples::noise(70000) + std::string(70000, 'x');
    cmZip zip;
    Files expected;
    ASSERT_EQ(zip.open(name.c_str()), 0);
    for (int level = -1; level <= 9; ++level) {
        expected.emplace_back("level " + std::to_string(level), bytes);
        ASSERT_EQ(add(zip, expected.back().first, bytes, cmZipMethodDeflate, level), 0);
    }
    expected.emplace_back("stored", bytes);
    ASSERT_EQ(add(zip, "stored", bytes, cmZipMethodStored), 0);
    ASSERT_EQ(zip.close(), 0);
    EXPECT_EQ(read_zip(name), expected);
    EXPECT_EQ(zip_tools::python(
                  name, "print(sorted({i.compress_type for i in z.infolist()}), z.testzip())"),
              "[0, 8] None\nexit 0\n");
    EXPECT_TRUE(is_consistent(name));
}

TEST(cmZip, packs_each_entry_at_its_own_level) {
    const ScratchDirectory scratch;
    const std::string name = scratch.path() + "/z";
    const std::string bytes(50'000, 'x');
    cmZip writer;
    ASSERT_EQ(writer.open(name.c_str()), 0);
    ASSERT_EQ(add(writer, "0", bytes, cmZipMethodDeflate, 0), 0);
    ASSERT_EQ(add(writer, "9", bytes, cmZipMethodDeflate, 9), 0);
    ASSERT_EQ(add(writer, "0 again", bytes, cmZipMethodDeflate, 0), 0);
    ASSERT_EQ(writer.close(), 0);
    cmUnZip reader;
    ASSERT_EQ(reader.open(name.c_str()), 0);
    ASSERT_EQ(reader.goto_first_file(), 0);
    for (const bool is_packed : {false, true, false}) {
        std::int64_t size = 0, packed_size = 0;
        ASSERT_EQ(reader.get_current_file_sizes(size, packed_size), 0);
        EXPECT_EQ(packed_size < 1000, is_packed) << packed_size;
        reader.goto_next_file();
    }
}

TEST(cmZip, does_not_replace_a_file_that_may_not_be_written) {
    const ScratchDirectory scratch;
    const std::string name = scratch.file("z", "before");
    fs::permissions(scratch.path(), fs::perms::all);
    fs::permissions(name, fs::perms::owner_read | fs::perms::others_read);
    EXPECT_EQ(without_rights([&] { return cmZip().open(name.c_str()); }), EACCES);
    EXPECT_EQ(contents_of(name), "before");
}

TEST(cmZip, packs_a_stream_like_its_bytes) {
    const ScratchDirectory scratch;
    const std::string bytes = zip_samples::noise(200000);
    std::istringstream stream(bytes);
    cmZip zip;
    ASSERT_EQ(zip.open((scratch.path() + "/z").c_str()), 0);
    ASSERT_EQ(zip.open_new_file_in_zip("a", cmZipMethodDeflate, -1, date_of_tests, utString()), 0);
    EXPECT_EQ(zip.zip_current_file(stream, 10240), 0);
    ASSERT_EQ(zip.close(), 0) << "closes the entry too";
    EXPECT_EQ(read_zip(scratch.path() + "/z"), (Files{{"a", bytes}}));
}

TEST(cmZip, closes_an_open_entry_when_the_next_begins) {
    const ScratchDirectory scratch;
    cmZip zip;
    ASSERT_EQ(zip.open((scratch.path() + "/z").c_str()), 0);
    for (const char* name : {"a", "b"}) {
        ASSERT_EQ(zip.open_new_file_in_zip(name, cmZipMethodDeflate, -1, nullptr, utString()), 0);
        ASSERT_EQ(zip.write_in_file_in_zip(name, 1), 0);
    }
    ASSERT_EQ(zip.close(), 0);
    EXPECT_EQ(read_zip(scratch.path() + "/z"), (Files{{"a", "a"}, {"b", "b"}}));
}

TEST(cmZip, without_entries_is_a_lone_end_record) {
    const ScratchDirectory scratch;
    ASSERT_EQ(write_zip(scratch.path() + "/z", {}), 0);
    EXPECT_EQ(contents_of(scratch.path() + "/z"), zip_samples::end_record(0, 0, 0));
}

TEST(cmZip, keeps_comments) {
    const ScratchDirectory scratch;
    cmZip zip;
    ASSERT_EQ(zip.open((scratch.path() + "/z").c_str()), 0);
    ASSERT_EQ(zip.open_new_file_in_zip("a", cmZipMethodStored, -1, nullptr, "a comment"), 0);
    ASSERT_EQ(zip.close(), 0);
    EXPECT_EQ(zip_tools::python(scratch.path() + "/z", "print(z.infolist()[0].comment)"),
              "b'a comment'\nexit 0\n");
}

TEST(cmZip, refuses_calls_out_of_order_and_bad_arguments) {
    const ScratchDirectory scratch;
    const std::string name = scratch.path() + "/z";
    std::istringstream stream("x");
    cmZip zip;
    const auto entry = [&](const utString& entry_name, int method, int level,
                           const utString& text) {
        return zip.open_new_file_in_zip(entry_name, static_cast<cmZipMethod>(method), level,
                                        nullptr, text);
    };
    EXPECT_EQ(zip.open(nullptr), EINVAL);
    EXPECT_EQ(zip.open(""), EINVAL);
    EXPECT_EQ(zip.close(), EINVAL);
    EXPECT_EQ(entry("a", 1, -1, ""), EINVAL) << "no file is open";
    ASSERT_EQ(zip.open(name.c_str()), 0);
    EXPECT_EQ(zip.open(name.c_str()), EINVAL) << "a file is open";
    EXPECT_EQ(zip.write_in_file_in_zip("x", 1), EINVAL) << "no entry is open";
    EXPECT_EQ(zip.zip_current_file(stream, 10240), EINVAL);
    EXPECT_EQ(zip.close_file_in_zip(), EINVAL);
    EXPECT_EQ(entry(utString(), 1, -1, ""), EINVAL);
    EXPECT_EQ(entry("a", 8, -1, ""), EINVAL) << "8 is the number in the file, not here";
    EXPECT_EQ(entry("a", 1, 10, ""), EINVAL);
    EXPECT_EQ(entry("a", 1, -2, ""), EINVAL);
    EXPECT_EQ(entry(utString(std::string(65536, 'x')), 1, -1, ""), EINVAL);
    EXPECT_EQ(entry("a", 1, -1, utString(std::string(65536, 'x'))), EINVAL);
    ASSERT_EQ(entry(utString(std::string(65535, 'x')), 1, -1, utString(std::string(65535, 'y'))),
              0);
    EXPECT_EQ(zip.write_in_file_in_zip("x", -1), EINVAL);
    EXPECT_EQ(zip.write_in_file_in_zip(nullptr, 1), EINVAL);
    EXPECT_EQ(zip.zip_current_file(stream, 0), EINVAL);
    ASSERT_EQ(zip.close(), 0);
    EXPECT_EQ(read_zip(name), (Files{{std::string(65535, 'x'), ""}})) << "none of it did harm";
}

TEST(cmZip, opens_only_what_can_become_a_file) {
    const ScratchDirectory scratch;
    ASSERT_EQ(::mkfifo((scratch.path() + "/pipe").c_str(), 0600), 0);
    fs::create_symlink("nowhere", scratch.path() + "/dangling");
    const auto open = [&](const std::string& name) {
        return cmZip().open((scratch.path() + name).c_str());
    };
    EXPECT_EQ(open(""), EISDIR);
    EXPECT_EQ(open("/missing/z"), ENOENT);
    EXPECT_EQ(open("/pipe"), EINVAL);
    EXPECT_EQ(open("/dangling"), ENOENT);
    EXPECT_EQ(scratch.file_count(), 2U) << "no directory is made";
}

TEST(cmZip, replaces_a_file_only_at_the_end_and_keeps_its_mode) {
    const ScratchDirectory scratch;
    const std::string name = scratch.file("z", "before");
    fs::permissions(name, fs::perms::owner_read | fs::perms::owner_write);
    fs::create_symlink("z", scratch.path() + "/link");
    {
        cmZip zip;
        ASSERT_EQ(zip.open((scratch.path() + "/link").c_str()), 0);
        ASSERT_EQ(add(zip, "a", "1"), 0);
    }
    EXPECT_EQ(contents_of(name), "before") << "an object that ends without close changes nothing";
    EXPECT_EQ(scratch.file_count(), 2U);
    ASSERT_EQ(write_zip(scratch.path() + "/link", {{"a", "1"}}), 0);
    EXPECT_TRUE(fs::is_symlink(scratch.path() + "/link"));
    EXPECT_EQ(read_zip(name), (Files{{"a", "1"}}));
    EXPECT_EQ(static_cast<int>(fs::status(name).permissions()), 0600);
}

TEST(cmZip, knows_its_own_file_and_the_one_it_replaces) {
    const ScratchDirectory scratch;
    const std::string name = scratch.file("z", "before");
    const std::string other = scratch.file("other", "x");
    cmZip zip;
    EXPECT_FALSE(zip.is_own_file(name.c_str()));
    ASSERT_EQ(zip.open(name.c_str()), 0);
    int own = 0;
    for (const auto& entry : fs::directory_iterator(scratch.path())) {
        own += zip.is_own_file(entry.path().c_str()) ? 1 : 0;
    }
    EXPECT_EQ(own, 2) << "the temporary file and the one before";
    EXPECT_TRUE(zip.is_own_file(name.c_str()));
    EXPECT_FALSE(zip.is_own_file(other.c_str()));
    EXPECT_FALSE(zip.is_own_file(nullptr));
}

TEST(cmZip, that_fills_the_disk_leaves_the_file_as_it_was) {
    const ScratchDirectory scratch;
    const std::string name = scratch.file("z", "before");
    const int code = with_little_room(100000, [&] {
        const int error = write_zip(name, {{"noise", zip_samples::noise(500000)}, {"b", "1"}});
        return error == EFBIG ? 0 : 1;
    });
    EXPECT_EQ(code, 0);
    EXPECT_EQ(contents_of(name), "before");
    EXPECT_EQ(scratch.file_count(), 1U);
}

TEST(cmZip, whose_flush_fails_leaves_the_file_as_it_was) {
    const ScratchDirectory scratch;
    const std::string name = scratch.file("z", "before");
    {
        const Fault full("fsync", ENOSPC);
        EXPECT_EQ(write_zip(name, {{"a", "1"}}), ENOSPC);
    }
    EXPECT_EQ(contents_of(name), "before");
    EXPECT_EQ(scratch.file_count(), 1U);
}

TEST(cmZip, stops_when_its_watch_says_so) {
    const ScratchDirectory scratch;
    std::istringstream stream(std::string(100000, 'x'));
    std::int64_t seen = 0;
    cmZip zip;
    zip.set_watch([&](std::int64_t bytes) { return (seen += bytes) < 30000; });
    ASSERT_EQ(zip.open((scratch.path() + "/z").c_str()), 0);
    ASSERT_EQ(zip.open_new_file_in_zip("a", cmZipMethodDeflate, -1, nullptr, utString()), 0);
    EXPECT_EQ(zip.zip_current_file(stream, 10240), ECANCELED);
    EXPECT_EQ(seen, 30720);
    EXPECT_EQ(zip.close_file_in_zip(), ECANCELED);
    EXPECT_EQ(zip.close(), ECANCELED);
    EXPECT_EQ(scratch.file_count(), 0U);
}

TEST(cmZip, leaves_out_an_entry_whose_stream_fails) {
    class Failing : public std::streambuf {
        int_type underflow() override {
            if (m_given) throw 1;  // the stream takes it for a failure
            m_given = true;
            setg(m_bytes, m_bytes, m_bytes + sizeof m_bytes);
            return 'x';
        }
        char m_bytes[4] = {'x', 'x', 'x', 'x'};
        bool m_given = false;
    } buffer;
    const ScratchDirectory scratch;
    const std::string name = scratch.path() + "/z.zip";
    std::istream stream(&buffer);
    cmZip zip;
    ASSERT_EQ(zip.open(name.c_str()), 0);
    ASSERT_EQ(add(zip, "a", "1"), 0);
    ASSERT_EQ(zip.open_new_file_in_zip("b", cmZipMethodDeflate, -1, nullptr, utString()), 0);
    EXPECT_EQ(zip.zip_current_file(stream, 10240), EIO);
    EXPECT_EQ(zip.close_file_in_zip(), EINVAL) << "the entry is not open any more";
    ASSERT_EQ(add(zip, "c", "3"), 0);
    ASSERT_EQ(zip.close(), 0);
    EXPECT_EQ(read_zip(name), (Files{{"a", "1"}, {"c", "3"}}));
    EXPECT_EQ(zip_tools::unzip_test(name), "exit 0\n");
}

TEST(cmZip, writes_65534_entries_without_the_records_of_zip64_and_65535_with_them) {
    const ScratchDirectory scratch;
    const std::string name = scratch.path() + "/z.zip";
    for (const int count : {65534, 65535}) {
        cmZip zip;
        ASSERT_EQ(zip.open(name.c_str()), 0);
        for (int i = 0; i < count; ++i) {
            ASSERT_EQ(add(zip, std::to_string(i), "", cmZipMethodStored), 0);
        }
        ASSERT_EQ(zip.close(), 0);
        const bool is_large = contents_of(name).find("PK\6\6") != std::string::npos;
        EXPECT_EQ(is_large, count == 65535);
        EXPECT_TRUE(is_consistent(name)) << count;
    }
}

TEST(cmZip, writes_more_than_65535_entries) {
    const ScratchDirectory scratch;
    const std::string name = scratch.path() + "/z.zip";
    cmZip zip;
    ASSERT_EQ(zip.open(name.c_str()), 0);
    for (int i = 0; i < 65537; ++i) {
        ASSERT_EQ(add(zip, std::to_string(i), i == 65536 ? "last" : "", cmZipMethodStored), 0);
    }
    ASSERT_EQ(zip.close(), 0);
    EXPECT_EQ(zip_tools::python(name, "print(len(z.namelist()), z.read(\"65536\"))"),
              "65537 b'last'\nexit 0\n");
    EXPECT_TRUE(is_consistent(name));
    cmUnZip reader;
    ASSERT_EQ(reader.open(name.c_str()), 0);
    EXPECT_EQ(reader.size(), 65537);
}

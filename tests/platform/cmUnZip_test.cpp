// Zip files as they are read: the order of calls, and files that nobody should trust.
#include <compress/cmUnZip.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <utils/ut_date.h>
#include <zlib.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <iterator>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

#include "file_contents.h"
#include "scratch_directory.h"
#include "zip_samples.h"
#include "zip_tools.h"

namespace fs = std::filesystem;
using zip_samples::Entry;
using zip_samples::zip_of;

namespace {

std::string deflated(const std::string& bytes) {
    std::string packed(bytes.size() + 1000, '\0');
    z_stream stream{};
    ::deflateInit2(&stream, -1, Z_DEFLATED, -15, 8, Z_DEFAULT_STRATEGY);
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
    stream.avail_in = static_cast<uInt>(bytes.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    ::deflate(&stream, Z_FINISH);
    packed.resize(stream.total_out);
    ::deflateEnd(&stream);
    return packed;
}

/// An entry that is deflated, and says so rightly.
Entry packed_entry(const std::string& name, const std::string& bytes) {
    Entry entry{name, deflated(bytes), 8};
    entry.size = static_cast<std::uint32_t>(bytes.size());
    entry.check_sum = zip_samples::check_sum(bytes);
    return entry;
}

/// Opens the bytes, and the entry of this name; `zip` then has what failed.
int open_entry(cmUnZip& zip, const ScratchDirectory& scratch, const std::string& bytes,
               const char* name) {
    int error = zip.open(scratch.file("z", bytes).c_str());
    if (error == 0) error = zip.goto_file(name);
    return error == 0 ? zip.open_current_file() : error;
}

std::size_t open_descriptors() {
    std::size_t count = 0;
    for ([[maybe_unused]] const auto& entry : fs::directory_iterator("/proc/self/fd")) ++count;
    return count;
}

/// Reads whatever the file has, in every way; only that it ends is looked at.
void read_all(const std::string& name) {
    cmUnZip zip;
    if (zip.open(name.c_str()) != 0) return;
    for (int error = zip.goto_first_file(); error == 0; error = zip.goto_next_file()) {
        utString entry;
        std::ostringstream bytes;
        zip.get_current_file_info(entry);
        if (zip.open_current_file() == 0) zip.unzip_current_file(bytes, 100);
    }
}

}  // namespace

TEST(cmUnZip, walks_the_entries_in_the_order_of_the_directory) {
    const ScratchDirectory scratch;
    cmUnZip zip;
    utString name("untouched");
    ASSERT_EQ(zip.open(scratch.file("z", zip_of({{"b", "1"}, {"a", "22"}, {"c/", ""}})).c_str()),
              0);
    EXPECT_EQ(zip.size(), 3);
    EXPECT_EQ(zip.get_current_file_info(name), EINVAL) << "before goto_first_file";
    EXPECT_EQ(name, "untouched");
    std::string names;
    for (int error = zip.goto_first_file(); error == 0; error = zip.goto_next_file()) {
        ASSERT_EQ(zip.get_current_file_info(name), 0);
        names += std::string(name.view()) + " ";
    }
    EXPECT_EQ(names, "b a c/ ");
    EXPECT_EQ(zip.goto_next_file(), ENOENT) << "stays behind the last";
    EXPECT_EQ(zip.open_current_file(), EINVAL);
    EXPECT_EQ(zip.close(), 0);
}

TEST(cmUnZip, finds_the_first_entry_of_a_name) {
    const ScratchDirectory scratch;
    cmUnZip zip;
    char bytes[10];
    ASSERT_EQ(zip.open(scratch.file("z", zip_of({{"a", "1"}, {"b", "2"}, {"b", "3"}})).c_str()), 0);
    ASSERT_EQ(zip.goto_file("b"), 0);
    ASSERT_EQ(zip.open_current_file(), 0);
    EXPECT_EQ(zip.read_current_file(bytes, 10), 1);
    EXPECT_EQ(bytes[0], '2');
    EXPECT_EQ(zip.goto_file("B"), ENOENT);
    EXPECT_EQ(zip.goto_file(utString()), ENOENT);
    EXPECT_EQ(zip.problem(), "no such entry");
}

TEST(cmUnZip, reads_full_blocks_until_the_end) {
    const ScratchDirectory scratch;
    const std::string text = zip_samples::noise(50000);
    cmUnZip zip;
    ASSERT_EQ(open_entry(zip, scratch, zip_of({packed_entry("a", text)}), "a"), 0);
    std::string read(60000, '\0');
    int done = 0;
    for (int expected : {20000, 20000, 10000, 0, 0}) {
        ASSERT_EQ(zip.read_current_file(read.data() + done, 20000), expected);
        done += expected;
    }
    EXPECT_EQ(read.substr(0, 50000), text);
    EXPECT_EQ(zip.close_current_file(), 0);
    EXPECT_EQ(zip.close_current_file(), EINVAL);
    EXPECT_EQ(zip.read_current_file(read.data(), 1), -1);
}

TEST(cmUnZip, opens_an_entry_again_at_its_beginning) {
    const ScratchDirectory scratch;
    cmUnZip zip;
    char bytes[4];
    ASSERT_EQ(open_entry(zip, scratch, zip_of({{"a", "1234"}}), "a"), 0);
    ASSERT_EQ(zip.read_current_file(bytes, 2), 2);
    ASSERT_EQ(zip.open_current_file(), 0);
    EXPECT_EQ(zip.read_current_file(bytes, 4), 4);
    EXPECT_EQ(std::string(bytes, 4), "1234");
}

TEST(cmUnZip, closes_an_open_entry_when_it_moves) {
    const ScratchDirectory scratch;
    cmUnZip zip;
    char byte = 0;
    ASSERT_EQ(open_entry(zip, scratch, zip_of({{"a", "1"}, {"b", "2"}}), "a"), 0);
    ASSERT_EQ(zip.goto_next_file(), 0);
    EXPECT_EQ(zip.read_current_file(&byte, 1), -1);
    ASSERT_EQ(zip.open_current_file(), 0);
    ASSERT_EQ(zip.read_current_file(&byte, 1), 1);
    EXPECT_EQ(byte, '2');
}

TEST(cmUnZip, reads_another_file_when_the_first_is_closed) {
    const ScratchDirectory scratch;
    Entry shared = packed_entry("0", std::string(100000, 'x'));
    std::vector<Entry> overlapping(100, shared);
    for (std::size_t i = 1; i < overlapping.size(); ++i) overlapping[i].same_data_as = 0;
    cmUnZip zip;
    utString name;
    EXPECT_EQ(open_entry(zip, scratch, zip_of(overlapping), "0"), EBADMSG);
    ASSERT_EQ(zip.close(), 0);
    EXPECT_EQ(zip.size(), 0);
    EXPECT_EQ(zip.goto_first_file(), ENOENT) << "nothing is open";
    EXPECT_EQ(zip.get_current_file_info(name), EINVAL);
    EXPECT_EQ(open_entry(zip, scratch, zip_of({{"a", "1"}}), "a"), 0) << zip.problem();
    EXPECT_EQ(zip.goto_file("0"), ENOENT) << "a name of the first";
}

TEST(cmUnZip, reports_the_damage_of_a_block_at_which_its_watch_stops) {
    const ScratchDirectory scratch;
    Entry entry{"a", "data"};
    entry.check_sum = 1;
    cmUnZip zip;
    std::ostringstream bytes;
    zip.set_watch([](std::int64_t) { return false; });
    ASSERT_EQ(open_entry(zip, scratch, zip_of({entry}), "a"), 0);
    EXPECT_EQ(zip.unzip_current_file(bytes, 10), EBADMSG);
}

TEST(cmUnZip, reads_what_python_and_zip_tools_write) {
    const ScratchDirectory scratch;
    const std::string name = scratch.path() + "/p.zip";
    ASSERT_EQ(zip_tools::output_of("python3 -c 'import zipfile\n"
                                   "z = zipfile.ZipFile(\"" +
                                   name +
                                   "\", \"w\", 8)\n"
                                   "with z.open(\"large\", \"w\", force_zip64=True) as f:\n"
                                   "    f.write(b\"x\" * 100000)\n"
                                   "z.writestr(\"b\", \"text\")\nz.close()'"),
              "exit 0\n");
    cmUnZip zip;
    std::ostringstream bytes;
    ASSERT_EQ(zip.open(name.c_str()), 0);
    ASSERT_EQ(zip.goto_file("large"), 0);
    ASSERT_EQ(zip.open_current_file(), 0) << zip.problem();
    EXPECT_EQ(zip.unzip_current_file(bytes, 10240), 0);
    EXPECT_EQ(bytes.str(), std::string(100000, 'x'));
}

TEST(cmUnZip, has_no_entries_in_a_lone_end_record) {
    const ScratchDirectory scratch;
    cmUnZip zip;
    ASSERT_EQ(zip.open(scratch.file("z", zip_samples::end_record(0, 0, 0)).c_str()), 0);
    EXPECT_EQ(zip.size(), 0);
    EXPECT_EQ(zip.goto_first_file(), ENOENT);
    EXPECT_EQ(zip.goto_file("a"), ENOENT);
}

TEST(cmUnZip, opens_only_zip_files_and_keeps_no_descriptor_of_others) {
    const ScratchDirectory scratch;
    ASSERT_EQ(::mkfifo((scratch.path() + "/pipe").c_str(), 0600), 0);
    scratch.file("empty", "");
    scratch.file("text", "no zip");
    const std::size_t before = open_descriptors();
    cmUnZip zip;
    const auto open = [&](const std::string& name) {
        return zip.open((scratch.path() + name).c_str());
    };
    EXPECT_EQ(zip.open(nullptr), EINVAL);
    EXPECT_EQ(open("/missing"), ENOENT);
    EXPECT_EQ(open(""), EISDIR);
    EXPECT_EQ(open("/pipe"), EBADMSG);
    EXPECT_EQ(open("/empty"), EBADMSG) << "a file of no bytes";
    EXPECT_EQ(open("/text"), EBADMSG);
    EXPECT_EQ(zip.close(), EINVAL);
    EXPECT_EQ(open_descriptors(), before);
    scratch.file("z", zip_samples::end_record(0, 0, 0));
    ASSERT_EQ(open("/z"), 0) << "a failure before does not matter";
    EXPECT_EQ(open("/z"), EINVAL) << "one at a time";
    EXPECT_EQ(zip.close(), 0);
    EXPECT_EQ(open_descriptors(), before);
}

TEST(cmUnZip, without_a_file_refuses_every_call) {
    cmUnZip zip;
    utString name;
    std::ostringstream stream;
    std::int64_t size = 0;
    char byte = 0;
    EXPECT_EQ(zip.goto_first_file(), ENOENT);
    EXPECT_EQ(zip.goto_next_file(), ENOENT);
    EXPECT_EQ(zip.goto_file("a"), ENOENT);
    EXPECT_EQ(zip.get_current_file_info(name), EINVAL);
    EXPECT_EQ(zip.get_current_file_sizes(size, size), EINVAL);
    EXPECT_EQ(zip.open_current_file(), EINVAL);
    EXPECT_EQ(zip.read_current_file(&byte, 1), -1);
    EXPECT_EQ(zip.unzip_current_file(stream, 1), EINVAL);
    EXPECT_EQ(zip.failure(), EINVAL);
}

namespace {

struct Hostile {
    const char* name;
    Entry entry;
    int opened;  // what opening the entry returns
    int read;    // what reading all of it returns
    const char* problem;
};

std::ostream& operator<<(std::ostream& stream, const Hostile& hostile) {
    return stream << hostile.name;
}

Entry changed(Entry entry, void (*change)(Entry&)) {
    change(entry);
    return entry;
}

const Hostile hostile_entries[] = {
    {"a_wrong_check_sum", changed({"a", "data"}, [](Entry& e) { e.check_sum = 1; }), 0, EBADMSG,
     "the data is damaged: CRC error"},
    {"a_size_that_is_too_small", changed(packed_entry("a", "12345"), [](Entry& e) { e.size = 3; }),
     0, EBADMSG, "the data is longer than the directory says"},
    {"a_size_that_is_too_large", changed(packed_entry("a", "12345"), [](Entry& e) { e.size = 9; }),
     0, EBADMSG, "the data is shorter than the directory says"},
    {"stored_with_two_sizes", changed({"a", "12345"}, [](Entry& e) { e.size = 3; }), EBADMSG, 0,
     "the sizes differ"},
    {"more_bytes_than_the_file",
     changed({"a", "1"}, [](Entry& e) { e.packed_size = e.size = 99999; }), EBADMSG, 0,
     "entries overlap"},
    {"a_bomb", changed(packed_entry("a", "12345"), [](Entry& e) { e.size = 4000000000U; }), EFBIG,
     0, "unpacks to more than is possible"},
    {"an_unknown_method",
     {"a", "12345", 77},
     EOPNOTSUPP,
     0,
     "packed by method 77; expected 0 (stored) or 8 (deflated)"},
    {"bzip2",
     {"a", "12345", 12},
     EOPNOTSUPP,
     0,
     "packed by method 12; expected 0 (stored) or 8 (deflated)"},
    {"encryption", {"a", std::string(40, 'x'), 0, 1}, EOPNOTSUPP, 0, "the entry is encrypted"},
    {"damaged_deflate",
     {"a", "\xFF\xFF\xFF\xFF", 8},
     0,
     EBADMSG,
     "the data is damaged: Zlib error: data error"},
};

class cmUnZip_hostile : public testing::TestWithParam<Hostile> {};

}  // namespace

TEST_P(cmUnZip_hostile, entry_is_refused_with_its_reason) {
    const ScratchDirectory scratch;
    const Hostile& hostile = GetParam();
    cmUnZip zip;
    std::ostringstream bytes;
    EXPECT_EQ(open_entry(zip, scratch, zip_of({hostile.entry, {"b", "sound"}}), "a"),
              hostile.opened);
    if (hostile.opened == 0) {
        EXPECT_EQ(zip.unzip_current_file(bytes, 10240), hostile.read);
    }
    EXPECT_EQ(zip.problem(), hostile.problem);
}

INSTANTIATE_TEST_SUITE_P(cases, cmUnZip_hostile, testing::ValuesIn(hostile_entries),
                         [](const auto& each) { return std::string(each.param.name); });

TEST(cmUnZip, notices_a_wrong_check_sum_with_the_last_byte) {
    const ScratchDirectory scratch;
    Entry entry{"a", "data"};
    entry.check_sum = 1;
    cmUnZip zip;
    char bytes[4];
    ASSERT_EQ(open_entry(zip, scratch, zip_of({entry}), "a"), 0);
    EXPECT_EQ(zip.read_current_file(bytes, 3), 3);
    EXPECT_EQ(zip.read_current_file(bytes, 1), -1) << "without a read behind the end";
}

TEST(cmUnZip, opens_no_entry_where_many_share_their_bytes) {
    const ScratchDirectory scratch;
    std::vector<Entry> entries = {packed_entry("0", std::string(100000, 'x'))};
    for (int i = 1; i < 100; ++i) {
        entries.push_back(entries.front());
        entries.back().same_data_as = 0;
    }
    cmUnZip zip;
    ASSERT_EQ(zip.open(scratch.file("z", zip_of(entries)).c_str()), 0);
    EXPECT_EQ(zip.size(), 100) << "they are listed";
    ASSERT_EQ(zip.goto_file("0"), 0);
    EXPECT_EQ(zip.open_current_file(), EBADMSG);
    EXPECT_EQ(zip.problem(), "entries overlap");
}

TEST(cmUnZip, lists_names_of_any_kind) {
    const ScratchDirectory scratch;
    cmUnZip zip;
    const std::string bytes = zip_of({{"../up", ""},
                                      {"/abs", ""},
                                      {"C:\\x", ""},
                                      {"a\xFF", ""},
                                      {std::string("n\0l", 3), ""},
                                      {"", "no name"}});
    ASSERT_EQ(zip.open(scratch.file("z", bytes).c_str()), 0);
    std::string names;
    for (int error = zip.goto_first_file(); error == 0; error = zip.goto_next_file()) {
        utString name;
        zip.get_current_file_info(name);
        names += std::string(name.view()) + "|";
    }
    EXPECT_EQ(names, "../up|/abs|C:\\x|a\xFF|n l||") << "a NUL becomes a blank";
}

TEST(cmUnZip, has_the_sizes_and_the_date_of_an_entry) {
    const ScratchDirectory scratch;
    cmUnZip zip;
    std::int64_t size = 0, packed = 0;
    int date[ut_date_size] = {};
    const Entry entry = packed_entry("a", std::string(5000, 'x'));
    EXPECT_EQ(zip.get_current_file_date(date), EINVAL);
    ASSERT_EQ(zip.open(scratch.file("z", zip_of({entry})).c_str()), 0);
    ASSERT_EQ(zip.goto_first_file(), 0);
    ASSERT_EQ(zip.get_current_file_sizes(size, packed), 0);
    EXPECT_EQ(size, 5000);
    EXPECT_EQ(packed, static_cast<std::int64_t>(entry.data.size()));
    ASSERT_EQ(zip.get_current_file_date(date), 0);
    const int expected[] = {1980, 1, 1, 0, 0, 0};
    EXPECT_TRUE(std::equal(std::begin(date), std::end(date), expected));
}

TEST(cmUnZip, stops_when_its_watch_says_so) {
    const ScratchDirectory scratch;
    cmUnZip zip;
    std::ostringstream bytes;
    std::int64_t seen = 0;
    zip.set_watch([&](std::int64_t count) { return (seen += count) < 30; });
    ASSERT_EQ(open_entry(zip, scratch, zip_of({{"a", std::string(100, 'x')}}), "a"), 0);
    EXPECT_EQ(zip.unzip_current_file(bytes, 10), ECANCELED);
    EXPECT_EQ(seen, 30);
}

TEST(cmUnZip, reports_a_stream_that_fails) {
    const ScratchDirectory scratch;
    cmUnZip zip;
    std::ostream nowhere(nullptr);
    ASSERT_EQ(open_entry(zip, scratch, zip_of({{"a", "1"}}), "a"), 0);
    EXPECT_EQ(zip.unzip_current_file(nowhere, 10), EIO);
    EXPECT_EQ(zip.problem(), "the output cannot be written");
}

TEST(cmUnZip, survives_every_prefix_and_every_changed_byte) {
    const ScratchDirectory scratch;
    const std::string whole = zip_of(
        {{"version.txt", "1.02"}, packed_entry("a/a.ngk", std::string(500, 'g')), {"d/", ""}});
    for (std::size_t size = 0; size < whole.size(); ++size) {
        read_all(scratch.file("z", whole.substr(0, size)));
    }
    for (std::size_t i = 0; i < whole.size(); ++i) {
        for (const int change : {0x01, 0x80, 0xFF}) {
            std::string bytes = whole;
            bytes[i] = static_cast<char>(bytes[i] ^ change);
            read_all(scratch.file("z", bytes));
        }
    }
    cmUnZip zip;
    EXPECT_EQ(zip.open(scratch.file("z", whole).c_str()), 0);
}

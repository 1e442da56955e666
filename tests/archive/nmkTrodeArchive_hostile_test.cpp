// Archives that nobody should trust: what is extracted of them, and what is not.
#include <compress/cmZip.h>
#include <gtest/gtest.h>
#include <nmktoolbox/archive/nmkTrodeArchive.h>

#include <cerrno>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "archive_reading.h"
#include "file_contents.h"
#include "scratch_directory.h"
#include "zip_samples.h"

namespace fs = std::filesystem;
using Names = std::set<std::string>;
using zip_samples::Entry;
using zip_samples::zip_of;

namespace {

/// An archive with one electrode E and these entries in its data directory.
std::string archive_of(const std::vector<Entry>& data) {
    std::vector<Entry> entries = {
        {"version.txt", "1.02"}, {"contents.txt", "E\n"}, {"E/E.ngk", "g"}, {"E/E.xml", "m"}};
    for (Entry entry : data) {
        entry.name = "E/html/" + entry.name;
        entries.push_back(entry);
    }
    return zip_of(entries);
}

/// All files and directories below, "o/a" and "o/d/".
Names tree_of(const std::string& directory) {
    Names names;
    for (const auto& entry : fs::recursive_directory_iterator(directory)) {
        const std::string name = fs::relative(entry.path(), directory).string();
        names.insert(name + (entry.is_directory() && !entry.is_symlink() ? "/" : ""));
    }
    return names;
}

}  // namespace

TEST(nmkTrodeArchive_hostile, names_that_lead_elsewhere_are_listed_and_refused) {
    const ScratchDirectory scratch;
    const std::vector<std::string> bad = {"../up",         "a/../../up", "/abs",      "..",
                                          "a/..",          "C:",         "C:x",       "C:/x",
                                          "a\\..\\..\\up", "\\\\host",   "../../up/", "a/../b"};
    std::vector<Entry> entries;
    for (const std::string& name : bad) entries.push_back({name, "bad"});
    entries.push_back({"good", "good"});
    fs::create_directories(scratch.path() + "/x/y");
    nmkTrodeArchive archive;
    utStringcoDList list;
    ASSERT_EQ(archive.open(utString(scratch.file("z", archive_of(entries)))), 1);
    archive.list_data_directory(0, list);
    EXPECT_EQ(list.size(), static_cast<int>(bad.size()) + 1);
    EXPECT_EQ(archive.extract_data_directory(0, utString(scratch.path() + "/x/y/o")), 0);
    EXPECT_EQ(archive.failure(), EPERM);
    EXPECT_EQ(tree_of(scratch.path()), (Names{"z", "x/", "x/y/", "x/y/o/", "x/y/o/good"}))
        << "the rest is done";
}

TEST(nmkTrodeArchive_hostile, names_with_dots_that_stay_below_are_extracted) {
    const ScratchDirectory scratch;
    const std::vector<Entry> entries = {
        {"...", ""}, {"..a", ""}, {".hidden", ""}, {"a/./b", ""}, {"x//y", ""}};
    nmkTrodeArchive archive;
    ASSERT_EQ(archive.open(utString(scratch.file("z", archive_of(entries)))), 1);
    EXPECT_EQ(archive.extract_data_directory(0, utString(scratch.path() + "/o")), 1);
    EXPECT_EQ(tree_of(scratch.path() + "/o"),
              (Names{"...", "..a", ".hidden", "a/", "a/b", "x/", "x/y"}));
}

TEST(nmkTrodeArchive_hostile, a_file_named_as_a_temporary_one_is_refused_and_the_rest_is_done) {
    const ScratchDirectory scratch;
    const std::string temporary = ".nmk_part_0123456789abcdef", similar = ".nmk_part_of_the_plan";
    const std::vector<Entry> entries = {
        {temporary, "x"}, {similar, "y"}, {"d/" + temporary + "/z", "z"}, {"e", "e"}};
    const utString target(scratch.path() + "/o");
    nmkTrodeArchive archive;
    utStringcoDList list;
    ASSERT_EQ(archive.open(utString(scratch.file("z", archive_of(entries)))), 1);
    archive.list_data_directory(0, list);
    EXPECT_EQ(list.size(), 4);
    EXPECT_EQ(archive.extract_data_directory(0, target), 0);
    EXPECT_EQ(archive.failure(), EPERM);
    EXPECT_EQ(tree_of(scratch.path() + "/o"),
              (Names{similar, "d/", "d/" + temporary + "/", "d/" + temporary + "/z", "e"}));
    EXPECT_EQ(archive.extract_data_file(0, temporary.c_str(), target + "/renamed"), 1);
    EXPECT_EQ(contents_of(scratch.path() + "/o/renamed"), "x");
}

TEST(nmkTrodeArchive_hostile, temporary_files_of_an_inserted_directory_are_left_out) {
    const ScratchDirectory scratch;
    fs::create_directory(scratch.path() + "/d");
    scratch.file("d/.nmk_part_0123456789abcdef", "half a fi");
    scratch.file("d/.nmk_part_of_the_plan", "a file of the user");
    const utString zip(scratch.path() + "/z");
    nmkTrodeArchive archive;
    ASSERT_EQ(archive.create(zip), 1);
    archive.insert_data_directory(archive.create_entry("E"), utString(scratch.path() + "/d"));
    archive.close();
    utStringcoDList list;
    ASSERT_EQ(archive.open(zip), 1);
    archive.list_data_directory(0, list);
    ASSERT_EQ(list.size(), 1);
    EXPECT_EQ(*list.begin(), ".nmk_part_of_the_plan");
}

TEST(nmkTrodeArchive_hostile, entries_of_directories_become_directories) {
    const ScratchDirectory scratch;
    const std::vector<Entry> entries = {{"", ""}, {"d/", ""}, {"e/f/", ""}, {"d/a", "x"}};
    nmkTrodeArchive archive;
    ASSERT_EQ(archive.open(utString(scratch.file("z", archive_of(entries)))), 1);
    EXPECT_EQ(archive.extract_data_directory(0, utString(scratch.path() + "/o")), 1);
    EXPECT_EQ(tree_of(scratch.path() + "/o"), (Names{"d/", "d/a", "e/", "e/f/"}));
}

TEST(nmkTrodeArchive_hostile, a_directory_where_a_file_is_counts_as_a_failure) {
    const ScratchDirectory scratch;
    nmkTrodeArchive archive;
    ASSERT_EQ(archive.open(utString(scratch.file("z", archive_of({{"a", "x"}, {"a/", ""}})))), 1);
    EXPECT_EQ(archive.extract_data_directory(0, utString(scratch.path() + "/o")), 0);
    EXPECT_EQ(archive.failure(), ENOTDIR);
}

TEST(nmkTrodeArchive_hostile, symlinks_and_devices_become_plain_files) {
    const ScratchDirectory scratch;
    Entry link{"link", "/etc/passwd"}, device{"device", "x"}, inside{"link2/passwd", "evil"};
    link.attributes = 0120777U << 16;
    device.attributes = 0020666U << 16;
    nmkTrodeArchive archive;
    ASSERT_EQ(archive.open(utString(scratch.file("z", archive_of({link, device, inside})))), 1);
    EXPECT_EQ(archive.extract_data_directory(0, utString(scratch.path() + "/o")), 1);
    EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(scratch.path() + "/o/link")));
    EXPECT_EQ(contents_of(scratch.path() + "/o/link"), "/etc/passwd");
    EXPECT_TRUE(fs::is_regular_file(scratch.path() + "/o/device"));
}

TEST(nmkTrodeArchive_hostile,
     an_electrode_with_a_climbing_name_is_extracted_where_the_caller_says) {
    const ScratchDirectory scratch;
    const std::string bytes = zip_of({{"version.txt", "1"},
                                      {"contents.txt", "../x\n"},
                                      {"../x/../x.ngk", "g"},
                                      {"../x/../x.xml", "m"}});
    nmkTrodeArchive archive;
    ASSERT_EQ(archive.open(utString(scratch.file("z", bytes))), 1);
    EXPECT_EQ(archive.verify_structure(), nmkTrodeArchiveOk);
    EXPECT_EQ(archive.extract_geometry(0, utString(scratch.path() + "/o/g")), 1);
    EXPECT_EQ(tree_of(scratch.path()), (Names{"z", "o/", "o/g"}));
}

TEST(nmkTrodeArchive_hostile, a_damaged_entry_leaves_no_file_and_the_others_are_extracted) {
    const ScratchDirectory scratch;
    Entry wrong{"wrong", "data"}, method{"method", "x", 77}, secret{"secret", std::string(30, 'x')};
    wrong.check_sum = 1;
    secret.flags = 1;
    nmkTrodeArchive archive;
    const std::string bytes = archive_of({wrong, method, secret, {"good", "good"}});
    ASSERT_EQ(archive.open(utString(scratch.file("z", bytes))), 1);
    EXPECT_EQ(archive.extract_data_directory(0, utString(scratch.path() + "/o")), 0);
    EXPECT_EQ(tree_of(scratch.path() + "/o"), Names{"good"});
    EXPECT_EQ(archive.extract_data_file(0, "wrong", utString(scratch.path() + "/w")), 0);
    EXPECT_EQ(archive.failure(), EBADMSG);
    EXPECT_EQ(archive.extract_data_file(0, "secret", utString(scratch.path() + "/w")), 0);
    EXPECT_EQ(archive.failure(), EOPNOTSUPP);
    EXPECT_FALSE(fs::exists(scratch.path() + "/w"));
}

TEST(nmkTrodeArchive_hostile, contents_that_unpack_to_too_much_count_as_absent) {
    const ScratchDirectory scratch;
    const auto status_with = [&](std::size_t size, char filling) {
        const utString zip(scratch.path() + "/z");
        cmZip writer;
        EXPECT_EQ(writer.open(zip.c_str()), 0);
        writer.open_new_file_in_zip("version.txt", cmZipMethodStored, -1, nullptr, utString());
        writer.write_in_file_in_zip("1", 1);
        writer.open_new_file_in_zip("contents.txt", cmZipMethodDeflate, 1, nullptr, utString());
        const std::string contents(size, filling);
        writer.write_in_file_in_zip(contents.data(), static_cast<int>(size));
        EXPECT_EQ(writer.close(), 0);
        nmkTrodeArchive archive;
        EXPECT_EQ(archive.open(zip), 1);
        const auto status = archive.verify_structure();
        EXPECT_EQ(archive.size() > 0, status == nmkTrodeArchiveMissingEntry);
        return status;
    };
    EXPECT_EQ(status_with(std::size_t{64} << 20, 'x'), nmkTrodeArchiveMissingEntry);
    EXPECT_EQ(status_with((std::size_t{64} << 20) + 1, 'x'), nmkTrodeArchiveBadContents);
    EXPECT_EQ(status_with(std::size_t{1} << 20, '\n'), nmkTrodeArchiveMissingEntry);
    EXPECT_EQ(status_with((std::size_t{1} << 20) + 1, '\n'), nmkTrodeArchiveBadContents)
        << "more names than a zip can sensibly have";
}

TEST(nmkTrodeArchive_hostile, damaged_contents_count_as_absent) {
    const ScratchDirectory scratch;
    Entry contents{"contents.txt", "E\n"};
    contents.check_sum = 1;
    nmkTrodeArchive archive;
    ASSERT_EQ(archive.open(utString(scratch.file("z", zip_of({{"version.txt", "1"}, contents})))),
              1);
    EXPECT_EQ(archive.size(), 0);
    EXPECT_EQ(archive.verify_structure(), nmkTrodeArchiveBadContents);
}

TEST(nmkTrodeArchive_hostile, every_prefix_is_opened_or_refused) {
    const ScratchDirectory scratch;
    const std::string whole = archive_of({{"a", "data"}, {"d/b", "more"}});
    int opened = 0;
    for (std::size_t size = 0; size <= whole.size(); ++size) {
        opened += archive_reading::read_archive(scratch.path(), {whole.data(), size});
    }
    EXPECT_EQ(opened, 1) << "the whole one";
}

TEST(nmkTrodeArchive_hostile, a_byte_changed_at_any_place_writes_nothing_outside) {
    const ScratchDirectory scratch;
    const std::string whole = archive_of({{"a", "data"}, {"d/b", "more"}});
    for (std::size_t i = 0; i < whole.size(); ++i) {
        for (const int change : {0x01, 0x2E ^ 'a', 0x80, 0xFF}) {
            std::string bytes = whole;
            bytes[i] = static_cast<char>(bytes[i] ^ change);
            archive_reading::read_archive(scratch.path(), bytes);
        }
    }
    EXPECT_EQ(tree_of(scratch.path()), Names{});
}

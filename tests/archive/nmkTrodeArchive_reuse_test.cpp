// One object of nmkTrodeArchive for several archives, and calls that fail one after the other.
#include <gtest/gtest.h>
#include <nmktoolbox/archive/nmkTrodeArchive.h>

#include <cerrno>
#include <filesystem>
#include <string>
#include <vector>

#include "child_process.h"
#include "file_contents.h"
#include "scratch_directory.h"
#include "zip_samples.h"

namespace fs = std::filesystem;
using zip_samples::Entry;
using zip_samples::zip_of;

namespace {

/// Gives access to the version.
struct Archive : nmkTrodeArchive {
    using nmkTrodeArchive::version;
};

std::string archive_of(const std::vector<Entry>& more) {
    std::vector<Entry> entries = {
        {"version.txt", "1.02"}, {"contents.txt", "E\n"}, {"E/E.ngk", "g"}, {"E/E.xml", "m"}};
    entries.insert(entries.end(), more.begin(), more.end());
    return zip_of(entries);
}

/// Counts how often it is asked, and stops each time.
class StopEachTime : public nmkProgressBreak {
  public:
    int jump_to(double) override {
        ++calls;
        return 1;
    }
    int calls = 0;
};

}  // namespace

TEST(nmkTrodeArchive_reuse, has_nothing_of_an_archive_that_was_closed) {
    const ScratchDirectory scratch;
    const utString first(scratch.file("1", archive_of({{"E/html/a", "a"}})));
    const utString second(scratch.file("2", archive_of({{"E/html/b", "b"}})));
    Archive archive;
    utStringcoDList list;
    ASSERT_EQ(archive.open(first), 1);
    EXPECT_EQ(archive.version(), 1.02);
    archive.close();
    EXPECT_EQ(archive.version(), 0.0);
    archive.list_data_directory(0, list);
    EXPECT_EQ(list.size(), 0);
    ASSERT_EQ(archive.open(second), 1);
    archive.list_data_directory(0, list);
    ASSERT_EQ(list.size(), 1);
    EXPECT_EQ(list.read_first(), "b");
}

TEST(nmkTrodeArchive_reuse, opens_without_the_failure_of_an_earlier_call) {
    const ScratchDirectory scratch;
    nmkTrodeArchive archive;
    EXPECT_EQ(archive.open(utString(scratch.file("text", "no zip"))), 0);
    EXPECT_EQ(archive.failure(), EBADMSG);
    EXPECT_EQ(archive.open(utString(scratch.file("z", archive_of({})))), 1);
    EXPECT_EQ(archive.failure(), 0);
}

TEST(nmkTrodeArchive_reuse, opens_with_a_reporter_that_would_stop_it) {
    const ScratchDirectory scratch;
    StopEachTime stop;
    nmkTrodeArchive archive;
    archive.set_progress(&stop);
    ASSERT_EQ(archive.open(utString(scratch.file("z", archive_of({})))), 1);
    EXPECT_EQ(archive.verify_structure(), nmkTrodeArchiveOk) << "names are read all the same";
    EXPECT_EQ(stop.calls, 0);
}

TEST(nmkTrodeArchive_reuse, takes_the_last_of_two_versions_even_if_it_cannot_be_read) {
    const ScratchDirectory scratch;
    nmkTrodeArchive archive;
    const std::string zip =
        zip_of({{"version.txt", "1"}, {"version.txt", "new"}, {"contents.txt", ""}});
    ASSERT_EQ(archive.open(utString(scratch.file("z", zip))), 1);
    EXPECT_EQ(archive.verify_structure(), nmkTrodeArchiveBadContents);
}

TEST(nmkTrodeArchive_reuse, has_no_names_of_contents_that_are_damaged_behind_others) {
    const ScratchDirectory scratch;
    Entry damaged{"contents.txt", "F\n" + std::string(2000, 'x')};
    damaged.check_sum = 1;
    nmkTrodeArchive archive;
    const std::string zip = archive_of({damaged});
    ASSERT_EQ(archive.open(utString(scratch.file("z", zip))), 1);
    ASSERT_EQ(archive.size(), 1);
    EXPECT_EQ(archive.name(0), "E");
    EXPECT_EQ(archive.verify_structure(), nmkTrodeArchiveBadContents);
}

TEST(nmkTrodeArchive_reuse, stops_extracting_at_the_first_file_that_is_stopped) {
    const ScratchDirectory scratch;
    StopEachTime stop;
    nmkTrodeArchive archive;
    const std::string zip = archive_of({{"E/html/a", "a"}, {"E/html/b", "b"}, {"E/html/c", "c"}});
    ASSERT_EQ(archive.open(utString(scratch.file("z", zip))), 1);
    archive.set_progress(&stop);
    EXPECT_EQ(archive.extract_data_directory(0, utString(scratch.path() + "/o")), 0);
    EXPECT_EQ(archive.failure(), ECANCELED);
    EXPECT_EQ(stop.calls, 1);
}

TEST(nmkTrodeArchive_reuse, keeps_the_reason_of_the_first_file_that_was_not_extracted) {
    const ScratchDirectory scratch;
    Entry wrong{"E/html/a", "a"}, method{"E/html/b", "b", 77};
    wrong.check_sum = 1;
    nmkTrodeArchive archive;
    const std::string zip = archive_of({method, wrong, {"E/html/c", "c"}});
    ASSERT_EQ(archive.open(utString(scratch.file("z", zip))), 1);
    EXPECT_EQ(archive.extract_data_directory(0, utString(scratch.path() + "/o")), 0);
    EXPECT_EQ(archive.failure(), EBADMSG) << "by name, not by place in the zip";
    EXPECT_TRUE(fs::exists(scratch.path() + "/o/c"));
}

TEST(nmkTrodeArchive_reuse, removes_the_half_file_of_a_killed_process_beside_a_target) {
    const ScratchDirectory scratch;
    fs::create_directory(scratch.path() + "/o");
    scratch.file("o/.nmk_part_0123456789abcdef", "half");
    nmkTrodeArchive archive;
    ASSERT_EQ(archive.open(utString(scratch.file("z", archive_of({})))), 1);
    EXPECT_EQ(archive.extract_geometry(0, utString(scratch.path() + "/o/g")), 1);
    EXPECT_FALSE(fs::exists(scratch.path() + "/o/.nmk_part_0123456789abcdef"));
}

TEST(nmkTrodeArchive_reuse, does_not_replace_a_target_that_may_not_be_written) {
    const ScratchDirectory scratch;
    const std::string target = scratch.file("target", "before");
    const utString zip(scratch.file("z", archive_of({})));
    fs::permissions(scratch.path(), fs::perms::all);
    fs::permissions(target, fs::perms::owner_read | fs::perms::others_read);
    EXPECT_EQ(without_rights([&] {
                  nmkTrodeArchive archive;
                  if (archive.open(zip) != 1) return 1;
                  if (archive.extract_geometry(0, utString(target)) != 0) return 2;
                  return archive.failure() == EACCES ? 0 : 3;
              }),
              0);
    EXPECT_EQ(contents_of(target), "before");
}

TEST(nmkTrodeArchive_reuse, takes_a_target_that_ends_in_a_separator_for_a_directory) {
    const ScratchDirectory scratch;
    nmkTrodeArchive archive;
    ASSERT_EQ(archive.open(utString(scratch.file("z", archive_of({})))), 1);
    for (const char* separator : {"/", "\\"}) {
        EXPECT_EQ(archive.extract_geometry(0, utString(scratch.path() + "/o" + separator)), 0);
        EXPECT_EQ(archive.failure(), EISDIR) << separator;
    }
    EXPECT_EQ(scratch.file_count(), 1U);
}

TEST(nmkTrodeArchive_reuse, lacks_an_entry_whose_file_could_not_be_written_to_the_disk) {
    const ScratchDirectory scratch;
    const utString big(scratch.file("big", zip_samples::noise(500'000)));
    const utString small(scratch.file("small", "m"));
    const int code = with_little_room(100'000, [&] {
        nmkTrodeArchive archive;
        if (archive.create(utString(scratch.path() + "/z")) != 1) return 1;
        archive.insert_metadata(archive.create_entry("E"), small);
        archive.insert_geometry(0, big);
        return archive.verify_structure() == nmkTrodeArchiveMissingEntry ? 0 : 2;
    });
    EXPECT_EQ(code, 0);
}

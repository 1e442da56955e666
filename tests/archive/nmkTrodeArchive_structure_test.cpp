// What verify_structure says of zips made by others.
#include <gtest/gtest.h>
#include <nmktoolbox/archive/nmkTrodeArchive.h>

#include <ostream>
#include <string>
#include <vector>

#include "scratch_directory.h"
#include "zip_samples.h"

using zip_samples::Entry;
using zip_samples::zip_of;

namespace {

struct Structure {
    const char* name;
    std::vector<Entry> entries;
    nmkTrodeArchiveStatus status;
};

std::ostream& operator<<(std::ostream& stream, const Structure& structure) {
    return stream << structure.name;
}

std::vector<Entry> of_version(const std::string& version) {
    return {{"version.txt", version}, {"contents.txt", ""}};
}

std::vector<Entry> without_contents(const std::string& version) {
    return {{"version.txt", version}};
}

const Structure structures[] = {
    {"a_zip_without_entries", {}, nmkTrodeArchiveNoVersion},
    {"contents_but_no_version", {{"contents.txt", ""}}, nmkTrodeArchiveNoVersion},
    {"a_version_in_another_case",
     {{"Version.txt", "1"}, {"contents.txt", ""}},
     nmkTrodeArchiveNoVersion},
    {"version_1_02", of_version("1.02"), nmkTrodeArchiveOk},
    {"version_1", of_version("1"), nmkTrodeArchiveOk},
    {"version_1_999", of_version("1.999"), nmkTrodeArchiveOk},
    {"version_2_5_is_newer", of_version("2.5"), nmkTrodeArchiveNewerVersion},
    {"version_2_is_newer", of_version("2"), nmkTrodeArchiveNewerVersion},
    {"version_1e300_is_newer", of_version("1e300"), nmkTrodeArchiveNewerVersion},
    {"version_0_9_is_0", of_version("0.9"), nmkTrodeArchiveBadContents},
    {"version_minus_0_5_is_0", of_version("-0.5"), nmkTrodeArchiveBadContents},
    {"version_minus_3_passes", of_version("-3"), nmkTrodeArchiveOk},
    {"a_version_that_is_not_a_number", of_version("new"), nmkTrodeArchiveBadContents},
    {"a_version_nan", of_version("nan"), nmkTrodeArchiveBadContents},
    {"a_version_past_every_double", of_version("1e999"), nmkTrodeArchiveBadContents},
    {"a_version_of_no_bytes", of_version(""), nmkTrodeArchiveBadContents},
    {"text_behind_the_version_is_not_read", of_version("1.02 or so\n"), nmkTrodeArchiveOk},
    {"a_version_of_255_bytes", of_version("1.02" + std::string(251, ' ')), nmkTrodeArchiveOk},
    {"a_version_of_256_bytes", of_version("1.02" + std::string(252, ' ')),
     nmkTrodeArchiveBadContents},
    {"a_version_of_1000_bytes", of_version("1.02" + std::string(996, ' ')),
     nmkTrodeArchiveBadContents},
    {"no_contents", without_contents("1.02"), nmkTrodeArchiveBadContents},
    {"bad_contents_outrank_a_newer_version", without_contents("3"), nmkTrodeArchiveBadContents},
    {"a_newer_version_outranks_a_missing_entry",
     {{"version.txt", "2"}, {"contents.txt", "E\n"}},
     nmkTrodeArchiveNewerVersion},
    {"no_geometry",
     {{"version.txt", "1"}, {"contents.txt", "E\n"}, {"E/E.xml", ""}},
     nmkTrodeArchiveMissingEntry},
    {"a_listed_name_without_metadata",
     {{"version.txt", "1"}, {"contents.txt", "E\n"}, {"E/E.ngk", ""}},
     nmkTrodeArchiveMissingEntry},
    {"both",
     {{"version.txt", "1"}, {"contents.txt", "E\n"}, {"E/E.xml", ""}, {"E/E.ngk", ""}},
     nmkTrodeArchiveOk},
    {"contents_before_the_version",
     {{"contents.txt", ""}, {"version.txt", "1"}},
     nmkTrodeArchiveOk},
};

class nmkTrodeArchive_verify : public testing::TestWithParam<Structure> {};

std::string names_listed_by(const std::string& contents) {
    const ScratchDirectory scratch;
    nmkTrodeArchive archive;
    EXPECT_EQ(archive.open(utString(scratch.file("z", zip_of({{"contents.txt", contents}})))), 1);
    std::string names;
    for (int i = 0; i < archive.size(); ++i) names += std::string(archive.name(i).view()) + "|";
    return names;
}

}  // namespace

TEST_P(nmkTrodeArchive_verify, returns_the_first_status_that_holds) {
    const ScratchDirectory scratch;
    nmkTrodeArchive archive;
    ASSERT_EQ(archive.open(utString(scratch.file("z", zip_of(GetParam().entries)))), 1);
    EXPECT_EQ(archive.verify_structure(), GetParam().status);
}

INSTANTIATE_TEST_SUITE_P(cases, nmkTrodeArchive_verify, testing::ValuesIn(structures),
                         [](const auto& each) { return std::string(each.param.name); });

TEST(nmkTrodeArchive_contents, gives_its_lines_as_names) {
    EXPECT_EQ(names_listed_by("a\nb\n"), "a|b|");
    EXPECT_EQ(names_listed_by("a\nb"), "a|b|") << "the last name needs no line end";
    EXPECT_EQ(names_listed_by("\n\na\n"), "||a|") << "empty lines are empty names";
    EXPECT_EQ(names_listed_by("a\r\n"), "a\r|") << "a carriage return belongs to the name";
    EXPECT_EQ(names_listed_by(""), "");
    EXPECT_EQ(names_listed_by("\n"), "|");
}

TEST(nmkTrodeArchive_contents, is_read_beyond_blocks_that_the_zip_delivers_short) {
    std::string contents, expected;
    for (int i = 0; i < 20000; ++i) {
        contents += "electrode " + std::to_string(i) + "\n";
        expected += "electrode " + std::to_string(i) + "|";
    }
    EXPECT_EQ(names_listed_by(contents), expected);
    EXPECT_EQ(names_listed_by(std::string(1023, 'x') + "\n"), std::string(1023, 'x') + "|");
    EXPECT_EQ(names_listed_by(std::string(1024, 'x') + "\ny"), std::string(1024, 'x') + "|y|");
}

TEST(nmkTrodeArchive_open, refuses_what_is_not_a_zip_and_stays_invalid) {
    const ScratchDirectory scratch;
    nmkTrodeArchive archive;
    for (const char* bytes : {"", "no zip", "PK\3\4"}) {
        EXPECT_EQ(archive.open(utString(scratch.file("z", bytes))), 0);
        EXPECT_EQ(archive.invalid(), 1);
        EXPECT_NE(archive.failure(), 0);
    }
    EXPECT_EQ(archive.open(utString(scratch.path())), 0);
    EXPECT_EQ(archive.open(utString(scratch.path() + "/missing")), 0);
    EXPECT_EQ(archive.open(utString()), 0);
    EXPECT_EQ(archive.invalid(), 1);
}

TEST(nmkTrodeArchive_open, reads_on_behind_a_version_that_cannot_be_read) {
    const ScratchDirectory scratch;
    for (const std::string& version : {std::string("new"), std::string(), std::string(256, '1')}) {
        const std::string zip = scratch.file(
            "z", zip_of({{"version.txt", version}, {"contents.txt", "E\n"}, {"E/E.ngk", "g"}}));
        nmkTrodeArchive archive;
        ASSERT_EQ(archive.open(utString(zip)), 1);
        EXPECT_EQ(archive.name(0), "E");
        EXPECT_EQ(archive.extract_geometry(0, utString(scratch.path() + "/g")), 1);
        EXPECT_EQ(archive.verify_structure(), nmkTrodeArchiveBadContents);
    }
}

TEST(nmkTrodeArchive_open, takes_a_zip_that_holds_neither_fixed_entry) {
    const ScratchDirectory scratch;
    nmkTrodeArchive archive;
    EXPECT_EQ(archive.open(utString(scratch.file("z", zip_of({{"a", "b"}})))), 1);
    EXPECT_EQ(archive.invalid(), 0);
    EXPECT_EQ(archive.verify_structure(), nmkTrodeArchiveNoVersion);
}

// Archives of electrodes that are written, read again and verified.
#include <compress/cmZip.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <nmktoolbox/archive/nmkTrodeArchive.h>
#include <sys/stat.h>

#include <cerrno>
#include <filesystem>
#include <ostream>
#include <set>
#include <string>

#include "child_process.h"
#include "comma_locale.h"
#include "disk_fault.h"
#include "file_contents.h"
#include "scratch_directory.h"
#include "zip_samples.h"
#include "zip_tools.h"

namespace fs = std::filesystem;
using Names = std::set<std::string>;

namespace {

Names names_of(const utStringcoDList& list) {
    Names names;
    for (const utString& name : list) names.emplace(name.view());
    return names;
}

/// Files to insert, and the archive that is made of them.
class nmkTrodeArchive_files : public testing::Test {
  protected:
    utString named(const std::string& name) const { return utString(scratch.path() + "/" + name); }

    utString file(const std::string& name, const std::string& bytes) const {
        fs::create_directories(fs::path(scratch.path() + "/" + name).parent_path());
        return utString(scratch.file(name, bytes));
    }

    /// One electrode with all that there can be.
    void write_full(const char* electrode = "E1") {
        nmkTrodeArchive archive;
        file("in/html/index.html", "<html>");
        file("in/html/v1.2/a.b.png", "png");
        file("in/html/v1.2/deep/x", "");
        ASSERT_EQ(archive.create(zip), 1);
        const int index = archive.create_entry(electrode);
        archive.insert_geometry(index, file("in/any.ngk", "geometry"));
        archive.insert_metadata(index, file("in/any.xml", "<metadata/>"));
        archive.insert_data_directory(index, named("in/html"));
        archive.insert_data_file(index, file("in/more.txt", "more"));
        archive.insert_additional_geometry_file(index, file("in/holder.v2.ngk", "holder"));
        archive.close();
        ASSERT_EQ(archive.failure(), 0);
    }

    ScratchDirectory scratch;
    const utString zip = named("out.zip");
};

}  // namespace

TEST_F(nmkTrodeArchive_files, come_out_of_the_archive_as_they_went_in) {
    write_full();
    nmkTrodeArchive archive;
    ASSERT_EQ(archive.open(zip), 1);
    EXPECT_EQ(archive.verify_structure(), nmkTrodeArchiveOk);
    ASSERT_EQ(archive.size(), 1);
    EXPECT_EQ(archive.name(0), "E1");
    EXPECT_EQ(archive.extract_geometry(0, named("g")), 1);
    EXPECT_EQ(archive.extract_metadata(0, named("m")), 1);
    EXPECT_EQ(archive.extract_data_file(0, "v1.2/a.b.png", named("p")), 1);
    EXPECT_EQ(archive.extract_additional_geometry_file(0, "holder.v2.ngk", named("h")), 1);
    EXPECT_EQ(contents_of(scratch.path() + "/g"), "geometry");
    EXPECT_EQ(contents_of(scratch.path() + "/m"), "<metadata/>");
    EXPECT_EQ(contents_of(scratch.path() + "/p"), "png");
    EXPECT_EQ(contents_of(scratch.path() + "/h"), "holder");
}

TEST_F(nmkTrodeArchive_files, are_listed_by_their_names_in_the_directory) {
    write_full();
    nmkTrodeArchive archive;
    utStringcoDList data, additional;
    ASSERT_EQ(archive.open(zip), 1);
    archive.list_data_directory(0, data);
    archive.list_additional_geometry(0, additional);
    EXPECT_EQ(names_of(data), (Names{"index.html", "v1.2/a.b.png", "v1.2/deep/x", "more.txt"}))
        << "a directory keeps its whole name, with what follows a dot";
    EXPECT_EQ(names_of(additional), Names{"holder.v2.ngk"});
}

TEST_F(nmkTrodeArchive_files, extract_data_directory_recreates_subdirectories) {
    write_full();
    nmkTrodeArchive archive;
    ASSERT_EQ(archive.open(zip), 1);
    EXPECT_EQ(archive.extract_data_directory(0, named("new/out")), 1);
    EXPECT_EQ(contents_of(scratch.path() + "/new/out/v1.2/a.b.png"), "png");
    EXPECT_TRUE(fs::is_regular_file(scratch.path() + "/new/out/v1.2/deep/x"));
    EXPECT_EQ(archive.extract_all_additional_geometry(0, named("new")), 1);
    EXPECT_EQ(contents_of(scratch.path() + "/new/holder.v2.ngk"), "holder");
}

TEST_F(nmkTrodeArchive_files, lie_in_the_zip_under_the_names_of_the_format) {
    write_full();
    EXPECT_EQ(zip_tools::unzip_test(zip.c_str()), "exit 0\n");
    EXPECT_EQ(
        zip_tools::python(zip.c_str(),
                          "print(*z.namelist(), sep=\"\\n\"); print(z.read(\"version.txt\"), "
                          "z.read(\"contents.txt\"), {i.compress_type for i in z.infolist()})"),
        "version.txt\nE1/E1.ngk\nE1/E1.xml\nE1/html/index.html\nE1/html/v1.2/a.b.png\n"
        "E1/html/v1.2/deep/x\nE1/html/more.txt\nE1/additional/holder.v2.ngk\ncontents.txt\n"
        "b'1.02' b'E1\\n' {8}\nexit 0\n");
}

TEST_F(nmkTrodeArchive_files, keep_their_dates) {
    const utString geometry = file("g", "x");
    const timespec times[2] = {{1'000'000'000, 0}, {1'000'000'000, 0}};
    ASSERT_EQ(::utimensat(AT_FDCWD, geometry.c_str(), times, 0), 0);
    nmkTrodeArchive archive;
    ASSERT_EQ(archive.create(zip), 1);
    archive.insert_geometry(archive.create_entry("E"), geometry);
    archive.close();
    EXPECT_EQ(zip_tools::python(zip.c_str(),
                                "import time; d = z.getinfo(\"E/E.ngk\").date_time; "
                                "print(d == time.localtime(1000000000)[:6]); "
                                "print(abs(time.mktime(z.getinfo(\"version.txt\").date_time + "
                                "(0, 0, -1)) - time.time()) < 100)"),
              "True\nTrue\nexit 0\n");
}

TEST_F(nmkTrodeArchive_files, that_are_missing_are_skipped_and_the_archive_then_fails_with_3) {
    nmkTrodeArchive archive;
    ASSERT_EQ(archive.create(zip), 1);
    const int index = archive.create_entry("E");
    archive.insert_geometry(index, named("missing"));
    archive.insert_geometry(index, scratch.path().c_str());
    archive.insert_geometry(index, utString());
    archive.insert_data_file(index, utString());
    archive.insert_data_file(index, "");
    archive.insert_additional_geometry_file(index, "");
    archive.insert_metadata(index, file("m", ""));
    archive.close();
    EXPECT_EQ(archive.failure(), 0) << "nothing is reported";
    ASSERT_EQ(archive.open(zip), 1);
    EXPECT_EQ(archive.verify_structure(), nmkTrodeArchiveMissingEntry);
}

TEST_F(nmkTrodeArchive_files, that_are_pipes_are_left_out_without_waiting) {
    ASSERT_EQ(::mkfifo(named("pipe").c_str(), 0600), 0);
    nmkTrodeArchive archive;
    ASSERT_EQ(archive.create(zip), 1);
    archive.insert_geometry(archive.create_entry("E"), named("pipe"));
    archive.insert_metadata(0, "/dev/zero");
    EXPECT_EQ(archive.verify_structure(), nmkTrodeArchiveMissingEntry);
}

TEST_F(nmkTrodeArchive_files, are_not_inserted_from_an_empty_or_null_directory) {
    nmkTrodeArchive archive;
    utStringcoDList list;
    ASSERT_EQ(archive.create(zip), 1);
    archive.create_entry("E");
    archive.insert_data_directory(0, utString());
    archive.insert_data_directory(0, "");
    archive.insert_data_directory(0, named("missing"));
    archive.list_data_directory(0, list);
    EXPECT_EQ(list.size(), 0);
}

TEST_F(nmkTrodeArchive_files, behind_a_loop_of_symlinks_are_inserted_once) {
    file("in/a/f", "f");
    fs::create_directory_symlink("..", scratch.path() + "/in/a/up");
    fs::create_directory_symlink(".", scratch.path() + "/in/a/self");
    fs::create_directory(scratch.path() + "/in/b");
    fs::create_directory_symlink("../a", scratch.path() + "/in/b/link");
    nmkTrodeArchive archive;
    utStringcoDList list;
    ASSERT_EQ(archive.create(zip), 1);
    archive.insert_data_directory(archive.create_entry("E"), named("in"));
    archive.list_data_directory(0, list);
    EXPECT_EQ(names_of(list), (Names{"a/f", "b/link/f"}))
        << "a symlink to another directory is followed";
}

TEST_F(nmkTrodeArchive_files, in_the_directory_of_the_archive_leave_the_archive_out) {
    file("in/f", "f");
    const utString inside = named("in/out.zip");
    for (int round = 0; round < 2; ++round) {
        nmkTrodeArchive archive;
        ASSERT_EQ(archive.create(inside), 1);
        archive.insert_data_directory(archive.create_entry("E"), named("in"));
        archive.insert_geometry(0, inside);
        archive.close();
        utStringcoDList list;
        ASSERT_EQ(archive.open(inside), 1);
        archive.list_data_directory(0, list);
        EXPECT_EQ(names_of(list), Names{"f"}) << "round " << round;
        EXPECT_EQ(archive.extract_geometry(0, named("g")), 0);
    }
}

TEST_F(nmkTrodeArchive_files, that_were_inserted_twice_are_listed_once_and_the_first_is_extracted) {
    nmkTrodeArchive archive;
    ASSERT_EQ(archive.create(zip), 1);
    const int index = archive.create_entry("E");
    archive.insert_data_file(index, file("1/f", "first"));
    archive.insert_metadata(index, file("1/m", ""));
    EXPECT_TRUE(archive.repeated_entry().is_empty());
    archive.insert_data_file(index, file("2/f", "second"));
    archive.insert_metadata(index, file("2/m", ""));
    archive.close();
    EXPECT_EQ(archive.repeated_entry(), "E/html/f") << "the first of them";
    utStringcoDList list;
    ASSERT_EQ(archive.open(zip), 1);
    archive.list_data_directory(0, list);
    EXPECT_EQ(list.size(), 1);
    EXPECT_EQ(archive.extract_data_directory(0, named("o")), 1);
    EXPECT_EQ(contents_of(scratch.path() + "/o/f"), "first");
    EXPECT_EQ(zip_tools::python(zip.c_str(), "print(len(z.namelist()))"), "6\nexit 0\n");
    ASSERT_EQ(archive.create(named("other.zip")), 1);
    EXPECT_TRUE(archive.repeated_entry().is_empty());
}

TEST_F(nmkTrodeArchive_files,
       of_an_index_out_of_range_are_written_to_and_read_from_the_empty_name) {
    nmkTrodeArchive archive;
    ASSERT_EQ(archive.create(zip), 1);
    archive.insert_geometry(7, file("g", "lost"));
    archive.close();
    ASSERT_EQ(archive.open(zip), 1);
    EXPECT_EQ(archive.extract_geometry(-1, named("o")), 1);
    EXPECT_EQ(contents_of(scratch.path() + "/o"), "lost");
    EXPECT_EQ(zip_tools::python(zip.c_str(), "print(z.namelist()[1])"), "/.ngk\nexit 0\n");
}

TEST_F(nmkTrodeArchive_files, of_another_data_directory_need_its_name_for_reading) {
    nmkTrodeArchive archive;
    const nmkTrodeArchive& constant = archive;
    EXPECT_EQ(archive.data_directory(), "html");
    constant.set_data_directory("report");
    ASSERT_EQ(archive.create(zip), 1);
    archive.insert_data_file(archive.create_entry("E"), file("f", "f"));
    archive.close();
    EXPECT_EQ(archive.data_directory(), "report") << "close keeps it";
    nmkTrodeArchive reader;
    ASSERT_EQ(reader.open(zip), 1);
    EXPECT_EQ(reader.extract_data_file(0, "f", named("o")), 0);
    EXPECT_EQ(reader.failure(), ENOENT);
    reader.set_data_directory("report");
    EXPECT_EQ(reader.extract_data_file(0, "f", named("o")), 1);
}

TEST_F(nmkTrodeArchive_files, are_not_extracted_to_an_empty_directory_unless_there_are_none) {
    write_full();
    nmkTrodeArchive archive;
    ASSERT_EQ(archive.open(zip), 1);
    for (const utString& target : {utString(), utString("")}) {
        EXPECT_EQ(archive.extract_data_directory(0, target), 0);
        EXPECT_EQ(archive.extract_data_directory(9, target), 1) << "an empty list";
        EXPECT_EQ(archive.extract_geometry(0, target), 0);
    }
    EXPECT_FALSE(fs::exists("/index.html"));
}

TEST_F(nmkTrodeArchive_files, append_to_a_list_that_is_not_cleared) {
    write_full();
    nmkTrodeArchive archive;
    utStringcoDList list;
    list.insert_last("before");
    ASSERT_EQ(archive.open(zip), 1);
    archive.list_additional_geometry(0, list);
    archive.list_additional_geometry(0, list);
    EXPECT_EQ(list.size(), 3);
    EXPECT_EQ(list.read_first(), "before");
}

TEST_F(nmkTrodeArchive_files, make_the_parents_of_a_target_only_when_the_entry_is_found) {
    write_full();
    nmkTrodeArchive archive;
    ASSERT_EQ(archive.open(zip), 1);
    EXPECT_EQ(archive.extract_data_file(0, "missing", named("no/t")), 0);
    EXPECT_FALSE(fs::exists(scratch.path() + "/no"));
    EXPECT_EQ(archive.extract_data_file(0, "index.html", named("yes/deep/t")), 1);
    EXPECT_EQ(contents_of(scratch.path() + "/yes/deep/t"), "<html>");
}

TEST_F(nmkTrodeArchive_files, replace_a_file_or_symlink_but_neither_directory_nor_device) {
    write_full();
    const std::string target = scratch.file("target", "before");
    fs::create_symlink("target", scratch.path() + "/link");
    fs::create_directory(scratch.path() + "/dir");
    nmkTrodeArchive archive;
    ASSERT_EQ(archive.open(zip), 1);
    EXPECT_EQ(archive.extract_geometry(0, named("link")), 1);
    EXPECT_EQ(contents_of(target), "before");
    EXPECT_EQ(contents_of(scratch.path() + "/link"), "geometry");
    EXPECT_EQ(archive.extract_geometry(0, named("target")), 1);
    EXPECT_EQ(contents_of(target), "geometry");
    EXPECT_EQ(archive.extract_geometry(0, named("dir")), 0);
    EXPECT_EQ(archive.failure(), EISDIR);
    EXPECT_EQ(archive.extract_geometry(0, named("dir/")), 0);
    EXPECT_EQ(archive.extract_geometry(0, "/dev/null"), 0);
    EXPECT_EQ(archive.failure(), EINVAL);
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
}

TEST_F(nmkTrodeArchive_files, extracted_to_a_name_without_a_directory_go_to_the_current_one) {
    write_full();
    EXPECT_EQ(in_a_child([&] {
                  nmkTrodeArchive archive;
                  return ::chdir(scratch.path().c_str()) == 0 && archive.open(zip) == 1 &&
                                 archive.extract_geometry(0, "here") == 1
                             ? 0
                             : 1;
              }),
              0);
    EXPECT_EQ(contents_of(scratch.path() + "/here"), "geometry");
}

TEST_F(nmkTrodeArchive_files, that_fill_the_disk_while_extracting_leave_no_half_file) {
    nmkTrodeArchive archive;
    ASSERT_EQ(archive.create(zip), 1);
    const int index = archive.create_entry("E");
    archive.insert_data_file(index, file("a", std::string(500000, 'a')));
    archive.insert_data_file(index, file("b", "small"));
    archive.close();
    fs::create_directory(scratch.path() + "/o");
    scratch.file("o/a", "before");
    const int code = with_little_room(100000, [&] {
        nmkTrodeArchive reader;
        if (reader.open(zip) != 1) return 1;
        if (reader.extract_data_directory(0, named("o")) != 0) return 2;
        return reader.failure() == EFBIG ? 0 : 3;
    });
    EXPECT_EQ(code, 0);
    EXPECT_EQ(contents_of(scratch.path() + "/o/a"), "before");
    EXPECT_EQ(contents_of(scratch.path() + "/o/b"), "small") << "the rest is done";
    EXPECT_EQ(std::distance(fs::directory_iterator(scratch.path() + "/o"), {}), 2);
}

TEST_F(nmkTrodeArchive_files, that_fill_the_disk_while_inserting_leave_the_archive_as_it_was) {
    file("out.zip", "before");
    file("big", zip_samples::noise(500000));
    const int code = with_little_room(100000, [&] {
        nmkTrodeArchive archive;
        if (archive.create(zip) != 1) return 1;
        archive.insert_geometry(archive.create_entry("E"), named("big"));
        archive.close();
        return archive.failure() == EFBIG ? 0 : 2;
    });
    EXPECT_EQ(code, 0);
    EXPECT_EQ(contents_of(zip.c_str()), "before");
    EXPECT_EQ(scratch.file_count(), 2U);
}

TEST_F(nmkTrodeArchive_files, that_may_not_be_read_are_left_out_and_the_reason_is_kept) {
    file("secret", "x");
    const utString metadata = file("m", "x");
    fs::permissions(scratch.path(), fs::perms::all);
    fs::permissions(scratch.path() + "/secret", fs::perms::none);
    EXPECT_EQ(without_rights([&] {
                  nmkTrodeArchive archive;
                  if (archive.create(zip) != 1) return 1;
                  archive.insert_metadata(archive.create_entry("E"), metadata);
                  archive.insert_geometry(0, named("secret"));
                  if (archive.verify_structure() != nmkTrodeArchiveMissingEntry) return 2;
                  return archive.failure() == EACCES ? 0 : 3;
              }),
              0);
}

TEST_F(nmkTrodeArchive_files, of_a_directory_that_may_not_be_listed_are_left_out_with_the_reason) {
    file("in/a/f", "f");
    file("in/b/f", "f");
    fs::permissions(scratch.path(), fs::perms::all);
    for (const fs::perms permissions : {fs::perms::none, fs::perms::others_read}) {
        fs::permissions(scratch.path() + "/in/a", permissions);
        EXPECT_EQ(without_rights([&] {
                      nmkTrodeArchive archive;
                      utStringcoDList list;
                      if (archive.create(zip) != 1) return 1;
                      archive.insert_data_directory(archive.create_entry("E"), named("in"));
                      archive.list_data_directory(0, list);
                      if (names_of(list) != Names{"b/f"}) return 2;
                      return archive.failure() == EACCES ? 0 : 3;
                  }),
                  0);
    }
    fs::permissions(scratch.path() + "/in/a", fs::perms::all);
}

TEST_F(nmkTrodeArchive_files, of_another_archive_are_taken_over_with_their_dates) {
    write_full("E1");
    const std::string whole = "print([(i.date_time, i.CRC) for i in z.infolist()[1:-1]])";
    const std::string before = zip_tools::python(zip.c_str(), whole);
    nmkTrodeArchive archive;
    EXPECT_EQ(archive.insert_archive(zip), 0) << "nothing is open";
    ASSERT_EQ(archive.create(zip), 1);
    EXPECT_EQ(archive.insert_archive(zip), 1);
    EXPECT_EQ(archive.create_entry("E2"), 1);
    archive.close();
    ASSERT_EQ(archive.failure(), 0);
    EXPECT_EQ(zip_tools::python(zip.c_str(), whole), before);
    EXPECT_EQ(zip_tools::python(zip.c_str(), "print(z.read(\"contents.txt\"))"),
              "b'E1\\nE2\\n'\nexit 0\n");
}

TEST_F(nmkTrodeArchive_files, of_an_archive_that_is_damaged_are_not_taken_over) {
    zip_samples::Entry wrong{"E/E.ngk", "data"};
    wrong.check_sum = 1;
    const utString damaged = file("damaged", zip_samples::zip_of({{"contents.txt", "E\n"}, wrong}));
    nmkTrodeArchive archive;
    ASSERT_EQ(archive.create(zip), 1);
    EXPECT_EQ(archive.insert_archive(file("text", "no zip")), 0);
    EXPECT_EQ(archive.insert_archive(named("missing")), 0);
    EXPECT_EQ(archive.insert_archive(damaged), 0);
    EXPECT_EQ(archive.size(), 0);
    EXPECT_EQ(archive.failure(), EBADMSG);
}

namespace {

/// Stops at a number of bytes.
class StopAt : public nmkProgressBreak {
  public:
    explicit StopAt(double limit) : m_limit(limit) {}
    int jump_to(double position) override {
        last = position;
        return position >= m_limit ? 1 : 0;
    }
    double last = 0;

  private:
    double m_limit;
};

}  // namespace

TEST_F(nmkTrodeArchive_files, report_their_bytes_and_stop_on_request) {
    const utString big = file("in/big", zip_samples::noise(100000));
    file("in/last", "1");
    StopAt never(1e9), soon(50000);
    nmkTrodeArchive archive;
    ASSERT_EQ(archive.create(zip), 1);
    archive.set_progress(&never);
    archive.insert_geometry(archive.create_entry("E"), big);
    EXPECT_EQ(never.last, 100000);
    archive.set_progress(&soon);
    archive.insert_data_directory(0, named("in"));
    EXPECT_EQ(archive.failure(), ECANCELED);
    EXPECT_LT(soon.last, 100000);
    archive.set_progress(nullptr);
    archive.close();
    EXPECT_EQ(archive.failure(), ECANCELED);
    EXPECT_FALSE(fs::exists(zip.c_str()));

    write_full();
    ASSERT_EQ(archive.open(zip), 1);
    StopAt at_once(0);
    archive.set_progress(&at_once);
    EXPECT_EQ(archive.extract_data_directory(0, named("o")), 0);
    EXPECT_EQ(archive.failure(), ECANCELED);
    EXPECT_FALSE(fs::exists(scratch.path() + "/o/index.html"));
}

TEST_F(nmkTrodeArchive_files, of_twenty_thousand_names_are_found_without_a_walk_each) {
    constexpr int count = 20000;
    {
        cmZip writer;
        ASSERT_EQ(writer.open(zip.c_str()), 0);
        for (int i = 0; i < count; ++i) {
            const utString name = utString("/html/") + utString(std::to_string(i));
            ASSERT_EQ(writer.open_new_file_in_zip(name, cmZipMethodStored, -1, nullptr, utString()),
                      0);
        }
        ASSERT_EQ(writer.close(), 0);
    }
    nmkTrodeArchive archive;
    ASSERT_EQ(archive.open(zip), 1);
    EXPECT_EQ(archive.extract_data_directory(0, named("o")), 1);
    EXPECT_EQ(std::distance(fs::directory_iterator(scratch.path() + "/o"), {}), count);
}

TEST(nmkTrodeArchive, starts_with_nothing) {
    const nmkTrodeArchive archive;
    EXPECT_EQ(archive.invalid(), 1);
    EXPECT_EQ(archive.size(), 0);
    EXPECT_TRUE(archive.filename().is_empty());
    EXPECT_TRUE(archive.name(0).is_empty());
    EXPECT_TRUE(archive.name(-1).is_empty());
    EXPECT_EQ(archive.index("a"), -1);
    EXPECT_EQ(archive.verify_structure(), nmkTrodeArchiveNoVersion);
    EXPECT_EQ(archive.extract_geometry(0, "/tmp/never"), 0);
}

TEST(nmkTrodeArchive, that_is_not_open_takes_inserts_without_effect) {
    const ScratchDirectory scratch;
    nmkTrodeArchive archive;
    archive.insert_geometry(0, utString(scratch.file("g", "x")));
    archive.insert_data_directory(0, utString(scratch.path()));
    archive.close();
    EXPECT_EQ(archive.verify_structure(), nmkTrodeArchiveNoVersion);
}

TEST(nmkTrodeArchive, names_its_electrodes_by_index_and_finds_the_first_of_a_name) {
    const ScratchDirectory scratch;
    nmkTrodeArchive archive;
    const utString zip(scratch.path() + "/z");
    ASSERT_EQ(archive.create(zip), 1);
    EXPECT_EQ(archive.invalid(), 0);
    EXPECT_EQ(archive.filename(), zip);
    EXPECT_EQ(archive.create_entry("a"), 0);
    EXPECT_EQ(archive.create_entry("b"), 1);
    EXPECT_EQ(archive.create_entry("b"), 2) << "duplicates are not checked";
    EXPECT_EQ(archive.index("b"), 1);
    EXPECT_EQ(archive.index("B"), -1);
    EXPECT_EQ(archive.size(), 3);
    EXPECT_EQ(archive.name(2), "b");
    EXPECT_TRUE(archive.name(3).is_empty());
    archive.close();
    EXPECT_EQ(archive.invalid(), 1);
    EXPECT_EQ(archive.size(), 0);
    EXPECT_TRUE(archive.filename().is_empty());
}

TEST(nmkTrodeArchive, that_is_half_written_verifies_without_its_contents) {
    const ScratchDirectory scratch;
    nmkTrodeArchive archive;
    ASSERT_EQ(archive.create(utString(scratch.path() + "/z")), 1);
    EXPECT_EQ(archive.verify_structure(), nmkTrodeArchiveOk);
    archive.create_entry("E");
    EXPECT_EQ(archive.verify_structure(), nmkTrodeArchiveMissingEntry);
}

TEST(nmkTrodeArchive, with_an_entry_but_no_insert_fails_with_3_after_close_and_open) {
    const ScratchDirectory scratch;
    const utString zip(scratch.path() + "/z");
    nmkTrodeArchive archive;
    ASSERT_EQ(archive.create(zip), 1);
    archive.create_entry("E");
    archive.close();
    ASSERT_EQ(archive.open(zip), 1);
    EXPECT_EQ(archive.name(0), "E");
    EXPECT_EQ(archive.verify_structure(), nmkTrodeArchiveMissingEntry);
}

TEST(nmkTrodeArchive, without_electrodes_has_empty_contents) {
    const ScratchDirectory scratch;
    const utString zip(scratch.path() + "/z");
    nmkTrodeArchive archive;
    ASSERT_EQ(archive.create(zip), 1);
    archive.close();
    EXPECT_EQ(archive.failure(), 0);
    ASSERT_EQ(archive.open(zip), 1);
    EXPECT_EQ(archive.size(), 0);
    EXPECT_EQ(archive.verify_structure(), nmkTrodeArchiveOk);
}

TEST(nmkTrodeArchive, is_finished_by_its_destructor) {
    const ScratchDirectory scratch;
    const utString zip(scratch.path() + "/z");
    {
        nmkTrodeArchive archive;
        ASSERT_EQ(archive.create(zip), 1);
        archive.create_entry("E");
    }
    nmkTrodeArchive reader;
    ASSERT_EQ(reader.open(zip), 1);
    EXPECT_EQ(reader.name(0), "E");
}

TEST(nmkTrodeArchive, that_is_abandoned_leaves_the_file_as_it_was) {
    const ScratchDirectory scratch;
    const utString zip(scratch.file("z", "before"));
    nmkTrodeArchive archive;
    ASSERT_EQ(archive.create(zip), 1);
    archive.create_entry("E");
    archive.abandon();
    EXPECT_EQ(archive.invalid(), 1);
    EXPECT_EQ(contents_of(zip.c_str()), "before");
    EXPECT_EQ(scratch.file_count(), 1U);
}

TEST(nmkTrodeArchive, is_created_over_a_file_but_makes_no_directories) {
    const ScratchDirectory scratch;
    const utString zip(scratch.file("z", "before"));
    nmkTrodeArchive archive;
    EXPECT_EQ(archive.create(utString(scratch.path() + "/missing/z")), 0);
    EXPECT_EQ(archive.failure(), ENOENT);
    EXPECT_EQ(archive.create(utString(scratch.path())), 0);
    EXPECT_EQ(archive.create(utString()), 0);
    EXPECT_EQ(archive.invalid(), 1);
    EXPECT_EQ(archive.create(zip), 1);
    archive.close();
    EXPECT_EQ(archive.open(zip), 1);
    EXPECT_EQ(scratch.file_count(), 1U);
}

TEST(nmkTrodeArchive, whose_disk_is_full_at_the_end_reports_it) {
    const ScratchDirectory scratch;
    const utString zip(scratch.path() + "/z");
    nmkTrodeArchive archive;
    ASSERT_EQ(archive.create(zip), 1);
    const Fault full("fsync", ENOSPC);
    archive.close();
    EXPECT_EQ(archive.failure(), ENOSPC);
    EXPECT_EQ(scratch.file_count(), 0U);
}

TEST(nmkTrodeArchive, writes_and_reads_its_version_whatever_the_locale) {
    const CommaLocale comma;
    const ScratchDirectory scratch;
    const utString zip(scratch.path() + "/z");
    nmkTrodeArchive archive;
    ASSERT_EQ(archive.create(zip), 1);
    archive.close();
    ASSERT_EQ(archive.open(zip), 1);
    EXPECT_EQ(archive.verify_structure(), nmkTrodeArchiveOk);
    EXPECT_EQ(zip_tools::python(zip.c_str(), "print(z.read(\"version.txt\"))"),
              "b'1.02'\nexit 0\n");
}

TEST(nmkTrodeArchive, that_is_opened_or_created_again_closes_what_was_open) {
    const ScratchDirectory scratch;
    const utString first(scratch.path() + "/1"), second(scratch.path() + "/2");
    nmkTrodeArchive archive;
    ASSERT_EQ(archive.create(first), 1);
    archive.create_entry("E");
    ASSERT_EQ(archive.create(second), 1);
    EXPECT_EQ(archive.size(), 0);
    ASSERT_EQ(archive.open(first), 1);
    EXPECT_EQ(archive.name(0), "E");
    EXPECT_TRUE(fs::exists(second.c_str()));
    EXPECT_EQ(archive.open(utString(scratch.file("text", "no zip"))), 0);
    EXPECT_EQ(archive.invalid(), 1);
}
